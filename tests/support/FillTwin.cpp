#include "support/FillTwin.h"

#include <cstdlib>
#include <deque>

namespace {
bool IsSimilar(LXRGBA32i a, LXRGBA32i b, LXRGBA32i tolerance)
{
    for (int channel = 0; channel < 4; ++channel) {
        if (std::abs(int{a.bytes[channel]} - int{b.bytes[channel]}) > int{tolerance.bytes[channel]})
            return false;
    }
    return true;
}
} // namespace

QRect FillTwin::FloodFill(const PlainImage& src, PlainImage& mask, const QPoint& seed, LXRGBA32i tolerance,
                          LXRGBA32i fill)
{
    const LXRGBA32i color = src.At(seed.x(), seed.y());
    std::vector<bool> isSeen(src.pixels.size());
    std::deque<QPoint> open{seed};
    QRect bounds;
    while (!open.empty()) {
        const QPoint at = open.front();
        open.pop_front();
        if (!src.Contains(at.x(), at.y()) || !mask.Contains(at.x(), at.y())) continue;
        if (isSeen[src.Index(at.x(), at.y())]) continue;
        isSeen[src.Index(at.x(), at.y())] = true;
        if (!IsSimilar(src.At(at.x(), at.y()), color, tolerance)) continue;
        mask.At(at.x(), at.y()) = fill;
        bounds |= QRect(at, QSize(1, 1));
        for (const QPoint& step : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
            open.push_back(at + step);
        }
    }
    return bounds;
}

QRect FillTwin::ColorRangeFill(const PlainImage& src, PlainImage& mask, const QPoint& seed,
                               LXRGBA32i tolerance, LXRGBA32i fill)
{
    const LXRGBA32i color = src.At(seed.x(), seed.y());
    QRect bounds;
    for (int y = 0; y < std::min(src.height, mask.height); ++y) {
        for (int x = 0; x < std::min(src.width, mask.width); ++x) {
            if (!IsSimilar(src.At(x, y), color, tolerance)) continue;
            mask.At(x, y) = fill;
            bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}
