#pragma once

#include "EditorExport.h"

#include <QRectF>
#include <QSizeF>

/// Where a rectangle is taken hold of, besides its corners.
enum class RectangleGrip
{
    None,
    Inside,
    Left,
    Top,
    Right,
    Bottom
};

/// What a press at the point takes hold of: an edge within 6 pixels, but the inside keeps half of a thin
/// rectangle; else the inside.
/// @param rect   not of negative size
/// @param pixel  how long a screen pixel is, in the rectangle's units, across and down
ZK_EDITOR_EXPORT RectangleGrip GripAt(const QRectF& rect, const QPointF& point, const QSizeF& pixel);

/// How far outside an edge it is still hit, in screen pixels.
constexpr double GripReach = 6;

/// The rectangle after a drag by `delta`; of negative size when an edge passed the opposite one.
ZK_EDITOR_EXPORT QRectF DraggedRect(const QRectF& rect, RectangleGrip grip, const QPointF& delta);
