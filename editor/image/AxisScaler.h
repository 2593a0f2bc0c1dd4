#pragma once

#include "image/LXImage.h"
#include "image/ResampleTaps.h"

#include <QPoint>
#include <QRect>

#include <vector>

/// Scales along the axes: rows of the source are scaled across first, once a tile, and then mixed down.
class AxisScaler
{
    struct Sum
    {
        float of[4]; ///< blue, green and red times alpha, and alpha
    };

public:
    /// @param origin   the target pixel of the first column's and row's taps; all must outlive this
    AxisScaler(const LXImage32& source, const QPoint& origin, const std::vector<ResampleTaps>& columns,
               const std::vector<ResampleTaps>& rows)
        : m_Source(source), m_Origin(origin), m_Columns(columns), m_Rows(rows)
    {}

    /// The rows of one tile, from top to bottom. One thread.
    class Tile
    {
    public:
        Tile(const AxisScaler& scaler, const QRect& part);

        void MakeRow(int y, LXRGBA32i* pixels);

    private:
        struct Line
        {
            int y = -1;
            std::vector<Sum> sums;
        };

        const std::vector<Sum>& LineAt(int y);

        const AxisScaler& m_Scaler;
        QRect m_Part;
        int m_First = 0; ///< the source's columns that the tile needs
        int m_End = 0;
        std::vector<Line> m_Lines; ///< as many as a row mixes
        std::vector<Sum> m_Premultiplied;
        std::vector<Sum> m_Row;
    };

    Tile Enter(const QRect& part) const { return Tile(*this, part); }

private:
    const ResampleTaps& ColumnAt(int x) const
    {
        return m_Columns[static_cast<std::size_t>(x - m_Origin.x())];
    }

    const ResampleTaps& RowAt(int y) const { return m_Rows[static_cast<std::size_t>(y - m_Origin.y())]; }

    const LXImage32& m_Source;
    QPoint m_Origin;
    const std::vector<ResampleTaps>& m_Columns;
    const std::vector<ResampleTaps>& m_Rows;
};
