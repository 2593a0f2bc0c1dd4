#pragma once

#include "image/LXRGBA32i.h"
#include "image/TileBits.h"

/// What the fills do with pixels: everything else they do with bits.
namespace SimilarKernels {
/// Sets the bits of the pixels of a tile whose channels each differ from the seed's by at most the
/// tolerance's byte.
void Compare(const LXRGBA32i* pixels, LXRGBA32i seed, LXRGBA32i tolerance, TileBits& bits);

/// Gives the pixels of a tile's row whose bits are set the color.
void PaintRow(RowBits row, LXRGBA32i fill, LXRGBA32i* pixels);

/// The same, and clears the others: the row of a tile is written, and not read.
void MakeRow(RowBits row, LXRGBA32i fill, LXRGBA32i* pixels);

/// Likewise, past the caches: for what isn't read again soon. Other threads see it after hwy::FlushStream().
/// The pixels lie at a multiple of their row's bytes.
void StreamRow(RowBits row, LXRGBA32i fill, LXRGBA32i* pixels);
} // namespace SimilarKernels
