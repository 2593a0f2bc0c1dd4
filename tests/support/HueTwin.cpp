#include "support/HueTwin.h"

#include <algorithm>
#include <cmath>

namespace {
float HueOf(float red, float green, float blue)
{
    const float most = std::max({red, green, blue});
    const float width = most - std::min({red, green, blue});
    if (width == 0) return 0;
    if (most == red) return (green - blue) / width + (green < blue ? 6.0F : 0.0F);
    if (most == green) return (blue - red) / width + 2;
    return (red - green) / width + 4;
}

/// 0 to 1 of the channel whose full strength lies at the hue `full`.
float PartAt(float hue, float full)
{
    const float way = std::fabs(hue - full);
    return std::min(1.0F, std::max(0.0F, 2 - std::min(way, 6 - way)));
}
} // namespace

LXRGBA32i HueTwin::Turned(const HueRule& rule, LXRGBA32i pixel)
{
    const auto red = static_cast<float>(pixel.Red());
    const auto green = static_cast<float>(pixel.Green());
    const auto blue = static_cast<float>(pixel.Blue());
    const float most = std::max({red, green, blue});
    const float least = std::min({red, green, blue});
    const float sum = most + least;

    float hue = HueOf(red, green, blue) + rule.turn;
    if (hue < 0) hue += 6;
    if (hue >= 6) hue -= 6;
    const float width = std::min((most - least) * rule.saturation, std::min(sum, 510 - sum));
    const float ground = (sum - width) / 2;
    quint32 value = 0xFF;
    for (const float full : {0.0F, 2.0F, 4.0F}) {
        const float channel = (ground + PartAt(hue, full) * width) * rule.kept + rule.added;
        value = value << 8 | static_cast<quint32>(std::min(255.0F, std::max(0.0F, channel + 0.5F)));
    }
    return LXRGBA32i(value);
}
