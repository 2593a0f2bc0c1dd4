#pragma once

#include "image/LXImageFwd.h"

#include <QRect>

union LXRGBA32i;

/// What remains of an image when its border is taken away, scanned from each side up to the first pixel that
/// is no border; null if all is border. Tiles that an image holds many times are looked at once where that
/// settles it. Any thread that may read the image.
namespace BorderScan {
/// Border are pixels with an alpha up to the tolerance.
QRect WithoutTransparency(const LXImage32& image, int tolerance);
/// Border are pixels whose red, green and blue each differ from the color's by the tolerance at most; alpha
/// doesn't count.
QRect WithoutColor(const LXImage32& image, int tolerance, LXRGBA32i color);
} // namespace BorderScan
