#include "image/BlendKernels.h"

// Reads this file again for each instruction set, so it comes before all that is read more than once.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/BlendKernels.cpp"
#include <hwy/foreach_target.h>
// clang-format on

#include "image/BlendFormulas-inl.h"
#include "image/BlendMode.h"
#include "image/PixelLanes-inl.h"

#include <algorithm>
#include <type_traits>

HWY_BEFORE_NAMESPACE();

namespace ZkLanes {
namespace HWY_NAMESPACE {
namespace {

/// Runs `Kernel::Of(target, source, strength, mask)` over a row, a register of pixels at a time.
template <class Kernel>
void RunRow(const BlendRow& row)
{
    const D32 d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    int i = 0;
    for (; i + lanes <= row.count; i += lanes) {
        const Pixels strength = Bytes(row.strength + i);
        if (Kernel::KeepsAtZeroStrength && hn::AllTrue(d, hn::Eq(strength, hn::Zero(d)))) continue;
        const Pixels mask = Kernel::ReadsMask ? Bytes(row.mask + i) : strength;
        uint32_t* const target = Words(row.target + i);
        hn::StoreU(Kernel::Of(hn::LoadU(d, target), hn::LoadU(d, Words(row.source + i)), strength, mask), d,
                   target);
    }
    const int rest = row.count - i;
    if (rest == 0) return;

    // The last pixels pass through buffers of a register's length.
    constexpr int most = HWY_MAX_BYTES / 4;
    LXRGBA32i source[most];
    LXRGBA32i target[most];
    quint8 strength[most] = {};
    quint8 mask[most] = {};
    std::copy_n(row.source + i, rest, source);
    std::copy_n(row.target + i, rest, target);
    std::copy_n(row.strength + i, rest, strength);
    if (Kernel::ReadsMask) std::copy_n(row.mask + i, rest, mask);
    hn::StoreU(
        Kernel::Of(hn::LoadU(d, Words(target)), hn::LoadU(d, Words(source)), Bytes(strength), Bytes(mask)), d,
        Words(target));
    std::copy_n(target, rest, row.target + i);
}

struct PlainKernel
{
    static constexpr bool KeepsAtZeroStrength = false;
    static constexpr bool ReadsMask = false;
};

/// (a s + b (255 - s)) / 255
HWY_INLINE Channels Mix(Channels a, Channels b, Channels strength)
{
    const Channels rest = hn::Sub(hn::Set(D16(), 255), strength);
    return DivideBy255(hn::Add(hn::Mul(a, strength), hn::Mul(b, rest)));
}

/// cs = ((255 - d) source + d B) / 255: the formula counts as far as there is a target below.
template <class Formula>
HWY_INLINE Channels BlendedColor(Channels targetAlpha, Channels target, Channels source)
{
    if constexpr (std::is_same_v<Formula, FormulaNormal>) {
        return source;
    } else {
        return Mix(Formula::Of(target, source), source, targetAlpha);
    }
}

/// The weighted mean of two colors, channel by channel; the result's alpha is 0.
HWY_INLINE Pixels MeanColor(Channels blueRed, Channels greenAlpha, Pixels sourceWeight, Pixels target,
                            Pixels targetWeight)
{
    const D32 d;
    const Pixels byte = hn::Set(d, 0xFF);
    const Pixels total = hn::Add(sourceWeight, targetWeight);
    const Reals half = ToReals(hn::ShiftRight<1>(total));
    const Reals divisor = ToReals(hn::Max(total, hn::Set(d, 1)));
    const Reals a = ToReals(sourceWeight);
    const Reals b = ToReals(targetWeight);
    const Pixels blue = WeightedMean(Lower(blueRed), a, hn::And(target, byte), b, half, divisor);
    const Pixels green =
        WeightedMean(Lower(greenAlpha), a, hn::And(hn::ShiftRight<8>(target), byte), b, half, divisor);
    const Pixels red =
        WeightedMean(Upper(blueRed), a, hn::And(hn::ShiftRight<16>(target), byte), b, half, divisor);
    return hn::Or(blue, hn::Or(hn::ShiftLeft<8>(green), hn::ShiftLeft<16>(red)));
}

/// On an opaque target the weights add up to 255, so that bytes are enough: the most frequent case of all.
template <class Formula>
HWY_INLINE Pixels BlendOpaque(Pixels target, Pixels source, Pixels strength)
{
    const Channels s = InBothHalves(strength);
    const Channels blueRed = BlueRed(target);
    const Channels greenAlpha = GreenAlpha(target);
    return hn::Or(Join(Mix(Formula::Of(blueRed, BlueRed(source)), blueRed, s),
                       Mix(Formula::Of(greenAlpha, GreenAlpha(source)), greenAlpha, s)),
                  hn::Set(D32(), 0xFF000000));
}

/// alpha = s + d (255 - s) / 255; color = (cs 255 s + cd d (255 - s)) / (255 s + d (255 - s))
template <class Formula>
struct KernelOver
{
    static constexpr bool KeepsAtZeroStrength = true;
    static constexpr bool ReadsMask = false;

