#include "image/WindowKernels.h"

// Reads this file again for each instruction set, so it comes before all that is read more than once.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/WindowKernels.cpp"
#include <hwy/foreach_target.h>
// clang-format on

#include "image/PixelLanes-inl.h"

#include <algorithm>
#include <cstddef>

HWY_BEFORE_NAMESPACE();

namespace ZkLanes {
namespace HWY_NAMESPACE {
namespace {

constexpr int MostTaps = WindowKernels::MostTaps;
constexpr int TapGroup = 4;
constexpr int MostLanes = HWY_MAX_BYTES / 4;
constexpr int AsTold = 0; ///< by the row

/// Registers whose windows are found one after the other before the first is mixed: each takes a long chain
/// of steps, and so the chains overlap.
constexpr int Together = 8;

/// From here on floats have no fractions: a sum with it is a whole number, which stands in its lowest bits.
constexpr float WholeNumbers = 8388608.0F;

/// Where a register of target pixels lies on one axis, and how wide its pixels are there.
struct Spans
{
    Reals middle;
    Reals window;
    Reals perWindow; ///< 1 / window
};

/// A source pixel's share of a window, for the taps from the first that may have one.
struct LinearWeights
{
    static constexpr int TapsDown = AsTold;

    explicit HWY_INLINE LinearWeights(const Spans& spans)
    {
        const DF d;
        const Reals reach = hn::Mul(spans.window, hn::Set(d, 0.5F));
        low = hn::Sub(spans.middle, reach);
        high = hn::Add(spans.middle, reach);
        first = hn::Floor(low);
        scale = spans.perWindow;
    }

    HWY_INLINE Reals Of(int tap) const
    {
        const DF d;
        const Reals left = hn::Add(first, hn::Set(d, static_cast<float>(tap)));
        const Reals right = hn::Add(left, hn::Set(d, 1.0F));
        const Reals overlap = hn::Sub(hn::Min(high, right), hn::Max(low, left));
        return hn::Mul(hn::Max(overlap, hn::Zero(d)), scale);
    }

    /// What the weights add up to.
    static HWY_INLINE Reals Total(Reals) { return hn::Set(DF(), 1.0F); }

    Reals low;
    Reals high;
    Reals first;
    Reals scale;
};

/// The same where no window is wider than a source pixel.
struct PairWeights
{
    static constexpr int TapsDown = 2;

    explicit HWY_INLINE PairWeights(const Spans& spans)
    {
        const Reals low = hn::Sub(spans.middle, hn::Set(DF(), 0.5F));
        first = hn::Floor(low);
        second = hn::Sub(low, first);
    }

    HWY_INLINE Reals Of(int tap) const { return tap == 0 ? hn::Sub(hn::Set(DF(), 1.0F), second) : second; }

    static HWY_INLINE Reals Total(Reals) { return hn::Set(DF(), 1.0F); }

    Reals first;
    Reals second; ///< the right or lower pixel's share
};

/// The same where none is wider than two: it always reaches over the first pixel's far side.
struct TripleWeights
{
    static constexpr int TapsDown = 3;

    explicit HWY_INLINE TripleWeights(const Spans& spans)
    {
        const DF d;
        const Reals low = hn::NegMulAdd(spans.window, hn::Set(d, 0.5F), spans.middle);
        first = hn::Floor(low);
        const Reals left = hn::Sub(low, first);
        const Reals beyond = hn::Sub(hn::Add(left, spans.window), hn::Set(d, 2.0F));
        shares[0] = hn::Mul(hn::Sub(hn::Set(d, 1.0F), left), spans.perWindow);
        shares[2] = hn::Mul(hn::Max(beyond, hn::Zero(d)), spans.perWindow);
        shares[1] = hn::Sub(hn::Set(d, 1.0F), hn::Add(shares[0], shares[2]));
    }

    HWY_INLINE Reals Of(int tap) const { return shares[tap]; }

    static HWY_INLINE Reals Total(Reals) { return hn::Set(DF(), 1.0F); }

    Reals first;
    Reals shares[3];
};

struct CubicWeights
{
    static constexpr int TapsDown = AsTold;

    explicit HWY_INLINE CubicWeights(const Spans& spans)
    {
        const DF d;
        const Reals reach = hn::Add(spans.window, spans.window);
        first = hn::Floor(hn::Add(hn::Sub(spans.middle, reach), hn::Set(d, 0.5F)));
        scale = spans.perWindow;
        offset = hn::Sub(hn::Add(first, hn::Set(d, 0.5F)), spans.middle);
    }

