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

HWY_BEFORE_NAMESPACE();

namespace ZkLanes {
namespace HWY_NAMESPACE {
namespace {

constexpr int TileSide = TileWalk::TileSide;
constexpr int Slack = 64; ///< of a register that reaches beyond a row
using D16Whole = hn::ScalableTag<uint16_t>;
using D8Half = hn::Rebind<uint8_t, D16Whole>;
using Sums = hn::Vec<D16Whole>;

/// Sums of alphas down the columns of a box, with room for its reach before and after.
using ColumnSums = uint16_t[TileSide + 2 * Slack];

HWY_INLINE Sums LoadAlphas(const quint8* alphas)
{
    return hn::PromoteTo(D16Whole(), hn::LoadU(D8Half(), alphas));
}

void ReadAlphaRows(const LXRGBA32i* pixels, int count, int rows, quint8* alphas)
{
    const D32 d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    for (int y = 0; y < rows; ++y) {
        int x = 0;
        for (; x + lanes <= count; x += lanes) {
            hn::StoreU(hn::TruncateTo(D8(), Alpha(hn::LoadU(d, Words(pixels + x)))), D8(), alphas + x);
        }
        for (; x < count; ++x) {
            alphas[x] = static_cast<quint8>(pixels[x].Alpha());
        }
        pixels += TileSide;
        alphas += AlphaPlane::Stride;
    }
}

/// Moves the sums of a box of this reach down to row `y`; row 0 comes first and is summed whole.
void MoveDown(const AlphaPlane& plane, int reach, int y, int width, uint16_t* sums)
{
    const D16Whole d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    for (int x = -BoxKernel::MostReach; x < width + BoxKernel::MostReach; x += lanes) {
        Sums sum = hn::Zero(d);
        if (y == 0) {
            for (int j = -reach; j <= reach; ++j) {
                sum = hn::Add(sum, LoadAlphas(plane.At(x, j)));
            }
        } else {
            sum = hn::Sub(hn::LoadU(d, sums + Slack + x), LoadAlphas(plane.At(x, y - reach - 1)));
            sum = hn::Add(sum, LoadAlphas(plane.At(x, y + reach)));
        }
        hn::StoreU(sum, d, sums + Slack + x);
    }
}

HWY_INLINE Sums SumAcross(const uint16_t* sums, int reach)
{
    const D16Whole d;
    Sums sum = hn::LoadU(d, sums);
    for (int i = 1; i <= reach; ++i) {
        sum = hn::Add(sum, hn::Add(hn::LoadU(d, sums - i), hn::LoadU(d, sums + i)));
    }
    return sum;
}

void ConvolveRow(const BoxKernel& kernel, const ColumnSums* columns, const quint8* middle, int width,
                 quint8* result)
{
    const D16Whole d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    const Sums half = hn::Set(d, kernel.half);
    const Sums factor = hn::Set(d, kernel.factor);
    for (int x = 0; x < width; x += lanes) {
        Sums sum = hn::Add(half, hn::Mul(LoadAlphas(middle + x), hn::Set(d, kernel.boxes[0])));
        for (int reach = 1; reach <= kernel.reach; ++reach) {
            const quint16 weight = kernel.boxes[static_cast<std::size_t>(reach)];
            if (weight == 0) continue;
            const Sums box = SumAcross(columns[reach] + Slack + x, reach);
            sum = hn::Add(sum, weight == 1 ? box : hn::Mul(box, hn::Set(d, weight)));
        }
        const Sums quotient = hn::ShiftRightSame(hn::MulHigh(sum, factor), kernel.shift);
        hn::StoreU(hn::DemoteTo(D8Half(), hn::BitCast(hn::RebindToSigned<D16Whole>(), quotient)), D8Half(),
                   result + x);
    }
}

void WriteAlphas(const quint8* alphas, int count, LXRGBA32i* pixels)
{
    const D32 d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    int x = 0;
    for (; x + lanes <= count; x += lanes) {
        uint32_t* const words = Words(pixels + x);
        hn::StoreU(WithAlpha(hn::LoadU(d, words), Bytes(alphas + x)), d, words);
    }
    for (; x < count; ++x) {
        pixels[x].bytes[3] = alphas[x];
    }
}

void ConvolveTile(const BoxKernel& kernel, const AlphaPlane& plane, int width, int height, LXRGBA32i* pixels)
{
    ColumnSums columns[BoxKernel::MostReach + 1] = {};
    quint8 alphas[TileSide + Slack];
    for (int y = 0; y < height; ++y) {
        for (int reach = 1; reach <= kernel.reach; ++reach) {
            if (kernel.boxes[static_cast<std::size_t>(reach)] != 0) {
                MoveDown(plane, reach, y, width, columns[reach]);
            }
        }
        ConvolveRow(kernel, columns, plane.At(0, y), width, alphas);
        WriteAlphas(alphas, width, pixels + y * TileSide);
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
