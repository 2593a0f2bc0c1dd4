#pragma once

#include "image/LXImage.h"

#include <QRect>

/// Questions about the alpha of an image's pixels. Tiles that an image holds many times are looked at once
/// where that settles it. Any thread that may read the image.
namespace AlphaScan {
/// The smallest rectangle, in image pixels, around all pixels with an alpha above the value; null if none.
QRect BoundsAbove(const LXImage32& image, int value);
bool HasAbove(const LXImage32& image, int value);

/// Whether all pixels of the rectangle are opaque. `rect` lies inside the image and isn't empty.
bool IsOpaque(const LXImage32& image, const QRect& rect);
} // namespace AlphaScan
