#include "image/ConvolveKernels.h"

// Reads this file again for each instruction set, so it comes before all that is read more than once.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/ConvolveKernels.cpp"
#include <hwy/foreach_target.h>
// clang-format on

#include "image/PixelLanes-inl.h"
#include "image/TileWalk.h"

#include <algorithm>
#include <cstddef>

HWY_BEFORE_NAMESPACE();

namespace ZkLanes {
namespace HWY_NAMESPACE {
namespace {

constexpr int TileSide = TileWalk::TileSide;
using D16Whole = hn::ScalableTag<uint16_t>;
using D8Half = hn::Rebind<uint8_t, D16Whole>;
using D8Whole = hn::Repartition<uint8_t, D32>;
using Sums = hn::Vec<D16Whole>;

HWY_INLINE Sums LoadAlphas(const quint8* alphas)
{
    return hn::PromoteTo(D16Whole(), hn::LoadU(D8Half(), alphas));
}

/// The alphas of four registers of pixels.
HWY_INLINE hn::Vec<D8Whole> AlphasOf(const LXRGBA32i* pixels)
{
    const D32 d;
    const auto load = [&](int i) HWY_ATTR {
        const auto* const words = Words(pixels) + static_cast<std::size_t>(i) * hn::Lanes(d);
        return hn::BitCast(D16Whole(), hn::LoadU(d, words));
    };
    const auto lower = hn::ConcatOdd(D16Whole(), load(1), load(0));
    const auto upper = hn::ConcatOdd(D16Whole(), load(3), load(2));
    return hn::ConcatOdd(D8Whole(), hn::BitCast(D8Whole(), upper), hn::BitCast(D8Whole(), lower));
}

void ReadAlphaRows(const LXRGBA32i* pixels, int count, int rows, quint8* alphas)
{
    const int lanes = static_cast<int>(hn::Lanes(D8Whole()));
    for (int y = 0; y < rows; ++y) {
        int x = 0;
        for (; x + lanes <= count; x += lanes) {
            hn::StoreU(AlphasOf(pixels + x), D8Whole(), alphas + x);
        }
        for (; x < count; ++x) {
            alphas[x] = static_cast<quint8>(pixels[x].Alpha());
        }
        pixels += TileSide;
        alphas += AlphaPlane::Stride;
    }
}

HWY_INLINE void WriteAlphas(Sums alphas, LXRGBA32i* pixels)
{
    const D32 d;
    const hn::Half<D16Whole> half;
    const auto write = [&](auto part, uint32_t* words) HWY_ATTR {
        hn::StoreU(WithAlpha(hn::LoadU(d, words), hn::PromoteTo(d, part)), d, words);
    };
    write(hn::LowerHalf(half, alphas), Words(pixels));
    write(hn::UpperHalf(half, alphas), Words(pixels) + hn::Lanes(d));
}

/// A register's width of columns from the top to the bottom. A row's sums across are taken once, and added at
/// once to all sums that they belong to: those of the rows within reach, which stay in registers.
///
/// Always inlined: GCC 12 takes some functions of this kind for such without effect, and drops the calls.
template <int Reach>
HWY_INLINE void ConvolveColumns(const BoxKernel& kernel, const quint8* alphas, int count, int height,
                                LXRGBA32i* pixels)
{
    const D16Whole d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    const Sums half = hn::Set(d, kernel.half);
    const Sums factor = hn::Set(d, kernel.factor);
    Sums open[2 * Reach + 1]; // of the rows from y - Reach on
    std::fill_n(open, 2 * Reach + 1, half);
    for (int y = -Reach; y < height + Reach; ++y) {
        const quint8* const row = alphas + std::ptrdiff_t(y) * AlphaPlane::Stride;
        Sums shares[Reach + 1]; // for the rows so far away
        Sums box = LoadAlphas(row);
        shares[0] = hn::Mul(box, hn::Set(d, kernel.boxes[0]));
        for (int i = 1; i <= Reach; ++i) {
            box = hn::Add(box, hn::Add(LoadAlphas(row - i), LoadAlphas(row + i)));
            shares[i] = hn::Mul(box, hn::Set(d, kernel.boxes[static_cast<std::size_t>(i)]));
        }
        for (int i = Reach; i > 0; --i) {
            shares[i - 1] = hn::Add(shares[i - 1], shares[i]);
        }
        const Sums sum = hn::Add(open[0], shares[Reach]);
        for (int i = 1; i <= 2 * Reach; ++i) {
            open[i - 1] = hn::Add(open[i], shares[i < Reach ? Reach - i : i - Reach]);
        }
        if (y < Reach) continue;

        const Sums result = hn::ShiftRightSame(hn::MulHigh(sum, factor), kernel.shift);
        LXRGBA32i* const target = pixels + std::ptrdiff_t(y - Reach) * TileSide;
        if (count >= lanes) {
            WriteAlphas(result, target);
        } else {
            uint16_t buffer[HWY_MAX_BYTES / 2];
            hn::StoreU(result, d, buffer);
            for (int x = 0; x < count; ++x) {
                target[x].bytes[3] = static_cast<quint8>(buffer[x]);
            }
        }
    }
}

template <int Reach>
HWY_INLINE void ConvolveByReach(const BoxKernel& kernel, const AlphaPlane& plane, int width, int height,
                                LXRGBA32i* pixels)
{
    const int lanes = static_cast<int>(hn::Lanes(D16Whole()));
    for (int x = 0; x < width; x += lanes) {
        ConvolveColumns<Reach>(kernel, plane.At(x, 0), width - x, height, pixels + x);
    }
}

void ConvolveTile(const BoxKernel& kernel, const AlphaPlane& plane, int width, int height, LXRGBA32i* pixels)
{
    switch (kernel.reach) {
    case 0: ConvolveByReach<0>(kernel, plane, width, height, pixels); break;
    case 1: ConvolveByReach<1>(kernel, plane, width, height, pixels); break;
    case 2: ConvolveByReach<2>(kernel, plane, width, height, pixels); break;
    default: ConvolveByReach<3>(kernel, plane, width, height, pixels); break;
    }
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace ZkLanes

HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include <cmath>

namespace ZkLanes {
HWY_EXPORT(ConvolveTile);
HWY_EXPORT(ReadAlphaRows);
} // namespace ZkLanes

namespace {
constexpr int MostDivisor = 1024;
constexpr int Most16 = 65535;

/// The weights as whole numbers over the divisor, or none.
std::vector<int> WholeWeights(const std::vector<double>& weights, int divisor)
{
    constexpr double tiny = 1e-9;
    std::vector<int> whole;
    for (const double weight : weights) {
        const double scaled = weight * divisor;
        const double rounded = std::round(scaled);
        if (!(std::abs(scaled - rounded) < tiny) || rounded < 0 || rounded > Most16) return {};
        whole.push_back(static_cast<int>(rounded));
    }
    return whole;
}

/// Finds the boxes' weights: what each ring has more than the next one outwards.
bool SetBoxes(const std::vector<int>& weights, int reach, BoxKernel& kernel)
{
    const int side = 2 * reach + 1;
    const auto at = [&](int x, int y) {
        const int place = (y + reach) * side + x + reach;
        return weights[static_cast<std::size_t>(place)];
    };
    for (int y = -reach; y <= reach; ++y) {
        for (int x = -reach; x <= reach; ++x) {
            if (at(x, y) != at(std::max(std::abs(x), std::abs(y)), 0)) return false;
        }
    }
    kernel.reach = reach;
    for (int ring = 0; ring <= reach; ++ring) {
        const int more = at(ring, 0) - (ring < reach ? at(ring + 1, 0) : 0);
        if (more < 0) return false;
        kernel.boxes[static_cast<std::size_t>(ring)] = static_cast<quint16>(more);
    }
    return true;
}

/// Whether factor and shift divide all sums up to 256 times the divisor: it is enough to try where the
/// quotient changes.
bool Divides(quint32 factor, int shift, int divisor)
{
    for (int quotient = 1; quotient <= 256 && quotient * divisor <= Most16; ++quotient) {
        const auto sum = static_cast<quint32>(quotient * divisor);
        if ((sum * factor) >> (16 + shift) != static_cast<quint32>(quotient)) return false;
        if (((sum - 1) * factor) >> (16 + shift) != static_cast<quint32>(quotient) - 1) return false;
    }
    return true;
}

bool SetDivisor(int divisor, BoxKernel& kernel)
{
    kernel.half = static_cast<quint16>(divisor / 2);
    for (int shift = 0; shift < 16; ++shift) {
        const quint64 factor = ((quint64(1) << (16 + shift)) + static_cast<quint64>(divisor) - 1) /
                               static_cast<quint64>(divisor);
        if (factor > Most16) return false;
        if (!Divides(static_cast<quint32>(factor), shift, divisor)) continue;
        kernel.factor = static_cast<quint16>(factor);
        kernel.shift = shift;
        return true;
    }
    return false;
}
} // namespace

std::optional<BoxKernel> BoxKernel::Of(const std::vector<double>& weights, const QSize& size)
{
    const int reach = size.width() / 2;
    if (size.width() != size.height() || size.width() % 2 == 0 || reach > MostReach) return std::nullopt;
    for (int divisor = 2; divisor <= MostDivisor; ++divisor) {
        const std::vector<int> whole = WholeWeights(weights, divisor);
        if (whole.empty()) continue;
        int sum = 0;
        for (const int weight : whole) {
            sum += std::min(weight, Most16);
        }
        BoxKernel kernel;
        // A sum above the divisor would need a clamp.
        if (sum > divisor || 255 * sum + divisor / 2 > Most16) return std::nullopt;
        kernel.isMean = sum == divisor;
        if (SetBoxes(whole, reach, kernel) && SetDivisor(divisor, kernel)) return kernel;
        return std::nullopt;
    }
    return std::nullopt;
}

void ConvolveKernels::ReadAlphas(const LXRGBA32i* pixels, int count, int rows, quint8* alphas)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::ReadAlphaRows)(pixels, count, rows, alphas);
}

void ConvolveKernels::Convolve(const BoxKernel& kernel, const AlphaPlane& plane, int width, int height,
                               LXRGBA32i* pixels)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::ConvolveTile)(kernel, plane, width, height, pixels);
}
#endif
