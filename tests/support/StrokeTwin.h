#pragma once

#include "support/TestImages.h"

#include <QPointF>
#include <QRect>

#include <vector>

/// A stroke of round dabs as it is defined, pixel by pixel and dab by dab.
namespace StrokeTwin {
struct Brush
{
    double diameter;
    double hardness; ///< 0 to 1
    double spacing;  ///< pixels
};

/// The middles of the dabs along a chain of lines, each on the grid of 16ths of a pixel.
std::vector<QPointF> Middles(const std::vector<QPointF>& points, double spacing);

/// Strengths from 0 to 255 of the rectangle's pixels, row by row: the strongest of all dabs.
std::vector<int> Strengths(const std::vector<QPointF>& middles, const Brush& brush, const QRect& rect);

/// The color under those strengths, and 0 where there is none.
PlainImage Picture(const std::vector<QPointF>& middles, const Brush& brush, const QRect& rect,
                   LXRGBA32i color);
} // namespace StrokeTwin
