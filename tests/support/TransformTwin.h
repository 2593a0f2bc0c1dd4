#pragma once

#include "support/TestImages.h"

#include <QTransform>

/// Transformed pictures as the formulas stand, pixel by pixel.
///
/// A target pixel's middle is solved back into the source, where the pixel is `f` wide on an axis: the root
/// of the summed squares of the two partial derivatives. Linear: a source pixel weighs as much as it overlaps
/// a window of max(1, f) around that point, or around the source's border if the point lies beyond. Cubic: as
/// much as the Catmull-Rom curve, stretched by max(1, f), has at its middle. Weights count inside the source
/// only and add up to 1; alpha is then multiplied by the part of `f` that lies inside the source, on both
/// axes.
namespace TransformTwin {
enum class Method
{
    Nearest,
    Linear,
    Cubic
};

/// All of the target; pixels that show nothing are 0.
PlainImage Transformed(const PlainImage& source, const QTransform& transform, const QSize& size,
                       Method method);

/// The same, of a part of the target alone.
PlainImage Part(const PlainImage& source, const QTransform& transform, const QRect& part, Method method);

/// The largest difference of any channel between the two; colors count as much as their alpha shows of them.
int LargestDifference(const PlainImage& a, const PlainImage& b);
} // namespace TransformTwin
