#include "geometryengine/InversePaint.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <qpa/qplatformpixmap.h>

namespace {
/// Of brightness, out of 255, between the ground and its inverse, for the inverse to be seen well.
constexpr int MinDifference = 96;
constexpr int HalfBright = 128;

/// Where the painter's pixels go; null when they can't be read.
const QImage* GroundOf(const QPainter& painter)
{
    QPaintDevice* const device = painter.paintEngine()->paintDevice();
    if (!device) return nullptr;
    if (device->devType() == QInternal::Image) return static_cast<const QImage*>(device);
    if (device->devType() != QInternal::Pixmap) return nullptr;
    QPlatformPixmap* const pixels = static_cast<const QPixmap*>(device)->handle();
    return pixels ? pixels->buffer() : nullptr;
}

/// What contrasts to the ground inside the rectangle; elsewhere the ground.
QImage ContrastImage(const QImage& ground, const QRect& rect, const QRegion& wanted)
{
    QImage contrast = ground.copy(rect).convertToFormat(QImage::Format_RGB32);
    contrast.setDevicePixelRatio(1);
    for (const QRect& part : wanted) {
        const QRect inside = part.translated(-rect.topLeft());
        for (int y = inside.top(); y <= inside.bottom(); ++y) {
            auto* const row = reinterpret_cast<QRgb*>(contrast.scanLine(y));
            for (int x = inside.left(); x <= inside.right(); ++x)
                row[x] = ContrastTo(row[x]);
        }
    }
    return contrast;
}
} // namespace

QRgb ContrastTo(QRgb ground)
{
    const int bright = qGray(ground);
    if (qAbs(255 - 2 * bright) >= MinDifference) return ~ground | 0xff000000U;
    return bright < HalfBright ? qRgb(255, 255, 255) : qRgb(0, 0, 0);
}

void PaintInverse(QPainter* painter, const QPainterPath& path)
{
    const QImage* const ground = GroundOf(*painter);
    if (!ground) {
        painter->save();
        painter->setCompositionMode(QPainter::CompositionMode_Difference);
        painter->fillPath(path, Qt::white);
        painter->restore();
        return;
    }

    const QTransform toDevice = painter->deviceTransform();
    const QPainterPath shape = toDevice.map(path);
    const QRect area = shape.boundingRect().toAlignedRect().adjusted(-1, -1, 1, 1) & ground->rect();
    // Outside the part that is being painted stands what was there before, the item itself included.
    const QRegion painted = painter->paintEngine()->systemClip();
    const QRegion wanted = painted.isEmpty() ? QRegion(area) : painted & area;
    const QRect rect = wanted.boundingRect();
    if (rect.isEmpty()) return;

    painter->save();
    painter->setWorldTransform(toDevice.inverted() * painter->worldTransform());
    painter->setBrushOrigin(rect.topLeft());
    painter->fillPath(shape, QBrush(ContrastImage(*ground, rect, wanted)));
    painter->restore();
}
