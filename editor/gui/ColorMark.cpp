#include "gui/ColorMark.h"

#include "guicore/LineFrame.h"

#include <QPainter>
#include <QWidget>

void ColorMark::PaintLine(QPainter& painter, const QRect& rect, const QWidget& field)
{
    PaintLineFrame(painter, rect, field.palette().color(field.hasFocus() ? QPalette::Link : QPalette::Mid));
}

void ColorMark::PaintRing(QPainter& painter, const QPointF& middle, double radius)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 3));
    painter.drawEllipse(middle, radius, radius);
    painter.setPen(QPen(Qt::black, 1.5));
    painter.drawEllipse(middle, radius, radius);
}

void ColorMark::PaintBar(QPainter& painter, const QRect& rect, int y)
{
    PaintLineFrame(painter, QRect(rect.left(), y - 2, rect.width(), 5), Qt::white);
    PaintLineFrame(painter, QRect(rect.left() + 1, y - 1, rect.width() - 2, 3), Qt::black);
}
