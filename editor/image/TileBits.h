#pragma once

#include "image/TileWalk.h"

#include <QRect>
#include <QtGlobal>
#include <qalgorithms.h>

#include <array>

/// 128 pixels of a tile's row, bit x for column x.
__extension__ typedef unsigned __int128 RowBits;

/// A set of pixels of one tile.
struct TileBits
{
    std::array<RowBits, TileWalk::TileSide> rows{};
};

namespace TileSides {
enum Side
{
    Top,
    Bottom,
    Left,
    Right
};

constexpr int Count = 4;
} // namespace TileSides

/// Pixels along each side of a tile, from the left or from the top.
using SideBits = std::array<RowBits, TileSides::Count>;

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

/// 0 to 127, of a number other than 0.
inline int CountTrailingZeros(RowBits bits)
{
    const auto low = static_cast<quint64>(bits);
    return static_cast<int>(low != 0 ? qCountTrailingZeroBits(low)
                                     : 64 + qCountTrailingZeroBits(static_cast<quint64>(bits >> 64)));
}

inline int CountLeadingZeros(RowBits bits)
{
    const auto high = static_cast<quint64>(bits >> 64);
    return static_cast<int>(high != 0 ? qCountLeadingZeroBits(high)
                                      : 64 + qCountLeadingZeroBits(static_cast<quint64>(bits)));
}

/// All columns of `inside` that hang together with a column of `seeds`, which lie inside.
RowBits SpreadAlongRow(RowBits seeds, RowBits inside);

/// Keeps only the pixels of `part`, tile coordinates.
void Clip(TileBits& bits, const QRect& part);

bool IsFull(const TileBits& bits);
bool IsEmpty(const TileBits& bits);

/// The smallest rectangle around the pixels, tile coordinates; null without any.
QRect BoundsOf(const TileBits& bits);
} // namespace TileBitsMath
