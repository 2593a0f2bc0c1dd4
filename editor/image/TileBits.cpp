#include "image/TileBits.h"

#include <qalgorithms.h>

#include <algorithm>

using TileWalk::TileSide;

namespace {
constexpr int HalfBits = TileSide / 2;

quint64 LowHalf(RowBits bits)
{
    return static_cast<quint64>(bits);
}

quint64 HighHalf(RowBits bits)
{
    return static_cast<quint64>(bits >> HalfBits);
}
} // namespace

int TileBitsMath::CountTrailingZeros(RowBits bits)
{
    return static_cast<int>(LowHalf(bits) != 0 ? qCountTrailingZeroBits(LowHalf(bits))
                                               : HalfBits + qCountTrailingZeroBits(HighHalf(bits)));
}

int TileBitsMath::CountLeadingZeros(RowBits bits)
{
    return static_cast<int>(HighHalf(bits) != 0 ? qCountLeadingZeroBits(HighHalf(bits))
                                                : HalfBits + qCountLeadingZeroBits(LowHalf(bits)));
}

/// Doubles the reach in each step: after steps of 1, 2, 4 ... 64 a seed has come as far as its run goes.
RowBits TileBitsMath::SpreadAlongRow(RowBits seeds, RowBits inside)
{
    // Often, as in a corridor across the rows, there is nowhere to go.
    if ((inside & ~seeds & ((seeds << 1) | (seeds >> 1))) == 0) return seeds;

    RowBits right = seeds;
    RowBits left = seeds;
    RowBits openRight = inside;
    RowBits openLeft = inside;
    for (int step = 1; step < TileSide; step *= 2) {
        right |= openRight & (right << step);
        left |= openLeft & (left >> step);
        openRight &= openRight << step;
        openLeft &= openLeft >> step;
    }
    return right | left;
}

int TileBitsMath::RunLength(RowBits bits, int first)
{
    const RowBits closed = ~(bits >> first);
    return closed == 0 ? TileSide : CountTrailingZeros(closed);
}

void TileBitsMath::Clip(TileBits& bits, const QRect& part)
{
    const RowBits columns = part.isEmpty() ? RowBits(0) : Columns(part.left(), part.right());
    for (int y = 0; y < TileSide; ++y) {
        const bool isInside = y >= part.top() && y <= part.bottom();
        bits.rows[static_cast<std::size_t>(y)] &= isInside ? columns : RowBits(0);
    }
}

bool TileBitsMath::IsFull(const TileBits& bits)
{
    return std::all_of(bits.rows.begin(), bits.rows.end(), [](RowBits row) { return ~row == 0; });
}

QRect TileBitsMath::BoundsOf(const TileBits& bits)
{
    RowBits columns = 0;
    int top = TileSide;
    int bottom = -1;
    for (int y = 0; y < TileSide; ++y) {
        const RowBits row = bits.rows[static_cast<std::size_t>(y)];
        if (row == 0) continue;
        columns |= row;
        top = std::min(top, y);
        bottom = y;
    }
    if (bottom < 0) return {};
    return QRect(QPoint(CountTrailingZeros(columns), top),
                 QPoint(TileSide - 1 - CountLeadingZeros(columns), bottom));
}
