#pragma once

#include "image/LXImage.h"
#include "image/TileBits.h"

#include <QRect>

#include <atomic>
#include <mutex>

/// Writes regions into a mask, tile by tile, and keeps their bounds. Several threads may paint different
/// tiles at once.
class RegionPainter
{
public:
    RegionPainter(LXImage32& mask, LXRGBA32i fill) : m_Mask(mask), m_Fill(fill) {}

    /// Gives the pixels of `region` the color; tiles that it fills whole share one tile.
    void Paint(int column, int row, const TileBits& region);

    /// The rectangle of the pixels painted, image coordinates; once all have painted.
    const QRect& Bounds() const { return m_Bounds; }

private:
    LXTilePointer NewTile(const TileBits& region);
    LXTilePointer SolidTile();

    LXImage32& m_Mask;
    LXRGBA32i m_Fill;
    std::atomic<int> m_NewTiles{0}; ///< written whole so far
    std::mutex m_Mutex;             ///< of what follows
    LXTilePointer m_SolidTile;      ///< made when first needed
    QRect m_Bounds;
};
