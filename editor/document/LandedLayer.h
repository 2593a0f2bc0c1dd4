#pragma once

#include "document/CompositeLayer.h"
#include "document/Layer.h"

/// Puts down what floats above a layer, as who carries it would. Any thread.
namespace LandedLayer {
/// The pixels grow to hold the overlay, which is blended on them in mode 0.
void Land(LayerState& layer, const PlacedImage& overlay);
/// The mask grows likewise, new ground being its default; the overlay goes in with mode 64.
void LandOnMask(LayerState& layer, const PlacedImage& overlay);
} // namespace LandedLayer
