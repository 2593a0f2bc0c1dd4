#include "image/ResampleTaps.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {
double Overlap(double lowA, double highA, double lowB, double highB)
{
    return std::max(0.0, std::min(highA, highB) - std::max(lowA, lowB));
}

/// Catmull-Rom: 1 at 0, and 0 at all other whole numbers.
double Cubic(double distance)
{
    const double d = std::abs(distance);
    if (d < 1) return (1.5 * d - 2.5) * d * d + 1;
    if (d < 2) return ((-0.5 * d + 2.5) * d - 4) * d + 2;
    return 0;
}

double Reach(ResampleKernel::Kind kind, double window)
{
    return kind == ResampleKernel::Kind::Linear ? window / 2 : window * 2;
}

double Weight(ResampleKernel::Kind kind, double middle, double window, int pixel)
{
    if (kind == ResampleKernel::Kind::Cubic) return Cubic((pixel + 0.5 - middle) / window);
    return Overlap(middle - window / 2, middle + window / 2, pixel, pixel + 1.0);
}

void Normalize(std::vector<double>& weights)
{
    const double sum = std::accumulate(weights.begin(), weights.end(), 0.0);
    for (double& weight : weights) {
        weight /= sum;
    }
}
} // namespace

void ResampleKernel::FindTaps(Kind kind, const SourceSpan& span, int side, int mostTaps, ResampleTaps& taps)
{
    taps.weights.clear();
    taps.coverage = span.Coverage(side);
    if (!(taps.coverage > 0)) return;

    // Where only a part of the pixel lies over the source, it shows the source's border.
    const double middle = std::clamp(span.middle, 0.0, static_cast<double>(side));
    const double window = std::max(span.Width(), 1.0);
    const double reach = Reach(kind, window);
    taps.first = static_cast<int>(std::floor(std::max(middle - reach, 0.0)));
    const int end = static_cast<int>(std::ceil(std::min(middle + reach, static_cast<double>(side))));
    taps.stride = mostTaps == Unlimited ? 1 : std::max(1, (end - taps.first) / mostTaps);
    for (int pixel = taps.first; pixel < end; pixel += taps.stride) {
        taps.weights.push_back(Weight(kind, middle, window, pixel));
    }
    Normalize(taps.weights);
}
