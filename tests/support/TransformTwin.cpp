#include "support/TransformTwin.h"

#include <QRect>
#include <QSize>

#include <algorithm>
#include <cmath>

namespace {
using Real = long double;

struct Point
{
    bool isVisible = false;
    Real x = 0;
    Real y = 0;
};

/// The (u, v) that the transform maps to (x, y): two linear equations, by Cramer's rule.
Point Solve(const QTransform& t, Real x, Real y)
{
    const Real a = t.m11() - x * t.m13();
    const Real b = t.m21() - x * t.m23();
    const Real c = t.m12() - y * t.m13();
    const Real d = t.m22() - y * t.m23();
    const Real e = x * t.m33() - t.m31();
    const Real f = y * t.m33() - t.m32();
    const Real determinant = a * d - b * c;
    if (determinant == 0) return {};
    Point point;
    point.x = (e * d - b * f) / determinant;
    point.y = (a * f - e * c) / determinant;
    point.isVisible = t.m13() * point.x + t.m23() * point.y + t.m33() > 0;
    return point;
}

/// One axis of the source, around a target pixel's middle.
struct Axis
{
    Real Width() const { return std::hypot(across, down); }

    Real middle = 0;
    Real across = 0; ///< derivative to the right in the target
    Real down = 0;
};

struct Spot
{
    bool isVisible = false;
    Axis x;
    Axis y;
};

Spot SpotAt(const QTransform& transform, int column, int row)
{
    constexpr Real step = 1e-4L;
    const Real x = column + 0.5L;
    const Real y = row + 0.5L;
    const Point middle = Solve(transform, x, y);
    const Point left = Solve(transform, x - step, y);
    const Point right = Solve(transform, x + step, y);
    const Point above = Solve(transform, x, y - step);
    const Point below = Solve(transform, x, y + step);
    Spot spot;
    spot.isVisible = middle.isVisible;
    spot.x = {middle.x, (right.x - left.x) / (2 * step), (below.x - above.x) / (2 * step)};
    spot.y = {middle.y, (right.y - left.y) / (2 * step), (below.y - above.y) / (2 * step)};
    return spot;
}

struct Corner
{
    Real x = 0;
    Real y = 0;
};

/// What the half plane of heights from 0 up leaves of a polygon.
template <class Height>
std::vector<Corner> Cut(const std::vector<Corner>& polygon, Height height)
{
    std::vector<Corner> rest;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Corner from = polygon[i];
        const Corner to = polygon[(i + 1) % polygon.size()];
        const Real start = height(from);
        const Real end = height(to);
        if (start >= 0) rest.push_back(from);
        if ((start < 0) == (end < 0)) continue;
        const Real part = start / (start - end);
        rest.push_back({from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part});
    }
    return rest;
}

