#include "image/TileFlood.h"

#include "image/TileThreads.h"
#include "image/TileWalk.h"

#include <algorithm>
#include <utility>

using TileBitsMath::Bit;
using TileWalk::TileSide;

namespace {
constexpr int LastInTile = TileSide - 1;
constexpr RowBits AllBits = ~RowBits(0);

/// A wave of fewer tiles is over before another thread has woken up.
constexpr std::size_t SmallWave = 32;

std::size_t At(int y)
{
    return static_cast<std::size_t>(y);
}

void ForEach(std::size_t count, const std::function<void(int)>& work)
{
    if (count >= SmallWave) {
        TileThreads::ForEach(static_cast<int>(count), work);
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        work(static_cast<int>(i));
    }
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
    const QPoint place(seed.x() / TileSide, seed.y() / TileSide);
    Tile& first = *TileAt(place);
    Look(first);
    if (first.state == Tile::State::Mixed) Want(*first.bits, seed.y() % TileSide, Bit(seed.x() % TileSide));
    m_Next.push_back(&first);

    std::vector<Tile*> wave;
    while (!m_Next.empty()) {
        wave.clear();
        std::swap(wave, m_Next);
        ForEach(wave.size(), [&](int i) { Visit(*wave[At(i)]); });
        for (Tile* const tile : wave) {
            HandOver(*tile);
        }
    }
}

void TileFlood::ForEachPart(const std::function<void(int, int, const TileBits&)>& visit) const
{
    TileBits whole;
    whole.rows.fill(AllBits);
    ForEach(m_Reached.size(), [&](int i) {
        const Tile& tile = *m_Reached[At(i)];
        if (tile.state == Tile::State::Taken) visit(tile.place.x(), tile.place.y(), whole);
        if (tile.state == Tile::State::Mixed) visit(tile.place.x(), tile.place.y(), tile.bits->region);
    });
}

/// Null beside the area.
TileFlood::Tile* TileFlood::TileAt(const QPoint& place)
{
    if (place.x() < 0 || place.y() < 0 || place.x() >= m_Columns || place.y() >= m_Rows) return nullptr;
    std::unique_ptr<Tile>& tile = m_Tiles[At(place.y()) * At(m_Columns) + At(place.x())];
    if (!tile) {
        tile = std::make_unique<Tile>();
        tile->place = place;
        m_Reached.push_back(tile.get());
    }
    return tile.get();
}

/// Lets the region come to pixels along a side of the tile at `place`, as far as they are open.
void TileFlood::Reach(const QPoint& place, Side side, RowBits pixels)
{
    Tile* const tile = pixels == 0 ? nullptr : TileAt(place);
    if (tile == nullptr || tile->state == Tile::State::Taken) return;
    if (tile->state == Tile::State::Mixed) {
        WantAlong(*tile->bits, side, pixels);
        if (tile->bits->rowsToDo == 0) return;
    } else {
        tile->reached[side] |= pixels;
    }
    if (tile->isQueued) return;
    tile->isQueued = true;
    m_Next.push_back(tile);
}

void TileFlood::Look(Tile& tile)
{
    const QRect whole = TileWalk::TileRect(tile.place.x(), tile.place.y());
    auto bits = std::make_unique<Bits>();
    m_Similar.Find(tile.place.x(), tile.place.y(), bits->open);
    if (m_Area.contains(whole) && TileBitsMath::IsFull(bits->open)) {
        tile.state = Tile::State::Open;
        return;
    }
    if (!m_Area.contains(whole)) {
        TileBitsMath::Clip(bits->open, (m_Area & whole).translated(-whole.topLeft()));
    }
    tile.state = Tile::State::Mixed;
    tile.bits = std::move(bits);
    for (const Side side : {Top, Bottom, Left, Right}) {
        WantAlong(*tile.bits, side, tile.reached[side]);
    }
}

void TileFlood::Visit(Tile& tile)
{
    if (tile.state == Tile::State::Unseen) Look(tile);
    if (tile.state == Tile::State::Open) {
        tile.state = Tile::State::Taken;
        std::fill_n(tile.leaves, Sides, AllBits);
    } else if (tile.state == Tile::State::Mixed) {
        Spread(tile);
    }
}

/// Tells the neighbours what came to the tile's sides.
void TileFlood::HandOver(Tile& tile)
{
    tile.isQueued = false;
    Reach(tile.place - QPoint(0, 1), Bottom, std::exchange(tile.leaves[Top], 0));
    Reach(tile.place + QPoint(0, 1), Top, std::exchange(tile.leaves[Bottom], 0));
    Reach(tile.place - QPoint(1, 0), Right, std::exchange(tile.leaves[Left], 0));
    Reach(tile.place + QPoint(1, 0), Left, std::exchange(tile.leaves[Right], 0));
}

void TileFlood::WantAlong(Bits& bits, Side side, RowBits pixels)
{
    if (side == Top || side == Bottom) {
        Want(bits, side == Top ? 0 : LastInTile, pixels);
        return;
    }
    const RowBits column = Bit(side == Left ? 0 : LastInTile);
    for (; pixels != 0; pixels &= pixels - 1) {
        Want(bits, TileBitsMath::CountTrailingZeros(pixels), column);
    }
}

/// Lets the region come to row `y`, as far as the pixels are open.
void TileFlood::Want(Bits& bits, int y, RowBits columns)
{
    const RowBits wanted = columns & bits.open.rows[At(y)];
    if (wanted == 0) return;
    bits.wanted.rows[At(y)] |= wanted;
    bits.rowsToDo |= Bit(y);
}

/// Goes down and up like a lift, so that what a row hands on is taken on the same way.
void TileFlood::Spread(Tile& tile)
{
    Bits& bits = *tile.bits;
    int y = 0;
    bool goesDown = true;
    while (bits.rowsToDo != 0) {
        const RowBits ahead = goesDown ? bits.rowsToDo >> y : bits.rowsToDo << (LastInTile - y);
        if (ahead == 0) {
            goesDown = !goesDown;
            continue;
        }
        y += goesDown ? TileBitsMath::CountTrailingZeros(ahead) : -TileBitsMath::CountLeadingZeros(ahead);
        const RowBits taken = TakeRow(bits, y);
        if (y > 0) {
            Want(bits, y - 1, taken);
        } else {
            tile.leaves[Top] |= taken;
        }
        if (y < LastInTile) {
            Want(bits, y + 1, taken);
        } else {
            tile.leaves[Bottom] |= taken;
        }
        if ((taken & Bit(0)) != 0) tile.leaves[Left] |= Bit(y);
        if ((taken & Bit(LastInTile)) != 0) tile.leaves[Right] |= Bit(y);
    }
}

RowBits TileFlood::TakeRow(Bits& bits, int y)
{
    RowBits& open = bits.open.rows[At(y)];
    const RowBits taken = TileBitsMath::SpreadAlongRow(bits.wanted.rows[At(y)] & open, open);
    bits.wanted.rows[At(y)] = 0;
    bits.rowsToDo &= ~Bit(y);
    bits.region.rows[At(y)] |= taken;
    open &= ~taken;
    return taken;
}
