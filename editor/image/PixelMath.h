#pragma once

#include "image/LXRGBA32i.h"

#include <QtGlobal>

#include <algorithm>

/// The roundings of all kernels, each once, so that kernels that must agree call the same.
namespace PixelMath {
/// A product of two bytes, or a weighted sum of bytes whose weights add up to 255, back to a byte.
constexpr int DivideBy255(int product)
{
    return (product + 127) / 255;
}

/// The rule of gray painted into masks, which the tile functors of the tools follow too.
constexpr int DivideBy255Truncating(int product)
{
    return product / 255;
}

/// sum / total to nearest, for sum <= 255 x total and 0 < total <= 255 x 255. In float, which vectorises:
/// sum + total / 2 is below 2^24 and a quotient just below an integer k <= 255 misses it by 1 / total at
/// least, twice the float's spacing there, so it never rounds up to k.
inline int WeightedMean(int sum, int total)
{
    return static_cast<int>(static_cast<float>(sum + total / 2) / static_cast<float>(total));
}

/// alpha x opacity x mask / 255 to nearest, the only rounding of a source's strength.
inline int Strength(int alpha, double opacity, int mask)
{
    return static_cast<int>(alpha * opacity * mask / 255.0 + 0.5);
}

/// The HSL lightness in integers.
constexpr int Lightness(LXRGBA32i color)
{
    const int most = std::max({color.Red(), color.Green(), color.Blue()});
    const int least = std::min({color.Red(), color.Green(), color.Blue()});
    return (most + least) >> 1;
}

constexpr quint32 ColorMask = 0x00FFFFFF;
constexpr quint32 AlphaMask = 0xFF000000;
constexpr int AlphaShift = 24;

constexpr LXRGBA32i WithAlpha(LXRGBA32i color, int alpha)
{
    return LXRGBA32i((color.value & ColorMask) | (static_cast<quint32>(alpha) << AlphaShift));
}
} // namespace PixelMath
