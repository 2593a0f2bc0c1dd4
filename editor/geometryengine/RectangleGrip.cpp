#include "geometryengine/RectangleGrip.h"

#include <QtGlobal>

#include <cmath>

namespace {
/// How well an edge is hit, out of two opposite ones.
struct EdgeHit
{
    RectangleGrip grip = RectangleGrip::None;
    double distance = 0; ///< screen pixels
};

/// @param toFirst   pixels from the first edge to the point, towards the second one
/// @param toSecond  pixels from the point to the second edge
EdgeHit NearerEdge(double toFirst, double toSecond, RectangleGrip first, RectangleGrip second)
{
    const double reachInside = qMin(GripReach, (toFirst + toSecond) / 4);
    const auto isHit = [&](double distance) { return distance >= -GripReach && distance <= reachInside; };
    if (isHit(toFirst) && (!isHit(toSecond) || std::abs(toFirst) < std::abs(toSecond)))
        return {first, std::abs(toFirst)};
    if (isHit(toSecond)) return {second, std::abs(toSecond)};
    return {};
}
} // namespace

RectangleGrip GripAt(const QRectF& rect, const QPointF& point, const QSizeF& pixel)
{
    const double toLeft = (point.x() - rect.left()) / pixel.width();
    const double toRight = (rect.right() - point.x()) / pixel.width();
    const double toTop = (point.y() - rect.top()) / pixel.height();
    const double toBottom = (rect.bottom() - point.y()) / pixel.height();
    if (qMin(qMin(toLeft, toRight), qMin(toTop, toBottom)) < -GripReach) return RectangleGrip::None;

    const EdgeHit across = NearerEdge(toLeft, toRight, RectangleGrip::Left, RectangleGrip::Right);
    const EdgeHit down = NearerEdge(toTop, toBottom, RectangleGrip::Top, RectangleGrip::Bottom);
    if (across.grip == RectangleGrip::None && down.grip == RectangleGrip::None) return RectangleGrip::Inside;
    if (across.grip == RectangleGrip::None) return down.grip;
    if (down.grip == RectangleGrip::None) return across.grip;
    return across.distance <= down.distance ? across.grip : down.grip;
}

QRectF DraggedRect(const QRectF& rect, RectangleGrip grip, const QPointF& delta)
{
    switch (grip) {
    case RectangleGrip::None: return rect;
    case RectangleGrip::Inside: return rect.translated(delta);
    case RectangleGrip::Left: return rect.adjusted(delta.x(), 0, 0, 0);
    case RectangleGrip::Top: return rect.adjusted(0, delta.y(), 0, 0);
    case RectangleGrip::Right: return rect.adjusted(0, 0, delta.x(), 0);
    case RectangleGrip::Bottom: return rect.adjusted(0, 0, 0, delta.y());
    }
    return rect;
}
