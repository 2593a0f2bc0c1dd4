#pragma once

#include "image/LXRGBA32i.h"

class LXTile;

/// What the pixels of a whole tile have in common, those beyond the image's edge included.
struct TileNature
{
    bool isSolid = false;  ///< all four bytes the same everywhere
    bool isOpaque = false; ///< alpha 255 everywhere
    LXRGBA32i color;       ///< of a solid tile

    /// Looks at the pixels once and remembers until somebody writes to the tile. Any thread; while another
    /// thread writes, the answer is as good as a look at the pixels would be, and nothing is remembered.
    /// Throws as LXTileManager::GetMemory().
    static TileNature Of(const LXTile& tile);

    /// @param pixels  of a tile
    static TileNature OfPixels(const LXRGBA32i* pixels);
};
