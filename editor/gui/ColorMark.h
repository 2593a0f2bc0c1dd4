#pragma once

#include <QPointF>
#include <QRect>

class QPainter;
class QWidget;

/// What the two fields of the color dialog draw alike. Main thread only.
namespace ColorMark {
/// The line round a field, in the accent while it has the focus.
/// @param rect  the field with the line, one pixel wide
void PaintLine(QPainter& painter, const QRect& rect, const QWidget& field);

/// A ring of black in white, which shows on every color. The inside shows the color.
void PaintRing(QPainter& painter, const QPointF& middle, double radius);

/// Two lines of one color in a halo of the other, from side to side.
/// @param y  the row that they enclose
void PaintBar(QPainter& painter, const QRect& rect, int y);
} // namespace ColorMark
