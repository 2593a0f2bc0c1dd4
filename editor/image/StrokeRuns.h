#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QtGlobal>

#include <optional>
#include <vector>

/// Points of a path that lie on one straight piece of it, evenly spaced.
struct StrokeRun
{
    QPointF At(qint64 index) const
    {
        const double length = offset + static_cast<double>(index) * spacing;
        return from + direction * length;
    }

    /// The part of the run whose points lie in the rectangle, its border included; nothing if none does.
    std::optional<StrokeRun> Within(const QRectF& rect) const;

    /// Around the first and the last point.
    QRectF Bounds() const;

    QPointF from;
    QPointF direction; ///< of length 1; null for a piece without a length
    double offset;     ///< from `from` to point 0
    double spacing;
    qint64 first; ///< index
    qint64 last;
};

namespace StrokeRuns {
/// Points from the start of each sub path on, `spacing` pixels of its length apart, those in `touched`.
/// Curves are walked as chords that leave them by less than a 256th of a pixel. A sub path that is nothing
/// but a start has no point. What it costs grows with the pieces of the path, not with its length.
std::vector<StrokeRun> Along(const QPainterPath& path, double spacing, const QRectF& touched);
} // namespace StrokeRuns
