#pragma once

#include "image/InverseMap.h"

#include <vector>

/// The source pixels that make a target pixel, on one axis.
struct ResampleTaps
{
    int first = 0;
    int stride = 1;
    std::vector<double> weights; ///< adding up to 1; none where nothing shows
    double coverage = 0;         ///< how much of the target pixel the source covers, 0 to 1
};

/// What weight a source pixel has by its distance, and how wide the window around a target pixel's middle is.
/// Both kernels know the width of a target pixel in source pixels and widen with it, so that a picture that
/// shrinks is averaged. At the source's ends the window is cut off and the rest weighs more, so that the
/// border doesn't fade; `coverage` tells what the target pixel loses there.
namespace ResampleKernel {
enum class Kind
{
    Linear, ///< a window as wide as the target pixel, but at least one source pixel: that mixes two linearly
    Cubic   ///< the curve through the pixels' values with continuous slope
};

/// Any number of source pixels may make a target pixel.
constexpr int Unlimited = 0;

/// @param span      the target pixel
/// @param side      of the source
/// @param mostTaps  a wider window takes evenly spaced pixels, about that many
void FindTaps(Kind kind, const SourceSpan& span, int side, int mostTaps, ResampleTaps& taps);
} // namespace ResampleKernel
