#include "app/ZoomStops.h"

#include <algorithm>
#include <array>

namespace {
constexpr std::array<double, 18> ZoomStops{0.05, 0.0625, 0.125, 0.25, 0.33, 0.5, 0.67, 1,  1.5,
                                           2,    3,      4,     6,    8,    12,  16,   24, 40};

/// Scales that differ by less are the same.
constexpr double Tolerance = 0.001;
} // namespace

double NextZoomStop(double scale, int direction)
{
    const auto isAbove = [scale](double stop) { return stop > scale * (1 + Tolerance); };
    const auto isBelow = [scale](double stop) { return stop < scale * (1 - Tolerance); };
    if (direction > 0) {
        const auto stop = std::find_if(ZoomStops.begin(), ZoomStops.end(), isAbove);
        return stop == ZoomStops.end() ? ZoomStops.back() : *stop;
    }
    const auto stop = std::find_if(ZoomStops.rbegin(), ZoomStops.rend(), isBelow);
    return stop == ZoomStops.rend() ? ZoomStops.front() : *stop;
}
