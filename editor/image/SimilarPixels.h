#pragma once

#include "image/LXImage.h"
#include "image/TileBits.h"

#include <QPoint>

#include <atomic>

/// Tells which pixels of an image are similar to the one at a seed, a tile at a time. Any thread may ask.
class SimilarPixels
{
public:
    SimilarPixels(const LXImage32& image, const QPoint& seed, LXRGBA32i tolerance);

    /// Sets the bits of the similar pixels of a tile, those beyond the image's edge included. A tile in many
    /// slots that is similar throughout is compared once.
    void Find(int column, int row, TileBits& bits);

private:
    const LXImage32& m_Image;
    LXRGBA32i m_Seed;
    LXRGBA32i m_Tolerance;
    std::atomic<const LXTile*> m_pAllSimilar{nullptr};
    std::atomic<const LXTile*> m_pNoneSimilar{nullptr};
};
