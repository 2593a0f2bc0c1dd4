#include "support/MaskTwin.h"

#include <algorithm>

namespace {
int ValueAt(const PlainImage& mask, int x, int y)
{
    return mask.Contains(x, y) ? mask.At(x, y).Alpha() : 0;
}

/// All values within the radius, sorted.
std::vector<int> Disk(const PlainImage& mask, int x, int y, int radius)
{
    std::vector<int> values;
    for (int dy = -radius; dy <= radius; ++dy) {
        for (int dx = -radius; dx <= radius; ++dx) {
            if (dx * dx + dy * dy <= radius * radius) values.push_back(ValueAt(mask, x + dx, y + dy));
        }
    }
    std::sort(values.begin(), values.end());
    return values;
}

template <class ValueOf>
PlainImage Made(const QRect& area, ValueOf valueOf)
{
    PlainImage made(area.width(), area.height());
    for (int y = 0; y < made.height; ++y) {
        for (int x = 0; x < made.width; ++x) {
            const auto value = static_cast<quint32>(valueOf(x + area.left(), y + area.top()));
            made.At(x, y) = LXRGBA32i(value << 24);
        }
    }
    return made;
}

/// How often a mean over 2 * radius + 1 values, taken three times, counts the value at each distance.
std::vector<quint64> BellWeights(int radius)
{
    const auto diameter = 2 * static_cast<std::size_t>(radius);
    std::vector<quint64> weights{1};
    for (int pass = 0; pass < 3; ++pass) {
        std::vector<quint64> wider(weights.size() + diameter);
        for (std::size_t i = 0; i < weights.size(); ++i) {
            for (std::size_t k = 0; k <= diameter; ++k)
                wider[i + k] += weights[i];
        }
        weights = wider;
    }
    return weights;
}
} // namespace

PlainImage MaskTwin::Grown(const PlainImage& mask, const QRect& area, int radius)
{
    return Made(area, [&](int x, int y) { return Disk(mask, x, y, radius).back(); });
}

PlainImage MaskTwin::Shrunk(const PlainImage& mask, const QRect& area, int radius)
{
    return Made(area, [&](int x, int y) { return Disk(mask, x, y, radius).front(); });
}

PlainImage MaskTwin::Border(const PlainImage& mask, const QRect& area, int radius)
{
    return Made(area, [&](int x, int y) {
        const std::vector<int> values = Disk(mask, x, y, radius);
        return values.back() - values.front();
    });
}

PlainImage MaskTwin::Feathered(const PlainImage& mask, const QRect& area, int radius)
{
    const std::vector<quint64> weights = BellWeights(radius);
    const quint64 diameter = 2 * static_cast<quint64>(radius) + 1;
    const quint64 all = diameter * diameter * diameter; // the sum of the weights
    const quint64 total = all * all;
    const int reach = 3 * radius;
    return Made(area, [&](int x, int y) {
        quint64 sum = 0;
        for (int dy = 0; dy <= 2 * reach; ++dy) {
            for (int dx = 0; dx <= 2 * reach; ++dx) {
                const quint64 weight = weights[std::size_t(dx)] * weights[std::size_t(dy)];
                sum += weight * static_cast<quint64>(ValueAt(mask, x + dx - reach, y + dy - reach));
            }
        }
        return sum / total + (2 * (sum % total) >= total ? 1 : 0);
    });
}

PlainImage MaskTwin::Smoothed(const PlainImage& mask, const QRect& area, int radius)
{
    return Made(area, [&](int x, int y) {
        const std::vector<int> values = Disk(mask, x, y, radius);
        return values[values.size() / 2];
    });
}
