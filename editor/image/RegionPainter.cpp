#include "image/RegionPainter.h"

#include "image/SimilarKernels.h"
#include "image/TileStore.h"
#include "image/TileWalk.h"

#include <hwy/cache_control.h>

#include <algorithm>

using TileWalk::TileSide;

namespace {
/// 8 MB: of more, the first have left the caches before anybody reads them.
constexpr int MostCachedTiles = 128;
} // namespace

void RegionPainter::Paint(int column, int row, const TileBits& region)
{
    const QRect bounds = TileBitsMath::BoundsOf(region);
    if (bounds.isEmpty()) return;

    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_Bounds |= bounds.translated(TileWalk::TileRect(column, row).topLeft());
    }
    if (TileBitsMath::IsFull(region)) {
        m_Mask.TileAt(column, row) = SolidTile();
        return;
    }
    LXTilePointer& slot = m_Mask.TileAt(column, row);
    if (TileStore::Main().IsBlank(slot->Handle())) {
        slot = NewTile(region);
        return;
    }
    const auto tile = m_Mask.WriteTile(column, row);
    for (int y = bounds.top(); y <= bounds.bottom(); ++y) {
        SimilarKernels::PaintRow(region.rows[static_cast<std::size_t>(y)], m_Fill,
                                 tile.Pixels() + y * TileSide);
    }
}

/// Written whole, so it needn't be cleared, or even be read, before.
LXTilePointer RegionPainter::NewTile(const TileBits& region)
{
    const bool isTooMuchForCaches = m_NewTiles++ >= MostCachedTiles;
    LXTilePointer tile(new LXTile);
    auto* pixels = static_cast<LXRGBA32i*>(TileStore::Main().GetMemoryToOverwrite(tile->Handle()));
    for (const RowBits row : region.rows) {
        if (isTooMuchForCaches) {
            SimilarKernels::StreamRow(row, m_Fill, pixels);
        } else {
            SimilarKernels::MakeRow(row, m_Fill, pixels);
        }
        pixels += TileSide;
    }
    hwy::FlushStream();
    TileStore::Main().FreeMemory(tile->Handle());
    return tile;
}

LXTilePointer RegionPainter::SolidTile()
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    if (!m_SolidTile) {
        LXTilePointer tile(new LXTile);
        const LXTileWriter<LXRGBA32i> writer(tile);
        std::fill_n(writer.Pixels(), TileWalk::TilePixels, m_Fill);
        m_SolidTile = tile;
    }
    return m_SolidTile;
}
