#include "gui/OutlinePixels.h"

#include "image/LXImage.h"

#include <QtMath>

#include <algorithm>
#include <limits>
#include <vector>

namespace {
constexpr int DashLength = 4;
constexpr int CellShift = 5;
constexpr int HalfCoverage = 128;
constexpr int MaskTileSize = 128;
constexpr int Outside = -1;

/// Tells for rows of viewport pixels whether their middles are selected.
class SelectedRows
{
public:
    SelectedRows(const LXImage32& mask, const QPoint& offset, const CanvasPlace& place, int firstColumn,
                 int columns)
        : m_Mask(mask), m_Offset(offset), m_Place(place), m_MaskColumns(std::size_t(columns))
    {
        for (int i = 0; i < columns; ++i) {
            const int x = ToDocument(firstColumn + i, place.origin.x()) - offset.x();
            m_MaskColumns[std::size_t(i)] = x >= 0 && x < mask.Width() ? x : Outside;
        }
    }

    void Read(int viewRow, std::vector<quint8>& selected)
    {
        const int y = ToDocument(viewRow, m_Place.origin.y()) - m_Offset.y();
        if (y != m_ReadRow) {
            ReadMaskRow(y);
            m_ReadRow = y;
        }
        selected = m_Read;
    }

private:
    int ToDocument(int viewPos, int origin) const { return qFloor((viewPos + 0.5 - origin) / m_Place.scale); }

    void ReadMaskRow(int y)
    {
        m_Read.assign(m_MaskColumns.size(), 0);
        if (y < 0 || y >= m_Mask.Height()) return;

        PinTiles(y / MaskTileSize);
        for (std::size_t i = 0; i < m_MaskColumns.size(); ++i) {
            const int x = m_MaskColumns[i];
            if (x == Outside) continue;
            const LXRGBA32i* const tile = m_Tiles[std::size_t(x / MaskTileSize - m_FirstTile)].Pixels();
            const int inTile = y % MaskTileSize * MaskTileSize + x % MaskTileSize;
            m_Read[i] = tile[inTile].Alpha() >= HalfCoverage ? 1 : 0;
        }
    }

    /// Columns rise, so that what is inside the mask lies between the first and the last of them.
    void PinTiles(int tileRow)
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

    const LXImage32& m_Mask;
    QPoint m_Offset;
    const CanvasPlace& m_Place;
    std::vector<int> m_MaskColumns;
    std::vector<quint8> m_Read; ///< of the mask row m_ReadRow
    int m_ReadRow = std::numeric_limits<int>::min();
    std::vector<LXTileReader<LXRGBA32i>> m_Tiles; ///< of the row m_TileRow, from m_FirstTile on
    int m_FirstTile = 0;
    int m_TileRow = Outside;
};

/// Which squares of the viewport the outline runs through.
class Cells
{
public:
    explicit Cells(const QRect& part)
        : m_Grid(QPoint(part.left() >> CellShift, part.top() >> CellShift),
                 QPoint(part.right() >> CellShift, part.bottom() >> CellShift)),
          m_Marks(std::size_t(m_Grid.width()) * std::size_t(m_Grid.height()))
    {}

    void Mark(int viewX, int viewY)
    {
        const int column = (viewX >> CellShift) - m_Grid.left();
        const int row = (viewY >> CellShift) - m_Grid.top();
        m_Marks[std::size_t(row) * std::size_t(m_Grid.width()) + std::size_t(column)] = 1;
    }

    QRegion Region() const
    {
        QRegion region;
        for (std::size_t i = 0; i < m_Marks.size(); ++i) {
            if (!m_Marks[i]) continue;
            const int column = m_Grid.left() + int(i) % m_Grid.width();
            const int row = m_Grid.top() + int(i) / m_Grid.width();
            region += QRect(column << CellShift, row << CellShift, 1 << CellShift, 1 << CellShift);
        }
        return region;
    }

private:
    QRect m_Grid;
    std::vector<quint8> m_Marks;
};
} // namespace

OutlinePixels DrawOutline(const LXImage32& mask, const QPoint& offset, const CanvasPlace& place,
                          const QRect& part, int phase)
{
    // A pixel is on the outline when its left or upper neighbour is on the other side.
    SelectedRows rows(mask, offset, place, part.left() - 1, part.width() + 1);
    std::vector<quint8> above;
    std::vector<quint8> row;
    rows.Read(part.top() - 1, above);

    Cells cells(part);
    QImage dashes(part.size(), QImage::Format_ARGB32_Premultiplied);
    dashes.fill(Qt::transparent);
    for (int y = 0; y < part.height(); ++y) {
        rows.Read(part.top() + y, row);
        auto* const out = reinterpret_cast<QRgb*>(dashes.scanLine(y));
        const QPoint fromCanvas = part.topLeft() + QPoint(0, y) - place.origin;
        for (int x = 0; x < part.width(); ++x) {
            const std::size_t i = std::size_t(x) + 1;
            if (row[i] == row[i - 1] && row[i] == above[i]) continue;
            const int dash = (fromCanvas.x() + x + fromCanvas.y() + phase) & (2 * DashLength - 1);
            out[x] = dash < DashLength ? qRgb(0, 0, 0) : qRgb(255, 255, 255);
            cells.Mark(part.left() + x, part.top() + y);
        }
        above.swap(row);
    }
    return {dashes, cells.Region()};
}
