#include "common/ZKGeneralFunctions.h"

#include "common/Reports.h"

#include <QLineF>

#include <cmath>

namespace {
// The left half has the wider bound on purpose: a drag to the left snaps to the axis more readily.
constexpr double ToDiagonal = 22.5;
constexpr double ToVertical = 67.5;
constexpr double PastVertical = 112.5;
constexpr double ToLeft = 147.5;

// A bound belongs to the sector behind it, so upward 22.5 is diagonal already; downward the same, since
// the magnitude of the angle is compared.
QPointF DirectionOfMagnitude(double angle, double vertical)
{
    if (angle < ToDiagonal) return {1, 0};
    if (angle < ToVertical) return {1, vertical};
    if (angle < PastVertical) return {0, vertical};
    if (angle < ToLeft) return {-1, vertical};
    return {-1, 0};
}
} // namespace

QPointF ZKGeneralFunctions::SnapDirection(const QPointF& from, const QPointF& to)
{
    double angle = QLineF(from, to).angle();
    if (angle > 180) angle -= 360;
    const double up = -1;
    const double down = 1;
    return DirectionOfMagnitude(std::abs(angle), angle >= 0 ? up : down);
}

QPointF ZKGeneralFunctions::ProjectPointOnLine(const QPointF& point, const QPointF& direction,
                                               const QPointF& origin)
{
    const double squaredLength = direction.x() * direction.x() + direction.y() * direction.y();
    // Compared by coordinate: QPointF's own comparison is fuzzy.
    if (direction.x() == 0 && direction.y() == 0) {
        Reports::Condition(ZK_HERE, QStringLiteral("Arithmetic error."));
        return point;
    }
    const QPointF delta = point - origin;
    return origin + direction * ((delta.x() * direction.x() + delta.y() * direction.y()) / squaredLength);
}
