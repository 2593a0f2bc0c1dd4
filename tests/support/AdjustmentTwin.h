#pragma once

#include "image/LXAdjustment.h"
#include "image/LXRGBA32i.h"

/// The formulas of adjustments as they are told, one pixel at a time and in real numbers.
namespace AdjustmentTwin {
/// The color that the adjustment makes, alpha 255.
LXRGBA32i Adjusted(const LXAdjustment& adjustment, LXRGBA32i pixel);
} // namespace AdjustmentTwin
