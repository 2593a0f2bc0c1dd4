#include "image/CoverCells.h"

#include <algorithm>
#include <utility>

using TileWalk::TileSide;

namespace {
constexpr int SlopeBits = 32;
constexpr int ShareBits = 30;
} // namespace

CoverCells::CoverCells() : m_Cells(static_cast<std::size_t>(TileSide) * Stride, 0) {}

void CoverCells::Add(const PathPiece& piece)
{
    if (piece.y0 == piece.y1) return;

    // Each x comes from the top, so that no error adds up.
    const qint64 slope = (qint64(piece.x1 - piece.x0) * (qint64(1) << SlopeBits)) / (piece.y1 - piece.y0);
    int x = piece.x0;
    int y = piece.y0;
    while (y < piece.y1) {
        const int row = y >> Shift;
        const int nextY = std::min((row + 1) << Shift, piece.y1);
        const int nextX = nextY == piece.y1
                              ? piece.x1
                              : piece.x0 + static_cast<int>((slope * (nextY - piece.y0)) >> SlopeBits);
        AddInRow(row, x, nextX, (nextY - y) * piece.direction);
        x = nextX;
        y = nextY;
    }
}

/// Adds a piece of one row: `height` is its height with the direction's sign. In each cell the part of the
/// height that lies there counts as far as the pixel lies to its right, and its rest in the next one.
void CoverCells::AddInRow(int row, int x0, int x1, int height)
{
    if (x0 > x1) std::swap(x0, x1);
    const int first = x0 >> Shift;
    const int last = x1 > x0 ? (x1 - 1) >> Shift : first;
    Range& range = m_Ranges[static_cast<std::size_t>(row)];
    range.first = std::min(range.first, first);
    range.end = std::max(range.end, last + 2);

    int* const cells = m_Cells.data() + row * Stride;
    const auto addToCell = [cells](int cell, int part, int from, int to) {
        const int twiceMiddle = from + to - (cell << (Shift + 1));
        const int beyond = static_cast<int>((qint64(part) * twiceMiddle) >> (Shift + 1));
        cells[cell] += part - beyond;
        cells[cell + 1] += beyond;
    };
    if (first == last) {
        addToCell(first, height, x0, x1);
        return;
    }
    const qint64 share = (qint64(height) * (qint64(1) << ShareBits)) / (x1 - x0);
    int done = 0;
    int from = x0;
    for (int cell = first; cell < last; ++cell) {
        const int to = (cell + 1) << Shift;
        const int until = static_cast<int>((share * (to - x0)) >> ShareBits);
        addToCell(cell, until - done, from, to);
        done = until;
        from = to;
    }
    addToCell(last, height - done, from, x1);
}

CoverCells::Row CoverCells::Take(int y, int before)
{
    Range& range = m_Ranges[static_cast<std::size_t>(y)];
    if (range.first >= range.end) return {0, 0, before, before, m_Sums.data()};

    const int first = range.first / Group * Group;
    const int end = (range.end + Group - 1) / Group * Group;
    int* const cells = m_Cells.data() + y * Stride;
    int* const sums = m_Sums.data();
    std::fill(sums + first, sums + range.first, before);
    int sum = before;
    for (int i = range.first; i < range.end; ++i) {
        sum += cells[i];
        sums[i] = sum;
        cells[i] = 0;
    }
    std::fill(sums + range.end, sums + end, sum);
    range = Range();
    return {std::min(first, TileSide), std::min(end, TileSide), before, sum, sums + first};
}
