#pragma once

#include "image/LXRGBA32i.h"

#include <QtGlobal>

#include <algorithm>

/// The roundings of all kernels, each once, so that kernels that must agree call the same.
namespace PixelMath {
/// To nearest, halves up; for 0 to 255, where adding a half is exact enough and needs no call of a library.
template <class Real>
constexpr int RoundPositive(Real value)
{
    return static_cast<int>(value + Real(0.5)); // NOLINT(bugprone-incorrect-roundings)
}

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
    const int half = total / 2;
    return static_cast<int>(static_cast<float>(sum + half) / static_cast<float>(total));
}

/// alpha x opacity x mask / 255 to nearest, the only rounding of a source's strength.
inline int Strength(int alpha, double opacity, int mask)
{
    return RoundPositive(alpha * opacity * mask / 255.0);
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
