#include "image/AxisKernels.h"

// Reads this file again for each instruction set, so it comes before all that is read more than once.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/AxisKernels.cpp"
#include <hwy/foreach_target.h>
// clang-format on

#include "image/PixelLanes-inl.h"

#include <algorithm>
#include <cstddef>

HWY_BEFORE_NAMESPACE();

namespace ZkLanes {
namespace HWY_NAMESPACE {
namespace {

constexpr int Channels4 = AxisKernels::Channels;

/// One channel in each lane, so registers of four lanes at least.
using DC = hn::CappedTag<float, 16>;
using DCWhole = hn::RebindToSigned<DC>;
using DCWords = hn::RebindToUnsigned<DC>;
using DCBytes = hn::Rebind<uint8_t, DC>;
using Floats = hn::Vec<DC>;

HWY_INLINE int PixelsOfRegister()
{
    return static_cast<int>(hn::Lanes(DC())) / Channels4;
}

/// Which lanes hold alphas.
HWY_INLINE hn::Mask<DC> AlphaLanes()
{
    const DCWords d;
    return hn::RebindMask(DC(), hn::Eq(hn::And(hn::Iota(d, 0), hn::Set(d, 3)), hn::Set(d, 3)));
}

/// Each pixel's alpha in all its lanes.
HWY_INLINE Floats SpreadAlpha(Floats channels)
{
    return hn::Broadcast<3>(channels);
}

HWY_INLINE Floats LoadPixels(const LXRGBA32i* pixels)
{
    const auto bytes = hn::LoadU(DCBytes(), pixels->bytes);
    return hn::ConvertTo(DC(), hn::PromoteTo(DCWhole(), bytes));
}

/// `make(i)` gives the channels of the pixels from i on; what lies beyond the end passes through a buffer.
template <class Make>
HWY_INLINE void StorePixels(int count, LXRGBA32i* pixels, Make make)
{
    const int step = PixelsOfRegister();
    int i = 0;
    for (; i + step <= count; i += step) {
        hn::StoreU(make(i), DCBytes(), pixels[i].bytes);
    }
    if (i == count) return;
    LXRGBA32i buffer[HWY_MAX_BYTES / 4];
    hn::StoreU(make(i), DCBytes(), buffer[0].bytes);
    std::copy_n(buffer, count - i, pixels + i);
}

void PremultiplyRow(const LXRGBA32i* pixels, int count, float* result)
{
    const DC d;
    const int step = PixelsOfRegister();
    const auto isAlpha = AlphaLanes();
    const Floats one = hn::Set(d, 1.0F);
    int i = 0;
    for (; i + step <= count; i += step) {
        const Floats channels = LoadPixels(pixels + i);
        const Floats factor = hn::IfThenElse(isAlpha, one, SpreadAlpha(channels));
        hn::StoreU(hn::Mul(channels, factor), d, result + std::ptrdiff_t(i) * Channels4);
    }
    for (; i < count; ++i) {
        const auto alpha = static_cast<float>(pixels[i].Alpha());
        for (int c = 0; c < 3; ++c) {
            result[i * Channels4 + c] = alpha * static_cast<float>(pixels[i].bytes[c]);
        }
        result[i * Channels4 + 3] = alpha;
    }
}

/// The sum of all pixels of a register.
template <class D>
HWY_INLINE auto SumOfPixels(D d, hn::Vec<D> sums)
{
    if constexpr (hn::MaxLanes(d) == Channels4) {
        return sums;
    } else {
        const hn::Half<D> half;
        return SumOfPixels(half, hn::Add(hn::LowerHalf(half, sums), hn::UpperHalf(half, sums)));
    }
}

void SumAcrossRow(const float* source, const AxisKernels::TapRow& row, float* result)
{
    const DC d;
    const hn::CappedTag<float, 4> four;
    const int step = PixelsOfRegister();
    const float* weights = row.weights;
    const int* const firsts = row.firsts; // the compiler fears that the result overwrites what it reads
    const int tapCount = row.taps;
    const int count = row.count;
    for (int i = 0; i < count; ++i) {
        const float* taps = source + std::ptrdiff_t(firsts[i]) * Channels4;
        Floats sum = hn::Zero(d);
        for (int k = 0; k < tapCount; k += step) {
            sum = hn::MulAdd(hn::LoadU(d, taps), hn::LoadU(d, weights), sum);
            taps += step * Channels4;
            weights += step * Channels4;
        }
        hn::StoreU(SumOfPixels(d, sum), four, result + std::ptrdiff_t(i) * Channels4);
    }
}

/// Some registers side by side, so that a weight serves several and no sum waits for the one before.
template <int Registers, bool IsOnTop>
HWY_INLINE void SumDownAt(const float* const* lines, const float* weights, int count, int first,
                          float* result)
{
    const DC d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    Floats sums[Registers];
    for (int i = 0; i < Registers; ++i) {
        sums[i] = IsOnTop ? hn::LoadU(d, result + first + i * lanes) : hn::Zero(d);
    }
    for (int k = 0; k < count; ++k) {
        const float* const line = lines[k] + first;
        const Floats weight = hn::Set(d, weights[k]);
        for (int i = 0; i < Registers; ++i) {
            sums[i] = hn::MulAdd(hn::LoadU(d, line + i * lanes), weight, sums[i]);
        }
    }
    for (int i = 0; i < Registers; ++i) {
        hn::StoreU(sums[i], d, result + first + i * lanes);
    }
}

/// The lines are a multiple of a register long.
template <bool IsOnTop>
HWY_INLINE void SumAllDown(const float* const* lines, const float* weights, int count, int pixels,
                           float* result)
{
    constexpr int block = 4;
    const int lanes = static_cast<int>(hn::Lanes(DC()));
    const int floats = pixels * Channels4;
    int i = 0;
    for (; i + block * lanes <= floats; i += block * lanes) {
        SumDownAt<block, IsOnTop>(lines, weights, count, i, result);
    }
    for (; i < floats; i += lanes) {
        SumDownAt<1, IsOnTop>(lines, weights, count, i, result);
    }
}

void SumDownLines(const float* const* lines, const float* weights, int count, int pixels, float* result)
{
    SumAllDown<false>(lines, weights, count, pixels, result);
}

void AddDownLines(const float* const* lines, const float* weights, int count, int pixels, float* result)
{
    SumAllDown<true>(lines, weights, count, pixels, result);
}

HWY_INLINE hn::Vec<DCBytes> ToBytes(Floats values)
{
    const DC d;
    const Floats inside = hn::Min(hn::Max(values, hn::Zero(d)), hn::Set(d, 255.0F));
    return hn::DemoteTo(DCBytes(), hn::ConvertTo(DCWhole(), hn::Add(inside, hn::Set(d, 0.5F))));
}

void StraightRow(const float* sums, const float* coverage, int count, LXRGBA32i* pixels)
{
    const DC d;
    const auto isAlpha = AlphaLanes();
    StorePixels(count, pixels, [&](int i) HWY_ATTR {
        const Floats sum = hn::LoadU(d, sums + std::ptrdiff_t(i) * Channels4);
        const Floats covered = hn::LoadU(d, coverage + std::ptrdiff_t(i) * Channels4);
        const Floats alpha = SpreadAlpha(sum);
        const Floats factor = hn::Div(hn::Set(d, 1.0F), hn::Max(alpha, hn::Set(d, 1e-6F)));
        const Floats values = hn::Mul(sum, hn::IfThenElse(isAlpha, covered, factor));
        // A pixel whose alpha comes out as 0 has no color either.
        const auto isSeen = hn::Ge(SpreadAlpha(values), hn::Set(d, 0.5F));
        return ToBytes(hn::IfThenElseZero(isSeen, values));
    });
}

void PremultipliedRow(const float* sums, int count, LXRGBA32i* pixels)
{
    const DC d;
    const Floats factor = hn::IfThenElse(AlphaLanes(), hn::Set(d, 1.0F), hn::Set(d, 1.0F / 255.0F));
    StorePixels(count, pixels, [&](int i) HWY_ATTR {
        return ToBytes(hn::Mul(hn::LoadU(d, sums + std::ptrdiff_t(i) * Channels4), factor));
    });
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace ZkLanes

HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ZkLanes {
HWY_EXPORT(AddDownLines);
HWY_EXPORT(PremultipliedRow);
HWY_EXPORT(PremultiplyRow);
HWY_EXPORT(StraightRow);
HWY_EXPORT(SumAcrossRow);
HWY_EXPORT(SumDownLines);
} // namespace ZkLanes

void AxisKernels::Premultiply(const LXRGBA32i* pixels, int count, float* result)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::PremultiplyRow)(pixels, count, result);
}

void AxisKernels::SumAcross(const float* source, const TapRow& row, float* result)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::SumAcrossRow)(source, row, result);
}

void AxisKernels::SumDown(const float* const* lines, const float* weights, int count, int pixels,
                          float* result)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::SumDownLines)(lines, weights, count, pixels, result);
}

void AxisKernels::AddDown(const float* const* lines, const float* weights, int count, int pixels,
                          float* result)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::AddDownLines)(lines, weights, count, pixels, result);
}

void AxisKernels::ToStraight(const float* sums, const float* coverage, int count, LXRGBA32i* pixels)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::StraightRow)(sums, coverage, count, pixels);
}

void AxisKernels::ToPremultiplied(const float* sums, int count, LXRGBA32i* pixels)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::PremultipliedRow)(sums, count, pixels);
}
#endif
