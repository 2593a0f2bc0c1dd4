#include "image/TileFlood.h"

#include "image/TileWalk.h"

using TileBitsMath::Bit;
using TileWalk::TileSide;

namespace {
constexpr int LastInTile = TileSide - 1;

std::size_t At(int y)
{
    return static_cast<std::size_t>(y);
}
} // namespace

TileFlood::TileFlood(SimilarPixels& similar, const QRect& area)
    : m_Similar(similar),
      m_Area(area),
      m_Columns(area.right() / TileSide + 1),
      m_Rows(area.bottom() / TileSide + 1),
      m_Tiles(At(m_Columns) * At(m_Rows))
{}

void TileFlood::Run(const QPoint& seed)
{
    WantInNeighbour(QPoint(seed.x() / TileSide, seed.y() / TileSide), seed.y() % TileSide,
                    Bit(seed.x() % TileSide));
    while (!m_Queue.empty()) {
        const QPoint place = m_Queue.back();
        m_Queue.pop_back();
        Visit(place);
    }
}

TileFlood::Tile& TileFlood::TileAt(int column, int row)
{
    std::unique_ptr<Tile>& tile = m_Tiles[At(row) * At(m_Columns) + At(column)];
    if (!tile) {
        tile = std::make_unique<Tile>();
        tile->open = m_Similar.Of(column, row);
        const QRect whole = TileWalk::TileRect(column, row);
        TileBitsMath::Clip(tile->open, (m_Area & whole).translated(-whole.topLeft()));
    }
    return *tile;
}

/// Lets the region come to row `y` of the tile, as far as the pixels are open.
void TileFlood::Want(Tile& tile, int y, RowBits columns)
{
    const RowBits wanted = columns & tile.open.rows[At(y)];
    if (wanted == 0) return;
    tile.wanted.rows[At(y)] |= wanted;
    tile.rowsToDo |= Bit(y);
}

/// The same for the tile at `place`, if there is one, which is visited later.
void TileFlood::WantInNeighbour(const QPoint& place, int y, RowBits columns)
{
    if (place.x() < 0 || place.y() < 0 || place.x() >= m_Columns || place.y() >= m_Rows) return;

    Tile& tile = TileAt(place.x(), place.y());
    Want(tile, y, columns);
    if (tile.rowsToDo == 0 || tile.isQueued) return;
    tile.isQueued = true;
    m_Queue.push_back(place);
}

void TileFlood::Visit(const QPoint& place)
{
    Tile& tile = TileAt(place.x(), place.y());
    tile.isQueued = false;
    while (tile.rowsToDo != 0) {
        const int y = TileBitsMath::CountTrailingZeros(tile.rowsToDo);
        const RowBits taken = TakeRow(tile, y);
        if (y > 0) {
            Want(tile, y - 1, taken);
        } else {
            WantInNeighbour(place - QPoint(0, 1), LastInTile, taken);
        }
        if (y < LastInTile) {
            Want(tile, y + 1, taken);
        } else {
            WantInNeighbour(place + QPoint(0, 1), 0, taken);
        }
        if ((taken & Bit(0)) != 0) WantInNeighbour(place - QPoint(1, 0), y, Bit(LastInTile));
        if ((taken & Bit(LastInTile)) != 0) WantInNeighbour(place + QPoint(1, 0), y, Bit(0));
    }
}

RowBits TileFlood::TakeRow(Tile& tile, int y)
{
    RowBits& open = tile.open.rows[At(y)];
    const RowBits taken = TileBitsMath::SpreadAlongRow(tile.wanted.rows[At(y)] & open, open);
    tile.wanted.rows[At(y)] = 0;
    tile.rowsToDo &= ~Bit(y);
    tile.region.rows[At(y)] |= taken;
    open &= ~taken;
    return taken;
}
