#pragma once

#include "image/LXImage.h"
#include "image/TileBits.h"

#include <QRect>

/// Writes regions into a mask, tile by tile, and keeps their bounds.
class RegionPainter
{
public:
    RegionPainter(LXImage32& mask, LXRGBA32i fill) : m_Mask(mask), m_Fill(fill) {}

    /// Gives the pixels of `region` the color; tiles that it fills whole share one tile.
    void Paint(int column, int row, const TileBits& region);

    /// The rectangle of the pixels painted, image coordinates.
    const QRect& Bounds() const { return m_Bounds; }

private:
    const LXTilePointer& SolidTile();

    LXImage32& m_Mask;
    LXRGBA32i m_Fill;
    LXTilePointer m_SolidTile; ///< made when first needed
    QRect m_Bounds;
};
