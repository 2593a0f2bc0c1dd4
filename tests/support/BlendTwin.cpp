#include "support/BlendTwin.h"

#include <cmath>
#include <stdexcept>

namespace {
/// To nearest, halves up; a little more than half of an ulp keeps exact halves from slipping down.
int Round(double value)
{
    return static_cast<int>(std::floor(value + 0.5 + 1e-9));
}

/// B of the W3C's formulae; t and s from 0 to 1.
double Formula(unsigned int mode, double t, double s)
{
    switch (mode) {
    case 0:
    case 91: return s;
    case 12: return std::min(1.0, t + s);
    case 13: return t * s;
    case 14: return t + s - t * s;
    case 15: return Formula(20, s, t);
    case 16: return std::min(t, s);
    case 17: return std::max(t, s);
    case 18: return t == 0 ? 0 : s == 1 ? 1 : std::min(1.0, t / (1 - s));
    case 19: return t == 1 ? 1 : s == 0 ? 0 : 1 - std::min(1.0, (1 - t) / s);
    case 20: return s <= 0.5 ? t * 2 * s : t + (2 * s - 1) - t * (2 * s - 1);
    case 21: {
        if (s <= 0.5) return t - (1 - 2 * s) * t * (1 - t);
        const double d = t <= 0.25 ? ((16 * t - 12) * t + 4) * t : std::sqrt(t);
        return t + (2 * s - 1) * (d - t);
    }
    case 22: return std::abs(t - s);
    case 23: return t + s - 2 * t * s;
    default: throw std::invalid_argument("not a separable mode");
    }
}

int Channel(LXRGBA32i pixel, int channel)
{
    return pixel.bytes[channel];
}

LXRGBA32i BlendSeparable(unsigned int mode, LXRGBA32i target, LXRGBA32i source, int s, bool keepAlpha)
{
    const int d = target.Alpha();
    if (s == 0 || (keepAlpha && d == 0)) return target;

    const double ws = 255.0 * s;
    const double wd = static_cast<double>(d) * (255 - s);
    LXRGBA32i result = target;
    for (int c = 0; c < 3; ++c) {
        const int t = Channel(target, c);
        const int b = Round(255 * Formula(mode, t / 255.0, Channel(source, c) / 255.0));
        const int cs = Round(((255 - d) * Channel(source, c) + d * b) / 255.0);
        const double color = keepAlpha ? (cs * s + t * (255 - s)) / 255.0 : (cs * ws + t * wd) / (ws + wd);
        result.bytes[c] = static_cast<quint8>(Round(color));
    }
    if (!keepAlpha) result.bytes[3] = static_cast<quint8>(s + Round(wd / 255));
    return result;
}

LXRGBA32i Replace(LXRGBA32i target, LXRGBA32i source, int k)
{
    if (k == 255) return source;
    const double ws = static_cast<double>(source.Alpha()) * k;
    const double wd = static_cast<double>(target.Alpha()) * (255 - k);
    if (ws + wd == 0) return target;
    LXRGBA32i result;
    for (int c = 0; c < 3; ++c) {
        result.bytes[c] =
            static_cast<quint8>(Round((Channel(source, c) * ws + Channel(target, c) * wd) / (ws + wd)));
    }
    result.bytes[3] = static_cast<quint8>(Round((ws + wd) / 255));
    return result;
}

int PaintGray(LXRGBA32i target, LXRGBA32i source, int s, int m)
{
    const int most = std::max({source.Red(), source.Green(), source.Blue()});
    const int least = std::min({source.Red(), source.Green(), source.Blue()});
    const int lightness = (most + least) / 2;
    const int old = target.Alpha();
    const int painted = (lightness * s + (255 - s) * old) / 255;
    return (painted * m + (255 - m) * old) / 255;
}

LXRGBA32i WithAlpha(LXRGBA32i color, int alpha)
{
    color.bytes[3] = static_cast<quint8>(alpha);
    return color;
}
} // namespace

LXRGBA32i BlendTwin::BlendPixel(unsigned int mode, LXRGBA32i target, LXRGBA32i source, double opacity,
                                int maskValue, bool keepAlpha)
{
    const auto strength = [&](int alpha, int m) {
        return static_cast<int>(std::floor(alpha * opacity * m / 255 + 0.5));
    };
    const int s = strength(source.Alpha(), maskValue);
    const int cut = Round(target.Alpha() * s / 255.0);
    switch (mode) {
    case 3: return Replace(target, source, strength(255, maskValue));
    case 5: return WithAlpha(source, cut);
    case 6: return WithAlpha(target, cut);
    case 8: return WithAlpha(target, target.Alpha() - cut);
    case 64: return WithAlpha(target, PaintGray(target, source, strength(source.Alpha(), 255), maskValue));
    case 92: return WithAlpha(target, s);
    default: return BlendSeparable(mode, target, source, s, keepAlpha);
    }
}

void BlendTwin::Blend(const PlainImage& src, const QRect& srcRect, unsigned int mode, PlainImage& dst,
                      const QRect& dstRect, double opacity, bool keepAlpha, const Mask& mask)
{
    for (int y = 0; y < std::min(srcRect.height(), dstRect.height()); ++y) {
        for (int x = 0; x < std::min(srcRect.width(), dstRect.width()); ++x) {
            const QPoint from = srcRect.topLeft() + QPoint(x, y);
            const QPoint to = dstRect.topLeft() + QPoint(x, y);
            if (!src.Contains(from.x(), from.y()) || !dst.Contains(to.x(), to.y())) continue;
            int maskValue = 255;
            if (mask.image != nullptr) {
                const QPoint at = mask.rect.topLeft() + QPoint(x, y);
                const bool isInside = mask.rect.contains(at) && mask.image->Contains(at.x(), at.y());
                maskValue = isInside ? mask.image->At(at.x(), at.y()).Alpha() : 0;
            }
            LXRGBA32i& target = dst.At(to.x(), to.y());
            target = BlendPixel(mode, target, src.At(from.x(), from.y()), opacity, maskValue, keepAlpha);
        }
    }
}
