#include "gui/GridLines.h"

#include <QPainter>

namespace {
// Beside the color of the guides, and weaker than they are.
const QColor Ink(0x00, 0x78, 0xd4, 0x70);

/// Number of the first line at or behind a viewport pixel.
int FirstLine(int pixel, int origin, double distance)
{
    return qMax(0, static_cast<int>((pixel - origin) / distance));
}
} // namespace

void GridLines::Paint(QPainter& painter, const QRect& exposed, const CanvasPlace& place) const
{
    const double distance = m_Step * place.scale;
    const QRect part = exposed & place.Rect();
    if (m_Step <= 0 || distance < LeastDistance || part.isEmpty()) return;

    for (int i = FirstLine(part.left(), place.origin.x(), distance);; ++i) {
        const int x = place.origin.x() + qRound(i * distance);
        if (x > part.right()) break;
        if (x >= part.left()) painter.fillRect(x, part.top(), 1, part.height(), Ink);
    }
    for (int i = FirstLine(part.top(), place.origin.y(), distance);; ++i) {
        const int y = place.origin.y() + qRound(i * distance);
        if (y > part.bottom()) break;
        if (y >= part.top()) painter.fillRect(part.left(), y, part.width(), 1, Ink);
    }
}