    HWY_INLINE Reals Of(int tap) const
    {
        const DF d;
        const Reals place = hn::Add(offset, hn::Set(d, static_cast<float>(tap)));
        const Reals t = hn::Abs(hn::Mul(place, scale));
        // (1.5 t - 2.5) t² + 1 up to 1, ((-0.5 t + 2.5) t - 4) t + 2 up to 2
        const Reals near =
            hn::MulAdd(hn::Mul(hn::MulAdd(t, hn::Set(d, 1.5F), hn::Set(d, -2.5F)), t), t, hn::Set(d, 1.0F));
        const Reals inner = hn::MulAdd(t, hn::Set(d, -0.5F), hn::Set(d, 2.5F));
        const Reals far = hn::MulAdd(hn::MulAdd(inner, t, hn::Set(d, -4.0F)), t, hn::Set(d, 2.0F));
        const Reals inTwo = hn::IfThenElse(hn::Lt(t, hn::Set(d, 1.0F)), near, far);
        return hn::IfThenElseZero(hn::Lt(t, hn::Set(d, 2.0F)), inTwo);
    }

    static HWY_INLINE Reals Total(Reals sum) { return sum; }

    Reals first;
    Reals scale;
    Reals offset;
};

/// Weighted sums of alpha, and of color times alpha: of green 2^8 and of red 2^16 times that, because there
/// they stand in a pixel, and a float doesn't mind.
struct MixSum
{
    HWY_INLINE MixSum()
        : alpha(hn::Zero(DF())), red(hn::Zero(DF())), green(hn::Zero(DF())), blue(hn::Zero(DF()))
    {}

    HWY_INLINE void Add(Pixels pixels, Reals weight)
    {
        const auto channel = [pixels](uint32_t bits)
                                 HWY_ATTR { return ToReals(hn::And(pixels, hn::Set(D32(), bits))); };
        const Reals share = hn::Mul(weight, ToReals(hn::ShiftRight<24>(pixels)));
        alpha = hn::Add(alpha, share);
        red = hn::MulAdd(share, channel(0xFF0000), red);
        green = hn::MulAdd(share, channel(0xFF00), green);
        blue = hn::MulAdd(share, channel(0xFF), blue);
    }

    /// value x factor to nearest, halves to the even number, brought between 0 and 255: in the lowest byte.
    static HWY_INLINE Pixels ToByte(Reals value, Reals factor)
    {
        const DF d;
        const Reals least = hn::Set(d, WholeNumbers);
        const Reals most = hn::Set(d, WholeNumbers + 255.0F);
        return hn::BitCast(D32(), hn::Min(hn::Max(hn::MulAdd(value, factor, least), least), most));
    }

    HWY_INLINE Pixels Result() const
    {
        const DF d;
        const Reals one = hn::Set(d, 1.0F);
        const Reals factor = hn::Div(one, hn::Max(alpha, hn::Set(d, 0.25F)));
        const Pixels alphas = hn::ShiftLeft<24>(ToByte(alpha, one));
        const Reals forGreen = hn::Mul(factor, hn::Set(d, 1.0F / 256));
        const Reals forRed = hn::Mul(factor, hn::Set(d, 1.0F / 65536));
        const Pixels greenRed =
            hn::Or(hn::ShiftLeft<8>(ToByte(green, forGreen)), hn::ShiftLeft<16>(ToByte(red, forRed)));
        const Pixels color = hn::And(hn::Or(ToByte(blue, factor), greenRed), hn::Set(D32(), 0x00FFFFFF));
        return hn::IfThenZeroElse(hn::Eq(alphas, hn::Zero(D32())), hn::Or(color, alphas));
    }

