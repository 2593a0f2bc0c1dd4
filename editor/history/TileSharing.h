#pragma once

#include "image/LXImage.h"

#include <QPoint>
#include <QRect>

/// Tiles that a picture has before and after a change.
namespace TileSharing {
/// The smallest rectangle of whole tiles around a part of an image, cut at the image's edges.
/// @param part  image pixels, inside the image
QRect WholeTiles(const QRect& part, const QSize& image);

/// Whether a patch is pixel for pixel what the image has at its place.
/// @param place  image pixels, inside the image and as large as the patch
bool IsPartOf(const LXImage32& patch, const LXImage32& image, const QRect& place);

/// Puts tiles of `before` in the place of those of `after` that hold the same. Both keep their pixels.
/// @param firstTile  the tile of `after` (column, row) at which the first tile of `before` lies
/// @param part       pixels of `after`; tiles that don't meet it are left alone
/// All threads.
void ShareEqualTiles(const LXImage32& before, LXImage32& after, const QPoint& firstTile, const QRect& part);

/// The bytes of the tiles that an image holds and another doesn't, each counted once.
qint64 BytesOnlyIn(const LXImage32& image, const LXImage32& other);
} // namespace TileSharing
