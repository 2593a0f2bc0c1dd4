#pragma once

#include "image/LXRGBA32i.h"

/// How the colors of a row are turned, as LXAdjustment tells of hue and saturation; in single precision.
struct HueRule
{
    float turn = 0;       ///< of the hue, in sixths of a turn, -3 to 3
    float saturation = 1; ///< what the saturation is multiplied by, 0 to 2
    float kept = 1;       ///< of the color, 0 to 1
    float added = 0;      ///< to each channel, 0 to 255: the white that the color goes to
};

/// A row of pixels through a HueRule, as many pixels at once as the processor has room for. Any thread.
namespace HueKernels {
/// Changes the pixels and makes them opaque. Every processor gives the same bytes.
void Turn(const HueRule& rule, LXRGBA32i* pixels, int count);
} // namespace HueKernels
