// Read once for each instruction set, so its guard is turned over each time instead of being set for good.
#if defined(ZK_IMAGE_BLENDFORMULAS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZK_IMAGE_BLENDFORMULAS_INL_H
#undef ZK_IMAGE_BLENDFORMULAS_INL_H
#else
#define ZK_IMAGE_BLENDFORMULAS_INL_H
#endif

#include "image/PixelLanes-inl.h"

/// B(target, source) of the separable modes, each rounded once, for two channels of a pixel in each 32-bit
/// lane. The formulae are those of the W3C's "Compositing and Blending"; t and s below are target / 255 and
/// source / 255. A lane that holds no color may get any result.
HWY_BEFORE_NAMESPACE();

namespace ZkLanes {
namespace HWY_NAMESPACE {

/// s
struct FormulaNormal
{
    static HWY_INLINE Channels Of(Channels, Channels source) { return source; }
};

/// min(1, t + s)
struct FormulaAddition
{
    static HWY_INLINE Channels Of(Channels target, Channels source)
    {
        return hn::Min(hn::Add(target, source), hn::Set(D16(), 255));
    }
};

/// t s
struct FormulaMultiply
{
    static HWY_INLINE Channels Of(Channels target, Channels source)
    {
        return DivideBy255(hn::Mul(target, source));
    }
};

/// t + s - t s, which is t 1 + s (1 - t)
struct FormulaScreen
{
    static HWY_INLINE Channels Of(Channels target, Channels source)
    {
        const Channels all = hn::Set(D16(), 255);
        return DivideBy255(hn::Add(hn::Mul(all, target), hn::Mul(source, hn::Sub(all, target))));
    }
};

/// Multiply(t, 2 s) for s <= 1/2, else Screen(t, 2 s - 1)
struct FormulaHardLight
{
    static HWY_INLINE Channels Of(Channels target, Channels source)
    {
        const Channels all = hn::Set(D16(), 255);
        const Channels twice = hn::Add(source, source);
        const Channels rest = hn::Sub(twice, all); // wraps where it isn't taken
        const Channels dark = hn::Mul(target, twice);
        const Channels light = hn::Add(hn::Mul(all, target), hn::Mul(rest, hn::Sub(all, target)));
        return DivideBy255(hn::IfThenElse(hn::Lt(all, twice), light, dark));
    }
};

/// HardLight with the roles changed
struct FormulaOverlay
{
    static HWY_INLINE Channels Of(Channels target, Channels source)
    {
        return FormulaHardLight::Of(source, target);
    }
};

struct FormulaDarken
{
    static HWY_INLINE Channels Of(Channels target, Channels source) { return hn::Min(target, source); }
};

struct FormulaLighten
{
    static HWY_INLINE Channels Of(Channels target, Channels source) { return hn::Max(target, source); }
};

/// 0 for t = 0, else min(1, t / (1 - s))
struct FormulaColorDodge
{
    static HWY_INLINE Channels Of(Channels target, Channels source)
    {
        const Channels all = hn::Set(D16(), 255);
        const Channels rest = hn::Sub(all, source);
        const Channels quotient = RoundedShareOf255(target, rest);
        const Channels result = hn::IfThenElse(hn::Lt(target, rest), quotient, all);
        return hn::IfThenElseZero(hn::Ne(target, hn::Zero(D16())), result);
    }
};

/// 1 for t = 1, else 1 - min(1, (1 - t) / s)
struct FormulaColorBurn
{
    static HWY_INLINE Channels Of(Channels target, Channels source)
    {
        const Channels all = hn::Set(D16(), 255);
        const Channels above = hn::SaturatedSub(source, hn::Sub(all, target));
        const Channels quotient = RoundedShareOf255(above, source);
        return hn::IfThenElse(hn::Eq(target, all), all, quotient);
    }
};

/// |t - s|
struct FormulaDifference
{
    static HWY_INLINE Channels Of(Channels target, Channels source)
    {
        return hn::Sub(hn::Max(target, source), hn::Min(target, source));
    }
};

/// t + s - 2 t s, which is t (1 - s) + s (1 - t)
struct FormulaExclusion
{
    static HWY_INLINE Channels Of(Channels target, Channels source)
    {
        const Channels all = hn::Set(D16(), 255);
        return DivideBy255(
            hn::Add(hn::Mul(target, hn::Sub(all, source)), hn::Mul(source, hn::Sub(all, target))));
    }
};

/// t - (1 - 2 s) t (1 - t) for s <= 1/2, else t + (2 s - 1) (D(t) - t) with
/// D(t) = ((16 t - 12) t + 4) t for t <= 1/4, else sqrt(t). In float, which a test tries for all bytes: what
/// is added to t is worked out and rounded by itself, and sqrt(t) - t as t (1 - t) / (sqrt(t) + t), because
/// the plain difference is too coarse for one of the pairs.
struct FormulaSoftLight
{
    static HWY_INLINE Channels Of(Channels target, Channels source)
    {
        return EachInFloat(target, source, [](Reals t, Reals s) HWY_ATTR {
            const DF d;
            const Reals all = hn::Set(d, 255.0F);
            const Reals one255th = hn::Set(d, 1.0F / 255.0F);
            const Reals weight = hn::Sub(hn::Add(s, s), all); // 255 (2 s - 1)
            const Reals scaled = hn::Mul(t, one255th);
            const Reals product = hn::Mul(t, hn::Sub(all, t));
            const Reals slope = hn::Sub(hn::Mul(scaled, hn::Set(d, 16.0F)), hn::Set(d, 12.0F));
            const Reals steep = hn::Mul(hn::Add(hn::Mul(slope, scaled), hn::Set(d, 3.0F)), t);
            const Reals root = hn::Div(product, hn::Add(hn::Sqrt(hn::Mul(t, all)), t));
            const Reals bright = hn::IfThenElse(hn::Le(t, hn::Set(d, 63.75F)), steep, root);
            const auto isDark = hn::Le(weight, hn::Zero(d));
            const Reals change = hn::IfThenElse(isDark, hn::Mul(product, one255th), bright);
            const Reals exact = hn::Mul(hn::Mul(hn::Abs(weight), change), one255th);
            const Reals whole = hn::Trunc(hn::Add(exact, hn::Set(d, 0.5F)));
            return hn::IfThenElse(isDark, hn::Sub(t, whole), hn::Add(t, whole));
        });
    }
};

} // namespace HWY_NAMESPACE
} // namespace ZkLanes

HWY_AFTER_NAMESPACE();

#endif
