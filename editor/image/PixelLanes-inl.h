// Read once for each instruction set, so its guard is turned over each time instead of being set for good.
#if defined(ZK_IMAGE_PIXELLANES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZK_IMAGE_PIXELLANES_INL_H
#undef ZK_IMAGE_PIXELLANES_INL_H
#else
#define ZK_IMAGE_PIXELLANES_INL_H
#endif

#include "image/LXRGBA32i.h"

#include <hwy/highway.h>

/// What the kernels share: pixels in 32-bit lanes, one each, and the roundings of PixelMath.h on them.
HWY_BEFORE_NAMESPACE();

namespace ZkLanes {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using D32 = hn::ScalableTag<uint32_t>;
using DI = hn::RebindToSigned<D32>;
using DF = hn::RebindToFloat<D32>;
using D16 = hn::Repartition<uint16_t, D32>;
using D8 = hn::Rebind<uint8_t, D32>;
using Pixels = hn::Vec<D32>;
using Channels = hn::Vec<D16>; ///< two channels of a pixel in each 32-bit lane
using Reals = hn::Vec<DF>;

HWY_INLINE const uint32_t* Words(const LXRGBA32i* pixels)
{
    return reinterpret_cast<const uint32_t*>(pixels);
}

HWY_INLINE uint32_t* Words(LXRGBA32i* pixels)
{
    return reinterpret_cast<uint32_t*>(pixels);
}

/// A byte for each lane.
HWY_INLINE Pixels Bytes(const quint8* bytes)
{
    return hn::PromoteTo(D32(), hn::LoadU(D8(), bytes));
}

/// Blue in the lower half of the lane, red in the upper.
HWY_INLINE Channels BlueRed(Pixels pixels)
{
    return hn::BitCast(D16(), hn::And(pixels, hn::Set(D32(), 0x00FF00FF)));
}

/// Green in the lower half of the lane, alpha in the upper.
HWY_INLINE Channels GreenAlpha(Pixels pixels)
{
    return BlueRed(hn::ShiftRight<8>(pixels));
}

HWY_INLINE Pixels Join(Channels blueRed, Channels greenAlpha)
{
    return hn::Or(hn::BitCast(D32(), blueRed), hn::ShiftLeft<8>(hn::BitCast(D32(), greenAlpha)));
}

/// A byte of each 32-bit lane in both its halves.
HWY_INLINE Channels InBothHalves(Pixels bytes)
{
    return hn::BitCast(D16(), hn::Or(bytes, hn::ShiftLeft<16>(bytes)));
}

HWY_INLINE Pixels Lower(Channels channels)
{
    return hn::And(hn::BitCast(D32(), channels), hn::Set(D32(), 0xFFFF));
}

HWY_INLINE Pixels Upper(Channels channels)
{
    return hn::ShiftRight<16>(hn::BitCast(D32(), channels));
}

HWY_INLINE Channels FromHalves(Pixels lower, Pixels upper)
{
    return hn::BitCast(D16(), hn::Or(lower, hn::ShiftLeft<16>(upper)));
}

/// (v + 127) / 255, for v up to 65025
HWY_INLINE Channels DivideBy255(Channels products)
{
    const Channels more = hn::Add(products, hn::Set(D16(), 128));
    return hn::ShiftRight<8>(hn::Add(more, hn::ShiftRight<8>(more)));
}

HWY_INLINE Pixels DivideBy255(Pixels products)
{
    const Pixels more = hn::Add(products, hn::Set(D32(), 128));
    return hn::ShiftRight<8>(hn::Add(more, hn::ShiftRight<8>(more)));
}

/// v / 255 without rounding, for v up to 65025
HWY_INLINE Pixels DivideBy255Truncating(Pixels products)
{
    const Pixels more = hn::Add(products, hn::Set(D32(), 1));
    return hn::ShiftRight<8>(hn::Add(more, hn::ShiftRight<8>(products)));
}

HWY_INLINE Pixels Alpha(Pixels pixels)
{
    return hn::ShiftRight<24>(pixels);
}

HWY_INLINE Pixels WithAlpha(Pixels colors, Pixels alphas)
{
    return hn::Or(hn::And(colors, hn::Set(D32(), 0x00FFFFFF)), hn::ShiftLeft<24>(alphas));
}

HWY_INLINE Reals ToReals(Pixels numbers)
{
    return hn::ConvertTo(DF(), hn::BitCast(DI(), numbers));
}

/// Without rounding.
HWY_INLINE Pixels ToWhole(Reals numbers)
{
    return hn::BitCast(D32(), hn::ConvertTo(DI(), numbers));
}

/// `function(a, b)` in float for each channel; what it gives is cut to a whole number.
template <class Function>
HWY_INLINE Channels EachInFloat(Channels a, Channels b, Function function)
{
    const Pixels lower = ToWhole(function(ToReals(Lower(a)), ToReals(Lower(b))));
    const Pixels upper = ToWhole(function(ToReals(Upper(a)), ToReals(Upper(b))));
    return FromHalves(lower, upper);
}

/// 255 part / whole, rounded, for bytes; anything where the whole is 0 or less than the part. The quotient
/// misses a whole number by 1 / 510 at least, far more than the float's spacing there.
HWY_INLINE Channels RoundedShareOf255(Channels part, Channels whole)
{
    return EachInFloat(part, whole, [](Reals p, Reals w) HWY_ATTR {
        const DF d;
        const Reals divisor = hn::Max(hn::Add(w, w), hn::Set(d, 1.0F));
        const Reals quotient = hn::Div(hn::Add(hn::Mul(p, hn::Set(d, 510.0F)), w), divisor);
        return hn::Min(quotient, hn::Set(d, 255.0F));
    });
}

/// (a x wa + b x wb + half of the total) / total for bytes a, b: as PixelMath::WeightedMean, with its proof.
HWY_INLINE Pixels WeightedMean(Pixels a, Reals weightA, Pixels b, Reals weightB, Reals half, Reals total)
{
    const Reals sum = hn::Add(hn::Add(hn::Mul(ToReals(a), weightA), hn::Mul(ToReals(b), weightB)), half);
    return ToWhole(hn::Div(sum, total));
}

} // namespace HWY_NAMESPACE
} // namespace ZkLanes

HWY_AFTER_NAMESPACE();

#endif
