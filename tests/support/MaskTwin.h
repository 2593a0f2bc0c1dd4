#pragma once

#include "support/TestImages.h"

#include <QRect>

/// The formulas of MaskModify, pixel by pixel as they stand.
namespace MaskTwin {
PlainImage Grown(const PlainImage& mask, const QRect& area, int radius);
PlainImage Shrunk(const PlainImage& mask, const QRect& area, int radius);
PlainImage Border(const PlainImage& mask, const QRect& area, int radius);
PlainImage Feathered(const PlainImage& mask, const QRect& area, int radius);
PlainImage Smoothed(const PlainImage& mask, const QRect& area, int radius);
} // namespace MaskTwin
