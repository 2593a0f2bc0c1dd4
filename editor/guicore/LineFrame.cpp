#include "guicore/LineFrame.h"

#include <QPainter>

void PaintLineFrame(QPainter& painter, const QRect& rect, const QColor& color)
{
    if (rect.width() < 2 || rect.height() < 2) {
        painter.fillRect(rect, color);
        return;
    }
    const int inner = rect.height() - 2;
    painter.fillRect(rect.left(), rect.top(), rect.width(), 1, color);
    painter.fillRect(rect.left(), rect.bottom(), rect.width(), 1, color);
    painter.fillRect(rect.left(), rect.top() + 1, 1, inner, color);
    painter.fillRect(rect.right(), rect.top() + 1, 1, inner, color);
}
