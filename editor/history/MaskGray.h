#pragma once

#include "image/LXImage.h"

/// A layer's mask as a picture and back, so that it can be resampled like one.
namespace MaskGray {
/// The value as an opaque gray.
LXImage32 FromMask(const LXImage32& mask);
/// A mask of the picture's size: its default, with the gray painted in as strongly as it covers.
LXImage32 ToMask(const LXImage32& gray, bool reveals);
/// A mask of that size, filled with its default.
LXImage32 Ground(int width, int height, bool reveals);
} // namespace MaskGray
