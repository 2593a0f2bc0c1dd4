#include "geometryengine/GeometryItem.h"

#include "geometryengine/CustomGeometryPaint.h"
#include "geometryengine/PathCells.h"
#include "geometryengine/PathStrokeItem.h"
#include "geometryengine/PolylineItem.h"
#include "geometryengine/RectangleItem.h"
#include "geometryengine/ViewScale.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QStyle>
#include <QtMath>

namespace {
constexpr double HaloWidth = 4;
const QColor Halo(0xff, 0xff, 0xff, 0xd0);
/// For the smoothing of edges and rounded places, in screen pixels.
constexpr double Slack = 2;

bool Holds(const QRectF& outer, const QRectF& inner)
{
    // QRectF::contains() holds that nothing contains the flat rectangle of an upright or level line.
    return outer.left() <= inner.left() && outer.right() >= inner.right() && outer.top() <= inner.top() &&
           outer.bottom() >= inner.bottom();
}

/// Device pixels for each screen pixel. The device itself tells that of the widget, also while that is
/// painted into something else.
double PixelRatio(const QPainter& painter)
{
    const double world = qAbs(painter.worldTransform().determinant());
    return world > 0 ? qSqrt(qAbs(painter.deviceTransform().determinant()) / world) : 1;
}

/// Qt takes the width of a cosmetic pen for pixels of the device, not for those of the screen.
QPen ScreenPen(QPen pen, double ratio)
{
    pen.setCosmetic(true);
    pen.setWidthF(qMax(1.0, pen.widthF()) * ratio);
    return pen;
}
} // namespace

CustomGeometryPaint::~CustomGeometryPaint() = default;

class GeometryItemPrivate
{
public:
    /// How far the outline is drawn beside the path, in screen pixels.
    double ScreenReach() const
    {
        if (painter) return reach;
        return pen.isCosmetic() ? qMax(pen.widthF(), hasHalo ? HaloWidth : 0) / 2 : 0;
    }

    /// The same in item coordinates, for what grows with the scale.
    double ItemReach() const { return painter || pen.isCosmetic() ? 0 : pen.widthF() / 2; }

    /// A path that outgrows its extent is being dragged: it gets room for more.
    void Grow(const QRectF& bounds)
    {
        const double room = path.isEmpty() ? 0 : qMax(bounds.width(), bounds.height()) / 2;
        extent = bounds.adjusted(-room, -room, room, room);
    }

    QPainterPath path;
    QRectF extent; ///< what the scene is told that the path covers
    QPen pen;
    bool hasHalo = true; ///< until somebody chooses a pen
    int interval = 0;
    int reach = 0;
    std::unique_ptr<CustomGeometryPaint> painter;
};

GeometryItem::GeometryItem(QGraphicsItem* parent)
    : QGraphicsObject(parent), m_pPrivate(std::make_unique<GeometryItemPrivate>())
{
    m_pPrivate->pen.setCosmetic(true);
    setAcceptedMouseButtons(Qt::NoButton);
}

GeometryItem::~GeometryItem() = default;

GeometryItem* GeometryItem::ItemFactory(int kind)
{
    switch (kind) {
    case RectangleKind: return new RectangleItem;
    case PathStrokeKind: return new PathStrokeItem;
    case PolylineKind: return new PolylineItem;
    default: return nullptr;
    }
}

QPainterPath GeometryItem::path() const
{
    return m_pPrivate->path;
}

QList<ControlNode*> GeometryItem::nodes() const
{
    return {};
}

void GeometryItem::setPath(const QPainterPath& path)
{
    if (path == m_pPrivate->path) return;
    const QRectF bounds = path.boundingRect();
    if (path.isEmpty() || m_pPrivate->path.isEmpty() || !Holds(m_pPrivate->extent, bounds)) {
        prepareGeometryChange();
        m_pPrivate->Grow(bounds);
        m_pPrivate->path = path;
        update();
        return;
    }
    // The item's own update() would paint again all that lies inside the outline.
    UpdateOutline();
    m_pPrivate->path = path;
    UpdateOutline();
}

void GeometryItem::UpdateOutline() const
{
    if (!scene() || !isVisible()) return;
    const QList<QGraphicsView*> views = scene()->views();
    for (const QGraphicsView* view : views) {
        if (!view->viewport()->isVisible()) continue;
        const QTransform toView = deviceTransform(view->viewportTransform());
        const double itemReach = m_pPrivate->ItemReach() * qSqrt(qAbs(toView.determinant()));
        const double reach = m_pPrivate->ScreenReach() + itemReach + Slack;
        view->viewport()->update(CellsAlong(toView.map(m_pPrivate->path), reach, view->viewport()->rect()));
    }
}

void GeometryItem::setPen(const QPen& pen)
{
    prepareGeometryChange();
    m_pPrivate->pen = pen;
    m_pPrivate->hasHalo = false;
    update();
}

QPen GeometryItem::pen() const
{
    return m_pPrivate->pen;
}

void GeometryItem::setAnimated(int interval, int reach, CustomGeometryPaint* painter)
{
    prepareGeometryChange();
    m_pPrivate->interval = interval;
    m_pPrivate->reach = painter ? reach : 0;
    m_pPrivate->painter.reset(painter);
    update();
}

void GeometryItem::startAnimate()
{
    // Desktops that want less motion tell it as animations of no duration.
    const bool moves = QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) > 0;
    if (m_pPrivate->painter && moves) m_pPrivate->painter->start(this, m_pPrivate->interval);
}

QRectF GeometryItem::boundingRect() const
{
    const double reach = m_pPrivate->ItemReach() + m_pPrivate->ScreenReach() * LongestPixel(this);
    return m_pPrivate->extent.adjusted(-reach, -reach, reach, reach);
}

QPainterPath GeometryItem::shape() const
{
    return m_pPrivate->path;
}

void GeometryItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    if (m_pPrivate->painter) {
        m_pPrivate->painter->paint(painter, m_pPrivate->path);
        return;
    }
    painter->setRenderHint(QPainter::Antialiasing);
    const double ratio = PixelRatio(*painter);
    if (m_pPrivate->hasHalo) painter->strokePath(m_pPrivate->path, ScreenPen(QPen(Halo, HaloWidth), ratio));
    painter->setPen(m_pPrivate->pen.isCosmetic() ? ScreenPen(m_pPrivate->pen, ratio) : m_pPrivate->pen);
    painter->setBrush(Qt::NoBrush);
    painter->drawPath(m_pPrivate->path);
}
