#include "gui/LevelSurvey.h"

#include "image/TileThreads.h"
#include "image/TileWalk.h"

#include <algorithm>
#include <map>

namespace {
bool HasPixels(const LevelCounts::Tile& tile)
{
    const auto& luminance = tile[LevelCounts::Luminance];
    return std::any_of(luminance.begin(), luminance.end(), [](quint16 count) { return count > 0; });
}

LevelSurvey::TileCounts CountTile(const LXImage32& picture, const QPoint& tile)
{
    const QRect part = TileWalk::TileRect(tile.x(), tile.y()) & picture.Rect();
    const auto reader = picture.ReadTile(tile.x(), tile.y());
    const LevelCounts::Tile counts = LevelCounts::CountTile(reader.Pixels(), part.size());
    return HasPixels(counts) ? std::make_shared<const LevelCounts::Tile>(counts) : nullptr;
}
} // namespace

std::vector<LevelSurvey::TileCounts> LevelSurvey::Count(const PictureSurvey::Batch& batch)
{
    // What was filled with one color repeats its tile, and an empty canvas has no other.
    std::map<std::pair<const LXTile*, QPair<int, int>>, std::size_t> firstPlaces;
    std::vector<std::size_t> sources;
    std::vector<std::size_t> distinct;
    for (const QPoint& tile : batch.tiles) {
        const QSize size = (TileWalk::TileRect(tile.x(), tile.y()) & batch.picture.Rect()).size();
        const auto [place, isNew] = firstPlaces.try_emplace(
            {batch.picture.TileAt(tile.x(), tile.y()).data(), {size.width(), size.height()}}, sources.size());
        if (isNew) distinct.push_back(sources.size());
        sources.push_back(place->second);
    }

    std::vector<TileCounts> counts(batch.tiles.size());
    TileThreads::ForEach(int(distinct.size()), [&](int i) {
        const std::size_t place = distinct[std::size_t(i)];
        counts[place] = CountTile(batch.picture, batch.tiles[place]);
    });
    for (std::size_t i = 0; i < counts.size(); ++i)
        counts[i] = counts[sources[i]];
    return counts;
}

LevelSurvey::LevelSurvey(QObject* parent) : QObject(parent), m_Survey(this)
{
    connect(&m_Survey, &PictureSurvey::Restarted, this, &LevelSurvey::Forget);
}

void LevelSurvey::SetDocument(LXDocumentInterface* document)
{
    m_Survey.Follow(document, [this](const PictureSurvey::Batch& batch) -> PictureSurvey::Delivery {
        return [this, tiles = batch.tiles, counts = Count(batch)] { Deliver(tiles, counts); };
    });
}

void LevelSurvey::Forget()
{
    const QSize canvas = m_Survey.GetCanvas();
    m_Columns = (canvas.width() + TileWalk::TileSide - 1) / TileWalk::TileSide;
    const int rows = (canvas.height() + TileWalk::TileSide - 1) / TileWalk::TileSide;
    m_Tiles.assign(std::size_t(m_Columns) * std::size_t(rows), nullptr);
    m_Sum = LevelCounts::Sum();
    emit Changed();
}

void LevelSurvey::Deliver(const std::vector<QPoint>& tiles, const std::vector<TileCounts>& counts)
{
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        TileCounts& kept =
            m_Tiles[std::size_t(tiles[i].y()) * std::size_t(m_Columns) + std::size_t(tiles[i].x())];
        if (kept) m_Sum.Subtract(*kept);
        kept = counts[i];
        if (kept) m_Sum.Add(*kept);
    }
    emit Changed();
}
