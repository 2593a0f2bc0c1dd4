#include "document/GlyphPicture.h"

#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>
#include <QTransform>

namespace {
/// Fonts hold their pictures at half of this, in pixels: more would show nothing that is there.
constexpr double PictureSize = 256;

/// The letter alone, beginning at the point on the baseline.
void Draw(QImage& image, const QRawFont& font, quint32 glyph, const QPointF& point)
{
    QGlyphRun run;
    run.setRawFont(font);
    run.setGlyphIndexes({glyph});
    run.setPositions({QPointF(0, 0)});
    QPainter painter(&image);
    painter.setRenderHints(QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    painter.drawGlyphRun(point, run);
}
} // namespace

std::optional<GlyphPicture> GlyphPicture::Of(const QRawFont& font, quint32 glyph)
{
    QRawFont drawn = font;
    drawn.setPixelSize(PictureSize);
    const QRect rect = drawn.boundingRect(glyph).toAlignedRect();
    if (rect.isEmpty()) return std::nullopt;

    GlyphPicture picture;
    picture.image = QImage(rect.size(), QImage::Format_ARGB32_Premultiplied);
    picture.image.fill(Qt::transparent);
    Draw(picture.image, drawn, glyph, -rect.topLeft());
    const double scale = font.pixelSize() / PictureSize;
    picture.box = QTransform::fromScale(scale, scale).mapRect(QRectF(rect));
    return picture;
}
