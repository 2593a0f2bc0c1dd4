#include "geometryengine/GeometryItem.h"

#include "geometryengine/CustomGeometryPaint.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>

CustomGeometryPaint::~CustomGeometryPaint() = default;

class GeometryItemPrivate
{
public:
    QPainterPath path;
    QPen pen;
    int interval = 0;
    int reach = 0;
    std::unique_ptr<CustomGeometryPaint> painter;
};

GeometryItem::GeometryItem(QGraphicsItem* parent)
    : QGraphicsObject(parent), m_pPrivate(std::make_unique<GeometryItemPrivate>())
{
    m_pPrivate->pen.setCosmetic(true);
}

GeometryItem::~GeometryItem() = default;

QPainterPath GeometryItem::path() const
{
    return m_pPrivate->path;
}

void GeometryItem::setPath(const QPainterPath& path)
{
    prepareGeometryChange();
    m_pPrivate->path = path;
    update();
}

void GeometryItem::setPen(const QPen& pen)
{
    prepareGeometryChange();
    m_pPrivate->pen = pen;
    update();
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
    if (m_pPrivate->painter) m_pPrivate->painter->start(this, m_pPrivate->interval);
}

QRectF GeometryItem::boundingRect() const
{
    // The view adds what a cosmetic line of one pixel needs.
    const QPen& pen = m_pPrivate->pen;
    const qreal margin = m_pPrivate->painter ? m_pPrivate->reach : pen.isCosmetic() ? 0 : pen.widthF() / 2;
    return m_pPrivate->path.boundingRect().adjusted(-margin, -margin, margin, margin);
}

void GeometryItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    if (m_pPrivate->painter) {
        m_pPrivate->painter->paint(painter, m_pPrivate->path);
        return;
    }
    painter->setPen(m_pPrivate->pen);
    painter->setBrush(Qt::NoBrush);
    painter->drawPath(m_pPrivate->path);
}
