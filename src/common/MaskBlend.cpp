#include "common/MaskBlend.h"

LXImage32 MaskToGray(const LXImage32& mask)
{
    constexpr bool changeAlpha = false;
    LXImage32 white(mask.Width(), mask.Height());
    white.Fill(LXRGBA32i(0xFFFFFFFFu));
    BlendOn(mask, mask.Rect(), BlendMode::DestinationIn, white, white.Rect(), 1.0, changeAlpha);
    LXImage32 gray(mask.Width(), mask.Height());
    gray.Fill(LXRGBA32i(0xFF000000u));
    BlendOn(white, white.Rect(), BlendMode::Normal, gray, gray.Rect(), 1.0, changeAlpha);
    return gray;
}
