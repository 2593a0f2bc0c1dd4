#include "image/RegionPainter.h"

#include "image/SimilarKernels.h"
#include "image/TileWalk.h"

#include <algorithm>

using TileWalk::TileSide;

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
    const auto tile = m_Mask.WriteTile(column, row);
    for (int y = bounds.top(); y <= bounds.bottom(); ++y) {
        SimilarKernels::PaintRow(region.rows[static_cast<std::size_t>(y)], m_Fill,
                                 tile.Pixels() + y * TileSide);
    }
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
