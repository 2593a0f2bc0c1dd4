#pragma once

#include "image/LXImage.h"

#include <QRect>

/// The loops over tiles, written once for all kernels.
namespace TileWalk {
constexpr int TileSide = 128;
constexpr int TilePixels = TileSide * TileSide;

/// The pixels of a tile in image coordinates, those beyond the image's edge included.
inline QRect TileRect(int column, int row)
{
    return QRect(column * TileSide, row * TileSide, TileSide, TileSide);
}

/// Where an image's pixel lies inside its tile.
inline int IndexInTile(const QPoint& pixel)
{
    return (pixel.y() % TileSide) * TileSide + pixel.x() % TileSide;
}

/// Calls `visit(column, row, part)` for each tile that `rect` meets, row by row; `part` is what both have in
/// common. `rect` lies inside the image.
template <class Visit>
void ForEachTile(const QRect& rect, Visit visit)
{
    if (rect.isEmpty()) return;
    for (int row = rect.top() / TileSide; row <= rect.bottom() / TileSide; ++row) {
        for (int column = rect.left() / TileSide; column <= rect.right() / TileSide; ++column) {
            visit(column, row, TileRect(column, row) & rect);
        }
    }
}

/// Calls `take(pixels, x, y, count)` for each row span of `rect` that lies in one tile; (x, y) counts from
/// the rectangle's top left. `rect` lies inside the image.
template <class Take>
void ReadSpans(const LXImage32& image, const QRect& rect, Take take)
{
    ForEachTile(rect, [&](int column, int row, const QRect& part) {
        const auto tile = image.ReadTile(column, row);
        for (int y = part.top(); y <= part.bottom(); ++y) {
            const LXRGBA32i* const pixels = tile.Pixels() + IndexInTile(QPoint(part.left(), y));
            take(pixels, part.left() - rect.left(), y - rect.top(), part.width());
        }
    });
}
} // namespace TileWalk
