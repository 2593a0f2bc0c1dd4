#include "gui/ShownColors.h"

#include "document/LXColorTransformBase.h"

#include <QColor>
#include <QImage>

namespace {
QRgb Transformed(QRgb premultiplied, const LXColorTransformBase& transform)
{
    QColor color = QColor::fromRgba(qUnpremultiply(premultiplied));
    transform(color);
    return qPremultiply(color.rgba());
}
} // namespace

void ToShownColors(QImage& image, const LXColorTransformBase* transform)
{
    if (!transform) return;

    // Neighbours are often equal, and a transform takes long.
    QRgb last = 0;
    QRgb lastShown = 0;
    for (int y = 0; y < image.height(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (row[x] != last) {
                last = row[x];
                lastShown = qAlpha(last) == 0 ? 0 : Transformed(last, *transform);
            }
            row[x] = lastShown;
        }
    }
}
