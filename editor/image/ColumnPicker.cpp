#include "image/ColumnPicker.h"

#include "image/TileWalk.h"

#include <hwy/cache_control.h>

#include <algorithm>
#include <cstddef>

using TileWalk::TileSide;

namespace {
constexpr int PixelsOfALine = 16;

/// In tiles the processor doesn't see that rows come evenly, so it is told of the row after the next one.
constexpr int RowsAhead = 2;
} // namespace

ColumnPicker::ColumnPicker(const LXImage32& source, const PickedPlaces& places, const QRect& part)
    : m_Places(places),
      m_Part(part),
      m_SourceColumns(ColumnsOf(places, part)),
      m_Strip(source, m_SourceColumns.first, m_SourceColumns.end)
{
    const auto first = places.columns.begin() + (part.left() - places.origin.x());
    m_Columns.assign(first, first + part.width());
    const int count = part.width();
    for (int x = m_SourceColumns.first; x < m_SourceColumns.end; x = (x / TileSide + 1) * TileSide) {
        Range span{count, 0};
        for (int i = 0; i < count; ++i) {
            const int column = *(first + i);
            if (column < 0 || column / TileSide != x / TileSide) continue;
            span.first = std::min(span.first, i);
            span.end = i + 1;
            m_Columns[static_cast<std::size_t>(i)] = column - x;
        }
        m_Spans.push_back(span);
    }
    // Rather too few than lines left out.
    const int wide = m_SourceColumns.end - m_SourceColumns.first;
    m_PicksInALine = std::max(1, PixelsOfALine * count / (wide + count));
}

ColumnPicker::Range ColumnPicker::ColumnsOf(const PickedPlaces& places, const QRect& part)
{
    Range range{0, 0};
    for (int x = part.left(); x <= part.right(); ++x) {
        const int column = places.columns[static_cast<std::size_t>(x - places.origin.x())];
        if (column < 0) continue;
        range.first = range.end == 0 ? column : std::min(range.first, column);
        range.end = std::max(range.end, column + 1);
    }
    return range;
}

int ColumnPicker::RowAt(int y) const
{
    return m_Places.rows[static_cast<std::size_t>(y - m_Places.origin.y())];
}

void ColumnPicker::MakeRow(int y, LXRGBA32i* pixels)
{
    const auto count = m_Columns.size();
    const int row = RowAt(y);
    if (row < 0 || m_Spans.empty()) {
        std::fill_n(pixels, count, LXRGBA32i());
        return;
    }
    // Beside the source there is nothing.
    const int first = std::min(m_Spans.front().first, m_Spans.back().first);
    const int end = std::max(m_Spans.front().end, m_Spans.back().end);
    std::fill_n(pixels, first, LXRGBA32i());
    std::fill(pixels + end, pixels + count, LXRGBA32i());

    const int rowAhead = y + RowsAhead <= m_Part.bottom() ? RowAt(y + RowsAhead) : -1;
    const bool isAheadNear = rowAhead >= 0 && rowAhead / TileSide == row / TileSide;
    auto span = m_Spans.begin();
    m_Strip.ReadRow(row, [&](const LXRGBA32i* source, int, int) {
        const LXRGBA32i* const ahead = source + std::ptrdiff_t(rowAhead - row) * TileSide;
        for (int i = span->first; i < span->end && isAheadNear; i += m_PicksInALine) {
            hwy::Prefetch(ahead + m_Columns[static_cast<std::size_t>(i)]);
        }
        for (int i = span->first; i < span->end; ++i) {
            pixels[i] = source[m_Columns[static_cast<std::size_t>(i)]];
        }
        ++span;
    });
}
