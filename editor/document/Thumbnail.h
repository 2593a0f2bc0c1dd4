#pragma once

#include "image/LXImage.h"

#include <QImage>
#include <QPoint>
#include <QSize>

/// Small pictures of layers and masks for lists. Any thread that may read the image.
namespace Thumbnail {
/// Longer side of the thumbnails in lists, in pixels.
constexpr int Side = 64;

/// The layer where it lies on the canvas; transparent around it. Null for an empty canvas.
/// @param side  of the thumbnail, its longer one; a smaller canvas isn't enlarged
QImage OfLayer(const LXImage32& image, const QPoint& offset, const QSize& canvas, int side = Side);
/// The mask as opaque gray, white revealing; around it its default. Null for an empty canvas.
QImage OfMask(const LXImage32& mask, const QPoint& offset, bool reveals, const QSize& canvas);
} // namespace Thumbnail
