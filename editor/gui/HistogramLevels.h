#pragma once

#include "image/LevelCounts.h"

#include <utility>
#include <vector>

/// What a histogram tells of counted levels, for a choice of channels: bits 1 red, 2 green, 4 blue; 0 for the
/// luminance.
namespace HistogramLevels {
constexpr int LastLevel = int(LevelCounts::Levels) - 1;

/// From and to, both within; 0 to 255 for all.
using Range = std::pair<int, int>;

constexpr int AllBits = 7;

/// In the order of the bits.
std::vector<LevelCounts::Channel> ChannelsOf(int bits);

/// How many pixels have a level of the range. With several channels their mean, to nearest, so that all
/// levels together have as many pixels as the picture.
qint64 PixelsIn(const LevelCounts::Sum& counts, int bits, const Range& range);

/// What the full height of the plot stands for: the highest count of any channel, but such that a few levels
/// can't press all others flat. So black and white are left out unless there is nothing else, and of the rest
/// of a channel it is twice the fifth highest count at most, if there are five. 0 when nothing was counted.
qint64 PeakOf(const LevelCounts::Sum& counts, int bits);

/// The level under a column of a plot, brought into the range.
/// @param x      from the plot's left
/// @param width  of the plot, in the same unit
int LevelAt(double x, double width);

/// The levels that a pixel column of a plot stands for: one or more, and neighbours may share one.
Range LevelsOfColumn(int column, int columns);
} // namespace HistogramLevels
