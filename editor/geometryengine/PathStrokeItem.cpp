#include "geometryengine/PathStrokeItem.h"

#include "geometryengine/InversePaint.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>

class PathStrokeItemPrivate
{
public:
    bool isInverse = false;
};

PathStrokeItem::PathStrokeItem(QGraphicsItem* parent)
    : GeometryItem(parent), m_pPrivate(std::make_unique<PathStrokeItemPrivate>())
{}

PathStrokeItem::~PathStrokeItem() = default;

void PathStrokeItem::setPath(const QPainterPath& path)
{
    GeometryItem::setPath(path);
}

void PathStrokeItem::useInverseColor(bool inverse)
{
    m_pPrivate->isInverse = inverse;
    update();
}

void PathStrokeItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget)
{
    if (!m_pPrivate->isInverse) {
        GeometryItem::paint(painter, option, widget);
        return;
    }
    painter->setRenderHint(QPainter::Antialiasing);
    QPen line = pen();
    line.setCosmetic(true);
    StrokeInverse(painter, path(), line);
}
