#include "geometryengine/ControlNode.h"

#include "geometryengine/InversePaint.h"
#include "geometryengine/ViewScale.h"

#include <QCursor>
#include <QFontMetricsF>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <utility>

namespace {
constexpr double Side = 8;
constexpr double Reach = 12; ///< from the middle, for a press to hit
constexpr double InkWidth = 1;
constexpr double HaloWidth = 3;
constexpr double InverseWidth = 1.5; ///< a little more, since it has no halo
constexpr double InverseFrame = 2;
constexpr double LabelGap = 2;
const QColor Ink(0x1e, 0x1e, 0x1e);
const QColor Halo(0xff, 0xff, 0xff, 0xd0);

QRectF Square(double side)
{
    return {-side / 2, -side / 2, side, side};
}

QRectF Grown(const QRectF& rect, double by)
{
    return rect.adjusted(-by, -by, by, by);
}

double Distance(const QPointF& delta)
{
    return QLineF(QPointF(), delta).length();
}
} // namespace

class ControlNodePrivate
{
public:
    /// Of what is drawn, without the label.
    QRectF DrawnRect() const
    {
        return shape.isEmpty() ? Square(Side + 2 * InkWidth) : Grown(shape.boundingRect(), HaloWidth / 2 + 1);
    }

    void PlaceLabel()
    {
        labelPath = QPainterPath();
        if (label.isEmpty()) return;
        const QRectF beside = shape.isEmpty() ? Square(Side) : shape.boundingRect();
        const double baseline = beside.bottom() + QFontMetricsF(font).ascent();
        labelPath.addText(beside.right() + LabelGap, baseline, font, label);
    }

    void PaintSquare(QPainter* painter) const
    {
        painter->setRenderHint(QPainter::Antialiasing, false);
        painter->fillRect(Square(Side + 2 * InkWidth), Halo);
        painter->fillRect(Square(Side), Ink);
        if (!isSunken) painter->fillRect(Square(Side - 2 * InkWidth), Qt::white);
    }

