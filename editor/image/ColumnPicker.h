#pragma once

#include "image/LXImage.h"
#include "image/SourceStrip.h"

#include <QPoint>
#include <QRect>

#include <vector>

/// Which of a source's columns and rows the columns and rows of a target come from.
struct PickedPlaces
{
    QPoint origin;            ///< the target pixel that comes first
    std::vector<int> columns; ///< rising or falling; -1 for none
    std::vector<int> rows;    ///< likewise
};

/// The rows of a part of the target, each pixel a copy of one of the source. One thread.
class ColumnPicker
{
public:
    /// Source and places must outlive this.
    ColumnPicker(const LXImage32& source, const PickedPlaces& places, const QRect& part);

    void MakeRow(int y, LXRGBA32i* pixels);

private:
    /// From the first to the one before the end.
    struct Range
    {
        int first;
        int end;
    };

    static Range ColumnsOf(const PickedPlaces& places, const QRect& part);
    int RowAt(int y) const;

    const PickedPlaces& m_Places;
    QRect m_Part;
    Range m_SourceColumns;
    SourceStrip m_Strip;
    std::vector<Range> m_Spans; ///< target pixels of one source tile each, as the strip has its tiles
    std::vector<int> m_Columns; ///< of each target pixel, counted from its tile's span in the strip
    int m_PicksInALine;         ///< of the caches
};
