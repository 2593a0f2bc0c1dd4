#include "image/TileNature.h"

#include "image/LXTile.h"
#include "image/TileStore.h"
#include "image/TileWalk.h"

TileNature TileNature::Of(const LXTile& tile)
{
    return TileStore::Main().NatureOf(tile.Handle());
}

TileNature TileNature::OfPixels(const LXRGBA32i* pixels)
{
    const quint32 first = pixels->value;
    quint32 common = 0xFFFFFFFF;
    quint32 differing = 0;
    // Most tiles show in their first row that they are of no such kind.
    for (int row = 0; row < TileWalk::TileSide; ++row) {
        const LXRGBA32i* const line = pixels + row * TileWalk::TileSide;
        for (int x = 0; x < TileWalk::TileSide; ++x) {
            common &= line[x].value;
            differing |= line[x].value ^ first;
        }
        if (differing != 0 && common >> 24 != 0xFF) break;
    }
    return {differing == 0, common >> 24 == 0xFF, *pixels};
}
