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
    const uchar* source = from.constScanLine(fromPoint.y()) + std::size_t(fromPoint.x()) * sizeof(QRgb);
    uchar* target = to.scanLine(toRect.y()) + std::size_t(toRect.x()) * sizeof(QRgb);
    for (int y = 0; y < toRect.height(); ++y) {
        std::memcpy(target, source, std::size_t(toRect.width()) * sizeof(QRgb));
        source += from.bytesPerLine();
        target += to.bytesPerLine();
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
    QImage part = m_Part.OfSize(levelRect.size());
    const auto copy = [&](const Key& key, const QImage& image) {
        const QRect tileRect = TileRect(key.column, key.row);
        const QRect shared = tileRect & levelRect;
        CopyPixels(image, shared.topLeft() - tileRect.topLeft(), part,
                   shared.translated(-levelRect.topLeft()));
    };
    std::vector<Stale> stale;
    for (int row = levelRect.top() / TileSize; row <= levelRect.bottom() / TileSize; ++row) {
        for (int column = levelRect.left() / TileSize; column <= levelRect.right() / TileSize; ++column) {
            const Key key{level, column, row};
            const Tile* const kept = m_Tiles.object(key);
            if (kept && kept->stale.isEmpty()) {
                copy(key, kept->image);
            } else {
                stale.push_back({key, Take(picture, key)});
            }
        }
    }
    Renew(picture, level, stale);
    // Copied before the cache has them again: a budget below one tile drops it at once.
    for (Stale& one : stale) {
        copy(one.key, one.tile->image);
        m_Tiles.insert(one.key, one.tile.release(), TileCost);
    }
    return part;
}

/// The tile as it is kept, or a new one that is stale all over.
std::unique_ptr<ScaledTileCache::Tile> ScaledTileCache::Take(const LXImage32& picture, const Key& key)
{
    std::unique_ptr<Tile> tile(m_Tiles.take(key));
    if (tile) return tile;

    const QRect levelRect(QPoint(0, 0), LevelSize({picture.Width(), picture.Height()}, key.level));
    const QRect tileRect = TileRect(key.column, key.row) & levelRect;
    tile = std::make_unique<Tile>();
    tile->image = QImage(tileRect.size(), QImage::Format_ARGB32_Premultiplied);
    tile->stale = tile->image.rect();
    return tile;
}

void ScaledTileCache::Renew(const LXImage32& picture, int level, const std::vector<Stale>& stale)
{
    std::vector<Reduction> reductions;
    reductions.reserve(stale.size());
    for (const Stale& one : stale) {
        const QPoint origin = TileRect(one.key.column, one.key.row).topLeft();
        reductions.push_back(
            {one.tile->stale.translated(origin), &one.tile->image, one.tile->stale.topLeft()});
    }
    ReduceInto(picture, level, reductions);
    for (const Stale& one : stale) {
        DisplayColors::Convert(m_ToScreen, one.tile->image, one.tile->stale);
        m_MadePixels += qint64(one.tile->stale.width()) * one.tile->stale.height();
        one.tile->stale = QRect();
    }
}
