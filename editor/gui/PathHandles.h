#pragma once

#include "geometryengine/PathDrag.h"

#include <QRectF>

#include <functional>
#include <optional>
#include <vector>

class ControlNode;
class QGraphicsItem;
class QPainter;

/// The handles of a path's anchors and guides, as child items of the item that shows them. Squares stand on
/// anchors, the current one filled, and dots at the ends of guides; those of other anchors are dimmer. Main
/// thread only.
class PathHandles
{
public:
    struct Handle
    {
        int anchor = -1; ///< number in PathAnchors::Of() of the path shown
        PathGrip grip = PathGrip::Anchor;
    };

    /// @param parent  outlives this object
    explicit PathHandles(QGraphicsItem* parent);
    /// The handles go with their parent.
    ~PathHandles();

    PathHandles(const PathHandles&) = delete;
    PathHandles& operator=(const PathHandles&) = delete;

    /// Is called for each new handle.
    void SetOnCreated(const std::function<void(ControlNode*)>& onCreated);
    /// Whether handles take presses; true at first.
    void SetTakesPresses(bool takes);

    /// Keeps a guide's handle shown while the guide lies on its anchor: hiding it would take the mouse from
    /// it. Counts from the next Show(); null for none.
    void Hold(const ControlNode* held);

    /// @param current  number of the current anchor; -1 for none
    void Show(const LXPath& path, int current);

    std::optional<Handle> Find(const QGraphicsItem* item) const;

    /// Of all anchors and guides shown, in the parent's coordinates.
    QRectF Bounds() const;

    /// The lines from the anchors to their guides.
    void PaintLines(QPainter* painter) const;

private:
    /// The handles of an anchor; those of its guides are made when they are needed.
    struct Nodes
    {
        ControlNode* anchor = nullptr;
        ControlNode* in = nullptr;
        ControlNode* out = nullptr;
    };

    ControlNode* MakeNode(PathGrip grip) const;
    void ShowGuide(ControlNode*& node, PathGrip grip, bool isShown, const QPointF& place, bool isCurrent);
    void Retire(const Nodes& nodes) const;

    QGraphicsItem* m_pParent;
    std::function<void(ControlNode*)> m_OnCreated;
    std::vector<Nodes> m_Nodes;           ///< an entry for each anchor
    const ControlNode* m_pHeld = nullptr; ///< compared only
    int m_Current = -1;
    bool m_bTakesPresses = true;
};
