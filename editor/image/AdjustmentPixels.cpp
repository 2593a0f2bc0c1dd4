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

HueRule HueOf(const LXAdjustment& a)
{
    HueRule rule;
    rule.turn = static_cast<float>(a.hue) / 60;
    rule.saturation = 1 + static_cast<float>(a.saturation) / 100;
    rule.kept = 1 - static_cast<float>(std::abs(a.lightness)) / 100;
    rule.added = 255 * (static_cast<float>(std::max(a.lightness, 0)) / 100);
    return rule;
}
} // namespace

AdjustmentPixels::AdjustmentPixels(const LXAdjustment& adjustment)
    : m_Adjustment(Clamped(adjustment)), m_Hue(HueOf(m_Adjustment)), m_Table()
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
        HueKernels::Turn(m_Hue, pixels, count);
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
