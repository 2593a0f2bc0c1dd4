#include "image/BlendKernels.h"

#include "image/BlendFormulas.h"
#include "image/BlendMode.h"
#include "image/PixelMath.h"

#include <stdexcept>
#include <type_traits>

namespace {
using namespace PixelMath;

/// Applies `mix(target byte, source byte)` to blue, green and red; the result's alpha is 0.
template <class Mix>
quint32 MixColors(LXRGBA32i target, LXRGBA32i source, Mix mix)
{
    quint32 color = 0;
    for (int shift = 0; shift < AlphaShift; shift += 8) {
        const int targetByte = static_cast<int>((target.value >> shift) & 0xFF);
        const int sourceByte = static_cast<int>((source.value >> shift) & 0xFF);
        color |= static_cast<quint32>(mix(targetByte, sourceByte)) << shift;
    }
    return color;
}

/// cs = ((255 - d) source + d B) / 255: the formula counts as far as there is a target below.
template <class Formula>
int BlendedColor(const Formula& formula, int targetAlpha, int target, int source)
{
    return DivideBy255((255 - targetAlpha) * source + targetAlpha * formula(target, source));
}

/// alpha = s + d (255 - s) / 255; color = (cs 255 s + cd d (255 - s)) / (255 s + d (255 - s))
template <class Formula>
LXRGBA32i BlendPixel(const Formula& formula, LXRGBA32i target, LXRGBA32i source, int strength)
{
    // The most frequent pixel of all, an opaque one that covers what is below.
    if constexpr (std::is_same_v<Formula, BlendFormulas::Normal>) {
        if (strength == 255) return source;
    }
    const int targetAlpha = target.Alpha();
    if (targetAlpha == 0) return WithAlpha(source, strength);

    const int sourceWeight = 255 * strength;
    const int targetWeight = targetAlpha * (255 - strength);
    const int total = sourceWeight + targetWeight;
    const quint32 color = MixColors(target, source, [&](int targetByte, int sourceByte) {
        const int blended = BlendedColor(formula, targetAlpha, targetByte, sourceByte);
        return WeightedMean(blended * sourceWeight + targetByte * targetWeight, total);
    });
    return WithAlpha(LXRGBA32i(color), strength + DivideBy255(targetWeight));
}

template <class Formula>
void BlendRowOver(const BlendRow& row)
{
    const Formula formula;
    for (int i = 0; i < row.count; ++i) {
        const int strength = row.strength[i];
        if (strength != 0) row.target[i] = BlendPixel(formula, row.target[i], row.source[i], strength);
    }
}

/// color = (cs s + cd (255 - s)) / 255, alpha stays; a transparent target has no color to show.
template <class Formula>
void BlendRowKeepingAlpha(const BlendRow& row)
{
    const Formula formula;
    for (int i = 0; i < row.count; ++i) {
        const LXRGBA32i target = row.target[i];
        const int strength = row.strength[i];
        const int targetAlpha = target.Alpha();
        if (strength == 0 || targetAlpha == 0) continue;
        const quint32 color = MixColors(target, row.source[i], [&](int targetByte, int sourceByte) {
            const int blended = BlendedColor(formula, targetAlpha, targetByte, sourceByte);
            return DivideBy255(blended * strength + targetByte * (255 - strength));
        });
        row.target[i] = WithAlpha(LXRGBA32i(color), targetAlpha);
    }
}

/// Weights alpha x k and d x (255 - k): alpha = their sum / 255, color the weighted mean.
void ReplaceRow(const BlendRow& row)
{
    for (int i = 0; i < row.count; ++i) {
        const int strength = row.strength[i];
        const LXRGBA32i source = row.source[i];
        const LXRGBA32i target = row.target[i];
        if (strength == 255) {
            row.target[i] = source;
            continue;
        }
        const int sourceWeight = source.Alpha() * strength;
        const int targetWeight = target.Alpha() * (255 - strength);
        const int total = sourceWeight + targetWeight;
        if (total == 0) continue;
        const quint32 color = MixColors(target, source, [&](int targetByte, int sourceByte) {
            return WeightedMean(sourceByte * sourceWeight + targetByte * targetWeight, total);
        });
        row.target[i] = WithAlpha(LXRGBA32i(color), DivideBy255(total));
    }
}

/// Replaces alpha by `alphaOf(index)`.
template <class AlphaOf>
void SetAlphas(const BlendRow& row, AlphaOf alphaOf)
{
    for (int i = 0; i < row.count; ++i) {
        row.target[i] = WithAlpha(row.target[i], alphaOf(i));
    }
}

void SourceInRow(const BlendRow& row)
{
    for (int i = 0; i < row.count; ++i) {
        row.target[i] = WithAlpha(row.source[i], DivideBy255(row.target[i].Alpha() * row.strength[i]));
    }
}

void DestinationInRow(const BlendRow& row)
{
    SetAlphas(row, [&](int i) { return DivideBy255(row.target[i].Alpha() * row.strength[i]); });
}

/// The exact rest of DestinationIn, so that a cut and a lift add up.
void DestinationOutRow(const BlendRow& row)
{
    SetAlphas(row, [&](int i) {
        const int alpha = row.target[i].Alpha();
        return alpha - DivideBy255(alpha * row.strength[i]);
    });
}

/// t = (L s + (255 - s) d) / 255, then (t m + (255 - m) d) / 255, truncating as the tools' own functor does.
void GrayToMaskRow(const BlendRow& row)
{
    SetAlphas(row, [&](int i) {
        const int old = row.target[i].Alpha();
        const int s = row.strength[i];
        const int m = row.mask[i];
        const int painted = DivideBy255Truncating(Lightness(row.source[i]) * s + (255 - s) * old);
        return DivideBy255Truncating(painted * m + (255 - m) * old);
    });
}

void CoverageToAlphaRow(const BlendRow& row)
{
    SetAlphas(row, [&](int i) { return int{row.strength[i]}; });
}

template <class Formula>
BlendKernel Separable(bool keepAlpha)
{
    BlendKernel kernel{keepAlpha ? BlendRowKeepingAlpha<Formula> : BlendRowOver<Formula>};
    kernel.keepsTransparentTarget = keepAlpha;
    return kernel;
}
} // namespace

