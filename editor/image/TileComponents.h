#pragma once

#include "image/TileBits.h"

#include <array>
#include <bitset>
#include <vector>

/// What a flood has taken of a tile, and the connected components of the tile's open pixels, where pixels
/// hang together by their sides: each component is taken whole when something comes to it from beside the
/// tile. So a tile whose pixels wind to and fro is walked once, however often the flood comes back.
///
/// Time is linear in the tile's pixels; memory is two bits a pixel, a byte for each run of open pixels in a
/// row, and 64 for each component at the sides.
class TileComponents
{
public:
    /// @param open   pixels that may be taken
    /// @param taken  pixels that were taken before, none of them open
    TileComponents(const TileBits& open, const TileBits& taken);

    /// Takes the components that have one of these pixels along the side and weren't taken before, and adds
    /// to `leaves` where they touch the tile's sides. False when there are none.
    bool Take(TileSides::Side side, RowBits pixels, SideBits& leaves);

    /// Whether any component was taken.
    bool HasTaken() const { return m_IsTaken.any(); }

    /// All pixels taken, before and since.
    TileBits Taken() const;

private:
    class Runs;

    void NumberAlongSides(const Runs& runs);

    TileBits m_Pixels;
    TileBits m_TakenBefore;
    std::vector<quint8> m_OfRun; ///< the component of each run of pixels, of which a half row begins new ones
    std::array<std::array<quint8, TileWalk::TileSide>, TileSides::Count> m_OfSidePixel{};
    std::vector<SideBits> m_Sides; ///< where each component touches them
    SideBits m_Open{};             ///< likewise all that aren't taken
    std::bitset<256> m_IsTaken;
};
