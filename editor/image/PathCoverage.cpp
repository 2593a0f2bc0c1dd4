#include "image/PathCoverage.h"

#include "image/CoverKernels.h"

#include <algorithm>
#include <cmath>

namespace {
using TileWalk::TileSide;

int TileOf(double position)
{
    return static_cast<int>(std::floor(position / TileSide));
}

int ToFixed(double value)
{
    return static_cast<int>(std::lround(value * CoverCells::One));
}
} // namespace

PathCoverage::PathCoverage(const QPainterPath& path, bool isAntialiased, const QRect& touched)
    : m_IsAntialiased(isAntialiased),
      m_IsOddEven(path.fillRule() == Qt::OddEvenFill),
      m_Tiles(QPoint(touched.left() / TileSide, touched.top() / TileSide),
              QPoint(touched.right() / TileSide, touched.bottom() / TileSide)),
      m_Edges(PathEdges::Of(path, touched)),
      m_EdgesOfRow(static_cast<std::size_t>(m_Tiles.height()))
{
    const double top = m_Tiles.top() * TileSide;
    const double end = (m_Tiles.bottom() + 1) * TileSide;
    for (std::size_t i = 0; i < m_Edges.size(); ++i) {
        const PathEdge& edge = m_Edges[i];
        if (edge.bottom.y() <= top || edge.top.y() >= end) continue;
        const int first = TileOf(std::max(edge.top.y(), top));
        const int last = TileOf(std::min(edge.bottom.y(), end - 1));
        for (int row = first; row <= last; ++row) {
            m_EdgesOfRow[static_cast<std::size_t>(row - m_Tiles.top())].push_back(static_cast<int>(i));
        }
    }
}

PathCoverage::TileRow::TileRow(const PathCoverage& coverage, int row)
    : m_Coverage(coverage),
      m_Top(row * TileSide),
      m_Bottom(m_Top + TileSide),
      m_Left(coverage.m_Tiles.left() * TileSide),
      m_Columns(coverage.m_Tiles.width()),
      m_Pieces(static_cast<std::size_t>(m_Columns))
{
    for (const int index : coverage.m_EdgesOfRow[static_cast<std::size_t>(row - coverage.m_Tiles.top())]) {
        const PathEdge& edge = coverage.m_Edges[static_cast<std::size_t>(index)];
        if (coverage.m_IsAntialiased) {
            AddSide(edge);
        } else {
            AddMiddles(edge);
        }
    }
}

/// Cuts the side where it crosses into the next tile. What lies left of the first column counts at its edge,
/// what lies right of the last doesn't count.
void PathCoverage::TileRow::AddSide(const PathEdge& edge)
{
    const double top = std::max(edge.top.y(), static_cast<double>(m_Top));
    const double bottom = std::min(edge.bottom.y(), static_cast<double>(m_Bottom));
    if (top >= bottom) return;

    const double end = edge.XAt(bottom) - m_Left;
    const auto columnOf = [this](double x) {
        return static_cast<int>(std::clamp(std::floor(x / TileSide), -1.0, static_cast<double>(m_Columns)));
    };
    const auto heightAt = [&](double x) {
        return edge.top.y() +
               (x - edge.top.x()) * (edge.bottom.y() - edge.top.y()) / (edge.bottom.x() - edge.top.x());
    };
    double x = edge.XAt(top) - m_Left;
    int y = ToFixed(top - m_Top);
    const int endY = ToFixed(bottom - m_Top);
    const int lastColumn = columnOf(end);
    for (int column = columnOf(x); column != lastColumn;) {
        const bool goesRight = column < lastColumn;
        const int border = (goesRight ? column + 1 : column) * TileSide;
        const double crossing = std::clamp(heightAt(border + m_Left), top, bottom);
        const int nextY = std::max(y, ToFixed(crossing - m_Top));
        AddPiece(column, x, y, border, nextY, edge.direction);
        x = border;
        y = nextY;
        column += goesRight ? 1 : -1;
    }
    AddPiece(lastColumn, x, y, end, endY, edge.direction);
}

/// A whole step of the winding number for each row whose middle the side crosses, at the first pixel whose
/// middle isn't left of it.
void PathCoverage::TileRow::AddMiddles(const PathEdge& edge)
{
    const auto rowOf = [this](double y) {
        return static_cast<int>(std::clamp(std::ceil(y - 0.5) - m_Top, 0.0, static_cast<double>(TileSide)));
    };
    const double width = m_Columns * TileSide;
    const int end = rowOf(edge.bottom.y());
    for (int row = rowOf(edge.top.y()); row < end; ++row) {
        const double x = std::ceil(edge.XAt(m_Top + row + 0.5) - 0.5) - m_Left;
        if (!(x < width)) continue;
        const double inside = std::max(x, 0.0);
        AddPiece(TileOf(inside), inside, row * CoverCells::One, inside, (row + 1) * CoverCells::One,
                 edge.direction);
    }
}

void PathCoverage::TileRow::AddPiece(int column, double x0, int y0, double x1, int y1, int direction)
{
    if (column >= m_Columns || y0 >= y1) return;
    const int inside = std::max(column, 0);
    const auto inTile = [inside](double x) {
        return ToFixed(std::clamp(x - inside * TileSide, 0.0, static_cast<double>(TileSide)));
    };
    m_Pieces[static_cast<std::size_t>(inside)].push_back(
        {inTile(column < 0 ? 0 : x0), y0, inTile(column < 0 ? 0 : x1), y1, direction});
}

const TileCoverage& PathCoverage::TileRow::Next()
{
    for (const PathPiece& piece : m_Pieces[static_cast<std::size_t>(m_Column)]) {
        m_Cells.Add(piece);
    }
    for (int y = 0; y < TileSide; ++y) {
        m_Tile.spans[static_cast<std::size_t>(y)] = ResolveRow(y);
    }
    ++m_Column;
    return m_Tile;
}

TileCoverage::Span PathCoverage::TileRow::ResolveRow(int y)
{
    int& before = m_Before[static_cast<std::size_t>(y)];
    const CoverCells::Row row = m_Cells.Take(y, before);
    before = row.after;

    // Most rows have no side in most tiles.
    const bool isOddEven = m_Coverage.m_IsOddEven;
    const quint8 first = CoverKernels::ToByte(row.before, isOddEven);
    if (row.first == row.end && row.before == row.after) return {0, 0, first, first};
    CoverKernels::ToBytes(row.cells, row.end - row.first, isOddEven,
                          m_Tile.bytes.data() + y * TileSide + row.first);
    return {row.first, row.end, first, CoverKernels::ToByte(row.after, isOddEven)};
}