BlendKernel BlendKernels::For(unsigned int mode, bool keepAlpha)
{
    switch (mode) {
    case BlendMode::Normal:
    case BlendMode::MergeCoverage: return Separable<BlendFormulas::Normal>(keepAlpha);
    case BlendMode::Addition: return Separable<BlendFormulas::Addition>(keepAlpha);
    case BlendMode::Multiply: return Separable<BlendFormulas::Multiply>(keepAlpha);
    case BlendMode::Screen: return Separable<BlendFormulas::Screen>(keepAlpha);
    case BlendMode::Overlay: return Separable<BlendFormulas::Overlay>(keepAlpha);
    case BlendMode::Darken: return Separable<BlendFormulas::Darken>(keepAlpha);
    case BlendMode::Lighten: return Separable<BlendFormulas::Lighten>(keepAlpha);
    case BlendMode::ColorDodge: return Separable<BlendFormulas::ColorDodge>(keepAlpha);
    case BlendMode::ColorBurn: return Separable<BlendFormulas::ColorBurn>(keepAlpha);
    case BlendMode::HardLight: return Separable<BlendFormulas::HardLight>(keepAlpha);
    case BlendMode::SoftLight: return Separable<BlendFormulas::SoftLight>(keepAlpha);
    case BlendMode::Difference: return Separable<BlendFormulas::Difference>(keepAlpha);
    case BlendMode::Exclusion: return Separable<BlendFormulas::Exclusion>(keepAlpha);
    case BlendMode::Source: return {ReplaceRow, StrengthRule::OpacityMask};
    case BlendMode::SourceIn: return {SourceInRow, StrengthRule::AlphaOpacityMask, false};
    case BlendMode::DestinationIn: return {DestinationInRow, StrengthRule::AlphaOpacityMask, false, true};
    case BlendMode::DestinationOut: return {DestinationOutRow, StrengthRule::AlphaOpacityMask, true, true};
    case BlendMode::GrayToMask: return {GrayToMaskRow, StrengthRule::AlphaOpacity};
    case BlendMode::CoverageToAlpha: return {CoverageToAlphaRow, StrengthRule::AlphaOpacityMask, false};
    default: throw std::invalid_argument("BlendOn: no such mode");
    }
}
