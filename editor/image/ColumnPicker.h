#pragma once

#include "image/LXImage.h"
#include "image/SourceStrip.h"

#include <vector>

/// Rows of target pixels that are copies of source pixels, the same columns in each row. One thread.
class ColumnPicker
{
public:
    /// @param columns     the source column of each target pixel, rising or falling, -1 for none
    /// @param first, end  what columns occur, from the first to the one before the end
    ColumnPicker(const LXImage32& source, const std::vector<int>& columns, int first, int end);

    /// `row` of the source, -1 for none.
    void MakeRow(int row, LXRGBA32i* pixels);

private:
    /// Target pixels whose columns lie in one tile, from the first to the one before the end.
    struct Span
    {
        int first;
        int end;
    };

    SourceStrip m_Strip;
    int m_LastRow = -1;
    std::vector<Span> m_Spans;  ///< as the strip has its tiles
    std::vector<int> m_Columns; ///< of each target pixel, counted from its tile's span in the strip
};
