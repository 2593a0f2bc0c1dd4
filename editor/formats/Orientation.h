#pragma once

#include "image/LXImage.h"

/// How cameras store pictures: turned or mirrored, with a number that says how.
namespace Orientation {
/// The image as it is meant to be seen, without profile and metadata.
/// @param orientation  1 to 8, numbered as in Exif
/// Throws as the constructor of LXImage. Any thread.
LXImage32 MakeUpright(const LXImage32& stored, int orientation);
} // namespace Orientation
