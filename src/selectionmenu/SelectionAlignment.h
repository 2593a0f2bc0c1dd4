#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

/// Where a selection goes inside the canvas.
enum class SelectionAlignment
{
    Center,
    HorizontalCenter,
    VerticalCenter,
    Left,
    Right,
    Top,
    Bottom,
};

/// How far the selection moves, in document pixels. Both middles are halves of sums of inclusive edges, each
/// truncated toward zero by itself; so a pixel of difference may stay where the sizes differ in parity.
/// @param selection  its mask's rectangle; it may reach outside the canvas.
QPoint AlignmentDelta(SelectionAlignment alignment, const QRect& selection, const QSize& canvas);
