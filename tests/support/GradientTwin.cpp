#include "support/GradientTwin.h"

#include <QGradient>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace {
using Real = long double;

constexpr int LastStep = 1023;

Real Turns(const QPointF& way)
{
    return std::atan2(Real(-way.y()), Real(way.x())) / (2 * std::acos(Real(-1)));
}

Real PositionOf(const QGradient& gradient, const QPointF& point)
{
    if (gradient.type() == QGradient::RadialGradient) {
        const auto& radial = static_cast<const QRadialGradient&>(gradient);
        const QPointF way = point - radial.center();
        return std::hypot(Real(way.x()), Real(way.y())) / radial.radius();
    }
    if (gradient.type() == QGradient::ConicalGradient) {
        const auto& conical = static_cast<const QConicalGradient&>(gradient);
        return Turns(point - conical.center()) - Real(conical.angle()) / 360;
    }
    const auto& linear = static_cast<const QLinearGradient&>(gradient);
    const QPointF way = linear.finalStop() - linear.start();
    const QPointF part = point - linear.start();
    const Real squared = Real(way.x()) * way.x() + Real(way.y()) * way.y();
    return squared > 0 ? (Real(part.x()) * way.x() + Real(part.y()) * way.y()) / squared : 0;
}

Real Spread(const QGradient& gradient, Real position)
{
    const bool isRepeated =
        gradient.type() == QGradient::ConicalGradient || gradient.spread() == QGradient::RepeatSpread;
    if (isRepeated) return position - std::floor(position);
    if (gradient.spread() == QGradient::PadSpread) return std::clamp(position, Real(0), Real(1));
    const Real inPair = position - 2 * std::floor(position / 2);
    return std::min(inPair, 2 - inPair);
}

bool IsColorOfStep(const QGradient& gradient, int step, LXRGBA32i pixel)
{
    const Real position = Real(step) / LastStep;
    const QGradientStops stops = gradient.stops();
    int next = 0;
    while (next < stops.size() && stops[next].first <= position)
        ++next;
    const QColor before = stops[std::max(0, next - 1)].second;
    const QColor after = stops[std::min(static_cast<int>(stops.size()) - 1, next)].second;
    const Real start = stops[std::max(0, next - 1)].first;
    const Real end = stops[std::min(static_cast<int>(stops.size()) - 1, next)].first;
    const Real part = end > start ? std::max(Real(0), (position - start) / (end - start)) : 0;

    const bool isPremultiplied = gradient.interpolationMode() == QGradient::ColorInterpolation;
    const Real alpha = before.alphaF() + part * (after.alphaF() - before.alphaF());
    if (std::abs(255 * alpha - pixel.Alpha()) > 1) return false;
    if (pixel.Alpha() == 0) return true;
    const auto isNear = [&](Real a, Real b, int actual) {
        const Real first = isPremultiplied ? a * before.alphaF() : a;
        const Real second = isPremultiplied ? b * after.alphaF() : b;
        const Real mixed = first + part * (second - first);
        return std::abs(255 * (isPremultiplied ? mixed / alpha : mixed) - actual) <= 1;
    };
    return isNear(before.redF(), after.redF(), pixel.Red()) &&
           isNear(before.greenF(), after.greenF(), pixel.Green()) &&
           isNear(before.blueF(), after.blueF(), pixel.Blue());
}
} // namespace

bool GradientTwin::Allows(const QBrush& brush, int x, int y, LXRGBA32i pixel)
{
    const QGradient& gradient = *brush.gradient();
    const QPointF point = brush.transform().inverted().map(QPointF(x + 0.5, y + 0.5));
    const Real position = PositionOf(gradient, point);
    // In float the position may be off by this much, which matters halfway between two steps and where the
    // gradient begins anew; far out, where a float has no bits left for a part of a step, by two of its last
    // bit.
    constexpr Real lastBits = 2 * 0x1p-23L;
    const Real unsure = std::max(0.02L / LastStep, std::abs(position) * lastBits);
    for (const Real near : {position, position - unsure, position + unsure}) {
        const int step = static_cast<int>(std::floor(Spread(gradient, near) * LastStep + 0.5L));
        if (IsColorOfStep(gradient, step, pixel)) return true;
    }
    return false;
}
