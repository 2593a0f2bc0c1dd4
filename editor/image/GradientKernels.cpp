#include "image/GradientKernels.h"

// Reads this file again for each instruction set, so it comes before all that is read more than once.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/GradientKernels.cpp"
#include <hwy/foreach_target.h>
// clang-format on

#include "image/PixelLanes-inl.h"

#include <algorithm>
#include <cmath>
#include <cstring>

HWY_BEFORE_NAMESPACE();

namespace ZkLanes {
namespace HWY_NAMESPACE {
namespace {

using Spread = GradientRule::Spread;

HWY_INLINE Reals Fraction(Reals value)
{
    return hn::Sub(value, hn::Floor(value));
}

struct PadSpread
{
    static HWY_INLINE Reals Of(Reals position) { return position; }
};

struct RepeatSpread
{
    static HWY_INLINE Reals Of(Reals position) { return Fraction(position); }
};

struct ReflectSpread
{
    static HWY_INLINE Reals Of(Reals position)
    {
        const DF d;
        const Reals inPair = hn::Mul(Fraction(hn::Mul(position, hn::Set(d, 0.5F))), hn::Set(d, 2.0F));
        return hn::Min(inPair, hn::Sub(hn::Set(d, 2.0F), inPair));
    }
};

/// One load after the other: gathers aren't faster anywhere, and much slower on some processors. Places and
/// colors travel in pairs, which halves the rest.
HWY_INLINE void PickColors(const LXRGBA32i* table, const int32_t* places, int count, LXRGBA32i* pixels)
{
    int i = 0;
    for (; i + 2 <= count; i += 2) {
        uint64_t pair = 0;
        std::memcpy(&pair, places + i, sizeof(pair));
        const uint64_t colors =
            table[static_cast<uint32_t>(pair)].value | static_cast<uint64_t>(table[pair >> 32].value) << 32;
        std::memcpy(Words(pixels + i), &colors, sizeof(colors));
    }
    if (i < count) pixels[i] = table[places[i]];
}

/// Calls `positionAt(x, y)` for each register of pixels and looks its colors up.
template <class SpreadRule, class PositionAt>
HWY_INLINE void LookUp(const GradientRow& row, LXRGBA32i* pixels, PositionAt positionAt)
{
    const DF d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    const Reals last = hn::Set(d, static_cast<float>(GradientRule::TableSize - 1));
    for (int i = 0; i < row.count; i += lanes) {
        // Each register begins anew, so that no error adds up.
        const Reals number = hn::Iota(d, 0.0F);
        const Reals x = hn::MulAdd(number, hn::Set(d, static_cast<float>(row.stepX)),
                                   hn::Set(d, static_cast<float>(row.x + i * row.stepX)));
        const Reals y = hn::MulAdd(number, hn::Set(d, static_cast<float>(row.stepY)),
                                   hn::Set(d, static_cast<float>(row.y + i * row.stepY)));
        const Reals scaled = hn::Mul(SpreadRule::Of(positionAt(x, y)), last);
        const Reals inside = hn::Min(hn::Max(scaled, hn::Zero(d)), last);
        const auto index = hn::ConvertTo(DI(), hn::Add(inside, hn::Set(d, 0.5F)));
        int32_t places[HWY_MAX_BYTES / 4];
        hn::StoreU(index, DI(), places);
        if (row.count - i >= lanes) {
            PickColors(row.table, places, lanes, pixels + i);
        } else {
            PickColors(row.table, places, row.count - i, pixels + i);
        }
    }
}

template <class PositionAt>
HWY_INLINE void LookUpSpread(const GradientRule& rule, const GradientRow& row, LXRGBA32i* pixels,
                             PositionAt positionAt)
{
    switch (rule.spread) {
    case Spread::Pad: LookUp<PadSpread>(row, pixels, positionAt); break;
    case Spread::Repeat: LookUp<RepeatSpread>(row, pixels, positionAt); break;
    case Spread::Reflect: LookUp<ReflectSpread>(row, pixels, positionAt); break;
    }
}

/// The angle from the right towards larger y, in turns from -1/2 to 1/2.
HWY_INLINE Reals Turns(Reals x, Reals y)
{
    const DF d;
    const Reals wide = hn::Abs(x);
    const Reals high = hn::Abs(y);
    const Reals most = hn::Max(hn::Max(wide, high), hn::Set(d, 1e-30F));
    const Reals slope = hn::Div(hn::Min(wide, high), most);
    // The arc tangent as its first six Chebyshev polynomials: wrong by 3e-7 of a turn at most.
    const Reals squared = hn::Mul(slope, slope);
    Reals sum = hn::Set(d, -0.00182484029F);
    for (const float factor : {0.00826818398F, -0.0184189127F, 0.0307543519F, -0.0529298915F, 0.159150883F}) {
        sum = hn::MulAdd(sum, squared, hn::Set(d, factor));
    }
    const Reals octant = hn::Mul(sum, slope);
    const Reals quarter = hn::IfThenElse(hn::Gt(high, wide), hn::Sub(hn::Set(d, 0.25F), octant), octant);
    const Reals half = hn::IfThenElse(hn::Lt(x, hn::Zero(d)), hn::Sub(hn::Set(d, 0.5F), quarter), quarter);
    return hn::CopySign(half, y);
}

void LinearLanes(const GradientRule& rule, const GradientRow& row, LXRGBA32i* pixels)
{
    LookUpSpread(rule, row, pixels, [](Reals x, Reals) HWY_ATTR { return x; });
}

void RadialLanes(const GradientRule& rule, const GradientRow& row, LXRGBA32i* pixels)
{
    LookUpSpread(rule, row, pixels,
                 [](Reals x, Reals y) HWY_ATTR { return hn::Sqrt(hn::MulAdd(x, x, hn::Mul(y, y))); });
}

void ConicalLanes(const GradientRule& rule, const GradientRow& row, LXRGBA32i* pixels)
{
    const Reals start = hn::Set(DF(), static_cast<float>(rule.start - std::floor(rule.start)));
    LookUp<RepeatSpread>(row, pixels,
                         [start](Reals x, Reals y) HWY_ATTR { return hn::Neg(hn::Add(Turns(x, y), start)); });
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace ZkLanes

HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ZkLanes {
HWY_EXPORT(ConicalLanes);
HWY_EXPORT(LinearLanes);
HWY_EXPORT(RadialLanes);
} // namespace ZkLanes

namespace {
/// Positions far out lose digits in float, so a repeated row begins near 0.
GradientRow Near(const GradientRule& rule, const GradientRow& row)
{
    GradientRow near = row;
    if (rule.spread != GradientRule::Spread::Pad) near.x -= 2 * std::floor(row.x / 2);
    return near;
}
} // namespace

void GradientKernels::LinearRow(const GradientRule& rule, const GradientRow& row, LXRGBA32i* pixels)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::LinearLanes)(rule, Near(rule, row), pixels);
}

void GradientKernels::RadialRow(const GradientRule& rule, const GradientRow& row, LXRGBA32i* pixels)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::RadialLanes)(rule, row, pixels);
}

void GradientKernels::ConicalRow(const GradientRule& rule, const GradientRow& row, LXRGBA32i* pixels)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::ConicalLanes)(rule, row, pixels);
}
#endif
