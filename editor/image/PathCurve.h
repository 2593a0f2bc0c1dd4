#pragma once

#include <QPointF>
#include <QRectF>

#include <algorithm>
#include <cmath>

/// A cubic curve and the chords that stand for it.
struct PathCurve
{
    static constexpr double Tolerance = 1.0 / 256;
    static constexpr double MostChords = 4096;

    QPointF points[4];

    QPointF At(double t) const
    {
        const double rest = 1 - t;
        return points[0] * (rest * rest * rest) + points[1] * (3 * rest * rest * t) +
               points[2] * (3 * rest * t * t) + points[3] * (t * t * t);
    }

    bool Meets(const QRectF& rect) const
    {
        const auto [left, right] = std::minmax({points[0].x(), points[1].x(), points[2].x(), points[3].x()});
        const auto [top, bottom] = std::minmax({points[0].y(), points[1].y(), points[2].y(), points[3].y()});
        return right >= rect.left() && left <= rect.right() && bottom >= rect.top() && top <= rect.bottom();
    }

    /// So many chords leave the curve by less than the tolerance, in pixels. A chord leaves its curve by an
    /// eighth of the second derivative at most, which is six times the larger of these differences.
    int ChordCount() const
    {
        const QPointF first = points[0] - 2 * points[1] + points[2];
        const QPointF second = points[1] - 2 * points[2] + points[3];
        const double most = std::max(std::hypot(first.x(), first.y()), std::hypot(second.x(), second.y()));
        const double count = std::ceil(std::sqrt(0.75 * most / Tolerance));
        return static_cast<int>(std::clamp(count, 1.0, MostChords));
    }

    /// Calls `lineTo(point)` for the end of each chord; the last one is the curve's own end, to the last bit.
    template <class LineTo>
    void WalkChords(int count, const LineTo& lineTo) const
    {
        for (int i = 1; i < count; ++i) {
            lineTo(At(static_cast<double>(i) / count));
        }
        lineTo(points[3]);
    }
};
