#include "gui/ColorChoice.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr double Turn = 360;
constexpr double Sector = 60;

double Within(double value, double low, double high)
{
    return std::clamp(value, low, high);
}

/// The hue in sixths of a turn; the channels aren't all equal.
double SectorOf(int red, int green, int blue, int highest, double range)
{
    if (red == highest) return (green - blue) / range;
    if (green == highest) return 2 + (blue - red) / range;
    return 4 + (red - green) / range;
}
} // namespace

QRgb ToRgb(const HsvColor& color)
{
    // Each channel is the value less as much of the saturation as the hue is away from the channel's own:
    // channel(n) = v - v s max(0, min(k, 4 - k, 1)) with k = (n + hue / 60) mod 6, n = 5 red, 3 green, 1
    // blue.
    const auto channel = [&color](double n) {
        const double k = std::fmod(n + color.hue / Sector, 6);
        const double away = Within(std::min(k, 4 - k), 0, 1);
        return int(std::lround(255 * color.value * (1 - color.saturation * away)));
    };
    return qRgb(channel(5), channel(3), channel(1));
}

HsvColor ToHsv(QRgb color, const HsvColor& before)
{
    const int red = qRed(color);
    const int green = qGreen(color);
    const int blue = qBlue(color);
    const int highest = std::max({red, green, blue});
    const double range = highest - std::min({red, green, blue});
    if (highest == 0) return {before.hue, before.saturation, 0};
    if (range == 0) return {before.hue, 0, highest / 255.0};

    const double sector = SectorOf(red, green, blue, highest, range);
    return {Sector * (sector < 0 ? sector + 6 : sector), range / highest, highest / 255.0};
}

QColor ColorChoice::GetColor() const
{
    return QColor(qRed(m_Rgb), qGreen(m_Rgb), qBlue(m_Rgb), m_Alpha);
}

void ColorChoice::SetColor(const QColor& color)
{
    if (!color.isValid()) return;
    m_Alpha = color.alpha();
    if (color.rgb() == m_Rgb) return;
    m_Rgb = color.rgb();
    m_Hsv = ToHsv(m_Rgb, m_Hsv);
}

void ColorChoice::SetHsv(const HsvColor& color)
{
    const double hue = std::fmod(color.hue, Turn);
    m_Hsv.hue = hue < 0 ? hue + Turn : hue;
    m_Hsv.saturation = Within(color.saturation, 0, 1);
    m_Hsv.value = Within(color.value, 0, 1);
    m_Rgb = ToRgb(m_Hsv);
}

void ColorChoice::SetAlpha(int alpha)
{
    m_Alpha = std::clamp(alpha, 0, 255);
}
