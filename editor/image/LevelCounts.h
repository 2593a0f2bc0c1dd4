#pragma once

#include "image/LXRGBA32i.h"

#include <QSize>

#include <array>
#include <cstddef>

/// How many pixels have each level in each channel: what a histogram shows.
///
/// A pixel counts once, whatever its alpha, and not at all when its alpha is 0: what can't be seen has no
/// color. The luminance is 30 % of red, 59 % of green and 11 % of blue, to nearest, as in the luminosity
/// blend mode.
namespace LevelCounts {
constexpr std::size_t Levels = 256;

enum Channel : std::size_t
{
    Red,
    Green,
    Blue,
    Luminance,
    ChannelCount
};

constexpr int LuminanceOf(LXRGBA32i pixel)
{
    return (30 * pixel.Red() + 59 * pixel.Green() + 11 * pixel.Blue() + 50) / 100;
}

/// The counts of one tile, small enough to be kept for every tile of a picture.
using Tile = std::array<std::array<quint16, Levels>, ChannelCount>;

/// Counts a part of one tile, from its top left on. Any thread; the tile stays pinned as long.
/// @param pixels  rows of 128
/// @param part    at most 128 x 128
Tile CountTile(const LXRGBA32i* pixels, const QSize& part);

/// The counts of many tiles; adding a tile and taking it back leaves what was.
class Sum
{
public:
    using Counts = std::array<qint64, Levels>;

    void Add(const Tile& tile);
    void Subtract(const Tile& tile);

    const Counts& Of(Channel channel) const { return m_Counts[channel]; }

private:
    std::array<Counts, ChannelCount> m_Counts{};
};
} // namespace LevelCounts
