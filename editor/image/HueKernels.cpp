#include "image/HueKernels.h"

// Reads this file again for each instruction set, so it comes before all that is read more than once.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/HueKernels.cpp"
#include <hwy/foreach_target.h>
// clang-format on

#include "image/PixelLanes-inl.h"

#include <algorithm>

HWY_BEFORE_NAMESPACE();

namespace ZkLanes {
namespace HWY_NAMESPACE {
namespace {

/// Where the channels have their full strength, in sixths of a turn.
constexpr float RedHue = 0;
constexpr float GreenHue = 2;
constexpr float BlueHue = 4;
constexpr float WholeTurn = 6;

HWY_INLINE Reals Real(float number)
{
    return hn::Set(DF(), number);
}

HWY_INLINE Reals ByteOf(Pixels pixels)
{
    return ToReals(hn::And(pixels, hn::Set(D32(), 0xFF)));
}

/// Colors as their hue in sixths of a turn, and what their largest and smallest channels are together and
/// apart.
struct HueSpan
{
    Reals hue;
    Reals sum;
    Reals width;
};

HWY_INLINE HueSpan SpanOf(Reals red, Reals green, Reals blue)
{
    const Reals most = hn::Max(red, hn::Max(green, blue));
    const Reals least = hn::Min(red, hn::Min(green, blue));
    const Reals width = hn::Sub(most, least);
    const auto isRed = hn::Eq(most, red);
    const auto isGreen = hn::Eq(most, green);
    const Reals way = hn::IfThenElse(isRed, hn::Sub(green, blue),
                                     hn::IfThenElse(isGreen, hn::Sub(blue, red), hn::Sub(red, green)));
    const Reals turns = hn::IfThenElseZero(hn::Lt(green, blue), Real(WholeTurn));
    const Reals start = hn::IfThenElse(isRed, turns, hn::IfThenElse(isGreen, Real(GreenHue), Real(BlueHue)));
    // Gray has a way of 0; everything else a width of 1 at least.
    return {hn::Add(hn::Div(way, hn::Max(width, Real(1))), start), hn::Add(most, least), width};
}

/// 0 to 1 of the channel whose full strength lies at the hue `full`.
HWY_INLINE Reals PartAt(Reals hue, float full)
{
    const Reals way = hn::Abs(hn::Sub(hue, Real(full)));
    const Reals around = hn::Min(way, hn::Sub(Real(WholeTurn), way));
    return hn::Min(hn::Max(hn::Sub(Real(2), around), Real(0)), Real(1));
}

HWY_INLINE Pixels TurnLanes(const HueRule& rule, Pixels pixels)
{
    const HueSpan span =
        SpanOf(ByteOf(hn::ShiftRight<16>(pixels)), ByteOf(hn::ShiftRight<8>(pixels)), ByteOf(pixels));
    const Reals turned = hn::Add(span.hue, Real(rule.turn));
    const Reals risen = hn::IfThenElse(hn::Lt(turned, Real(0)), hn::Add(turned, Real(WholeTurn)), turned);
    const Reals hue = hn::IfThenElse(hn::Ge(risen, Real(WholeTurn)), hn::Sub(risen, Real(WholeTurn)), risen);
    // The saturation is the width as a part of the largest that the lightness allows.
    const Reals allowed = hn::Min(span.sum, hn::Sub(Real(510), span.sum));
    const Reals width = hn::Min(hn::Mul(span.width, Real(rule.saturation)), allowed);
    const Reals least = hn::Mul(hn::Sub(span.sum, width), Real(0.5F));
    const auto channel = [&](float full) HWY_ATTR {
        const Reals colored = hn::Add(least, hn::Mul(PartAt(hue, full), width));
        const Reals value = hn::Add(hn::Mul(colored, Real(rule.kept)), Real(rule.added));
        return ToWhole(hn::Min(hn::Max(hn::Add(value, Real(0.5F)), Real(0)), Real(255)));
    };
    const Pixels redGreen = hn::Or(hn::ShiftLeft<16>(channel(RedHue)), hn::ShiftLeft<8>(channel(GreenHue)));
    return WithAlpha(hn::Or(redGreen, channel(BlueHue)), hn::Set(D32(), 255));
}

void TurnRow(const HueRule& rule, LXRGBA32i* pixels, int count)
{
    const D32 d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    int i = 0;
    for (; i + lanes <= count; i += lanes) {
        hn::StoreU(TurnLanes(rule, hn::LoadU(d, Words(pixels + i))), d, Words(pixels + i));
    }
    if (i == count) return;
    LXRGBA32i rest[HWY_MAX_BYTES / sizeof(LXRGBA32i)];
    std::copy(pixels + i, pixels + count, rest);
    hn::StoreU(TurnLanes(rule, hn::LoadU(d, Words(rest))), d, Words(rest));
    std::copy_n(rest, count - i, pixels + i);
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace ZkLanes

HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ZkLanes {
HWY_EXPORT(TurnRow);
} // namespace ZkLanes

void HueKernels::Turn(const HueRule& rule, LXRGBA32i* pixels, int count)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::TurnRow)(rule, pixels, count);
}
#endif
