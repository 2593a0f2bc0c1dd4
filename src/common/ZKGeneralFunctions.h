#pragma once

#include <QPointF>

/// Geometry that several tools share. Any thread.
namespace ZKGeneralFunctions {
/// The direction out of eight that a constrained drag keeps to: each coordinate is -1, 0 or 1, y grows
/// downward. Equal points give (1, 0). The sectors beside the negative x axis are wider than the others.
QPointF SnapDirection(const QPointF& from, const QPointF& to);

/// The foot of the perpendicular from `point` on the line through `origin` along `direction`, which
/// need not have the length 1. A direction of exactly (0, 0) is reported and gives `point` back.
QPointF ProjectPointOnLine(const QPointF& point, const QPointF& direction, const QPointF& origin);
} // namespace ZKGeneralFunctions
