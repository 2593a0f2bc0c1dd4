#pragma once

#include "geometryengine/GeometryItem.h"

#include <memory>

class PolylineItemPrivate;

/// Open line through points, with a node on each. The line follows its nodes, whoever moves them. Main thread
/// only.
class ZK_HOST_EXPORT PolylineItem : public GeometryItem
{
    Q_OBJECT

public:
    explicit PolylineItem(QGraphicsItem* parent = nullptr);
    ~PolylineItem() override;

    /// Shows the nodes, so that they can be dragged, or hides them; hidden at first.
    void editActivate(bool activate);

    /// Adds a point behind the last one.
    /// @param point  item coordinates
    /// @return its node, owned by the item; deleting it takes the point away
    ControlNode* addPoint(const QPointF& point);

    /// Takes a point away; the node is deleted a little later, so that its own signals may lead here.
    /// @return false, and nothing changes, for null and for nodes that aren't the item's
    bool removePoint(ControlNode* node);

    /// Orders the points from left to right; those of one x stay in their order.
    void sortNodes();

    /// In the order of the line.
    QList<ControlNode*> nodes() const override;

private:
    std::unique_ptr<PolylineItemPrivate> m_pPrivate;
};
