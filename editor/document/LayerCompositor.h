#pragma once

#include "document/CompositeLayer.h"

#include <QRect>

/// Blends layers into one tile of the merged picture. Any thread; different tiles of one picture may be
/// composed at once.
namespace LayerCompositor {
/// Makes the tile anew. Where one opaque layer decides a whole tile, and its tiles lie as the canvas' do, the
/// picture shares the layer's tile instead of blending.
/// @param blank  a tile of zeros, for what shows nothing
void ComposeTile(const CompositeLayers& layers, int column, int row, const LXTilePointer& blank,
                 LXImage32& picture);
} // namespace LayerCompositor