    static HWY_INLINE Pixels Of(Pixels target, Pixels source, Pixels strength, Pixels)
    {
        const D32 d;
        const Pixels all = hn::Set(d, 255);
        if constexpr (std::is_same_v<Formula, FormulaNormal>) {
            if (hn::AllTrue(d, hn::Eq(strength, all))) return source;
        }
        const Pixels targetAlpha = Alpha(target);
        if (hn::AllTrue(d, hn::Eq(targetAlpha, all))) return BlendOpaque<Formula>(target, source, strength);

        const Channels below = InBothHalves(targetAlpha);
        const Pixels sourceWeight = hn::Sub(hn::ShiftLeft<8>(strength), strength);
        const Pixels targetWeight = hn::Mul(targetAlpha, hn::Sub(all, strength));
        const Pixels color = MeanColor(BlendedColor<Formula>(below, BlueRed(target), BlueRed(source)),
                                       BlendedColor<Formula>(below, GreenAlpha(target), GreenAlpha(source)),
                                       sourceWeight, target, targetWeight);
        const Pixels alpha = hn::Add(strength, DivideBy255(targetWeight));
        return hn::IfThenElse(hn::Eq(strength, hn::Zero(d)), target, WithAlpha(color, alpha));
    }
};

/// color = (cs s + cd (255 - s)) / 255, alpha stays; a transparent target has no color to show.
template <class Formula>
struct KernelKeepingAlpha
{
    static constexpr bool KeepsAtZeroStrength = true;
    static constexpr bool ReadsMask = false;

    static HWY_INLINE Pixels Of(Pixels target, Pixels source, Pixels strength, Pixels)
    {
        const D32 d;
        const Pixels targetAlpha = Alpha(target);
        const Channels below = InBothHalves(targetAlpha);
        const Channels s = InBothHalves(strength);
        const Channels blueRed = BlueRed(target);
        const Channels greenAlpha = GreenAlpha(target);
        const Pixels color =
            Join(Mix(BlendedColor<Formula>(below, blueRed, BlueRed(source)), blueRed, s),
                 Mix(BlendedColor<Formula>(below, greenAlpha, GreenAlpha(source)), greenAlpha, s));
        return hn::IfThenElse(hn::Eq(targetAlpha, hn::Zero(d)), target, WithAlpha(color, targetAlpha));
    }
};

/// Weights alpha x k and d x (255 - k): alpha = their sum / 255, color the weighted mean.
struct KernelReplace
{
    static constexpr bool KeepsAtZeroStrength = true;
    static constexpr bool ReadsMask = false;

    static HWY_INLINE Pixels Of(Pixels target, Pixels source, Pixels strength, Pixels)
    {
        const D32 d;
        const Pixels all = hn::Set(d, 255);
        const auto isWhole = hn::Eq(strength, all);
        if (hn::AllTrue(d, isWhole)) return source;
        // Then the weights' common factor 255 falls out of the mean.
        if (hn::AllTrue(d, hn::Eq(Alpha(hn::And(source, target)), all)))
            return BlendOpaque<FormulaNormal>(target, source, strength);
        const Pixels sourceWeight = hn::Mul(Alpha(source), strength);
        const Pixels targetWeight = hn::Mul(Alpha(target), hn::Sub(all, strength));
        const Pixels total = hn::Add(sourceWeight, targetWeight);
        const Pixels color =
            MeanColor(BlueRed(source), GreenAlpha(source), sourceWeight, target, targetWeight);
        const Pixels mixed =
            hn::IfThenElse(hn::Eq(total, hn::Zero(d)), target, WithAlpha(color, DivideBy255(total)));
        return hn::IfThenElse(isWhole, source, mixed);
    }
};

struct KernelSourceIn : PlainKernel
{
    static HWY_INLINE Pixels Of(Pixels target, Pixels source, Pixels strength, Pixels)
    {
        return WithAlpha(source, DivideBy255(hn::Mul(Alpha(target), strength)));
    }
};

struct KernelDestinationIn : PlainKernel
{
    static HWY_INLINE Pixels Of(Pixels target, Pixels, Pixels strength, Pixels)
    {
        return WithAlpha(target, DivideBy255(hn::Mul(Alpha(target), strength)));
    }
};

/// The exact rest of DestinationIn, so that a cut and a lift add up.
struct KernelDestinationOut : PlainKernel
{
    static HWY_INLINE Pixels Of(Pixels target, Pixels, Pixels strength, Pixels)
    {
        const Pixels alpha = Alpha(target);
        return WithAlpha(target, hn::Sub(alpha, DivideBy255(hn::Mul(alpha, strength))));
    }
};

/// (a w + b (255 - w)) / 255, truncating
HWY_INLINE Pixels MixTruncating(Pixels a, Pixels b, Pixels weight)
{
    const Pixels rest = hn::Sub(hn::Set(D32(), 255), weight);
    return DivideBy255Truncating(hn::Add(hn::Mul(a, weight), hn::Mul(b, rest)));
}

/// t = (L s + (255 - s) d) / 255, then (t m + (255 - m) d) / 255, truncating as the tools' own functor does.
struct KernelGrayToMask : PlainKernel
{
    static constexpr bool ReadsMask = true;

