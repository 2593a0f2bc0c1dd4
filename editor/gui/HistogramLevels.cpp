#include "gui/HistogramLevels.h"

#include <QtMath>

#include <algorithm>
#include <array>
#include <functional>
#include <numeric>

namespace {
constexpr int Levels = int(LevelCounts::Levels);

/// Of the levels between black and white.
qint64 InnerPeakOf(const LevelCounts::Sum::Counts& levels)
{
    std::array<qint64, 5> highest{};
    std::partial_sort_copy(levels.begin() + 1, levels.end() - 1, highest.begin(), highest.end(),
                           std::greater<>());
    return highest.back() > 0 ? std::min(highest.front(), 2 * highest.back()) : highest.front();
}
} // namespace

std::vector<LevelCounts::Channel> HistogramLevels::ChannelsOf(int bits)
{
    std::vector<LevelCounts::Channel> channels;
    if (bits & 1) channels.push_back(LevelCounts::Red);
    if (bits & 2) channels.push_back(LevelCounts::Green);
    if (bits & 4) channels.push_back(LevelCounts::Blue);
    if (channels.empty()) channels.push_back(LevelCounts::Luminance);
    return channels;
}

qint64 HistogramLevels::PixelsIn(const LevelCounts::Sum& counts, int bits, const Range& range)
{
    const std::vector<LevelCounts::Channel> channels = ChannelsOf(bits);
    qint64 sum = 0;
    for (const LevelCounts::Channel channel : channels) {
        const LevelCounts::Sum::Counts& levels = counts.Of(channel);
        sum = std::accumulate(levels.begin() + range.first, levels.begin() + range.second + 1, sum);
    }
    const auto divisor = qint64(channels.size());
    return (sum + divisor / 2) / divisor;
}

qint64 HistogramLevels::PeakOf(const LevelCounts::Sum& counts, int bits)
{
    qint64 inner = 0;
    qint64 outer = 0;
    for (const LevelCounts::Channel channel : ChannelsOf(bits)) {
        const LevelCounts::Sum::Counts& levels = counts.Of(channel);
        inner = std::max(inner, InnerPeakOf(levels));
        outer = std::max({outer, levels.front(), levels.back()});
    }
    return inner > 0 ? inner : outer;
}

int HistogramLevels::LevelAt(double x, double width)
{
    return width > 0 ? qBound(0, qFloor(x * Levels / width), LastLevel) : 0;
}

HistogramLevels::Range HistogramLevels::LevelsOfColumn(int column, int columns)
{
    const int first = column * Levels / columns;
    const int end = (column + 1) * Levels / columns;
    return {first, qMax(first, end - 1)};
}