    void PaintShape(QPainter* painter) const
    {
        painter->strokePath(shape, QPen(Halo, HaloWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        if (isSunken) painter->fillPath(shape, Ink);
        painter->strokePath(shape, QPen(Ink, InkWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }

    void PaintInverseSquare(QPainter* painter) const
    {
        painter->setRenderHint(QPainter::Antialiasing, false);
        QPainterPath frame;
        frame.addRect(Square(Side));
        if (!isSunken) frame.addRect(Square(Side - 2 * InverseFrame));
        FillInverse(painter, frame);
    }

    void PaintInverseShape(QPainter* painter) const
    {
        const QPen pen(Qt::black, InverseWidth, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
        if (isSunken) {
            FillInverse(painter, QPainterPathStroker(pen).createStroke(shape).united(shape));
        } else {
            StrokeInverse(painter, shape, pen);
        }
    }

    QPainterPath shape; ///< empty: the square
    QString label;
    QFont font;
    QPainterPath labelPath;
    bool isSunken = false;
    bool isInverse = false;
    bool isHitByShape = false;

    Qt::MouseButtons buttons;
    bool isPressed = false; ///< mousePressed() went out, mouseReleased() didn't
    QPointF grip;           ///< from the pointer to the node, in its parent's coordinates
};

ControlNode::ControlNode(QGraphicsItem* parent)
    : QGraphicsItem(parent), m_pPrivate(std::make_unique<ControlNodePrivate>())
{
    setFlags(ItemIsMovable | ItemIsSelectable | ItemSendsGeometryChanges | ItemIgnoresTransformations);
    // Other buttons belong to what lies below: menus, panning.
    setAcceptedMouseButtons(Qt::LeftButton);
}

ControlNode::~ControlNode() = default;

Qt::MouseButtons ControlNode::mouseButtonState() const
{
    return m_pPrivate->buttons;
}

void ControlNode::setSunken(bool sunken)
{
    if (sunken == m_pPrivate->isSunken) return;
    m_pPrivate->isSunken = sunken;
    update();
}

bool ControlNode::isSunken() const
{
    return m_pPrivate->isSunken;
}

void ControlNode::useInverseColor(bool inverse)
{
    m_pPrivate->isInverse = inverse;
    update();
}

void ControlNode::useShapeAsBoundRect(bool useShape)
{
    prepareGeometryChange();
    m_pPrivate->isHitByShape = useShape;
}

void ControlNode::setNodeShape(const QPainterPath& shape)
{
    prepareGeometryChange();
    m_pPrivate->shape = shape;
    m_pPrivate->PlaceLabel();
    update();
}

void ControlNode::setLabel(const QString& text, const QFont& font)
{
    prepareGeometryChange();
    m_pPrivate->label = text;
    m_pPrivate->font = font;
    m_pPrivate->PlaceLabel();
    update();
}

QString ControlNode::label() const
{
    return m_pPrivate->label;
}

int ControlNode::type() const
{
    return Type;
}

QRectF ControlNode::boundingRect() const
{
    QRectF bound = m_pPrivate->DrawnRect() | shape().boundingRect();
    if (!m_pPrivate->labelPath.isEmpty())
        bound |= Grown(m_pPrivate->labelPath.boundingRect(), HaloWidth / 2 + 1);
    return bound;
}

QPainterPath ControlNode::shape() const
{
    QPainterPath hit;
    if (m_pPrivate->isHitByShape) {
        hit.addRect(m_pPrivate->shape.isEmpty() ? Square(Side) : m_pPrivate->shape.boundingRect());
    } else {
        hit.addEllipse(QPointF(), Reach, Reach);
    }
    return hit;
}

bool ControlNode::contains(const QPointF& point) const
{
    return shape().contains(ScreenDelta(ViewAtPointer(scene()), scenePos(), mapToScene(point)));
}

void ControlNode::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    painter->setRenderHint(QPainter::Antialiasing);
    if (m_pPrivate->isInverse) {
        FillInverse(painter, m_pPrivate->labelPath);
    } else {
        painter->strokePath(m_pPrivate->labelPath,
                            QPen(Halo, HaloWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->fillPath(m_pPrivate->labelPath, Ink);
    }

    if (m_pPrivate->shape.isEmpty()) {
        m_pPrivate->isInverse ? m_pPrivate->PaintInverseSquare(painter) : m_pPrivate->PaintSquare(painter);
    } else {
        m_pPrivate->isInverse ? m_pPrivate->PaintInverseShape(painter) : m_pPrivate->PaintShape(painter);
    }
}

QVariant ControlNode::itemChange(GraphicsItemChange change, const QVariant& value)
{
    QVariant result = QGraphicsItem::itemChange(change, value);
    if (change == ItemSelectedHasChanged) emit itemSelectionChange(this, value.toBool());
    return result;
}

bool ControlNode::sceneEvent(QEvent* event)
{
    const bool taken = QGraphicsItem::sceneEvent(event);
    if (event->type() == QEvent::UngrabMouse) {
        m_pPrivate->buttons = {};
        EndDrag();
    }
    return taken;
}

void ControlNode::mousePressEvent(QGraphicsSceneMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && !IsNearest(event)) {
        event->ignore();
        return;
    }
    m_pPrivate->buttons = event->buttons();
    if (event->button() != Qt::LeftButton) return;

    m_pPrivate->isPressed = true;
    m_pPrivate->grip = pos() - ParentPos(event->scenePos());
    QGraphicsItem::mousePressEvent(event);
    event->accept();
    emit mousePressed(this);
}

void ControlNode::mouseMoveEvent(QGraphicsSceneMouseEvent* event)
{
    m_pPrivate->buttons = event->buttons();
    if (!(event->buttons() & Qt::LeftButton)) {
        EndDrag();
        return;
    }
    if (!m_pPrivate->isPressed || !(flags() & ItemIsMovable)) return;
    const QPointF before = pos();
    setPos(ParentPos(event->scenePos()) + m_pPrivate->grip);
    if (pos() != before) emit positionChanged(this, pos());
}

void ControlNode::mouseReleaseEvent(QGraphicsSceneMouseEvent* event)
{
    m_pPrivate->buttons = event->buttons();
    if (event->button() != Qt::LeftButton) return;
    QGraphicsItem::mouseReleaseEvent(event);
    EndDrag();
}

void ControlNode::EndDrag()
{
    if (std::exchange(m_pPrivate->isPressed, false)) emit mouseReleased(this);
}

QPointF ControlNode::ParentPos(const QPointF& scenePos) const
{
    return parentItem() ? parentItem()->mapFromScene(scenePos) : scenePos;
}

/// Where hit areas overlap the scene asks the topmost node first, which needn't be the one that was meant.
bool ControlNode::IsNearest(const QGraphicsSceneMouseEvent* event) const
{
    const QWidget* const viewport = event->widget();
    const auto* const view =
        viewport ? qobject_cast<const QGraphicsView*>(viewport->parentWidget()) : nullptr;
    const QPointF pressed = event->scenePos();
    const double own = Distance(ScreenDelta(view, pressed, scenePos()));
    const QTransform toView = view ? view->viewportTransform() : QTransform();
    const QList<QGraphicsItem*> hit =
        scene()->items(pressed, Qt::IntersectsItemShape, Qt::DescendingOrder, toView);
    return std::none_of(hit.begin(), hit.end(), [&](const QGraphicsItem* item) {
        return item->type() == Type && item->isEnabled() && (item->acceptedMouseButtons() & Qt::LeftButton) &&
               Distance(ScreenDelta(view, pressed, item->scenePos())) < own;
    });
}
