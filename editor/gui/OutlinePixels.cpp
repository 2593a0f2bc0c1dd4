#include "gui/OutlinePixels.h"

#include "gui/CoverageRows.h"

#include <cstring>
#include <vector>

namespace {
constexpr int DashLength = 4;
constexpr int CellShift = 5;
constexpr int HalfCoverage = 128;
constexpr int Neighbours = 8;

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

/// Whether eight neighbours are on the same side of one half as those to their left and above. One half is
/// the highest bit.
bool AreOffOutline(const quint8* row, const quint8* above)
{
    constexpr quint64 highestBits = 0x8080808080808080;
    quint64 here = 0;
    quint64 left = 0;
    quint64 up = 0;
    std::memcpy(&here, row, sizeof(here));
    std::memcpy(&left, row - 1, sizeof(left));
    std::memcpy(&up, above, sizeof(up));
    return (((here ^ left) | (here ^ up)) & highestBits) == 0;
}

/// Calls `visit(x, y)`, counted from the part's top left, for each pixel of the outline. A pixel is on it
/// when its left or upper neighbour is on the other side of one half.
template <class Visit>
void WalkOutline(const LXImage32& mask, const QPoint& offset, const CanvasPlace& place, const QRect& part,
                 Visit visit)
{
    CoverageRows rows(mask, offset, place, part.left() - 1, part.width() + 1);
    std::vector<quint8> above;
    std::vector<quint8> row;
    rows.Read(part.top() - 1, above);
    for (int y = 0; y < part.height(); ++y) {
        rows.Read(part.top() + y, row);
        for (int x = 0; x < part.width();) {
            const quint8* const here = row.data() + x + 1;
            const quint8* const up = above.data() + x + 1;
            if (x + Neighbours <= part.width() && AreOffOutline(here, up)) {
                x += Neighbours;
                continue;
            }
            const bool isIn = *here >= HalfCoverage;
            if (isIn != (here[-1] >= HalfCoverage) || isIn != (*up >= HalfCoverage)) visit(x, y);
            ++x;
        }
        above.swap(row);
    }
}
} // namespace

OutlinePixels DrawOutline(const LXImage32& mask, const QPoint& offset, const CanvasPlace& place,
                          const QRect& part, int phase)
{
    Cells cells(part);
    QImage dashes(part.size(), QImage::Format_ARGB32_Premultiplied);
    dashes.fill(Qt::transparent);
    const QPoint fromCanvas = part.topLeft() - place.origin;
    WalkOutline(mask, offset, place, part, [&](int x, int y) {
        const int dash = (fromCanvas.x() + x + fromCanvas.y() + y + phase) & (2 * DashLength - 1);
        reinterpret_cast<QRgb*>(dashes.scanLine(y))[x] =
            dash < DashLength ? qRgb(0, 0, 0) : qRgb(255, 255, 255);
        cells.Mark(part.left() + x, part.top() + y);
    });
    return {dashes, cells.Region()};
}

QRegion OutlineCells(const LXImage32& mask, const QPoint& offset, const CanvasPlace& place, const QRect& part)
{
    Cells cells(part);
    WalkOutline(mask, offset, place, part,
                [&](int x, int y) { cells.Mark(part.left() + x, part.top() + y); });
    return cells.Region();
}
