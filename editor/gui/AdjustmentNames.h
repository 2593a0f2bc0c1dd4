#pragma once

#include "image/LXAdjustment.h"

#include <QString>

/// What adjustments are called in menus and lists.
namespace AdjustmentNames {
QString Of(LXAdjustment::Kind kind);
} // namespace AdjustmentNames
