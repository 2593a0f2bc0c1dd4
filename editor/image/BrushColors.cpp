#include "image/BrushColors.h"

#include "image/ZKCMSTransform.h"

#include <QGradient>
#include <QImage>

namespace {
QBrush WithGradient(const QBrush& brush, const ZKCMSTransform& transform)
{
    QGradient gradient = *brush.gradient();
    QGradientStops stops = gradient.stops();
    for (QGradientStop& stop : stops) {
        transform(stop.second);
    }
    gradient.setStops(stops);
    QBrush converted(gradient);
    converted.setTransform(brush.transform());
    return converted;
}

QBrush WithPicture(const QBrush& brush, const ZKCMSTransform& transform)
{
    QImage picture = brush.textureImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < picture.height(); ++y) {
        transform(reinterpret_cast<LXRGBA32i*>(picture.scanLine(y)), picture.width());
    }
    QBrush converted = brush;
    converted.setTextureImage(picture);
    return converted;
}
} // namespace

QBrush BrushColors::Converted(const QBrush& brush, const ZKCMSTransform& transform)
{
    if (transform.IsEmpty() || brush.style() == Qt::NoBrush) return brush;
    if (brush.gradient()) return WithGradient(brush, transform);
    if (brush.style() == Qt::TexturePattern) return WithPicture(brush, transform);

    QColor color = brush.color();
    transform(color);
    QBrush converted = brush;
    converted.setColor(color);
    return converted;
}
