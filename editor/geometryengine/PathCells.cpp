#include "geometryengine/PathCells.h"

#include <QLineF>
#include <QPainterPath>
#include <QPolygonF>
#include <QtMath>

#include <algorithm>
#include <vector>

namespace {
constexpr int CellSide = 32;
constexpr double Step = 16; ///< between two points of a line that are looked at

/// Which cells of the clip were touched.
class CellGrid
{
public:
    explicit CellGrid(const QRect& clip)
        : m_Columns(CellOf(clip.left()), CellOf(clip.right())),
          m_Rows(CellOf(clip.top()), CellOf(clip.bottom())),
          m_Touched(std::size_t(Width()) * std::size_t(m_Rows.second - m_Rows.first + 1))
    {}

    /// Touches the cells of the square round the point.
    void Touch(const QPointF& point, double reach)
    {
        const int left = std::max(CellOf(point.x() - reach), m_Columns.first);
        const int right = std::min(CellOf(point.x() + reach), m_Columns.second);
        const int top = std::max(CellOf(point.y() - reach), m_Rows.first);
        const int bottom = std::min(CellOf(point.y() + reach), m_Rows.second);
        for (int row = top; row <= bottom; ++row) {
            for (int column = left; column <= right; ++column)
                m_Touched[Index(column, row)] = true;
        }
    }

    QRegion Region() const
    {
        QRegion region;
        for (int row = m_Rows.first; row <= m_Rows.second; ++row) {
            for (int column = m_Columns.first; column <= m_Columns.second; ++column) {
                if (m_Touched[Index(column, row)])
                    region += QRect(column * CellSide, row * CellSide, CellSide, CellSide);
            }
        }
        return region;
    }

private:
    static int CellOf(double pixel) { return qFloor(pixel / CellSide); }

    int Width() const { return m_Columns.second - m_Columns.first + 1; }

    std::size_t Index(int column, int row) const
    {
        return std::size_t(row - m_Rows.first) * std::size_t(Width()) + std::size_t(column - m_Columns.first);
    }

    std::pair<int, int> m_Columns; ///< the first and the last
    std::pair<int, int> m_Rows;
    std::vector<bool> m_Touched;
};

/// Narrows the part of a line, as fractions of its length, to where `start + fraction * slope` is at least 0.
void KeepPositive(double start, double slope, double& from, double& to)
{
    if (qFuzzyIsNull(slope)) {
        if (start < 0) to = from - 1;
    } else if (slope > 0) {
        from = std::max(from, -start / slope);
    } else {
        to = std::min(to, -start / slope);
    }
}

void TouchAlong(const QLineF& line, double reach, const QRectF& area, CellGrid& cells)
{
    double from = 0;
    double to = 1;
    KeepPositive(line.x1() - area.left(), line.dx(), from, to);
    KeepPositive(area.right() - line.x1(), -line.dx(), from, to);
    KeepPositive(line.y1() - area.top(), line.dy(), from, to);
    KeepPositive(area.bottom() - line.y1(), -line.dy(), from, to);
    if (from > to) return;

    const QLineF inside(line.pointAt(from), line.pointAt(to));
    const int steps = std::max(1, qCeil(inside.length() / Step));
    for (int i = 0; i <= steps; ++i)
        cells.Touch(inside.pointAt(double(i) / steps), reach + Step / 2);
}
} // namespace

QRegion CellsAlong(const QPainterPath& path, double reach, const QRect& clip)
{
    if (clip.isEmpty()) return {};
    CellGrid cells(clip);
    const QRectF area = QRectF(clip).adjusted(-reach, -reach, reach, reach);
    const QList<QPolygonF> polygons = path.toSubpathPolygons();
    for (const QPolygonF& polygon : polygons) {
        for (int i = 1; i < polygon.size(); ++i)
            TouchAlong({polygon[i - 1], polygon[i]}, reach, area, cells);
    }
    return cells.Region() & clip;
}
