#include "geometryengine/RectangleItem.h"

#include "geometryengine/GeometryNode.h"
#include "geometryengine/RectangleGrip.h"
#include "geometryengine/ViewScale.h"

#include <QCursor>
#include <QGraphicsScene>
#include <QGraphicsSceneHoverEvent>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QPainterPath>
#include <QScopedValueRollback>

#include <array>
#include <cmath>

namespace {
constexpr int CornerCount = 4;

enum Corner
{
    TopLeft,
    TopRight,
    BottomRight,
    BottomLeft
};

/// A screen pixel in the item's units, in the view that the pointer is over.
QSizeF PixelOf(const QGraphicsItem* item)
{
    const QGraphicsView* const view = ViewAtPointer(item->scene());
    const QTransform toView = view ? item->deviceTransform(view->viewportTransform()) : QTransform();
    const double across = std::hypot(toView.m11(), toView.m12());
    const double down = std::hypot(toView.m21(), toView.m22());
    return {across > 0 ? 1 / across : 1, down > 0 ? 1 / down : 1};
}

Qt::CursorShape CursorFor(RectangleGrip grip)
{
    switch (grip) {
    case RectangleGrip::Left:
    case RectangleGrip::Right: return Qt::SizeHorCursor;
    case RectangleGrip::Top:
    case RectangleGrip::Bottom: return Qt::SizeVerCursor;
    default: return Qt::SizeAllCursor;
    }
}
} // namespace

class RectangleItemPrivate
{
public:
    QPainterPath Outline() const
    {
        QPainterPath outline(topLeft);
        outline.lineTo(bottomRight.x(), topLeft.y());
        outline.lineTo(bottomRight);
        outline.lineTo(topLeft.x(), bottomRight.y());
        outline.closeSubpath();
        return outline;
    }

    void PlaceNodes()
    {
        const QScopedValueRollback<bool> placing(isPlacing, true);
        nodes[TopLeft]->setPos(topLeft);
        nodes[TopRight]->setPos(bottomRight.x(), topLeft.y());
        nodes[BottomRight]->setPos(bottomRight);
        nodes[BottomLeft]->setPos(topLeft.x(), bottomRight.y());
    }

    // Of the nodes 0 and 2: either may have been moved past the other.
    QPointF topLeft;
    QPointF bottomRight;
    std::array<GeometryNode*, CornerCount> nodes = {};
    bool isPlacing = false; ///< the nodes are told where to go, they don't tell
    bool isMovable = false;

    RectangleGrip grip = RectangleGrip::None;
    QPointF pressPos;
    QRectF pressRect;
};

RectangleItem::RectangleItem(QGraphicsItem* parent)
    : GeometryItem(parent), m_pPrivate(std::make_unique<RectangleItemPrivate>())
{
    for (int i = 0; i < CornerCount; ++i) {
        auto* const node = new GeometryNode(
            this, [this, i](GeometryNode*) { FollowNode(i); }, nullptr);
        node->setVisible(false);
        node->setFlag(ItemIsSelectable, false);
        node->setCursor(i % 2 == 0 ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor);
        connect(node, &ControlNode::positionChanged, this, [this] { emit rectChanged(rect()); });
        // The names of the corners hold again as soon as the drag is over.
        connect(node, &ControlNode::mouseReleased, this, [this] { setRect(rect()); });
        m_pPrivate->nodes[std::size_t(i)] = node;
    }
}

RectangleItem::~RectangleItem()
{
    for (GeometryNode* node : m_pPrivate->nodes) {
        node->Forget();
        node->disconnect(this);
    }
}

QRectF RectangleItem::rect() const
{
    return QRectF(m_pPrivate->topLeft, m_pPrivate->bottomRight).normalized();
}

void RectangleItem::setRect(const QRectF& rect)
{
    SetCorners(rect.topLeft(), rect.bottomRight());
}

void RectangleItem::SetCorners(const QPointF& topLeft, const QPointF& bottomRight)
{
    m_pPrivate->topLeft = topLeft;
    m_pPrivate->bottomRight = bottomRight;
    m_pPrivate->PlaceNodes();
    setPath(m_pPrivate->Outline());
}

void RectangleItem::FollowNode(int index)
{
    if (m_pPrivate->isPlacing) return;
    const QPointF pos = m_pPrivate->nodes[std::size_t(index)]->pos();
    QPointF topLeft = m_pPrivate->topLeft;
    QPointF bottomRight = m_pPrivate->bottomRight;
    (index == TopLeft || index == BottomLeft ? topLeft : bottomRight).setX(pos.x());
    (index == TopLeft || index == TopRight ? topLeft : bottomRight).setY(pos.y());
    SetCorners(topLeft, bottomRight);
}

void RectangleItem::setMovable(bool movable)
{
    prepareGeometryChange();
    m_pPrivate->isMovable = movable;
    m_pPrivate->grip = RectangleGrip::None;
    setAcceptedMouseButtons(movable ? Qt::LeftButton : Qt::NoButton);
    setAcceptHoverEvents(movable);
    if (!movable) unsetCursor();
    for (GeometryNode* node : m_pPrivate->nodes)
        node->setVisible(movable);
}

QList<ControlNode*> RectangleItem::nodes() const
{
    return QList<ControlNode*>(m_pPrivate->nodes.begin(), m_pPrivate->nodes.end());
}

QRectF RectangleItem::boundingRect() const
{
    const double reach = m_pPrivate->isMovable ? GripReach * LongestPixel(this) : 0;
    return GeometryItem::boundingRect().adjusted(-reach, -reach, reach, reach);
}

QPainterPath RectangleItem::shape() const
{
    QPainterPath hit;
    const double reach = m_pPrivate->isMovable ? GripReach * LongestPixel(this) : 0;
    hit.addRect(rect().adjusted(-reach, -reach, reach, reach));
    return hit;
}

void RectangleItem::hoverMoveEvent(QGraphicsSceneHoverEvent* event)
{
    const RectangleGrip grip = GripAt(rect(), event->pos(), PixelOf(this));
    if (grip == RectangleGrip::None) {
        unsetCursor();
    } else {
        setCursor(CursorFor(grip));
    }
}

void RectangleItem::mousePressEvent(QGraphicsSceneMouseEvent* event)
{
    m_pPrivate->grip = GripAt(rect(), event->pos(), PixelOf(this));
    m_pPrivate->pressPos = event->pos();
    m_pPrivate->pressRect = rect();
    event->setAccepted(m_pPrivate->grip != RectangleGrip::None);
}

void RectangleItem::mouseMoveEvent(QGraphicsSceneMouseEvent* event)
{
    if (m_pPrivate->grip == RectangleGrip::None) return;
    const QRectF before = rect();
    setRect(DraggedRect(m_pPrivate->pressRect, m_pPrivate->grip, event->pos() - m_pPrivate->pressPos)
                .normalized());
    if (rect() != before) emit rectChanged(rect());
}

void RectangleItem::mouseReleaseEvent(QGraphicsSceneMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) m_pPrivate->grip = RectangleGrip::None;
}
