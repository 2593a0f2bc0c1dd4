#pragma once

#include "support/TestImages.h"

#include <QPoint>
#include <QRect>

/// Region growing pixel by pixel: the oracle of the flood fills.
namespace FillTwin {
/// Paints the region of the seed into `mask` and returns its bounds; the seed lies inside both images.
QRect FloodFill(const PlainImage& src, PlainImage& mask, const QPoint& seed, LXRGBA32i tolerance,
                LXRGBA32i fill);

/// The same without the requirement that the region hangs together.
QRect ColorRangeFill(const PlainImage& src, PlainImage& mask, const QPoint& seed, LXRGBA32i tolerance,
                     LXRGBA32i fill);
} // namespace FillTwin
