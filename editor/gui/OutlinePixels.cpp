#include "gui/OutlinePixels.h"

#include "gui/CoverageRows.h"

#include <vector>

namespace {
constexpr int DashLength = 4;
constexpr int CellShift = 5;
constexpr int HalfCoverage = 128;

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
    CoverageRows rows(mask, offset, place, part.left() - 1, part.width() + 1);
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
            const bool isIn = row[i] >= HalfCoverage;
            if (isIn == (row[i - 1] >= HalfCoverage) && isIn == (above[i] >= HalfCoverage)) continue;
            const int dash = (fromCanvas.x() + x + fromCanvas.y() + phase) & (2 * DashLength - 1);
            out[x] = dash < DashLength ? qRgb(0, 0, 0) : qRgb(255, 255, 255);
            cells.Mark(part.left() + x, part.top() + y);
        }
        above.swap(row);
    }
    return {dashes, cells.Region()};
}
