#include "document/AlphaScan.h"

#include <algorithm>

namespace {
constexpr int TileSide = 128;

QRect TileRect(int column, int row)
{
    return QRect(column * TileSide, row * TileSide, TileSide, TileSide);
}

/// Calls visit(column, row, part) for every tile that the rectangle touches, `part` being what of the
/// rectangle lies in it, in pixels of the tile, until an answer is false. True when none was.
template <class Visit>
bool ForEachTile(const QRect& rect, Visit visit)
{
    for (int row = rect.top() / TileSide; row <= rect.bottom() / TileSide; ++row) {
        for (int column = rect.left() / TileSide; column <= rect.right() / TileSide; ++column) {
            const QRect tile = TileRect(column, row);
            if (!visit(column, row, (rect & tile).translated(-tile.topLeft()))) return false;
        }
    }
    return true;
}

/// The smallest rectangle around the pixels of the part with an alpha above the value, in pixels of the tile.
QRect BoundsInTile(const LXRGBA32i* pixels, const QRect& part, int value)
{
    QRect bounds;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const LXRGBA32i* first = pixels + y * TileSide + part.left();
        const LXRGBA32i* end = first + part.width();
        const auto isAbove = [value](LXRGBA32i pixel) { return pixel.Alpha() > value; };
        const LXRGBA32i* left = std::find_if(first, end, isAbove);
        if (left == end) continue;
        const LXRGBA32i* right = end - 1;
        while (!isAbove(*right)) {
            --right;
        }
        bounds |=
            QRect(part.left() + static_cast<int>(left - first), y, static_cast<int>(right - left) + 1, 1);
    }
    return bounds;
}
} // namespace

QRect AlphaScan::BoundsAbove(const LXImage32& image, int value)
{
    if (image.IsNull()) return QRect();

    QRect bounds;
    const LXTile* empty = nullptr;
    ForEachTile(image.Rect(), [&](int column, int row, const QRect& part) {
        const LXTile* tile = image.TileAt(column, row).data();
        if (tile == empty) return true;
        const QRect found = BoundsInTile(image.ReadTile(column, row).Pixels(), part, value);
        if (found.isEmpty() && part.width() == TileSide && part.height() == TileSide) empty = tile;
        if (!found.isEmpty()) bounds |= found.translated(column * TileSide, row * TileSide);
        return true;
    });
    return bounds;
}

bool AlphaScan::HasAbove(const LXImage32& image, int value)
{
    return !BoundsAbove(image, value).isEmpty();
}

bool AlphaScan::IsOpaque(const LXImage32& image, const QRect& rect)
{
    return ForEachTile(rect, [&](int column, int row, const QRect& part) {
        const auto reader = image.ReadTile(column, row);
        for (int y = part.top(); y <= part.bottom(); ++y) {
            const LXRGBA32i* first = reader.Pixels() + y * TileSide + part.left();
            if (!std::all_of(first, first + part.width(), [](LXRGBA32i p) { return p.Alpha() == 255; })) {
                return false;
            }
        }
        return true;
    });
}
