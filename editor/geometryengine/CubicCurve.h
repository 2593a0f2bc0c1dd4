#pragma once

#include "EditorExport.h"

#include <QPointF>

#include <utility>

/// A cubic curve by its four control points. A value; any thread.
struct ZK_EDITOR_EXPORT CubicCurve
{
    QPointF from;
    QPointF fromGuide;
    QPointF toGuide;
    QPointF to;

    /// @param t  0 at `from`, 1 at `to`
    QPointF PointAt(double t) const;

    /// Both parts together are the same curve; the first ends where the second begins, to the last bit.
    std::pair<CubicCurve, CubicCurve> SplitAt(double t) const;

    /// Where the curve comes nearest to the point, from 0 to 1; the smallest of several such places.
    double NearestParameter(const QPointF& point) const;
};
