#include "image/AdjustmentPixels.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace {
constexpr double Middle = 127.5;
constexpr quint32 Opaque = 0xFF000000;

quint8 ToByte(double value)
{
    return static_cast<quint8>(std::clamp(std::floor(value + 0.5), 0.0, 255.0));
}

double BrightnessAndContrast(const LXAdjustment& a, double c)
{
    const double slope = std::tan((a.contrast / 100.0 + 1) * M_PI / 4);
    return (c - Middle) * slope + Middle + 2.55 * a.brightness;
}

double Levels(const LXAdjustment& a, double c)
{
    const double range = a.inWhite - a.inBlack;
    const double t = range > 0 ? std::clamp((c - a.inBlack) / range, 0.0, 1.0) : (c > a.inBlack ? 1.0 : 0.0);
    return a.outBlack + std::pow(t, 1 / a.gamma) * (a.outWhite - a.outBlack);
}

double Adjusted(const LXAdjustment& a, double c)
{
    switch (a.kind) {
    case LXAdjustment::BrightnessContrast: return BrightnessAndContrast(a, c);
    case LXAdjustment::Levels: return Levels(a, c);
    case LXAdjustment::Invert: return 255 - c;
    case LXAdjustment::HueSaturation: break;
    }
    return c;
}

/// A color as its hue in sixths of a turn and the span of its channels round their middle, 0 to 255 each.
struct Span
{
    float hue;   ///< 0 to 6
    float sum;   ///< of the largest and the smallest channel
    float width; ///< between these two
};

Span SpanOf(float red, float green, float blue)
{
    const float most = std::max({red, green, blue});
    const float least = std::min({red, green, blue});
    const float width = most - least;
    float hue = 0;
    if (width > 0) {
        if (most == red) {
            hue = (green - blue) / width + (green < blue ? 6.0F : 0.0F);
        } else if (most == green) {
            hue = (blue - red) / width + 2;
        } else {
            hue = (red - green) / width + 4;
        }
    }
    return {hue, most + least, width};
}

/// 0 to 1 of the channel whose full strength lies at the hue `full`.
float PartAt(float hue, float full)
{
    const float way = std::abs(hue - full);
    const float around = std::min(way, 6 - way);
    return std::clamp(2 - around, 0.0F, 1.0F);
}
} // namespace

AdjustmentPixels::AdjustmentPixels(const LXAdjustment& adjustment)
    : m_Adjustment(Clamped(adjustment)), m_Table()
{
    for (std::size_t c = 0; c < m_Table.size(); ++c) {
        m_Table[c] = ToByte(Adjusted(m_Adjustment, static_cast<double>(c)));
    }
}

LXAdjustment AdjustmentPixels::Clamped(const LXAdjustment& adjustment)
{
    constexpr double leastGamma = 0.1;
    constexpr double mostGamma = 10;
    LXAdjustment a = adjustment;
    a.kind = std::clamp(a.kind, LXAdjustment::BrightnessContrast, LXAdjustment::Invert);
    for (int* percent : {&a.brightness, &a.contrast, &a.saturation, &a.lightness}) {
        *percent = std::clamp(*percent, -100, 100);
    }
    for (int* level : {&a.inBlack, &a.inWhite, &a.outBlack, &a.outWhite}) {
        *level = std::clamp(*level, 0, 255);
    }
    a.gamma = std::isnan(a.gamma) ? 1 : std::clamp(a.gamma, leastGamma, mostGamma);
    a.hue = std::clamp(a.hue, -180, 180);
    return a;
}

void AdjustmentPixels::Run(LXRGBA32i* pixels, int count) const
{
    if (m_Adjustment.kind == LXAdjustment::HueSaturation) {
        RunByHue(pixels, count);
    } else {
        RunByTable(pixels, count);
    }
}

void AdjustmentPixels::RunByTable(LXRGBA32i* pixels, int count) const
{
    for (int i = 0; i < count; ++i) {
        const quint32 value = pixels[i].value;
        pixels[i].value = Opaque | quint32(m_Table[value >> 16 & 0xFF]) << 16 |
                          quint32(m_Table[value >> 8 & 0xFF]) << 8 | m_Table[value & 0xFF];
    }
}

void AdjustmentPixels::RunByHue(LXRGBA32i* pixels, int count) const
{
    const float turn = static_cast<float>(m_Adjustment.hue) / 60;
    const float saturation = 1 + static_cast<float>(m_Adjustment.saturation) / 100;
    const float toWhite = static_cast<float>(std::max(m_Adjustment.lightness, 0)) / 100;
    const float kept = 1 - static_cast<float>(std::abs(m_Adjustment.lightness)) / 100;
    for (int i = 0; i < count; ++i) {
        const quint32 value = pixels[i].value;
        const Span span = SpanOf(static_cast<float>(value >> 16 & 0xFF),
                                 static_cast<float>(value >> 8 & 0xFF), static_cast<float>(value & 0xFF));
        const float turned = span.hue + turn;
        const float hue = turned < 0 ? turned + 6 : (turned >= 6 ? turned - 6 : turned);
        // The saturation is the width as a part of the largest that the lightness allows.
        const float width = std::min(span.width * saturation, std::min(span.sum, 510 - span.sum));
        const float least = (span.sum - width) / 2;
        const auto channel = [&](float full) {
            const float c = (least + PartAt(hue, full) * width) * kept + 255 * toWhite;
            return static_cast<quint32>(std::clamp(c + 0.5F, 0.0F, 255.0F));
        };
        pixels[i].value = Opaque | channel(0) << 16 | channel(2) << 8 | channel(4);
    }
}
