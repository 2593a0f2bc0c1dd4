#pragma once

#include "image/LXImage.h"
#include "image/TileBits.h"

#include <QPoint>

/// Tells which pixels of an image are similar to the one at a seed, a tile at a time.
class SimilarPixels
{
public:
    SimilarPixels(const LXImage32& image, const QPoint& seed, LXRGBA32i tolerance);

    /// The similar pixels of a tile, those beyond the image's edge included. Tiles in many slots are compared
    /// once when asked in a row.
    const TileBits& Of(int column, int row);

private:
    TileBits Compare(const LXRGBA32i* pixels) const;

    const LXImage32& m_Image;
    int m_Seed[4];
    int m_Tolerance[4];
    LXTilePointer m_LastTile;
    TileBits m_LastBits;
};
