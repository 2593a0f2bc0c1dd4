#include "gui/TileReduction.h"

namespace {
constexpr int SourceTileSize = 128;

const QRgb* PixelAt(const LXRGBA32i* tile, int x, int y)
{
    return reinterpret_cast<const QRgb*>(tile) + y * SourceTileSize + x;
}

/// alpha = sum(a) / n, color = sum(c a) / (255 n); the sums of 128 x 128 pixels overflow 32 bits.
class BoxMean
{
public:
    void Add(QRgb pixel)
    {
        const quint64 alpha = qAlpha(pixel);
        m_Alpha += alpha;
        m_Red += qRed(pixel) * alpha;
        m_Green += qGreen(pixel) * alpha;
        m_Blue += qBlue(pixel) * alpha;
    }

    QRgb Premultiplied(int count) const
    {
        const quint64 all = quint64(count);
        const auto mean = [](quint64 sum, quint64 divisor) { return int((sum + divisor / 2) / divisor); };
        return qRgba(mean(m_Red, 255 * all), mean(m_Green, 255 * all), mean(m_Blue, 255 * all),
                     mean(m_Alpha, all));
    }

private:
    quint64 m_Alpha = 0;
    quint64 m_Red = 0;
    quint64 m_Green = 0;
    quint64 m_Blue = 0;
};

QRgb MeanOfBox(const LXRGBA32i* tile, const QRect& box)
{
    BoxMean mean;
    for (int y = box.top(); y <= box.bottom(); ++y) {
        const QRgb* const row = PixelAt(tile, box.left(), y);
        for (int x = 0; x < box.width(); ++x)
            mean.Add(row[x]);
    }
    return mean.Premultiplied(box.width() * box.height());
}

/// @param levelRect  pixels of the level whose boxes lie in the tile
/// @param tileRect   the tile's pixels that belong to the picture, picture coordinates
void ReduceTile(const LXRGBA32i* tile, const QRect& tileRect, int level, const QRect& levelRect,
                QImage& target, const QPoint& at)
{
    for (int y = 0; y < levelRect.height(); ++y) {
        auto* out = reinterpret_cast<QRgb*>(target.scanLine(at.y() + y)) + at.x();
        const int top = (levelRect.y() + y) << level;
        if (level == 0) {
            const QRgb* const row = PixelAt(tile, levelRect.x() - tileRect.x(), top - tileRect.y());
            std::transform(row, row + levelRect.width(), out, [](QRgb pixel) { return qPremultiply(pixel); });
            continue;
        }
        for (int x = 0; x < levelRect.width(); ++x) {
            const QRect box((levelRect.x() + x) << level, top, 1 << level, 1 << level);
            out[x] = MeanOfBox(tile, (box & tileRect).translated(-tileRect.topLeft()));
        }
    }
}
} // namespace

void ReduceInto(const LXImage32& picture, int level, const QRect& levelRect, QImage& target, const QPoint& at)
{
    const int step = SourceTileSize >> level;
    for (int row = levelRect.top() / step; row <= levelRect.bottom() / step; ++row) {
        for (int column = levelRect.left() / step; column <= levelRect.right() / step; ++column) {
            const QRect tileRect =
                QRect(column * SourceTileSize, row * SourceTileSize, SourceTileSize, SourceTileSize);
            const QRect part = QRect(column * step, row * step, step, step) & levelRect;
            const auto reader = picture.ReadTile(column, row);
            ReduceTile(reader.Pixels(), tileRect & picture.Rect(), level, part, target,
                       at + part.topLeft() - levelRect.topLeft());
        }
    }
}
