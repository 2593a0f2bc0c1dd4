#pragma once

#include "document/CompositeLayer.h"

#include <QTransform>

/// What a free transformation makes of an image, as far as the canvas reaches: the very pixels that a tool
/// has shown while it rendered the same step. The image's top left lies at the transform's origin. An empty
/// image where nothing of it reaches the canvas.
namespace RenderedTransform {
PlacedImage OfPixels(const LXImage32& image, const QTransform& transform, const QSize& canvas);
/// A layer's mask, on ground of its default.
PlacedImage OfMask(const LXImage32& mask, bool reveals, const QTransform& transform, const QSize& canvas);
} // namespace RenderedTransform
