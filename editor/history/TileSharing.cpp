#include "history/TileSharing.h"

#include "image/TileThreads.h"
#include "image/TileWalk.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <iterator>
#include <vector>

namespace {
constexpr int Side = TileWalk::TileSide;

bool AreEqual(const LXTilePointer& one, const LXTilePointer& other)
{
    if (one == other) return true;
    const LXTileReader<LXRGBA32i> oneReader(*one);
    const LXTileReader<LXRGBA32i> otherReader(*other);
    return std::memcmp(oneReader.Pixels(), otherReader.Pixels(), LXTileManager::TileBytes) == 0;
}

/// The part of the patch that lies in one tile of the image.
bool IsTilePartOf(const LXImage32& patch, const LXTileReader<LXRGBA32i>& tile, const QRect& part,
                  const QPoint& patchOrigin)
{
    bool isEqual = true;
    TileWalk::ReadSpans(patch, part.translated(-patchOrigin),
                        [&](const LXRGBA32i* pixels, int x, int y, int count) {
                            const QPoint inImage = part.topLeft() + QPoint(x, y);
                            const LXRGBA32i* const present = tile.Pixels() + TileWalk::IndexInTile(inImage);
                            const std::size_t bytes = std::size_t(count) * sizeof(LXRGBA32i);
                            isEqual = isEqual && std::memcmp(pixels, present, bytes) == 0;
                        });
    return isEqual;
}

/// Whether the patch has the very tile of the image, which saves a look at the pixels.
bool IsSharedTile(const LXImage32& patch, const LXImage32& image, int column, int row, const QPoint& origin)
{
    if (origin.x() % Side != 0 || origin.y() % Side != 0) return false;
    return patch.TileAt(column - origin.x() / Side, row - origin.y() / Side) == image.TileAt(column, row);
}

std::vector<const LXTile*> TilesOf(const LXImage32& image)
{
    std::vector<const LXTile*> tiles(image.m_Tiles.size());
    std::transform(image.m_Tiles.begin(), image.m_Tiles.end(), tiles.begin(),
                   [](const LXTilePointer& tile) { return tile.data(); });
    std::sort(tiles.begin(), tiles.end());
    tiles.erase(std::unique(tiles.begin(), tiles.end()), tiles.end());
    return tiles;
}
} // namespace

QRect TileSharing::WholeTiles(const QRect& part, const QSize& image)
{
    const QRect first = TileWalk::TileRect(part.left() / Side, part.top() / Side);
    const QRect last = TileWalk::TileRect(part.right() / Side, part.bottom() / Side);
    return (first | last) & QRect(QPoint(0, 0), image);
}

bool TileSharing::IsPartOf(const LXImage32& patch, const LXImage32& image, const QRect& place)
{
    std::atomic<bool> isPart{true};
    TileThreads::ForEachTile(place, [&](int column, int row, const QRect& part) {
        if (!isPart || IsSharedTile(patch, image, column, row, place.topLeft())) return;
        if (!IsTilePartOf(patch, image.ReadTile(column, row), part, place.topLeft())) isPart = false;
    });
    return isPart;
}

void TileSharing::ShareEqualTiles(const LXImage32& before, LXImage32& after, const QPoint& firstTile,
                                  const QRect& part)
{
    TileThreads::ForEachTile(part, [&](int column, int row, const QRect&) {
        const int beforeColumn = column - firstTile.x();
        const int beforeRow = row - firstTile.y();
        if (beforeColumn < 0 || beforeColumn >= int(before.m_TilesX)) return;
        if (beforeRow < 0 || beforeRow >= int(before.m_TilesY)) return;
        const LXTilePointer& tile = before.TileAt(beforeColumn, beforeRow);
        if (AreEqual(tile, after.TileAt(column, row))) after.TileAt(column, row) = tile;
    });
}

qint64 TileSharing::BytesOnlyIn(const LXImage32& image, const LXImage32& other)
{
    const std::vector<const LXTile*> tiles = TilesOf(image);
    const std::vector<const LXTile*> others = TilesOf(other);
    std::vector<const LXTile*> own;
    std::set_difference(tiles.begin(), tiles.end(), others.begin(), others.end(), std::back_inserter(own));
    return static_cast<qint64>(own.size()) * LXTileManager::TileBytes;
}
