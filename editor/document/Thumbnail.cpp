#include "document/Thumbnail.h"

namespace {
/// Points that are looked at for each pixel of a thumbnail, in each direction: enough for a list, and far
/// fewer than the picture has.
constexpr int Points = 4;

/// Pixels of an image that lies on the canvas, with a color where it doesn't reach.
class Sampler
{
public:
    Sampler(const LXImage32& image, const QPoint& offset, LXRGBA32i outside)
        : m_Image(image), m_Offset(offset), m_Outside(outside)
    {}

    LXRGBA32i At(const QPoint& docPos) const
    {
        const QPoint pos = docPos - m_Offset;
        return m_Image.Rect().contains(pos) ? m_Image.GetColor(pos.x(), pos.y()) : m_Outside;
    }

private:
    const LXImage32& m_Image;
    QPoint m_Offset;
    LXRGBA32i m_Outside;
};

/// The mean of pixels with straight alpha: colors weigh as much as they cover.
class Mean
{
public:
    void Add(LXRGBA32i pixel)
    {
        const int alpha = pixel.Alpha();
        m_Alpha += alpha;
        m_Red += alpha * pixel.Red();
        m_Green += alpha * pixel.Green();
        m_Blue += alpha * pixel.Blue();
        ++m_Count;
    }

    QRgb Color() const
    {
        if (m_Alpha == 0) return 0;
        return qRgba(m_Red / m_Alpha, m_Green / m_Alpha, m_Blue / m_Alpha, m_Alpha / m_Count);
    }

private:
    int m_Alpha = 0;
    int m_Red = 0;
    int m_Green = 0;
    int m_Blue = 0;
    int m_Count = 0;
};

/// Where a point of a thumbnail's pixel lies on the canvas, along one side.
int PointOnCanvas(int pixel, int point, int pixels, int canvas)
{
    const double middle = pixel + (point + 0.5) / Points;
    return qMin(canvas - 1, static_cast<int>(middle * canvas / pixels));
}

QImage Sampled(const Sampler& sampler, const QSize& canvas, int side)
{
    if (canvas.isEmpty()) return QImage();
    const double scale = qMin(1.0, double(side) / qMax(canvas.width(), canvas.height()));
    QImage thumbnail(qMax(1, qRound(canvas.width() * scale)), qMax(1, qRound(canvas.height() * scale)),
                     QImage::Format_ARGB32);
    for (int y = 0; y < thumbnail.height(); ++y) {
        for (int x = 0; x < thumbnail.width(); ++x) {
            Mean mean;
            for (int i = 0; i < Points * Points; ++i) {
                mean.Add(sampler.At({PointOnCanvas(x, i % Points, thumbnail.width(), canvas.width()),
                                     PointOnCanvas(y, i / Points, thumbnail.height(), canvas.height())}));
            }
            thumbnail.setPixel(x, y, mean.Color());
        }
    }
    return thumbnail;
}
} // namespace

QImage Thumbnail::OfLayer(const LXImage32& image, const QPoint& offset, const QSize& canvas, int side)
{
    return Sampled(Sampler(image, offset, LXRGBA32i()), canvas, side);
}

QImage Thumbnail::OfMask(const LXImage32& mask, const QPoint& offset, bool reveals, const QSize& canvas)
{
    QImage thumbnail = Sampled(Sampler(mask, offset, LXRGBA32i(reveals ? 0xFF000000 : 0)), canvas, Side);
    for (int y = 0; y < thumbnail.height(); ++y) {
        for (int x = 0; x < thumbnail.width(); ++x) {
            const int value = qAlpha(thumbnail.pixel(x, y));
            thumbnail.setPixel(x, y, qRgb(value, value, value));
        }
    }
    return thumbnail;
}
