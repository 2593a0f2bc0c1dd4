#include "image/ResampleKernels.h"

// Reads this file again for each instruction set, so it comes before all that is read more than once.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/ResampleKernels.cpp"
#include <hwy/foreach_target.h>
// clang-format on

#include "image/PixelLanes-inl.h"

#include <algorithm>

HWY_BEFORE_NAMESPACE();

namespace ZkLanes {
namespace HWY_NAMESPACE {
namespace {

using Whole = hn::Vec<DI>;

/// Weighted sums of alpha, and of color times alpha.
struct MixSum
{
    HWY_INLINE MixSum()
        : alpha(hn::Zero(DF())), red(hn::Zero(DF())), green(hn::Zero(DF())), blue(hn::Zero(DF()))
    {}

    HWY_INLINE void Add(Pixels pixels, Reals weight)
    {
        const Pixels byte = hn::Set(D32(), 0xFF);
        const Reals share = hn::Mul(weight, ToReals(hn::ShiftRight<24>(pixels)));
        alpha = hn::Add(alpha, share);
        red = hn::MulAdd(share, ToReals(hn::And(hn::ShiftRight<16>(pixels), byte)), red);
        green = hn::MulAdd(share, ToReals(hn::And(hn::ShiftRight<8>(pixels), byte)), green);
        blue = hn::MulAdd(share, ToReals(hn::And(pixels, byte)), blue);
    }

    static HWY_INLINE Pixels ToBytes(Reals values)
    {
        const DF d;
        const Reals inside = hn::Min(hn::Max(values, hn::Zero(d)), hn::Set(d, 255.0F));
        return ToWhole(hn::Add(inside, hn::Set(d, 0.5F)));
    }

    HWY_INLINE Pixels Result() const
    {
        const DF d;
        const Pixels alphas = ToBytes(alpha);
        const Reals factor = hn::Div(hn::Set(d, 1.0F), hn::Max(alpha, hn::Set(d, 0.25F)));
        const Pixels color =
            hn::Or(ToBytes(hn::Mul(blue, factor)), hn::Or(hn::ShiftLeft<8>(ToBytes(hn::Mul(green, factor))),
                                                          hn::ShiftLeft<16>(ToBytes(hn::Mul(red, factor)))));
        return hn::IfThenZeroElse(hn::Eq(alphas, hn::Zero(D32())), WithAlpha(color, alphas));
    }

    Reals alpha;
    Reals red;
    Reals green;
    Reals blue;
};

/// Where a register of target pixels lies: the whole parts as an index into the box, and the fractions.
struct Places
{
    HWY_INLINE Places(const SourceBox& box, const SourceLine& line, int first)
    {
        const DF d;
        // Beyond the line's end the last pixel stands in.
        const Reals i =
            hn::Min(hn::Iota(d, static_cast<float>(first)), hn::Set(d, static_cast<float>(line.count - 1)));
        const Reals x = hn::MulAdd(i, hn::Set(d, line.stepX), hn::Set(d, line.x));
        const Reals y = hn::MulAdd(i, hn::Set(d, line.stepY), hn::Set(d, line.y));
        const Reals column = hn::Floor(x);
        const Reals row = hn::Floor(y);
        fractionX = hn::Sub(x, column);
        fractionY = hn::Sub(y, row);
        index = hn::Add(hn::Mul(hn::ConvertTo(DI(), row), hn::Set(DI(), box.stride)),
                        hn::ConvertTo(DI(), column));
    }

    Reals fractionX;
    Reals fractionY;
    Whole index;
};

HWY_INLINE Pixels PixelsAt(const SourceBox& box, Whole index, int offset)
{
    return hn::GatherIndex(D32(), Words(box.pixels), hn::Add(index, hn::Set(DI(), offset)));
}

HWY_INLINE void StorePart(Pixels pixels, LXRGBA32i* target, int count)
{
    const D32 d;
    if (count >= static_cast<int>(hn::Lanes(d))) {
        hn::StoreU(pixels, d, Words(target));
        return;
    }
    LXRGBA32i buffer[HWY_MAX_BYTES / 4];
    hn::StoreU(pixels, d, Words(buffer));
    std::copy_n(buffer, count, target);
}

void MixLinear(const SourceBox& box, const SourceLine& line, LXRGBA32i* target)
{
    const DF d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    for (int i = 0; i < line.count; i += lanes) {
        const Places places(box, line, i);
        const Reals both = hn::Mul(places.fractionX, places.fractionY);
        const Reals right = hn::Sub(places.fractionX, both);
        const Reals below = hn::Sub(places.fractionY, both);
        const Reals here = hn::Sub(hn::Sub(hn::Set(d, 1.0F), places.fractionX), below);
        MixSum sum;
        sum.Add(PixelsAt(box, places.index, 0), here);
        sum.Add(PixelsAt(box, places.index, 1), right);
        sum.Add(PixelsAt(box, places.index, box.stride), below);
        sum.Add(PixelsAt(box, places.index, box.stride + 1), both);
        StorePart(sum.Result(), target + i, line.count - i);
    }
}

/// The weights of the pixels at -1, 0, 1 and 2 from a fraction's whole number.
struct CubicWeights
{
    explicit HWY_INLINE CubicWeights(Reals fraction)
    {
        const DF d;
        const Reals half = hn::Set(d, 0.5F);
        const Reals squared = hn::Mul(fraction, fraction);
        const Reals cubed = hn::Mul(squared, fraction);
        // ((-t^3 + 2 t^2 - t), (3 t^3 - 5 t^2 + 2), (-3 t^3 + 4 t^2 + t), (t^3 - t^2)) / 2
        of[0] = hn::Mul(half, hn::Sub(hn::Sub(hn::Add(squared, squared), cubed), fraction));
        of[3] = hn::Mul(half, hn::Sub(cubed, squared));
        of[2] = hn::Sub(hn::Mul(half, fraction),
                        hn::Add(hn::Mul(hn::Set(d, 1.5F), cubed), hn::Mul(hn::Set(d, -2.0F), squared)));
        of[1] = hn::Sub(hn::Set(d, 1.0F), hn::Add(of[0], hn::Add(of[2], of[3])));
    }

    Reals of[4];
};

void MixCubic(const SourceBox& box, const SourceLine& line, LXRGBA32i* target)
{
    const int lanes = static_cast<int>(hn::Lanes(DF()));
    for (int i = 0; i < line.count; i += lanes) {
        const Places places(box, line, i);
        const CubicWeights across(places.fractionX);
        const CubicWeights down(places.fractionY);
        MixSum sum;
        for (int y = 0; y < 4; ++y) {
            for (int x = 0; x < 4; ++x) {
                sum.Add(PixelsAt(box, places.index, (y - 1) * box.stride + x - 1),
                        hn::Mul(across.of[x], down.of[y]));
            }
        }
        StorePart(sum.Result(), target + i, line.count - i);
    }
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace ZkLanes

HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ZkLanes {
HWY_EXPORT(MixCubic);
HWY_EXPORT(MixLinear);
} // namespace ZkLanes

void ResampleKernels::LinearRow(const SourceBox& box, const SourceLine& line, LXRGBA32i* target)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::MixLinear)(box, line, target);
}

void ResampleKernels::CubicRow(const SourceBox& box, const SourceLine& line, LXRGBA32i* target)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::MixCubic)(box, line, target);
}
#endif
