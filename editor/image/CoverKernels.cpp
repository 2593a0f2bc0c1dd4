#include "image/CoverKernels.h"

// Reads this file again for each instruction set, so it comes before all that is read more than once.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/CoverKernels.cpp"
#include <hwy/foreach_target.h>
// clang-format on

#include "image/PixelLanes-inl.h"

HWY_BEFORE_NAMESPACE();

namespace ZkLanes {
namespace HWY_NAMESPACE {
namespace {

template <bool IsOddEven>
void CoverBytes(const int* windings, int count, quint8* bytes)
{
    const DI d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    const auto one = hn::Set(d, CoverCells::One);
    int i = 0;
    for (; i + lanes <= count; i += lanes) {
        auto covered = hn::Abs(hn::LoadU(d, windings + i));
        if (IsOddEven) {
            covered = hn::And(covered, hn::Set(d, 2 * CoverCells::One - 1));
            covered = hn::Min(covered, hn::Sub(hn::Set(d, 2 * CoverCells::One), covered));
        }
        covered = hn::Min(covered, one);
        const auto product = hn::Sub(hn::ShiftLeft<8>(covered), covered);
        const auto rounded =
            hn::ShiftRight<CoverCells::Shift>(hn::Add(product, hn::Set(d, CoverCells::One / 2)));
        hn::StoreU(hn::TruncateTo(D8(), hn::BitCast(D32(), rounded)), D8(), bytes + i);
    }
    for (; i < count; ++i) {
        bytes[i] = CoverKernels::ToByte(windings[i], IsOddEven);
    }
}

void OddEvenBytes(const int* windings, int count, quint8* bytes)
{
    CoverBytes<true>(windings, count, bytes);
}

void WindingBytes(const int* windings, int count, quint8* bytes)
{
    CoverBytes<false>(windings, count, bytes);
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace ZkLanes

HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ZkLanes {
HWY_EXPORT(OddEvenBytes);
HWY_EXPORT(WindingBytes);
} // namespace ZkLanes

void CoverKernels::ToBytes(const int* windings, int count, bool isOddEven, quint8* bytes)
{
    if (isOddEven) {
        HWY_DYNAMIC_DISPATCH(ZkLanes::OddEvenBytes)(windings, count, bytes);
    } else {
        HWY_DYNAMIC_DISPATCH(ZkLanes::WindingBytes)(windings, count, bytes);
    }
}
#endif
