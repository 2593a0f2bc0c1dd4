#pragma once

#include "image/TileWalk.h"

#include <QRect>

#include <array>

/// 128 pixels of a tile's row, bit x for column x.
__extension__ typedef unsigned __int128 RowBits;

/// A set of pixels of one tile.
struct TileBits
{
    std::array<RowBits, TileWalk::TileSide> rows{};
};

namespace TileBitsMath {
inline RowBits Bit(int column)
{
    return RowBits(1) << column;
}

/// The columns from `first` to `last`, both included.
inline RowBits Columns(int first, int last)
{
    const RowBits all = ~RowBits(0);
    return (all << first) & (all >> (TileWalk::TileSide - 1 - last));
}

int CountTrailingZeros(RowBits bits);
int CountLeadingZeros(RowBits bits);

/// All columns of `inside` that hang together with a column of `seeds`, which lie inside.
RowBits SpreadAlongRow(RowBits seeds, RowBits inside);

/// How many columns from `first` on are set without a gap.
int RunLength(RowBits bits, int first);

/// Keeps only the pixels of `part`, tile coordinates.
void Clip(TileBits& bits, const QRect& part);

bool IsFull(const TileBits& bits);

/// The smallest rectangle around the pixels, tile coordinates; null without any.
QRect BoundsOf(const TileBits& bits);
} // namespace TileBitsMath
