#pragma once

#include "image/LXImage.h"

/// Masks as gray pictures, the form in which they are carried about. Any thread.
namespace GrayMask {
/// A picture of the size of `values`: color = the alpha of `values`, alpha = the alpha of `coverage`. Both
/// images have the same size.
LXImage32 FromAlpha(const LXImage32& values, const LXImage32& coverage);
} // namespace GrayMask
