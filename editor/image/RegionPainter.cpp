#include "image/RegionPainter.h"

#include "image/TileWalk.h"

#include <algorithm>

using TileWalk::TileSide;

void RegionPainter::Paint(int column, int row, const TileBits& region)
{
    const QRect bounds = TileBitsMath::BoundsOf(region);
    if (bounds.isEmpty()) return;

    m_Bounds |= bounds.translated(TileWalk::TileRect(column, row).topLeft());
    if (TileBitsMath::IsFull(region)) {
        m_Mask.TileAt(column, row) = SolidTile();
        return;
    }
    const auto tile = m_Mask.WriteTile(column, row);
    for (int y = bounds.top(); y <= bounds.bottom(); ++y) {
        LXRGBA32i* const pixels = tile.Pixels() + y * TileSide;
        RowBits left = region.rows[static_cast<std::size_t>(y)];
        while (left != 0) {
            const int first = TileBitsMath::CountTrailingZeros(left);
            const int length = TileBitsMath::RunLength(left, first);
            std::fill_n(pixels + first, length, m_Fill);
            left &= ~TileBitsMath::Columns(first, first + length - 1);
        }
    }
}

const LXTilePointer& RegionPainter::SolidTile()
{
    if (!m_SolidTile) {
        LXTilePointer tile(new LXTile);
        const LXTileWriter<LXRGBA32i> writer(tile);
        std::fill_n(writer.Pixels(), TileWalk::TilePixels, m_Fill);
        m_SolidTile = tile;
    }
    return m_SolidTile;
}
