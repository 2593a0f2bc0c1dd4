#pragma once

#include "ZKHostExport.h"

#include <QList>
#include <QPointF>
#include <QRect>

#include <memory>

class LXDragGuidePrivate;
class ZKDocumentView;

/// What the editor does beside the drag of a tool, from its press to its release: it brings what is dragged
/// to lines of the picture, and tells beside the pointer how far it has come. Each is off until the person
/// turns it on in the menu "View". Main thread only.
///
/// The lines are the canvas' edges and middles, the edges of visible layers, and the guides and the grid
/// while they are shown, all as they are at the start. What is dragged snaps by its edges and its middle, in
/// each direction by itself, to the nearest line within SnapDistance. Shift held suspends it.
class ZK_HOST_EXPORT LXDragGuide
{
public:
    /// Screen pixels.
    static constexpr int SnapDistance = 8;

    /// @param moved          what is dragged, document pixels, where it is at the start; empty never snaps
    /// @param draggedLayers  ids of the layers that move along: their edges are no lines
    LXDragGuide(ZKDocumentView* view, const QRect& moved, const QList<unsigned int>& draggedLayers);
    /// Takes the read-out away. The view may be gone by then.
    ~LXDragGuide();

    LXDragGuide(const LXDragGuide&) = delete;
    LXDragGuide& operator=(const LXDragGuide&) = delete;

    /// The way that the drag shall take from its start, for the way of the pointer: whole pixels in a
    /// direction in which it snaps, the same as given in others. Shows the read-out.
    QPointF Follow(const QPointF& way);

private:
    std::unique_ptr<LXDragGuidePrivate> m_pPrivate;
};
