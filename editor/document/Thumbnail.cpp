#include "document/Thumbnail.h"

#include "image/LXImageConvert.h"

#include <QColor>

namespace {
QImage Scaled(const LXImage32& image, const QPoint& offset, const QSize& canvas)
{
    if (canvas.isEmpty()) return QImage();
    const double scale = qMin(1.0, double(Thumbnail::Side) / qMax(canvas.width(), canvas.height()));
    const QSize size(qMax(1, qRound(canvas.width() * scale)), qMax(1, qRound(canvas.height() * scale)));
    QImage thumbnail(size, QImage::Format_ARGB32);
    thumbnail.fill(Qt::transparent);
    if (!image.IsNull()) ScaleImage(image, -offset, scale, thumbnail);
    return thumbnail;
}
} // namespace

QImage Thumbnail::OfLayer(const LXImage32& image, const QPoint& offset, const QSize& canvas)
{
    return Scaled(image, offset, canvas);
}

QImage Thumbnail::OfMask(const LXImage32& mask, const QPoint& offset, bool reveals, const QSize& canvas)
{
    // Where the mask doesn't reach shows its default.
    LXImage32 whole(canvas.width(), canvas.height());
    if (reveals) whole.Fill(LXRGBA32i(0xFF000000));
    if (!mask.IsNull())
        BlendOn(mask, mask.Rect(), BlendMode::Source, whole, mask.Rect().translated(offset), 1.0, false);

    QImage thumbnail = Scaled(whole, QPoint(0, 0), canvas);
    for (int y = 0; y < thumbnail.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(thumbnail.scanLine(y));
        for (int x = 0; x < thumbnail.width(); ++x) {
            const int value = qAlpha(line[x]);
            line[x] = qRgb(value, value, value);
        }
    }
    return thumbnail;
}
