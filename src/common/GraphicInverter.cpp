#include "common/GraphicInverter.h"

#include <QPainter>

GraphicInverter::GraphicInverter(QGraphicsItem* parent) : QGraphicsItem(parent) {}

void GraphicInverter::SetPath(const QPainterPath& path)
{
    prepareGeometryChange();
    m_Path = path;
    update();
}

QRectF GraphicInverter::boundingRect() const
{
    return m_Path.boundingRect();
}

void GraphicInverter::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    painter->setCompositionMode(QPainter::RasterOp_NotDestination);
    painter->fillPath(m_Path, Qt::white);
}
