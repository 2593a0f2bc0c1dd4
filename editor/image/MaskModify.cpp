#include "image/MaskModify.h"

#include "image/DiskShape.h"
#include "image/MaskPieces.h"

#include <algorithm>

namespace {
quint8 AsItIs(quint8 value)
{
    return value;
}

quint8 Nothing(quint8)
{
    return 0;
}

quint8 Inverse(quint8 value)
{
    return static_cast<quint8>(255 - value);
}

void Invert(std::vector<quint8>& bytes)
{
    std::transform(bytes.begin(), bytes.end(), bytes.begin(), Inverse);
}

/// target[x] = the largest of row[x] to row[x + 2 * halfWidth]. Overwrites the row.
void SlideMaximum(quint8* row, int halfWidth, int count, quint8* target)
{
    const int length = 2 * halfWidth + 1;
    int covered = 1;
    for (; 2 * covered <= length; covered *= 2) {
        const int last = count + length - 2 * covered;
        for (int x = 0; x < last; ++x)
            row[x] = std::max(row[x], row[x + covered]);
    }
    for (int x = 0; x < count; ++x)
        target[x] = std::max(row[x], row[x + length - covered]);
}

void RaiseTo(quint8* target, const quint8* values, int count)
{
    for (int x = 0; x < count; ++x)
        target[x] = std::max(target[x], values[x]);
}

/// Each row of the surroundings is seen by the piece's rows above and below through a part of the disk that
/// depends on their distance alone.
void DiskMaximum(const MaskValues& around, MaskValues& piece, int radius)
{
    const std::vector<int> halfWidths = DiskHalfWidths(radius);
    const int width = piece.rect.width();
    const int height = piece.rect.height();
    std::vector<quint8> scratch(static_cast<std::size_t>(around.rect.width()));
    std::vector<quint8> highest(static_cast<std::size_t>(width));
    for (int source = -radius; source < height + radius; ++source) {
        int lastHalf = -1;
        for (int distance = 0; distance <= radius; ++distance) {
            const int above = source - distance;
            const int below = source + distance;
            const bool isAboveIn = above >= 0 && above < height;
            const bool isBelowIn = below >= 0 && below < height;
            if (!isAboveIn && !isBelowIn) continue;

            const int half = halfWidths[static_cast<std::size_t>(distance)];
            if (half != lastHalf) {
                const quint8* const from = around.Row(source + radius) + radius - half;
                std::copy_n(from, width + 2 * half, scratch.begin());
                SlideMaximum(scratch.data(), half, width, highest.data());
                lastHalf = half;
            }
            if (isAboveIn) RaiseTo(piece.Row(above), highest.data(), width);
            if (isBelowIn) RaiseTo(piece.Row(below), highest.data(), width);
        }
    }
}

/// The smallest values are the largest ones of the inverse.
void DiskMinimum(const MaskValues& around, MaskValues& piece, int radius)
{
    MaskValues inverse = around;
    Invert(inverse.bytes);
    DiskMaximum(inverse, piece, radius);
    Invert(piece.bytes);
}
} // namespace

LXImage32 MaskModify::Grown(const LXImage32& mask, const QRect& area, int radius)
{
    return MaskPieces::Make(
        mask, area, radius, AsItIs,
        [radius](const MaskValues& around, MaskValues& piece) { DiskMaximum(around, piece, radius); });
}

LXImage32 MaskModify::Shrunk(const LXImage32& mask, const QRect& area, int radius)
{
    return MaskPieces::Make(
        mask, area, radius, AsItIs,
        [radius](const MaskValues& around, MaskValues& piece) { DiskMinimum(around, piece, radius); });
}

LXImage32 MaskModify::Border(const LXImage32& mask, const QRect& area, int radius)
{
    return MaskPieces::Make(
        mask, area, radius, Nothing, [radius](const MaskValues& around, MaskValues& piece) {
            MaskValues smallest(piece.rect);
            DiskMinimum(around, smallest, radius);
            DiskMaximum(around, piece, radius);
            std::transform(piece.bytes.begin(), piece.bytes.end(), smallest.bytes.begin(),
                           piece.bytes.begin(),
                           [](quint8 high, quint8 low) { return static_cast<quint8>(high - low); });
        });
}
