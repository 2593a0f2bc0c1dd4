#include "geometryengine/CubicCurve.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace {
constexpr int Degree = 5; ///< of the slope of the squared distance
using Coefficients = std::array<double, Degree + 1>;

/// What is smaller than this part of the largest coefficient may be nothing but rounding.
constexpr double Noise = 32 * std::numeric_limits<double>::epsilon();

QPointF Between(const QPointF& a, const QPointF& b, double t)
{
    return a * (1 - t) + b * t;
}

double SquaredLength(const QPointF& way)
{
    return QPointF::dotProduct(way, way);
}

/// Half the slope of the squared distance to the point, along the curve, in Bernstein form: its signs tell
/// where the distance has its turning points.
Coefficients DistanceSlope(const CubicCurve& curve, const QPointF& point)
{
    const std::array<QPointF, 4> way = {curve.from - point, curve.fromGuide - point, curve.toGuide - point,
                                        curve.to - point};
    constexpr std::array<double, 4> ofCubic = {1, 3, 3, 1};
    constexpr std::array<double, 3> ofQuadratic = {1, 2, 1};
    constexpr Coefficients ofQuintic = {1, 5, 10, 10, 5, 1};
    Coefficients slope{};
    for (std::size_t i = 0; i < way.size(); ++i) {
        for (std::size_t j = 0; j + 1 < way.size(); ++j) {
            const double product = QPointF::dotProduct(way[i], 3 * (way[j + 1] - way[j]));
            slope[i + j] += ofCubic[i] * ofQuadratic[j] / ofQuintic[i + j] * product;
        }
    }
    return slope;
}

int SignChanges(const Coefficients& coefficients)
{
    int changes = 0;
    double last = 0;
    for (const double value : coefficients) {
        if (value == 0) continue;
        if (last * value < 0) ++changes;
        last = value > 0 ? 1 : -1;
    }
    return changes;
}

/// Replaces the coefficients by those of the first half and returns those of the second.
Coefficients Halve(Coefficients& first)
{
    Coefficients second = first;
    for (std::size_t level = 1; level < first.size(); ++level) {
        for (std::size_t i = 0; i + level < first.size(); ++i)
            second[i] = (second[i] + second[i + 1]) / 2;
        first[level] = second[0];
    }
    return second;
}

double Largest(const Coefficients& coefficients)
{
    double largest = 0;
    for (const double value : coefficients)
        largest = std::max(largest, std::abs(value));
    return largest;
}

/// Adds the zeros inside the stretch, which hold every turning point. A polynomial has no more zeros than its
/// Bernstein coefficients have changes of sign, so stretches without one are dropped. Values below `noise`
/// have no sign that could be trusted: without that end, zeros that coincide would be halved for ever.
void CollectZeros(Coefficients coefficients, double begin, double end, double noise,
                  std::vector<double>& zeros)
{
    while (SignChanges(coefficients) > 0) {
        const double middle = (begin + end) / 2;
        if (Largest(coefficients) <= noise) {
            zeros.push_back(middle);
            return;
        }
        const Coefficients second = Halve(coefficients);
        if (second.front() == 0) zeros.push_back(middle);
        if (SignChanges(coefficients) == 0) {
            coefficients = second;
            begin = middle;
        } else {
            CollectZeros(second, middle, end, noise, zeros);
            end = middle;
        }
    }
}
} // namespace

QPointF CubicCurve::PointAt(double t) const
{
    return SplitAt(t).first.to;
}

std::pair<CubicCurve, CubicCurve> CubicCurve::SplitAt(double t) const
{
    const QPointF first = Between(from, fromGuide, t);
    const QPointF middle = Between(fromGuide, toGuide, t);
    const QPointF last = Between(toGuide, to, t);
    const QPointF before = Between(first, middle, t);
    const QPointF after = Between(middle, last, t);
    const QPointF joint = Between(before, after, t);
    return {{from, first, before, joint}, {joint, after, last, to}};
}

double CubicCurve::NearestParameter(const QPointF& point) const
{
    std::vector<double> places = {0};
    const Coefficients slope = DistanceSlope(*this, point);
    CollectZeros(slope, 0, 1, Noise * Largest(slope), places);
    places.push_back(1);

    double nearest = 0;
    double nearestDistance = SquaredLength(from - point);
    for (const double place : places) {
        const double distance = SquaredLength(PointAt(place) - point);
        const bool isNearer = distance < nearestDistance;
        if (!isNearer && !(distance == nearestDistance && place < nearest)) continue;
        nearest = place;
        nearestDistance = distance;
    }
    return nearest;
}
