#pragma once

#include "image/LXRGBA32i.h"

#include <QSize>
#include <QtGlobal>

#include <array>
#include <optional>
#include <vector>

/// A square convolution kernel whose weights depend on the distance from its middle alone, fall outwards, and
/// are whole numbers over one divisor: a sum of boxes, each as large as the next ring. The fill's softening
/// is one.
struct BoxKernel
{
    static constexpr int MostReach = 3;

    /// The boxes of `weights`, row by row; none when they can't be told so, or sums don't fit into 16 bits.
    static std::optional<BoxKernel> Of(const std::vector<double>& weights, const QSize& size);

    int reach = 0;                              ///< pixels on each side of the middle
    std::array<quint16, MostReach + 1> boxes{}; ///< the weight of the box with this reach
    quint16 half = 0;                           ///< half of the divisor
    quint16 factor = 0;                         ///< (sum + half) x factor / 65536 / 2^shift is the quotient
    int shift = 0;
    bool isMean = false; ///< the weights add up to 1
};

/// The alphas of a tile and of the pixels around it, one byte each.
struct AlphaPlane
{
    static constexpr int Margin = 32; ///< before and after each row, for registers that reach beyond
    static constexpr int Stride = 128 + 2 * Margin;
    static constexpr int MostRows = 128 + 2 * BoxKernel::MostReach;

    /// Column 0 and row 0 are the tile's, less the reach.
    quint8* At(int x, int y) { return bytes.data() + (y + BoxKernel::MostReach) * Stride + Margin + x; }

    const quint8* At(int x, int y) const
    {
        return bytes.data() + (y + BoxKernel::MostReach) * Stride + Margin + x;
    }

    alignas(64) std::array<quint8, static_cast<std::size_t>(Stride) * (MostRows + 1)> bytes;
};

namespace ConvolveKernels {
/// The alphas of `rows` rows of a tile, `count` pixels each.
void ReadAlphas(const LXRGBA32i* pixels, int count, int rows, quint8* alphas);

/// Gives `height` rows of a tile, `width` pixels each, the convolved alphas of the plane.
void Convolve(const BoxKernel& kernel, const AlphaPlane& plane, int width, int height, LXRGBA32i* pixels);
} // namespace ConvolveKernels