    static HWY_INLINE Pixels Of(Pixels target, Pixels source, Pixels strength, Pixels mask)
    {
        const Pixels byte = hn::Set(D32(), 0xFF);
        const Pixels blue = hn::And(source, byte);
        const Pixels green = hn::And(hn::ShiftRight<8>(source), byte);
        const Pixels red = hn::And(hn::ShiftRight<16>(source), byte);
        const Pixels most = hn::Max(red, hn::Max(green, blue));
        const Pixels least = hn::Min(red, hn::Min(green, blue));
        const Pixels old = Alpha(target);
        const Pixels painted = MixTruncating(hn::ShiftRight<1>(hn::Add(most, least)), old, strength);
        return WithAlpha(target, MixTruncating(painted, old, mask));
    }
};

struct KernelCoverageToAlpha : PlainKernel
{
    static HWY_INLINE Pixels Of(Pixels target, Pixels, Pixels strength, Pixels)
    {
        return WithAlpha(target, strength);
    }
};

template <class Formula>
BlendKernel Separable(bool keepAlpha)
{
    BlendKernel kernel{keepAlpha ? RunRow<KernelKeepingAlpha<Formula>> : RunRow<KernelOver<Formula>>};
    kernel.keepsTransparentTarget = keepAlpha;
    return kernel;
}

BlendKernel KernelFor(unsigned int mode, bool keepAlpha)
{
    switch (mode) {
    case BlendMode::Normal:
    case BlendMode::MergeCoverage: return Separable<FormulaNormal>(keepAlpha);
    case BlendMode::Addition: return Separable<FormulaAddition>(keepAlpha);
    case BlendMode::Multiply: return Separable<FormulaMultiply>(keepAlpha);
    case BlendMode::Screen: return Separable<FormulaScreen>(keepAlpha);
    case BlendMode::Overlay: return Separable<FormulaOverlay>(keepAlpha);
    case BlendMode::Darken: return Separable<FormulaDarken>(keepAlpha);
    case BlendMode::Lighten: return Separable<FormulaLighten>(keepAlpha);
    case BlendMode::ColorDodge: return Separable<FormulaColorDodge>(keepAlpha);
    case BlendMode::ColorBurn: return Separable<FormulaColorBurn>(keepAlpha);
    case BlendMode::HardLight: return Separable<FormulaHardLight>(keepAlpha);
    case BlendMode::SoftLight: return Separable<FormulaSoftLight>(keepAlpha);
    case BlendMode::Difference: return Separable<FormulaDifference>(keepAlpha);
    case BlendMode::Exclusion: return Separable<FormulaExclusion>(keepAlpha);
    case BlendMode::Source: return {RunRow<KernelReplace>, StrengthRule::OpacityMask};
    case BlendMode::SourceIn: return {RunRow<KernelSourceIn>, StrengthRule::AlphaOpacityMask, false};
    case BlendMode::DestinationIn:
        return {RunRow<KernelDestinationIn>, StrengthRule::AlphaOpacityMask, false, true};
    case BlendMode::DestinationOut:
        return {RunRow<KernelDestinationOut>, StrengthRule::AlphaOpacityMask, true, true};
    case BlendMode::GrayToMask: return {RunRow<KernelGrayToMask>, StrengthRule::AlphaOpacity};
    case BlendMode::CoverageToAlpha:
        return {RunRow<KernelCoverageToAlpha>, StrengthRule::AlphaOpacityMask, false};
    default: return {};
    }
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace ZkLanes

HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include <stdexcept>

namespace ZkLanes {
HWY_EXPORT(KernelFor);
}

BlendKernel BlendKernels::For(unsigned int mode, bool keepAlpha)
{
    const BlendKernel kernel = HWY_DYNAMIC_DISPATCH(ZkLanes::KernelFor)(mode, keepAlpha);
    if (kernel.run == nullptr) throw std::invalid_argument("BlendOn: no such mode");
    return kernel;
}
#endif
