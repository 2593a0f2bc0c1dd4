#pragma once

#include "image/AxisKernels.h"
#include "image/LXImage.h"
#include "image/ResampleTaps.h"
#include "image/SourceStrip.h"

#include <QPoint>
#include <QRect>

#include <cstddef>
#include <vector>

/// Scales along the axes, the one first that leaves less to do: what becomes lower is mixed down and then
/// scaled across, all else is scaled across, a row of the source once a tile, and then mixed down.
class AxisScaler
{
public:
    /// @param origin   the target pixel of the first column's and row's taps; all must outlive this
    AxisScaler(const LXImage32& source, const QPoint& origin, const std::vector<ResampleTaps>& columns,
               const std::vector<ResampleTaps>& rows)
        : m_Source(source), m_Origin(origin), m_Columns(columns), m_Rows(rows)
    {}

    /// The rows of a part of the target, from top to bottom. One thread.
    class Part
    {
    public:
        Part(const AxisScaler& scaler, const QRect& part);

        /// Straight pixels, their alpha weakened by how much of the target pixel the source covers.
        void MakeRow(int y, LXRGBA32i* pixels);
        /// Premultiplied ones; `coverage` doesn't count.
        void MakePremultipliedRow(int y, LXRGBA32i* pixels);

        /// Of the source's rows that are held; however much the source is shrunk, it stays in bounds.
        std::size_t LineBytes() const;

    private:
        /// A row of the source, scaled across unless that comes last.
        struct Line
        {
            int y = -1;
            std::vector<float> sums;
        };

        /// The source's columns that the part needs, from the first to the one before the end.
        struct Columns
        {
            int first = 0;
            int end = 0;
            int taps = 0; ///< of the target pixel that has most
        };

        static Columns Needed(const AxisScaler& scaler, const QRect& part);
        static bool IsDownFirst(const AxisScaler& scaler, const QRect& part);
        void SetTaps();
        void SetLines();
        bool SumRow(const ResampleTaps& down);
        const float* LineAt(int y);
        void ReadPremultiplied(int y, float* line);
        void ScaleAcross(const float* line, float* row) const;

        const AxisScaler& m_Scaler;
        QRect m_Part;
        Columns m_Needed;
        bool m_IsDownFirst;
        SourceStrip m_Strip;
        std::vector<int> m_Firsts; ///< of each target pixel's taps, counted from m_Needed.first
        std::vector<float> m_Weights;
        std::vector<float> m_Coverage;      ///< across, four times a pixel
        std::vector<float> m_RowCoverage;   ///< the same times the row's
        std::vector<Line> m_Lines;          ///< as many as a row mixes, unless those are too many
        std::vector<float> m_Premultiplied; ///< one row of the source's width, or what rows were mixed to
        std::vector<float> m_Row;
        std::vector<const float*> m_DownLines;
        std::vector<float> m_DownWeights;
    };

    Part Enter(const QRect& part) const { return Part(*this, part); }

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
