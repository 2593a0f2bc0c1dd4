#include "gui/CoverageRows.h"

#include <QtMath>

#include <algorithm>

namespace {
constexpr int MaskTileSize = 128;
}

CoverageRows::CoverageRows(const LXImage32& mask, const QPoint& offset, const CanvasPlace& place,
                           int firstColumn, int columns)
    : m_Mask(mask), m_Offset(offset), m_Place(place), m_MaskColumns(std::size_t(columns))
{
    for (int i = 0; i < columns; ++i) {
        const int x = ToDocument(firstColumn + i, place.origin.x()) - offset.x();
        m_MaskColumns[std::size_t(i)] = x >= 0 && x < mask.Width() ? x : Outside;
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
    m_Read.assign(m_MaskColumns.size(), 0);
    if (y < 0 || y >= m_Mask.Height()) return;

    PinTiles(y / MaskTileSize);
    for (std::size_t i = 0; i < m_MaskColumns.size(); ++i) {
        const int x = m_MaskColumns[i];
        if (x == Outside) continue;
        const LXRGBA32i* const tile = m_Tiles[std::size_t(x / MaskTileSize - m_FirstTile)].Pixels();
        m_Read[i] = quint8(tile[y % MaskTileSize * MaskTileSize + x % MaskTileSize].Alpha());
    }
}

/// Columns rise, so that what is inside the mask lies between the first and the last of them.
void CoverageRows::PinTiles(int tileRow)
{
    if (tileRow == m_TileRow) return;
    m_TileRow = tileRow;
    m_Tiles.clear();
    const auto isInside = [](int x) { return x != Outside; };
    const auto first = std::find_if(m_MaskColumns.begin(), m_MaskColumns.end(), isInside);
    if (first == m_MaskColumns.end()) return;
    const auto last = std::find_if(m_MaskColumns.rbegin(), m_MaskColumns.rend(), isInside);
    m_FirstTile = *first / MaskTileSize;
    for (int column = m_FirstTile; column <= *last / MaskTileSize; ++column) {
        m_Tiles.push_back(m_Mask.ReadTile(column, tileRow));
    }
}
