#include "guicore/ColorSwatch.h"

#include "guicore/Checker.h"
#include "guicore/LineFrame.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>

namespace {
const QColor IconLine(0x80, 0x80, 0x80);
} // namespace

void ColorSwatch::Paint(QPainter& painter, const QRect& rect, const QColor& color)
{
    if (color.alpha() < 255) {
        const QPoint origin = painter.brushOrigin();
        painter.setBrushOrigin(rect.topLeft());
        painter.fillRect(rect, SmallChecker());
        painter.setBrushOrigin(origin);
    }
    painter.fillRect(rect, color);
}

void ColorSwatch::PaintFramed(QPainter& painter, const QRect& rect, const QColor& color, const QColor& line)
{
    Paint(painter, rect, color);
    PaintLineFrame(painter, rect, line);
    PaintLineFrame(painter, rect.adjusted(1, 1, -1, -1),
                   QColor(255, 255, 255, color.lightness() < 128 ? 96 : 160));
}

QIcon ColorSwatch::MakeIcon(const QColor& color, const QSize& size)
{
    const qreal ratio = qGuiApp->devicePixelRatio();
    QPixmap pixmap(size * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(IconLine);
    QPainter painter(&pixmap);
    const QRect inside = QRect(QPoint(0, 0), size).adjusted(1, 1, -1, -1);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillRect(inside, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    Paint(painter, inside, color);
    painter.end();
    return pixmap;
}
