#pragma once

#include "document/LXGuide.h"

#include <QPointF>
#include <QRect>
#include <QVector>

/// Lines that dragged things are brought to. A value; document pixels: 0 is the canvas' edge, 1 the edge
/// between the first and the second pixel.
class SnapLines
{
public:
    /// The four edges of a box of pixels; nothing for an empty one.
    void AddEdges(const QRect& box);
    /// The two lines through its middle.
    void AddMiddles(const QRect& box);
    void AddGuides(const LXGuides& guides);

    /// Lines in both directions from the canvas' top left on.
    void SetGrid(int step) { m_GridStep = step; }

    /// The way that brings an edge or the middle of the moved box to the nearest line, in each direction by
    /// itself, in whole pixels; the same as given where no line is within reach. The box's edges come before
    /// its middle when both are as near.
    /// @param moved  where it was before it took any way
    /// @param reach  document pixels
    QPointF Snapped(const QRect& moved, const QPointF& way, double reach) const;

private:
    double SnappedWay(const QVector<double>& lines, int first, int last, double way, double reach) const;

    QVector<double> m_Vertical;
    QVector<double> m_Horizontal;
    int m_GridStep = 0; ///< 0: no grid
};
