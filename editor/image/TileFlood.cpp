#include "image/TileFlood.h"

#include "image/TileThreads.h"
#include "image/TileWalk.h"

#include <algorithm>
#include <cmath>
#include <utility>

using TileBitsMath::Bit;
using TileSides::Bottom;
using TileSides::Left;
using TileSides::Right;
using TileSides::Top;
using TileWalk::TileSide;

namespace {
constexpr int LastInTile = TileSide - 1;
constexpr RowBits AllBits = ~RowBits(0);

/// A tile that the region comes to more often is part of a labyrinth, and cheaper by its components.
constexpr int MostSpreads = 4;

/// A wave of fewer tiles is over before another thread has woken up, and one of fewer tiles whose components
/// have to be found.
constexpr std::size_t SmallWave = 32;
constexpr std::size_t SmallWindingWave = 4;

std::size_t At(int y)
{
    return static_cast<std::size_t>(y);
}

/// Fewer than `fewest` stay on this thread.
void ForEach(std::size_t count, std::size_t fewest, const std::function<void(int)>& work)
{
    if (count >= fewest) {
        TileThreads::ForEach(static_cast<int>(count), work);
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        TileThreads::ThrowIfUnwanted();
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
    first.isQueued = true;
    m_Next.push_back(&first);

    std::vector<Tile*> wave;
    while (!m_Next.empty()) {
        wave.clear();
        std::swap(wave, m_Next);
        const bool isWinding = AddAhead(wave);
        ForEach(wave.size(), isWinding ? SmallWindingWave : SmallWave, [&](int i) { Visit(*wave[At(i)]); });
        for (Tile* const tile : wave) {
            tile->isQueued = false;
        }
        m_Leaving = wave;
        HandOver();
    }
}

void TileFlood::ForEachPart(const std::function<void(int, int, const TileBits&)>& visit) const
{
    TileBits whole;
    whole.rows.fill(AllBits);
    ForEach(m_Reached.size(), SmallWave, [&](int i) {
        const Tile& tile = *m_Reached[At(i)];
        if (tile.state == Tile::State::Taken) visit(tile.place.x(), tile.place.y(), whole);
        if (tile.state != Tile::State::Mixed) return;
        visit(tile.place.x(), tile.place.y(), tile.components ? tile.components->Taken() : tile.bits->region);
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
    if (tile->components) {
        const bool wasUseless = !tile->components->HasTaken();
        if (!tile->components->Take(side, pixels, tile->leaves)) return;
        m_Leaving.push_back(tile);
        if (wasUseless) ++m_Useful;
        return;
    }
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

/// Whether the region has come to the tile too often to spread there once more.
bool TileFlood::IsWinding(const Tile& tile)
{
    return tile.spreads == MostSpreads && !tile.components;
}

/// A labyrinth is followed tile by tile, each time the way one, so that there would never be work for several
/// threads. So when the components of a wave's tile are to be found, those of tiles around it are found too.
/// These are never more than have already been of use, so that at most half of the work is in vain. False
/// when nothing in the wave winds.
bool TileFlood::AddAhead(std::vector<Tile*>& wave)
{
    const auto isWinding = [](const Tile* tile) { return IsWinding(*tile); };
    const auto found = std::find_if(wave.begin(), wave.end(), isWinding);
    if (found == wave.end()) return false;

    const auto winding = static_cast<int>(std::count_if(found, wave.end(), isWinding));
    m_Walked += winding;
    m_Useful += winding;
    const int reach = (static_cast<int>(std::sqrt(2 * m_Useful - m_Walked)) - 1) / 2;
    const QPoint middle = (*found)->place;
    for (int y = middle.y() - reach; y <= middle.y() + reach; ++y) {
        for (int x = middle.x() - reach; x <= middle.x() + reach; ++x) {
            Tile* const tile = TileAt(QPoint(x, y));
            if (tile == nullptr || tile->isQueued || tile->components) continue;
            if (tile->state != Tile::State::Unseen && tile->state != Tile::State::Mixed) continue;
            wave.push_back(tile);
            ++m_Walked;
        }
    }
    return true;
}

/// Of a tile that isn't queued, only the components are found.
void TileFlood::Visit(Tile& tile)
{
    if (tile.state == Tile::State::Unseen) Look(tile);
    if (tile.state == Tile::State::Mixed && (IsWinding(tile) || !tile.isQueued)) {
        TakeComponents(tile);
    } else if (tile.state == Tile::State::Mixed) {
        ++tile.spreads;
        Spread(tile);
    } else if (tile.isQueued) {
        tile.state = Tile::State::Taken;
        tile.leaves.fill(AllBits);
    }
}

/// Tells the neighbours what came to the tiles' sides, and theirs what went on through components.
void TileFlood::HandOver()
{
    while (!m_Leaving.empty()) {
        Tile& tile = *m_Leaving.back();
        m_Leaving.pop_back();
        const SideBits leaves = std::exchange(tile.leaves, {});
        Reach(tile.place - QPoint(0, 1), Bottom, leaves[Top]);
        Reach(tile.place + QPoint(0, 1), Top, leaves[Bottom]);
        Reach(tile.place - QPoint(1, 0), Right, leaves[Left]);
        Reach(tile.place + QPoint(1, 0), Left, leaves[Right]);
    }
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

/// From now on the tile is taken by its components; those of the wanted pixels at once.
void TileFlood::TakeComponents(Tile& tile)
{
    Bits& bits = *tile.bits;
    tile.components = std::make_unique<TileComponents>(bits.open, bits.region);
    tile.components->Take(Top, bits.wanted.rows[0], tile.leaves);
    tile.components->Take(Bottom, bits.wanted.rows[LastInTile], tile.leaves);
    for (; bits.rowsToDo != 0; bits.rowsToDo &= bits.rowsToDo - 1) {
        const int y = TileBitsMath::CountTrailingZeros(bits.rowsToDo);
        const RowBits wanted = bits.wanted.rows[At(y)];
        if ((wanted & Bit(0)) != 0) tile.components->Take(Left, Bit(y), tile.leaves);
        if ((wanted & Bit(LastInTile)) != 0) tile.components->Take(Right, Bit(y), tile.leaves);
    }
    tile.bits.reset();
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