Real AreaOf(const std::vector<Corner>& polygon)
{
    Real twice = 0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Corner a = polygon[i];
        const Corner b = polygon[(i + 1) % polygon.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return std::abs(twice) / 2;
}

Real CoverageOf(const Axis& axis, int side)
{
    const auto place = [&axis](const Corner& corner) {
        return axis.middle + axis.across * corner.x + axis.down * corner.y;
    };
    std::vector<Corner> pixel{{-0.5L, -0.5L}, {0.5L, -0.5L}, {0.5L, 0.5L}, {-0.5L, 0.5L}};
    pixel = Cut(pixel, [&](const Corner& corner) { return place(corner); });
    pixel = Cut(pixel, [&](const Corner& corner) { return side - place(corner); });
    return AreaOf(pixel);
}

Real Curve(Real distance)
{
    const Real d = std::abs(distance);
    if (d <= 1) return 1 - 2.5L * d * d + 1.5L * d * d * d;
    if (d <= 2) return 2 - 4 * d + 2.5L * d * d - 0.5L * d * d * d;
    return 0;
}

Real OverlapWith(Real low, Real high, Real from, Real to)
{
    return std::max(Real(0), std::min(high, to) - std::max(low, from));
}

/// The source's pixels on an axis, but those that are too far off to weigh anything.
struct Weights
{
    int first = 0;
    std::vector<Real> weights;
};

Weights WeightsOf(const Axis& axis, int side, TransformTwin::Method method)
{
    const Real middle = std::clamp(axis.middle, Real(0), Real(side));
    const Real window = std::max(Real(1), axis.Width());
    const Real reach = 2 * window + 1;
    Weights result;
    result.first = static_cast<int>(std::floor(std::max(middle - reach, Real(0))));
    const int end = static_cast<int>(std::ceil(std::min(middle + reach, Real(side))));
    std::vector<Real>& weights = result.weights;
    Real sum = 0;
    for (int i = result.first; i < end; ++i) {
        const bool isLinear = method == TransformTwin::Method::Linear;
        const Real weight = isLinear ? OverlapWith(middle - window / 2, middle + window / 2, i, i + 1)
                                     : Curve((i + 0.5L - middle) / window);
        weights.push_back(weight);
        sum += weight;
    }
    for (Real& weight : weights) {
        weight /= sum;
    }
    return result;
}

int Rounded(Real value)
{
    return static_cast<int>(std::floor(std::clamp(value, Real(0), Real(255)) + 0.5L));
}

LXRGBA32i Mixed(const PlainImage& source, const Spot& spot, TransformTwin::Method method)
{
    const Real coverage = CoverageOf(spot.x, source.width) * CoverageOf(spot.y, source.height);
    if (coverage <= 0) return LXRGBA32i();

    const Weights across = WeightsOf(spot.x, source.width, method);
    const Weights down = WeightsOf(spot.y, source.height, method);
    Real alpha = 0;
    Real color[3] = {0, 0, 0};
    int y = down.first;
    for (const Real weightDown : down.weights) {
        int x = across.first;
        for (const Real weightAcross : across.weights) {
            const LXRGBA32i pixel = source.At(x, y);
            const Real share = weightAcross * weightDown * pixel.Alpha();
            alpha += share;
            for (int channel = 0; channel < 3; ++channel) {
                color[channel] += share * pixel.bytes[channel];
            }
            ++x;
        }
        ++y;
    }
    LXRGBA32i result;
    const int resultAlpha = Rounded(alpha * coverage);
    if (resultAlpha == 0) return result;
    for (int channel = 0; channel < 3; ++channel) {
        result.bytes[channel] = static_cast<quint8>(Rounded(color[channel] / alpha));
    }
    result.bytes[3] = static_cast<quint8>(resultAlpha);
    return result;
}

LXRGBA32i Picked(const PlainImage& source, const Spot& spot)
{
    const int x = static_cast<int>(std::floor(spot.x.middle));
    const int y = static_cast<int>(std::floor(spot.y.middle));
    return source.Contains(x, y) ? source.At(x, y) : LXRGBA32i();
}
} // namespace

PlainImage TransformTwin::Transformed(const PlainImage& source, const QTransform& transform,
                                      const QSize& size, Method method)
{
    return Part(source, transform, QRect(QPoint(0, 0), size), method);
}

PlainImage TransformTwin::Part(const PlainImage& source, const QTransform& transform, const QRect& part,
                               Method method)
{
    PlainImage result(part.width(), part.height());
    for (int y = 0; y < result.height; ++y) {
        for (int x = 0; x < result.width; ++x) {
            const Spot spot = SpotAt(transform, part.left() + x, part.top() + y);
            if (!spot.isVisible) continue;
            result.At(x, y) = method == Method::Nearest ? Picked(source, spot) : Mixed(source, spot, method);
        }
    }
    return result;
}

int TransformTwin::LargestDifference(const PlainImage& a, const PlainImage& b)
{
    if (a.width != b.width || a.height != b.height) return 256;
    int largest = 0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i) {
        const LXRGBA32i first = a.pixels[i];
        const LXRGBA32i second = b.pixels[i];
        largest = std::max(largest, std::abs(first.Alpha() - second.Alpha()));
        const int alpha = std::min(first.Alpha(), second.Alpha());
        for (int channel = 0; channel < 3; ++channel) {
            const int difference = std::abs(first.bytes[channel] - second.bytes[channel]);
            largest = std::max(largest, (difference * alpha + 254) / 255);
        }
    }
    return largest;
}
