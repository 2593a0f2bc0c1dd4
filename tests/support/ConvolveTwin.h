#pragma once

#include "support/TestImages.h"

#include <QSize>

/// Convolution of alpha as its formula stands.
namespace ConvolveTwin {
PlainImage ConvolveAlpha(const PlainImage& image, const std::vector<double>& kernel, const QSize& size);
} // namespace ConvolveTwin
