#include "image/LevelCounts.h"

#include "image/TileWalk.h"

#include <algorithm>
#include <functional>

namespace {
void CountPixel(LXRGBA32i pixel, LevelCounts::Tile& counts)
{
    const quint16 seen = pixel.Alpha() != 0 ? 1 : 0;
    counts[LevelCounts::Red][std::size_t(pixel.Red())] += seen;
    counts[LevelCounts::Green][std::size_t(pixel.Green())] += seen;
    counts[LevelCounts::Blue][std::size_t(pixel.Blue())] += seen;
    counts[LevelCounts::Luminance][std::size_t(LevelCounts::LuminanceOf(pixel))] += seen;
}

template <class Operation>
void Apply(LevelCounts::Sum::Counts& counts, const std::array<quint16, LevelCounts::Levels>& tile,
           Operation operation)
{
    std::transform(counts.begin(), counts.end(), tile.begin(), counts.begin(), operation);
}
} // namespace

LevelCounts::Tile LevelCounts::CountTile(const LXRGBA32i* pixels, const QSize& part)
{
    // Neighbours are often equal, and adding to a word that was written just before waits for that write: so
    // every other pixel has a table of its own.
    Tile even{};
    Tile odd{};
    for (int y = 0; y < part.height(); ++y) {
        const LXRGBA32i* const row = pixels + y * TileWalk::TileSide;
        int x = 0;
        for (; x + 1 < part.width(); x += 2) {
            CountPixel(row[x], even);
            CountPixel(row[x + 1], odd);
        }
        if (x < part.width()) CountPixel(row[x], even);
    }
    for (std::size_t channel = 0; channel < ChannelCount; ++channel) {
        std::transform(even[channel].begin(), even[channel].end(), odd[channel].begin(),
                       even[channel].begin(), [](quint16 a, quint16 b) { return quint16(a + b); });
    }
    return even;
}

void LevelCounts::Sum::Add(const Tile& tile)
{
    for (std::size_t channel = 0; channel < ChannelCount; ++channel)
        Apply(m_Counts[channel], tile[channel], std::plus<>());
}

void LevelCounts::Sum::Subtract(const Tile& tile)
{
    for (std::size_t channel = 0; channel < ChannelCount; ++channel)
        Apply(m_Counts[channel], tile[channel], std::minus<>());
}
