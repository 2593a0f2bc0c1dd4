#include "gui/CoverageRows.h"

#include <QtMath>

#include <algorithm>
#include <utility>

namespace {
constexpr int MaskTileSize = 128;
constexpr int TilePixels = MaskTileSize * MaskTileSize;
} // namespace

CoverageRows::CoverageRows(const LXImage32& mask, const QPoint& offset, const CanvasPlace& place,
                           int firstColumn, int columns)
    : m_Mask(mask), m_Offset(offset), m_Place(place), m_Columns(std::size_t(columns))
{
    for (int i = 0; i < columns; ++i) {
        const int x = ToDocument(firstColumn + i, place.origin.x()) - offset.x();
        if (x < 0 || x >= mask.Width()) continue;
        const int tile = x / MaskTileSize;
        if (m_Spans.empty() || m_Spans.back().tile != tile) m_Spans.push_back({tile, std::size_t(i), 0});
        ++m_Spans.back().count;
        m_InTile.push_back(x % MaskTileSize);
    }
}

void CoverageRows::Read(int viewRow, std::vector<quint8>& coverage)
{
    const int y = ToDocument(viewRow, m_Place.origin.y()) - m_Offset.y();
    if (y != m_ReadRow) {
        ReadMaskRow(y);
        m_ReadRow = y;
    }
    coverage = m_Read;
}

int CoverageRows::ToDocument(int viewPos, int origin) const
{
    return qFloor((viewPos + 0.5 - origin) / m_Place.scale);
}

void CoverageRows::ReadMaskRow(int y)
{
    const int tileRow = y >= 0 && y < m_Mask.Height() ? y / MaskTileSize : None;
    const bool isOtherTile = tileRow != m_TileRow || m_Read.empty();
    if (isOtherTile) {
        m_Read.assign(m_Columns, 0);
        PinTiles(tileRow);
    }
    if (tileRow == None) return;

    const int* inTile = m_InTile.data();
    for (std::size_t i = 0; i < m_Spans.size(); ++i) {
        const Span& span = m_Spans[i];
        quint8* const target = m_Read.data() + span.first;
        if (m_Sources[i].solid == None) {
            const LXRGBA32i* const row = m_Sources[i].tile.Pixels() + y % MaskTileSize * MaskTileSize;
            std::transform(inTile, inTile + span.count, target,
                           [row](int x) { return quint8(row[x].Alpha()); });
        } else if (isOtherTile) {
            // The same for all of the tile's rows.
            std::fill_n(target, span.count, quint8(m_Sources[i].solid));
        }
        inTile += span.count;
    }
}

void CoverageRows::PinTiles(int tileRow)
{
    if (tileRow == m_TileRow) return;
    m_TileRow = tileRow;
    m_Sources.clear();
    if (tileRow == None) return;

    const LXTile* left = nullptr;
    for (const Span& span : m_Spans) {
        const LXTile* const tile = m_Mask.TileAt(span.tile, tileRow).data();
        LXTileReader<LXRGBA32i> pixels = m_Mask.ReadTile(span.tile, tileRow);
        // Only what a mask holds again and again is worth a look at pixels that nobody may ask for.
        const int solid =
            tile == left || m_Solid.count(tile) > 0 ? SolidCoverage(tile, pixels.Pixels()) : None;
        m_Sources.push_back({std::move(pixels), solid});
        left = tile;
    }
}

int CoverageRows::SolidCoverage(const LXTile* tile, const LXRGBA32i* pixels)
{
    const auto [place, isNew] = m_Solid.emplace(tile, None);
    if (isNew) {
        const int first = pixels->Alpha();
        const bool isSolid = std::all_of(pixels, pixels + TilePixels,
                                         [first](LXRGBA32i pixel) { return pixel.Alpha() == first; });
        if (isSolid) place->second = first;
    }
    return place->second;
}
