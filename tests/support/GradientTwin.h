#pragma once

#include "image/LXRGBA32i.h"

#include <QBrush>

/// Gradients as they are told: the position of a pixel's middle, and the color of the nearest of 1024 even
/// steps from 0 to 1, mixed between its two stops.
namespace GradientTwin {
/// Whether a pixel of the brush may be so: within one level, where the position isn't about halfway between
/// two steps, then either's.
bool Allows(const QBrush& brush, int x, int y, LXRGBA32i pixel);
} // namespace GradientTwin
