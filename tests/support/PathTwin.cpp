#include "support/PathTwin.h"

#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace {
using Real = long double;

struct Side
{
    QPointF from;
    QPointF to;

    Real XAt(Real y) const
    {
        const Real part = (y - from.y()) / (Real(to.y()) - from.y());
        return from.x() + part * (Real(to.x()) - from.x());
    }
};

QPointF OnCurve(const QPointF& a, const QPointF& b, const QPointF& c, const QPointF& d, double t)
{
    const auto between = [t](const QPointF& p, const QPointF& q) { return p + (q - p) * t; };
    const QPointF ab = between(a, b);
    const QPointF bc = between(b, c);
    const QPointF cd = between(c, d);
    return between(between(ab, bc), between(bc, cd));
}

std::vector<QPolygonF> PolygonsOf(const QPainterPath& path)
{
    constexpr int chords = 400;
    std::vector<QPolygonF> polygons;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo()) polygons.emplace_back();
        if (!element.isCurveTo()) {
            polygons.back() << element;
            continue;
        }
        const QPointF start = polygons.back().last();
        for (int chord = 1; chord <= chords; ++chord) {
            polygons.back() << OnCurve(start, element, path.elementAt(i + 1), path.elementAt(i + 2),
                                       static_cast<double>(chord) / chords);
        }
        i += 2;
    }
    return polygons;
}

std::vector<Side> SidesOf(const QPainterPath& path)
{
    std::vector<Side> sides;
    for (const QPolygonF& polygon : PolygonsOf(path)) {
        for (int i = 0; i < polygon.size(); ++i) {
            const Side side{polygon[i], polygon[(i + 1) % polygon.size()]};
            if (side.from.y() != side.to.y()) sides.push_back(side);
        }
    }
    return sides;
}

/// The area of pixel (x, y) that lies right of the side, with its sign.
Real AreaRightOf(const Side& side, int x, int y)
{
    const Real top = std::max(Real(std::min(side.from.y(), side.to.y())), Real(y));
    const Real bottom = std::min(Real(std::max(side.from.y(), side.to.y())), Real(y + 1));
    if (top >= bottom) return 0;
    std::vector<Real> heights{top, bottom};
    if (side.from.x() != side.to.x()) {
        for (const int border : {x, x + 1}) {
            const Real part = (border - Real(side.from.x())) / (Real(side.to.x()) - side.from.x());
            const Real height = side.from.y() + part * (Real(side.to.y()) - side.from.y());
            if (height > top && height < bottom) heights.push_back(height);
        }
    }
    std::sort(heights.begin(), heights.end());
    Real area = 0;
    for (std::size_t i = 0; i + 1 < heights.size(); ++i) {
        const Real middle = side.XAt((heights[i] + heights[i + 1]) / 2);
        area += (heights[i + 1] - heights[i]) * std::clamp(x + 1 - middle, Real(0), Real(1));
    }
    return side.from.y() < side.to.y() ? area : -area;
}

Real ByRule(Real winding, Qt::FillRule rule)
{
    if (rule == Qt::WindingFill) return std::min(Real(1), std::abs(winding));
    const Real inPair = std::abs(winding) - 2 * std::floor(std::abs(winding) / 2);
    return std::min(inPair, 2 - inPair);
}
} // namespace

std::vector<double> PathTwin::Coverage(const QPainterPath& path, const QSize& size)
{
    const std::vector<Side> sides = SidesOf(path);
    std::vector<double> coverage;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            Real winding = 0;
            for (const Side& side : sides) {
                winding += AreaRightOf(side, x, y);
            }
            coverage.push_back(static_cast<double>(ByRule(winding, path.fillRule())));
        }
    }
    return coverage;
}
