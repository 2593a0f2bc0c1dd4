#include "document/GrayMask.h"

#include <algorithm>
#include <utility>

namespace {
LXRGBA32i GrayPixel(LXRGBA32i value, LXRGBA32i coverage)
{
    return LXRGBA32i((coverage.value & 0xFF000000U) | (value.value >> 24) * 0x010101U);
}

/// The tiles of a gray picture whose sources are shared tiles are shared themselves.
struct MadeTile
{
    std::pair<const LXTile*, const LXTile*> sources;
    LXTilePointer tile;
};

LXTilePointer MakeTile(const LXTile& values, const LXTile& coverage)
{
    LXTilePointer tile(new LXTile);
    const LXTileWriter<LXRGBA32i> target(tile);
    const LXTileReader<LXRGBA32i> value(values);
    const LXTileReader<LXRGBA32i> cover(coverage);
    constexpr int pixelCount = 128 * 128;
    std::transform(value.Pixels(), value.Pixels() + pixelCount, cover.Pixels(), target.Pixels(), GrayPixel);
    return tile;
}
} // namespace

LXImage32 GrayMask::FromAlpha(const LXImage32& values, const LXImage32& coverage)
{
    LXImage32 gray(values.Width(), values.Height());
    MadeTile last;
    for (std::size_t slot = 0; slot < gray.m_Tiles.size(); ++slot) {
        const std::pair<const LXTile*, const LXTile*> sources(values.m_Tiles[slot].data(),
                                                              coverage.m_Tiles[slot].data());
        if (!last.tile || last.sources != sources)
            last = {sources, MakeTile(*sources.first, *sources.second)};
        gray.m_Tiles[slot] = last.tile;
    }
    return gray;
}
