#pragma once

#include "image/LevelCounts.h"
#include "support/TestImages.h"

/// The counting of levels as it is told: one pixel after the other.
namespace LevelTwin {
using Counts = std::array<LevelCounts::Sum::Counts, LevelCounts::ChannelCount>;

Counts Count(const PlainImage& image);
} // namespace LevelTwin
