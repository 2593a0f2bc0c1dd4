#pragma once

#include "geometryengine/GeometryItem.h"

#include <memory>

class RectangleItemPrivate;

/// Rectangle with a node on each corner: 0 top left, 1 top right, 2 bottom right, 3 bottom left. Whoever
/// moves a node, a person or setPos(), the opposite one stays and the other two follow. The nodes must not be
/// deleted. Main thread only.
///
/// While it is movable, a person drags its corners, its edges, or all of it by its inside; else its nodes are
/// hidden and presses go through it. At first it is empty, at the origin, and not movable.
class ZK_HOST_EXPORT RectangleItem : public GeometryItem
{
    Q_OBJECT

public:
    explicit RectangleItem(QGraphicsItem* parent = nullptr);
    ~RectangleItem() override;

    /// In item coordinates; never of negative size, also where a node was moved past the opposite one.
    QRectF rect() const;
    void setRect(const QRectF& rect);

    void setMovable(bool movable);

    QList<ControlNode*> nodes() const override;

    QRectF boundingRect() const override;
    QPainterPath shape() const override;

signals:
    /// The person dragged a corner, an edge or all of it; setRect() doesn't tell.
    void rectChanged(const QRectF& rect);

protected:
    void hoverMoveEvent(QGraphicsSceneHoverEvent* event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;

private:
    void SetCorners(const QPointF& topLeft, const QPointF& bottomRight);
    void FollowNode(int index);

    std::unique_ptr<RectangleItemPrivate> m_pPrivate;
};
