#include "document/Thumbnail.h"

#include "image/TileNature.h"

#include <cstddef>
#include <vector>

namespace {
/// Points that are looked at for each pixel of a thumbnail, in each direction: enough for a list, and far
/// fewer than the picture has.
constexpr int Points = 4;

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

/// Where the points of a thumbnail lie on the canvas, along one side; in rising order.
std::vector<int> PointsAlong(int pixels, int canvas)
{
    std::vector<int> points(static_cast<std::size_t>(pixels) * Points);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double middle = (static_cast<double>(i) + 0.5) / Points;
        points[i] = qMin(canvas - 1, static_cast<int>(middle * canvas / pixels));
    }
    return points;
}

/// Points next to each other that lie in one column or row of an image's tiles, or all outside the image.
struct Run
{
    std::size_t first;
    std::size_t end;
    int tile; ///< Outside for none
};

constexpr int Outside = -1;
constexpr int TileSide = 128;

/// @param offset  of the image on the canvas
/// @param length  of the image
std::vector<Run> RunsAlong(const std::vector<int>& points, int offset, int length)
{
    std::vector<Run> runs;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const int inImage = points[i] - offset;
        const int tile = inImage >= 0 && inImage < length ? inImage / TileSide : Outside;
        if (runs.empty() || runs.back().tile != tile) runs.push_back({i, i, tile});
        runs.back().end = i + 1;
    }
    return runs;
}

/// An image that lies on the canvas, looked at in few points, tile by tile, so that each is pinned once.
class Sampling
{
public:
    Sampling(const LXImage32& image, const QPoint& offset, LXRGBA32i outside, const QSize& canvas,
             const QSize& size)
        : m_Image(image),
          m_Offset(offset),
          m_Outside(outside),
          m_Columns(PointsAlong(size.width(), canvas.width())),
          m_Rows(PointsAlong(size.height(), canvas.height())),
          m_Width(static_cast<std::size_t>(size.width())),
          m_Means(m_Width * static_cast<std::size_t>(size.height()))
    {
        const std::vector<Run> columns = RunsAlong(m_Columns, offset.x(), image.Width());
        for (const Run& rows : RunsAlong(m_Rows, offset.y(), image.Height())) {
            for (const Run& run : columns) {
                AddTile(run, rows);
            }
        }
    }

    QRgb ColorOf(int x, int y) const
    {
        return m_Means[static_cast<std::size_t>(y) * m_Width + static_cast<std::size_t>(x)].Color();
    }

private:
    void AddTile(const Run& columns, const Run& rows)
    {
        if (columns.tile == Outside || rows.tile == Outside) {
            Add(columns, rows, [this](int, int) { return m_Outside; });
            return;
        }
        const TileNature nature = TileNature::Of(*m_Image.TileAt(columns.tile, rows.tile));
        if (nature.isSolid) {
            // Spares far reads: hardly two points lie in one line of the processor's cache.
            Add(columns, rows, [color = nature.color](int, int) { return color; });
            return;
        }
        const auto tile = m_Image.ReadTile(columns.tile, rows.tile);
        Add(columns, rows, [this, &tile](int x, int y) {
            const int inTile = (y - m_Offset.y()) % TileSide * TileSide + (x - m_Offset.x()) % TileSide;
            return tile.Pixels()[inTile];
        });
    }

    template <class PixelAt>
    void Add(const Run& columns, const Run& rows, PixelAt pixelAt)
    {
        for (std::size_t j = rows.first; j < rows.end; ++j) {
            Mean* const line = m_Means.data() + j / Points * m_Width;
            for (std::size_t i = columns.first; i < columns.end; ++i) {
                line[i / Points].Add(pixelAt(m_Columns[i], m_Rows[j]));
            }
        }
    }

    const LXImage32& m_Image;
    QPoint m_Offset;
    LXRGBA32i m_Outside;
    std::vector<int> m_Columns;
    std::vector<int> m_Rows;
    std::size_t m_Width;
    std::vector<Mean> m_Means;
};

QImage Sampled(const LXImage32& image, const QPoint& offset, LXRGBA32i outside, const QSize& canvas, int side)
{
    if (canvas.isEmpty()) return QImage();
    const double scale = qMin(1.0, double(side) / qMax(canvas.width(), canvas.height()));
    QImage thumbnail(qMax(1, qRound(canvas.width() * scale)), qMax(1, qRound(canvas.height() * scale)),
                     QImage::Format_ARGB32);
    const Sampling sampling(image, offset, outside, canvas, thumbnail.size());
    for (int y = 0; y < thumbnail.height(); ++y) {
        for (int x = 0; x < thumbnail.width(); ++x) {
            thumbnail.setPixel(x, y, sampling.ColorOf(x, y));
        }
    }
    return thumbnail;
}
} // namespace

QImage Thumbnail::OfLayer(const LXImage32& image, const QPoint& offset, const QSize& canvas, int side)
{
    return Sampled(image, offset, LXRGBA32i(), canvas, side);
}

QImage Thumbnail::OfMask(const LXImage32& mask, const QPoint& offset, bool reveals, const QSize& canvas)
{
    QImage thumbnail = Sampled(mask, offset, LXRGBA32i(reveals ? 0xFF000000 : 0), canvas, Side);
    for (int y = 0; y < thumbnail.height(); ++y) {
        for (int x = 0; x < thumbnail.width(); ++x) {
            const int value = qAlpha(thumbnail.pixel(x, y));
            thumbnail.setPixel(x, y, qRgb(value, value, value));
        }
    }
    return thumbnail;
}
