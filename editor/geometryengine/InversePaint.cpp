#include "geometryengine/InversePaint.h"

#include "geometryengine/PathCells.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPixmap>
#include <QtMath>
#include <qpa/qplatformpixmap.h>

#include <algorithm>

namespace {
/// Of brightness, out of 255, between the ground and its inverse, for the inverse to be seen well.
constexpr int MinDifference = 96;
constexpr int HalfBright = 128;

/// Where the painter's pixels go; null when they can't be read.
const QImage* GroundOf(const QPainter& painter)
{
    const QPaintDevice* const device = painter.paintEngine()->paintDevice();
    if (!device) return nullptr;
    if (device->devType() == QInternal::Image) return static_cast<const QImage*>(device);
    if (device->devType() != QInternal::Pixmap) return nullptr;
    QPlatformPixmap* const pixels = static_cast<const QPixmap*>(device)->handle();
    return pixels ? pixels->buffer() : nullptr;
}

/// The part of the ground's pixels that the shape may change: what lies outside the part that is being
/// painted needs no look.
QRegion PaintedPart(const QPainter& painter, const QImage& ground, const QPainterPath& shape)
{
    const QRect area = shape.boundingRect().toAlignedRect().adjusted(-1, -1, 1, 1) & ground.rect();
    const QRegion clip = painter.paintEngine()->systemClip();
    return clip.isEmpty() ? QRegion(area) : clip & area;
}

/// What contrasts to the ground in the wanted pixels; what the others hold isn't said.
/// @param rect  what the image is of, in the ground's pixels
QImage ContrastImage(const QImage& ground, const QRect& rect, const QRegion& wanted)
{
    QImage contrast(rect.size(), QImage::Format_RGB32);
    for (const QRect& part : wanted) {
        const QImage pixels = ground.copy(part).convertToFormat(QImage::Format_RGB32);
        for (int y = 0; y < part.height(); ++y) {
            const auto* const from = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
            auto* const to = reinterpret_cast<QRgb*>(contrast.scanLine(part.top() - rect.top() + y)) +
                             (part.left() - rect.left());
            std::transform(from, from + part.width(), to, ContrastTo);
        }
    }
    return contrast;
}

/// @param shape   what is filled, in device pixels
/// @param wanted  device pixels that hold all that the shape covers of the part that is being painted
void FillOverGround(QPainter* painter, const QImage& ground, const QPainterPath& shape, const QRegion& wanted)
{
    const QRect rect = wanted.boundingRect();
    if (rect.isEmpty()) return;
    painter->save();
    painter->setWorldTransform(painter->deviceTransform().inverted() * painter->worldTransform());
    painter->setBrushOrigin(rect.topLeft());
    painter->fillPath(shape, QBrush(ContrastImage(ground, rect, wanted)));
    painter->restore();
}

void FillDifference(QPainter* painter, const QPainterPath& path)
{
    painter->save();
    painter->setCompositionMode(QPainter::CompositionMode_Difference);
    painter->fillPath(path, Qt::white);
    painter->restore();
}
} // namespace

QRgb ContrastTo(QRgb ground)
{
    const int bright = qGray(ground);
    if (qAbs(255 - 2 * bright) >= MinDifference) return ~ground | 0xff000000U;
    return bright < HalfBright ? qRgb(255, 255, 255) : qRgb(0, 0, 0);
}

void FillInverse(QPainter* painter, const QPainterPath& path)
{
    const QImage* const ground = GroundOf(*painter);
    if (!ground) {
        FillDifference(painter, path);
        return;
    }
    const QPainterPath shape = painter->deviceTransform().map(path);
    FillOverGround(painter, *ground, shape, PaintedPart(*painter, *ground, shape));
}

void StrokeInverse(QPainter* painter, const QPainterPath& path, const QPen& pen)
{
    painter->save();
    QPainterPath line = path;
    if (pen.isCosmetic()) {
        line = painter->worldTransform().map(path);
        painter->setWorldTransform(QTransform());
    }
    QPen solid = pen;
    solid.setWidthF(qMax(1.0, pen.widthF()));
    const QPainterPath stroke = QPainterPathStroker(solid).createStroke(line);

    const QImage* const ground = GroundOf(*painter);
    if (!ground) {
        FillDifference(painter, stroke);
    } else {
        const QTransform toDevice = painter->deviceTransform();
        const QPainterPath shape = toDevice.map(stroke);
        const QRegion part = PaintedPart(*painter, *ground, shape);
        const double corner = solid.joinStyle() == Qt::MiterJoin ? qMax(1.0, solid.miterLimit()) : 1;
        const double reach = corner * solid.widthF() * qSqrt(qAbs(toDevice.determinant())) + 1;
        FillOverGround(painter, *ground, shape,
                       CellsAlong(toDevice.map(line), reach, part.boundingRect()) & part);
    }
    painter->restore();
}
