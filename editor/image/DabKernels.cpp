#include "image/DabKernels.h"

// Reads this file again for each instruction set, so it comes before all that is read more than once.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/DabKernels.cpp"
#include <hwy/foreach_target.h>
// clang-format on

#include "image/PixelLanes-inl.h"
#include "image/RoundDab.h"

#include <algorithm>

HWY_BEFORE_NAMESPACE();

namespace ZkLanes {
namespace HWY_NAMESPACE {
namespace {

void NearestSquares(int* squares, int count, int first, int across)
{
    const DI d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    const auto acrossSquare = hn::Set(d, across * across);
    const auto step = hn::Set(d, lanes * RoundDab::Unit);
    auto along = hn::Add(hn::Set(d, first), hn::Mul(hn::Iota(d, 0), hn::Set(d, RoundDab::Unit)));
    int i = 0;
    for (; i + lanes <= count; i += lanes) {
        const auto square = hn::Add(hn::Mul(along, along), acrossSquare);
        hn::StoreU(hn::Min(hn::LoadU(d, squares + i), square), d, squares + i);
        along = hn::Add(along, step);
    }
    for (; i < count; ++i) {
        const int distance = first + i * RoundDab::Unit;
        squares[i] = std::min(squares[i], distance * distance + across * across);
    }
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace ZkLanes

HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ZkLanes {
HWY_EXPORT(NearestSquares);
} // namespace ZkLanes

void DabKernels::Nearest(int* squares, int count, int first, int across)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::NearestSquares)(squares, count, first, across);
}
#endif
