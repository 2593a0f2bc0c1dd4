#include "gui/ScaledTileCache.h"

#include "gui/DisplayColors.h"
#include "gui/TileReduction.h"

#include <cstring>

namespace {
constexpr qint64 Kilobyte = 1024;
constexpr int TileCost = int(ScaledTileCache::TileSize * ScaledTileCache::TileSize * sizeof(QRgb) / Kilobyte);

/// The pixels of the level whose boxes meet the rectangle.
QRect ToLevel(const QRect& rect, int level)
{
    return QRect(QPoint(rect.left() >> level, rect.top() >> level),
                 QPoint(rect.right() >> level, rect.bottom() >> level));
}

QRect TileRect(int column, int row)
{
    constexpr int size = ScaledTileCache::TileSize;
    return QRect(column * size, row * size, size, size);
}

void CopyPixels(const QImage& from, const QPoint& fromPoint, QImage& to, const QRect& toRect)
{
    for (int y = 0; y < toRect.height(); ++y) {
        const auto* source = reinterpret_cast<const QRgb*>(from.constScanLine(fromPoint.y() + y));
        auto* target = reinterpret_cast<QRgb*>(to.scanLine(toRect.y() + y));
        std::memcpy(target + toRect.x(), source + fromPoint.x(), std::size_t(toRect.width()) * sizeof(QRgb));
    }
}
} // namespace

ScaledTileCache::ScaledTileCache(qint64 budget) : m_Tiles(int(budget / Kilobyte)) {}

void ScaledTileCache::Invalidate(const QRect& rect)
{
    const QList<Key> keys = m_Tiles.keys();
    for (const Key& key : keys) {
        const QRect tileRect = TileRect(key.column, key.row);
        const QRect stale = ToLevel(rect, key.level) & tileRect;
        if (stale.isEmpty()) continue;
        Tile* const tile = m_Tiles.object(key);
        tile->stale |= stale.translated(-tileRect.topLeft());
    }
}

void ScaledTileCache::Clear()
{
    m_Tiles.clear();
}

void ScaledTileCache::SetColors(const ZKCMSTransform& toScreen)
{
    m_ToScreen = toScreen;
    Clear();
}

QSize ScaledTileCache::LevelSize(const QSize& size, int level)
{
    const int box = 1 << level;
    return {(size.width() + box - 1) >> level, (size.height() + box - 1) >> level};
}

QImage ScaledTileCache::Compose(const LXImage32& picture, int level, const QRect& levelRect)
{
    QImage part(levelRect.size(), QImage::Format_ARGB32_Premultiplied);
    const QRect tiles(QPoint(levelRect.left() / TileSize, levelRect.top() / TileSize),
                      QPoint(levelRect.right() / TileSize, levelRect.bottom() / TileSize));
    for (int row = tiles.top(); row <= tiles.bottom(); ++row) {
        for (int column = tiles.left(); column <= tiles.right(); ++column) {
            const QRect tileRect = TileRect(column, row);
            const QRect shared = tileRect & levelRect;
            CopyPixels(Fetch(picture, {level, column, row}), shared.topLeft() - tileRect.topLeft(), part,
                       shared.translated(-levelRect.topLeft()));
        }
    }
    return part;
}

QImage ScaledTileCache::Fetch(const LXImage32& picture, const Key& key)
{
    const Tile* const kept = m_Tiles.object(key);
    if (kept && kept->stale.isEmpty()) return kept->image;

    const QRect levelRect(QPoint(0, 0), LevelSize({picture.Width(), picture.Height()}, key.level));
    const QRect tileRect = TileRect(key.column, key.row) & levelRect;
    std::unique_ptr<Tile> tile(m_Tiles.take(key));
    if (!tile) {
        tile = std::make_unique<Tile>();
        tile->image = QImage(tileRect.size(), QImage::Format_ARGB32_Premultiplied);
        tile->stale = tile->image.rect();
    }
    ReduceInto(picture, key.level, tile->stale.translated(tileRect.topLeft()), tile->image,
               tile->stale.topLeft());
    DisplayColors::Convert(m_ToScreen, tile->image, tile->stale);
    m_MadePixels += qint64(tile->stale.width()) * tile->stale.height();
    tile->stale = QRect();

    // Held here, because a budget below one tile drops it at once.
    QImage image = tile->image;
    m_Tiles.insert(key, tile.release(), TileCost);
    return image;
}
