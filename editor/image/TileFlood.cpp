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
    Want(QPoint(seed.x() / TileSide, seed.y() / TileSide), seed.y() % TileSide, Bit(seed.x() % TileSide));
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

/// Lets the region come to row `y` of the tile at `place`, as far as the pixels are open.
void TileFlood::Want(const QPoint& place, int y, RowBits columns)
{
    if (place.x() < 0 || place.y() < 0 || place.x() >= m_Columns || place.y() >= m_Rows) return;

    Tile& tile = TileAt(place.x(), place.y());
    const RowBits wanted = columns & tile.open.rows[At(y)];
    if (wanted == 0) return;
    tile.wanted.rows[At(y)] |= wanted;
    tile.rowsToDo |= Bit(y);
    if (!tile.isQueued) m_Queue.push_back(place);
    tile.isQueued = true;
}

void TileFlood::Visit(const QPoint& place)
{
    Tile& tile = TileAt(place.x(), place.y());
    while (tile.rowsToDo != 0) {
        const int y = TileBitsMath::CountTrailingZeros(tile.rowsToDo);
        const RowBits taken = TakeRow(tile, y);
        const bool isFirstRow = y == 0;
        const bool isLastRow = y == LastInTile;
        Want(isFirstRow ? place - QPoint(0, 1) : place, isFirstRow ? LastInTile : y - 1, taken);
        Want(isLastRow ? place + QPoint(0, 1) : place, isLastRow ? 0 : y + 1, taken);
        if ((taken & Bit(0)) != 0) Want(place - QPoint(1, 0), y, Bit(LastInTile));
        if ((taken & Bit(LastInTile)) != 0) Want(place + QPoint(1, 0), y, Bit(0));
    }
    tile.isQueued = false;
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
