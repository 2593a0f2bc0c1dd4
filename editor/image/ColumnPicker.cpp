#include "image/ColumnPicker.h"

#include "image/TileWalk.h"

#include <hwy/cache_control.h>

#include <algorithm>
#include <utility>

using TileWalk::TileSide;

ColumnPicker::ColumnPicker(const LXImage32& source, const std::vector<int>& columns, int first, int end)
    : m_Strip(source, first, end), m_Columns(columns)
{
    const int count = static_cast<int>(columns.size());
    for (int x = first; x < end; x = (x / TileSide + 1) * TileSide) {
        Span span{count, 0};
        for (int i = 0; i < count; ++i) {
            const int column = columns[static_cast<std::size_t>(i)];
            if (column < 0 || column / TileSide != x / TileSide) continue;
            span.first = std::min(span.first, i);
            span.end = i + 1;
            m_Columns[static_cast<std::size_t>(i)] = column - x;
        }
        m_Spans.push_back(span);
    }
}

void ColumnPicker::MakeRow(int row, LXRGBA32i* pixels)
{
    const auto count = m_Columns.size();
    if (row < 0 || m_Spans.empty()) {
        std::fill_n(pixels, count, LXRGBA32i());
        return;
    }
    // Beside the source there is nothing.
    const int first = std::min(m_Spans.front().first, m_Spans.back().first);
    const int end = std::max(m_Spans.front().end, m_Spans.back().end);
    std::fill_n(pixels, first, LXRGBA32i());
    std::fill(pixels + end, pixels + count, LXRGBA32i());
    // Rows come evenly, but the processor doesn't see that in tiles: it is told of the next one.
    const int step = row - std::exchange(m_LastRow, row);
    const int next = row % TileSide + step;
    const bool isNear = next >= 0 && next < TileSide;
    auto span = m_Spans.begin();
    m_Strip.ReadRow(row, [&](const LXRGBA32i* source, int, int spanCount) {
        constexpr int line = 16; // pixels of a line of the caches
        for (int x = 0; x < spanCount && isNear; x += line) {
            hwy::Prefetch(source + step * TileSide + x);
        }
        for (int i = span->first; i < span->end; ++i) {
            pixels[i] = source[m_Columns[static_cast<std::size_t>(i)]];
        }
        ++span;
    });
}
