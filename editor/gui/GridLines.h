#pragma once

#include "gui/CanvasPainter.h"

class QPainter;

/// Lines over the canvas at even distances from its top left, one viewport pixel wide. They stay away where
/// they would stand too close to see anything between them. A value; main thread only.
class GridLines
{
public:
    /// Lines are seen from this distance on, viewport pixels.
    static constexpr double LeastDistance = 6;

    /// @param step  document pixels; 0 for no grid
    explicit GridLines(int step = 0) : m_Step(step) {}

    int Step() const { return m_Step; }

    /// Draws what lies in these viewport pixels.
    void Paint(QPainter& painter, const QRect& exposed, const CanvasPlace& place) const;

private:
    int m_Step;
};
