#pragma once

#include "image/LXRGBA32i.h"

/// Scaling along the axes, in float. A pixel is four floats: blue, green and red times alpha, and alpha, 0 to
/// 255 x 255 and 0 to 255.
namespace AxisKernels {
constexpr int Channels = 4;
constexpr int TapGroup = 4; ///< taps come in multiples of so many

/// Source pixels to four floats each.
void Premultiply(const LXRGBA32i* pixels, int count, float* result);

/// The taps of a row of target pixels.
struct TapRow
{
    const int* firsts;    ///< the first source pixel of each target pixel
    const float* weights; ///< `taps` of each target pixel, each four times
    int taps;             ///< a multiple of TapGroup; all of them lie inside the source's row
    int count;            ///< of target pixels
};

/// Sums up the taps of each target pixel.
void SumAcross(const float* source, const TapRow& row, float* result);

/// Sums up `count` lines of `pixels` pixels each.
void SumDown(const float* const* lines, const float* weights, int count, int pixels, float* result);

/// The same on top of what the result holds: as if all had been summed up at once, to the last bit.
void AddDown(const float* const* lines, const float* weights, int count, int pixels, float* result);

/// Straight pixels: color from the sum, alpha from the sum times `coverage`, four times a pixel.
void ToStraight(const float* sums, const float* coverage, int count, LXRGBA32i* pixels);

/// Premultiplied ones.
void ToPremultiplied(const float* sums, int count, LXRGBA32i* pixels);
} // namespace AxisKernels
