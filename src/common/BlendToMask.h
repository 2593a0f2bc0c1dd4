#pragma once

#include "image/LXRGBA32i.h"

#include <algorithm>

/// The lightness of HSL in whole numbers, 0 to 255.
inline int LightnessOf(LXRGBA32i color)
{
    const auto [least, most] = std::minmax({color.Red(), color.Green(), color.Blue()});
    return (most + least) >> 1;
}

/// `over` where the weight is 255, `under` where it is 0. The division truncates.
inline int MixTruncating(int over, int under, int weight)
{
    return (over * weight + (255 - weight) * under) / 255;
}

/// Paints a picture into a mask: its lightness goes into the target's alpha as far as the picture is opaque.
/// The target's colors stay.
struct BlendToMask
{
    static void Blend(LXRGBA32i source, LXRGBA32i& target)
    {
        const int value = MixTruncating(LightnessOf(source), target.Alpha(), source.Alpha());
        target.bytes[3] = static_cast<quint8>(value);
    }
};

/// The same as far as a selection allows, by its alpha.
struct BlendToMaskBySelection
{
    static void Blend(LXRGBA32i source, LXRGBA32i& target, LXRGBA32i selection)
    {
        const int value = MixTruncating(LightnessOf(source), target.Alpha(), source.Alpha());
        target.bytes[3] = static_cast<quint8>(MixTruncating(value, target.Alpha(), selection.Alpha()));
    }
};
