#pragma once

#include <QPainterPath>
#include <QPointF>

#include <vector>

/// A side of a path that goes up or down, image coordinates.
struct PathEdge
{
    QPointF top;
    QPointF bottom;
    int direction; ///< 1 when the path goes down here, else -1

    /// The same for both paths that share the edge, whichever way they go.
    double XAt(double y) const
    {
        return top.x() + (y - top.y()) * (bottom.x() - top.x()) / (bottom.y() - top.y());
    }
};

namespace PathEdges {
/// The sides of all sub paths, each closed, without those that are level. Curves become chords that leave
/// them by less than a 256th of a pixel; those that don't meet `rect` become one.
std::vector<PathEdge> Of(const QPainterPath& path, const QRectF& rect);
} // namespace PathEdges
