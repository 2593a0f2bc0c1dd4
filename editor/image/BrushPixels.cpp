#include "image/BrushPixels.h"

#include <QPainter>
#include <QRgba64>

#include <algorithm>

namespace {
/// The rest of a division, counted up from 0 for negative numbers too.
int Wrap(int position, int length)
{
    const int rest = position % length;
    return rest < 0 ? rest + length : rest;
}
} // namespace

BrushPixels::BrushPixels(const QBrush& brush) : m_Brush(brush), m_Gradient(GradientPixels::Of(brush))
{
    if (brush.style() != Qt::TexturePattern) return;
    const QImage texture = brush.textureImage();
    if (texture.depth() == 1) return; // takes the brush's color
    if (brush.transform().isIdentity()) {
        m_Texture = texture.convertToFormat(QImage::Format_ARGB32);
    } else {
        // Of a pixmap Qt would make the image when it is first painted with, without a lock.
        m_Brush.setTextureImage(texture);
    }
}

void BrushPixels::Read(const QRect& part, LXRGBA32i* pixels) const
{
    if (!m_Texture.isNull()) {
        ReadTexture(part, pixels);
    } else if (IsOneColor()) {
        std::fill_n(pixels, part.width() * part.height(), LXRGBA32i(m_Brush.color().rgba()));
    } else if (m_Gradient) {
        for (int y = part.top(); y <= part.bottom(); ++y) {
            m_Gradient->Row(part.left(), y, part.width(), pixels);
            pixels += part.width();
        }
    } else {
        ReadPainted(part, pixels);
    }
}

void BrushPixels::ReadTexture(const QRect& part, LXRGBA32i* pixels) const
{
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const auto* const row =
            reinterpret_cast<const QRgb*>(m_Texture.constScanLine(Wrap(y, m_Texture.height())));
        int first = Wrap(part.left(), m_Texture.width());
        for (int left = part.width(); left > 0;) {
            const int count = std::min(left, m_Texture.width() - first);
            pixels = std::transform(row + first, row + first + count, pixels,
                                    [](QRgb color) { return LXRGBA32i(color); });
            left -= count;
            first = 0;
        }
    }
}

/// Hatches, turned textures and gradients of rare kinds. Qt paints them premultiplied, so with 16 bits a
/// channel: then the color of an almost transparent pixel comes back right.
void BrushPixels::ReadPainted(const QRect& part, LXRGBA32i* pixels) const
{
    QImage painted(part.size(), QImage::Format_RGBA64_Premultiplied);
    painted.fill(Qt::transparent);
    QPainter painter(&painted);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.translate(-part.topLeft());
    painter.fillRect(part, m_Brush);
    painter.end();

    for (int y = 0; y < painted.height(); ++y) {
        const auto* const row = reinterpret_cast<const QRgba64*>(painted.constScanLine(y));
        pixels = std::transform(row, row + painted.width(), pixels,
                                [](QRgba64 pixel) { return LXRGBA32i(pixel.unpremultiplied().toArgb32()); });
    }
}
