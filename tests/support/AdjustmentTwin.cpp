#include "support/AdjustmentTwin.h"

#include <algorithm>
#include <cmath>

namespace {
const double Pi = std::acos(-1.0);

int Rounded(double value)
{
    return static_cast<int>(std::min(255.0, std::max(0.0, std::floor(value + 0.5))));
}

LXRGBA32i Pixel(int red, int green, int blue)
{
    return LXRGBA32i(0xFF000000U | static_cast<quint32>(red) << 16 | static_cast<quint32>(green) << 8 |
                     static_cast<quint32>(blue));
}

double Channel(const LXAdjustment& a, double c)
{
    switch (a.kind) {
    case LXAdjustment::BrightnessContrast:
        return (c - 127.5) * std::tan((a.contrast / 100.0 + 1) * Pi / 4) + 127.5 + 2.55 * a.brightness;
    case LXAdjustment::Levels: {
        if (a.inWhite <= a.inBlack) return c > a.inBlack ? a.outWhite : a.outBlack;
        const double t = std::min(1.0, std::max(0.0, (c - a.inBlack) / (a.inWhite - a.inBlack)));
        return a.outBlack + std::pow(t, 1 / a.gamma) * (a.outWhite - a.outBlack);
    }
    default: return 255 - c;
    }
}

/// The textbook's way: chroma and a second largest part for each sixth of the turn.
LXRGBA32i Turned(const LXAdjustment& a, double red, double green, double blue)
{
    const double most = std::max({red, green, blue});
    const double least = std::min({red, green, blue});
    double lightness = (most + least) / 2;
    double saturation = 0;
    double hue = 0;
    if (most > least) {
        saturation = (most - least) / (1 - std::fabs(2 * lightness - 1));
        if (most == red) {
            hue = 60 * (green - blue) / (most - least);
        } else if (most == green) {
            hue = 60 * (blue - red) / (most - least) + 120;
        } else {
            hue = 60 * (red - green) / (most - least) + 240;
        }
    }
    hue = std::fmod(hue + a.hue + 720, 360);
    saturation = std::min(1.0, saturation * (1 + a.saturation / 100.0));

    const double chroma = (1 - std::fabs(2 * lightness - 1)) * saturation;
    const double second = chroma * (1 - std::fabs(std::fmod(hue / 60, 2) - 1));
    const double ground = lightness - chroma / 2;
    const double parts[6][3] = {{chroma, second, 0}, {second, chroma, 0}, {0, chroma, second},
                                {0, second, chroma}, {second, 0, chroma}, {chroma, 0, second}};
    const double* part = parts[static_cast<int>(hue / 60) % 6];
    int result[3];
    for (int i = 0; i < 3; ++i) {
        double c = ground + part[i];
        if (a.lightness > 0) {
            c += (1 - c) * a.lightness / 100.0;
        } else {
            c += c * a.lightness / 100.0;
        }
        result[i] = Rounded(c * 255);
    }
    return Pixel(result[0], result[1], result[2]);
}
} // namespace

LXRGBA32i AdjustmentTwin::Adjusted(const LXAdjustment& adjustment, LXRGBA32i pixel)
{
    const double red = pixel.value >> 16 & 0xFF;
    const double green = pixel.value >> 8 & 0xFF;
    const double blue = pixel.value & 0xFF;
    if (adjustment.kind == LXAdjustment::HueSaturation) {
        return Turned(adjustment, red / 255, green / 255, blue / 255);
    }
    return Pixel(Rounded(Channel(adjustment, red)), Rounded(Channel(adjustment, green)),
                 Rounded(Channel(adjustment, blue)));
}
