#include "support/StrokeTwin.h"

#include <algorithm>
#include <cmath>

namespace {
double OnGrid(long double value)
{
    return static_cast<double>(std::floor(value * 16 + 0.5L) / 16);
}

int StrengthAt(double distance, const StrokeTwin::Brush& brush)
{
    const double radius = brush.diameter / 2;
    const double outer = radius + 0.5;
    const double inner = std::min(radius * brush.hardness, radius - 0.5);
    if (distance <= inner) return 255;
    if (distance >= outer) return 0;
    const double part = (outer - distance) / (outer - inner);
    return static_cast<int>(std::floor(255 * part * part * (3 - 2 * part) + 0.5));
}
} // namespace

std::vector<QPointF> StrokeTwin::Middles(const std::vector<QPointF>& points, double spacing)
{
    std::vector<QPointF> middles;
    long double next = 0; // from the start of the chain
    long double walked = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const long double wayX = static_cast<long double>(points[i].x()) - points[i - 1].x();
        const long double wayY = static_cast<long double>(points[i].y()) - points[i - 1].y();
        const long double length = std::sqrt(wayX * wayX + wayY * wayY);
        while (next <= walked + length) {
            const long double part = length > 0 ? (next - walked) / length : 0;
            middles.emplace_back(OnGrid(points[i - 1].x() + part * wayX),
                                 OnGrid(points[i - 1].y() + part * wayY));
            next += spacing;
        }
        walked += length;
    }
    return middles;
}

std::vector<int> StrokeTwin::Strengths(const std::vector<QPointF>& middles, const Brush& brush,
                                       const QRect& rect)
{
    std::vector<int> strengths;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            int strongest = 0;
            for (const QPointF& middle : middles) {
                const double wayX = x + 0.5 - middle.x();
                const double wayY = y + 0.5 - middle.y();
                strongest = std::max(strongest, StrengthAt(std::sqrt(wayX * wayX + wayY * wayY), brush));
            }
            strengths.push_back(strongest);
        }
    }
    return strengths;
}

PlainImage StrokeTwin::Picture(const std::vector<QPointF>& middles, const Brush& brush, const QRect& rect,
                               LXRGBA32i color)
{
    PlainImage picture(rect.width(), rect.height());
    const std::vector<int> strengths = Strengths(middles, brush, rect);
    std::transform(strengths.begin(), strengths.end(), picture.pixels.begin(), [color](int strength) {
        if (strength == 0) return LXRGBA32i();
        return LXRGBA32i((color.value & 0x00FFFFFFu) | (static_cast<quint32>(strength) << 24));
    });
    return picture;
}
