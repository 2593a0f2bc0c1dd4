#pragma once

#include "image/LXRGBA32i.h"

/// What becomes of positions in a gradient.
struct GradientRule
{
    static constexpr int TableSize = 1024;

    /// Before 0 and after 1.
    enum class Spread
    {
        Pad,    ///< the end's color
        Repeat, ///< from the beginning
        Reflect ///< back and forth
    };

    Spread spread = Spread::Pad;
    double start = 0; ///< where a conical gradient begins, in turns against the clock
};

/// A row of pixels on its way through a plain gradient: pixel i lies at (x + i stepX, y + i stepY).
struct GradientRow
{
    const LXRGBA32i* table; ///< of GradientRule::TableSize colors, from position 0 to 1
    double x;
    double y;
    double stepX;
    double stepY;
    int count;
};

/// Looks up the color that is nearest to each pixel's position.
namespace GradientKernels {
/// The position is x.
void LinearRow(const GradientRule& rule, const GradientRow& row, LXRGBA32i* pixels);
/// The position is the distance from the origin.
void RadialRow(const GradientRule& rule, const GradientRow& row, LXRGBA32i* pixels);
/// The position is the angle around the origin, in turns against the clock, with y down; always repeated.
void ConicalRow(const GradientRule& rule, const GradientRow& row, LXRGBA32i* pixels);
} // namespace GradientKernels
