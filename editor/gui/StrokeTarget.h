#pragma once

class ZKDocumentView;

/// What a stroke in a view would be painted on: the one selected layer, or its mask if that is selected. Main
/// thread only.
namespace StrokeTarget {
enum class Obstacle
{
    None,
    NotOneLayer, ///< none is selected, or several
    Locked,
    NoPixels ///< the layer's picture comes from something else, such as a text
};

/// The row of the layer; -1 for none or several.
int RowOf(const ZKDocumentView* view);

/// What keeps it from being painted.
Obstacle ObstacleOf(const ZKDocumentView* view);
} // namespace StrokeTarget