    Reals alpha;
    Reals red;
    Reals green;
    Reals blue;
};

/// The weights of a register of target pixels, and where each one's window begins in the box.
template <int Taps>
struct Windows
{
    int32_t place[MostLanes];
    Reals across[Taps];
    Reals down[MostTaps]; ///< brought to a sum of 1 together with those across
};

/// Beyond the row's end the last pixel stands in.
HWY_INLINE Reals At(const EvenSteps& steps, int first, int count)
{
    const DF d;
    const Reals number = hn::Min(hn::Iota(d, 0.0F), hn::Set(d, static_cast<float>(count - 1 - first)));
    // Each register begins anew, so that no error adds up.
    return hn::MulAdd(number, hn::Set(d, static_cast<float>(steps.step)),
                      hn::Set(d, static_cast<float>(steps.start + first * steps.step)));
}

/// The root by an approximation and one step of Newton's, which leaves it exact to some 22 bits: all that
/// weights need, and a fraction of the time of a root and a division.
HWY_INLINE Spans SpansAt(Reals middle, double right, Reals down, Reals factor)
{
    const DF d;
    const Reals one = hn::Set(d, 1.0F);
    const Reals across = hn::Set(d, static_cast<float>(right));
    const Reals squares = hn::MulAdd(across, across, hn::Mul(down, down));
    const Reals square = hn::Max(hn::Mul(squares, hn::Mul(factor, factor)), one);
    const Reals guess = hn::ApproximateReciprocalSqrt(square);
    const Reals error = hn::NegMulAdd(hn::Mul(square, guess), guess, one);
    const Reals perWindow = hn::MulAdd(hn::Mul(guess, error), hn::Set(d, 0.5F), guess);
    return {middle, hn::Mul(square, perWindow), perWindow};
}

template <class Weights>
HWY_INLINE int TapsDown(const WindowRow& row)
{
    return Weights::TapsDown == AsTold ? row.tapsDown : Weights::TapsDown;
}

template <class Weights, int Taps, bool IsAffine>
HWY_INLINE void FindWindows(const WindowBox& box, const WindowRow& row, int first, Windows<Taps>& windows)
{
    const DF d;
    const auto at = [&](const EvenSteps& number) HWY_ATTR { return At(number, first, row.count); };
    const Reals one = hn::Set(d, 1.0F);
    const Reals perZ = IsAffine ? one : hn::Div(one, at(row.z));
    const Reals squared = hn::Mul(perZ, perZ);
    const auto steps = [&](const EvenSteps& down) HWY_ATTR {
        return IsAffine ? hn::Set(d, static_cast<float>(down.start)) : at(down);
    };
    const Weights across(SpansAt(hn::Mul(at(row.x), perZ), row.xRight, steps(row.xDown), squared));
    const Weights down(SpansAt(hn::Mul(at(row.y), perZ), row.yRight, steps(row.yDown), squared));
    const Reals stride = hn::Set(d, static_cast<float>(box.stride));
    const Reals place = hn::Add(hn::MulAdd(down.first, stride, across.first), hn::Set(d, WholeNumbers));
    hn::StoreU(hn::And(hn::BitCast(DI(), place), hn::Set(DI(), 0x7FFFFF)), DI(), windows.place);

    Reals sumAcross = hn::Zero(d);
    for (int i = 0; i < Taps; ++i) {
        windows.across[i] = across.Of(i);
        sumAcross = hn::Add(sumAcross, windows.across[i]);
    }
    Reals sumDown = hn::Zero(d);
    const int tapsDown = TapsDown<Weights>(row);
    for (int i = 0; i < tapsDown; ++i) {
        windows.down[i] = down.Of(i);
        sumDown = hn::Add(sumDown, windows.down[i]);
    }
    const Reals scale = hn::Div(hn::Set(d, 1.0F), Weights::Total(hn::Mul(sumAcross, sumDown)));
    for (int i = 0; i < tapsDown; ++i) {
        windows.down[i] = hn::Mul(windows.down[i], scale);
    }
}

/// The four neighbours of every fourth pixel, a block of the register each.
template <class D>
HWY_INLINE hn::Vec<D> LoadBlocks(D d, const LXRGBA32i* pixels, const int32_t* places)
{
    if constexpr (hn::MaxLanes(d) == TapGroup) {
        return hn::LoadU(d, Words(pixels + places[0]));
    } else {
        const hn::Half<D> half;
        constexpr int inHalf = static_cast<int>(hn::MaxLanes(d)) / 2;
        return hn::Combine(d, LoadBlocks(half, pixels, places + inHalf), LoadBlocks(half, pixels, places));
    }
}

/// Up to four neighbours of each lane's pixel, a register for each column: loaded together and turned about,
/// which is faster than gathering them one by one.
template <int Columns>
HWY_INLINE void Collect(const LXRGBA32i* pixels, const int32_t* places, Pixels* columns)
{
    const D32 d;
    const hn::Repartition<uint64_t, D32> pairs;
    const auto pair = [&](Pixels v) HWY_ATTR { return hn::BitCast(pairs, v); };
    const Pixels a = LoadBlocks(d, pixels, places);
    const Pixels b = LoadBlocks(d, pixels, places + 1);
    const Pixels c = LoadBlocks(d, pixels, places + 2);
    const Pixels e = LoadBlocks(d, pixels, places + 3);
    const auto firstAB = pair(hn::InterleaveLower(d, a, b));
    const auto firstCE = pair(hn::InterleaveLower(d, c, e));
    columns[0] = hn::BitCast(d, hn::InterleaveLower(pairs, firstAB, firstCE));
    columns[1] = hn::BitCast(d, hn::InterleaveUpper(pairs, firstAB, firstCE));
    if (Columns <= 2) return;
    const auto lastAB = pair(hn::InterleaveUpper(d, a, b));
    const auto lastCE = pair(hn::InterleaveUpper(d, c, e));
    columns[2] = hn::BitCast(d, hn::InterleaveLower(pairs, lastAB, lastCE));
    columns[3] = hn::BitCast(d, hn::InterleaveUpper(pairs, lastAB, lastCE));
}

HWY_INLINE void StorePart(Pixels pixels, LXRGBA32i* target, int count)
{
    const D32 d;
    if (count >= static_cast<int>(hn::Lanes(d))) {
        hn::StoreU(pixels, d, Words(target));
        return;
    }
    LXRGBA32i buffer[MostLanes];
    hn::StoreU(pixels, d, Words(buffer));
    std::copy_n(buffer, count, target);
}

template <int Taps>
HWY_INLINE Pixels MixRegister(const WindowBox& box, const Windows<Taps>& windows, int tapsDown)
{
    MixSum sum;
    for (int k = 0; k < tapsDown; ++k) {
        for (int tap = 0; tap < Taps; tap += TapGroup) {
            constexpr int columns = std::min(Taps, TapGroup);
            Pixels neighbours[TapGroup];
            Collect<columns>(box.pixels + std::ptrdiff_t(k) * box.stride + tap, windows.place, neighbours);
            for (int i = 0; i < columns; ++i) {
                sum.Add(neighbours[i], hn::Mul(windows.across[tap + i], windows.down[k]));
            }
        }
    }
    return sum.Result();
}

/// Always inlined, as its callers are: GCC 12 takes some of these for functions without effect, and drops the
/// calls. Box and row are copies, for the compiler fears that pixels overwrite what it can't see all of.
template <class Weights, int Taps, bool IsAffine>
HWY_INLINE void MixWindows(WindowBox box, WindowRow row, LXRGBA32i* pixels)
{
    const int lanes = static_cast<int>(hn::Lanes(DF()));
    Windows<Taps> windows[Together];
    for (int first = 0; first < row.count; first += Together * lanes) {
        const int registers = std::min(Together, (row.count - first + lanes - 1) / lanes);
        for (int i = 0; i < registers; ++i) {
            FindWindows<Weights, Taps, IsAffine>(box, row, first + i * lanes, windows[i]);
        }
        for (int i = 0; i < registers; ++i) {
            const Pixels mixed = MixRegister<Taps>(box, windows[i], TapsDown<Weights>(row));
            StorePart(mixed, pixels + first + i * lanes, row.count - first - i * lanes);
        }
    }
}

template <class Weights, int Taps>
HWY_INLINE void MixByMap(const WindowBox& box, const WindowRow& row, LXRGBA32i* pixels)
{
    if (row.isAffine) {
        MixWindows<Weights, Taps, true>(box, row, pixels);
    } else {
        MixWindows<Weights, Taps, false>(box, row, pixels);
    }
}

void LinearPixels(const WindowBox& box, const WindowRow& row, LXRGBA32i* pixels)
{
    const int taps = std::max(row.tapsAcross, row.tapsDown);
    if (taps <= 2) {
        MixByMap<PairWeights, 2>(box, row, pixels);
    } else if (taps <= 3) {
        MixByMap<TripleWeights, 3>(box, row, pixels);
    } else if (row.tapsAcross <= TapGroup) {
        MixByMap<LinearWeights, TapGroup>(box, row, pixels);
    } else {
        MixByMap<LinearWeights, MostTaps>(box, row, pixels);
    }
}

void CubicPixels(const WindowBox& box, const WindowRow& row, LXRGBA32i* pixels)
{
    if (row.tapsAcross <= TapGroup) {
        MixByMap<CubicWeights, TapGroup>(box, row, pixels);
    } else {
        MixByMap<CubicWeights, MostTaps>(box, row, pixels);
    }
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace ZkLanes

HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ZkLanes {
HWY_EXPORT(CubicPixels);
HWY_EXPORT(LinearPixels);
} // namespace ZkLanes

void WindowKernels::MixLinear(const WindowBox& box, const WindowRow& row, LXRGBA32i* pixels)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::LinearPixels)(box, row, pixels);
}

void WindowKernels::MixCubic(const WindowBox& box, const WindowRow& row, LXRGBA32i* pixels)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::CubicPixels)(box, row, pixels);
}
#endif
