#pragma once

#include "image/BlendMode.h"
#include "image/LXImage.h"

/// The mask's values as opaque grays: value 0 black, 255 white.
LXImage32 MaskToGray(const LXImage32& mask);

/// Blends something on a mask in a mode of the user's. Normal paints its lightness in. The other modes are
/// defined on colors, so they work on the mask's values as grays, whose lightness goes back.
/// @param blend  called once, as `blend(image, mode)`: blends on the image, of the mask's size, in that mode.
template <class Blend>
void BlendOnMaskValues(LXImage32& mask, unsigned int mode, Blend blend)
{
    constexpr bool changeAlpha = false;
    if (mode == BlendMode::Normal) {
        blend(mask, static_cast<unsigned int>(BlendMode::GrayToMask));
        return;
    }
    LXImage32 gray = MaskToGray(mask);
    blend(gray, mode);
    BlendOn(gray, gray.Rect(), BlendMode::GrayToMask, mask, mask.Rect(), 1.0, changeAlpha);
}
