#include "image/SimilarKernels.h"

// Reads this file again for each instruction set, so it comes before all that is read more than once.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/SimilarKernels.cpp"
#include <hwy/foreach_target.h>
// clang-format on

#include "image/PixelLanes-inl.h"

#include <cstring>

HWY_BEFORE_NAMESPACE();

namespace ZkLanes {
namespace HWY_NAMESPACE {
namespace {

constexpr int BitsAByte = 8;
constexpr int Side = TileWalk::TileSide;
using Mask = hn::Mask<D32>;

/// The bits of as many pixels as fill at least a byte, from `pixels` on.
HWY_INLINE int StoreSimilar(const uint32_t* pixels, Pixels seed, Pixels tolerance, uint8_t* bits)
{
    const D32 d;
    const hn::Repartition<uint8_t, D32> bytes;
    const auto isNear = [&](const uint32_t* from) HWY_ATTR {
        const auto pixel = hn::BitCast(bytes, hn::LoadU(d, from));
        const auto wanted = hn::BitCast(bytes, seed);
        const auto distance = hn::Or(hn::SaturatedSub(pixel, wanted), hn::SaturatedSub(wanted, pixel));
        const auto over = hn::SaturatedSub(distance, hn::BitCast(bytes, tolerance));
        return hn::Eq(hn::BitCast(d, over), hn::Zero(d));
    };
    const int lanes = static_cast<int>(hn::Lanes(d));
    if (lanes >= BitsAByte) {
        hn::StoreMaskBits(d, isNear(pixels), bits);
        return lanes;
    }
    uint8_t low[BitsAByte] = {};
    uint8_t high[BitsAByte] = {};
    hn::StoreMaskBits(d, isNear(pixels), low);
    hn::StoreMaskBits(d, isNear(pixels + lanes), high);
    *bits = static_cast<uint8_t>(low[0] | high[0] << lanes);
    return 2 * lanes;
}

void CompareTile(const LXRGBA32i* pixels, LXRGBA32i seed, LXRGBA32i tolerance, TileBits& bits)
{
    const D32 d;
    const Pixels seeds = hn::Set(d, seed.value);
    const Pixels tolerances = hn::Set(d, tolerance.value);
    for (RowBits& row : bits.rows) {
        uint8_t bytes[Side / BitsAByte];
        for (int x = 0; x < Side;) {
            x += StoreSimilar(Words(pixels + x), seeds, tolerances, bytes + x / BitsAByte);
        }
        std::memcpy(&row, bytes, sizeof(row));
        pixels += Side;
    }
}

/// Calls `store(mask, pixels)` for each register of a tile's row.
template <class Store>
HWY_INLINE void ForEachMask(RowBits row, LXRGBA32i* pixels, Store store)
{
    const D32 d;
    uint8_t bytes[sizeof(row) + 8] = {};
    std::memcpy(bytes, &row, sizeof(row));
    for (int x = 0; x < Side; x += static_cast<int>(hn::Lanes(d))) {
        // Less than a byte's lanes: the byte's upper half is brought down for every second register.
        uint8_t bits[8];
        std::memcpy(bits, bytes + x / BitsAByte, sizeof(bits));
        bits[0] = static_cast<uint8_t>(bits[0] >> (x % BitsAByte));
        store(hn::LoadMaskBits(d, bits), Words(pixels + x));
    }
}

void PaintBits(RowBits row, LXRGBA32i fill, LXRGBA32i* pixels)
{
    const D32 d;
    const Pixels fills = hn::Set(d, fill.value);
    ForEachMask(row, pixels, [&](Mask mask, uint32_t* target) HWY_ATTR {
        hn::StoreU(hn::IfThenElse(mask, fills, hn::LoadU(d, target)), d, target);
    });
}

void MakeBits(RowBits row, LXRGBA32i fill, LXRGBA32i* pixels)
{
    const D32 d;
    const Pixels fills = hn::Set(d, fill.value);
    ForEachMask(row, pixels, [&](Mask mask, uint32_t* target) HWY_ATTR {
        hn::StoreU(hn::IfThenElseZero(mask, fills), d, target);
    });
}

void StreamBits(RowBits row, LXRGBA32i fill, LXRGBA32i* pixels)
{
    const D32 d;
    const Pixels fills = hn::Set(d, fill.value);
    ForEachMask(row, pixels, [&](Mask mask, uint32_t* target) HWY_ATTR {
        hn::Stream(hn::IfThenElseZero(mask, fills), d, target);
    });
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace ZkLanes

HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ZkLanes {
HWY_EXPORT(CompareTile);
HWY_EXPORT(MakeBits);
HWY_EXPORT(PaintBits);
HWY_EXPORT(StreamBits);
} // namespace ZkLanes

void SimilarKernels::Compare(const LXRGBA32i* pixels, LXRGBA32i seed, LXRGBA32i tolerance, TileBits& bits)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::CompareTile)(pixels, seed, tolerance, bits);
}

void SimilarKernels::PaintRow(RowBits row, LXRGBA32i fill, LXRGBA32i* pixels)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::PaintBits)(row, fill, pixels);
}

void SimilarKernels::MakeRow(RowBits row, LXRGBA32i fill, LXRGBA32i* pixels)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::MakeBits)(row, fill, pixels);
}

void SimilarKernels::StreamRow(RowBits row, LXRGBA32i fill, LXRGBA32i* pixels)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::StreamBits)(row, fill, pixels);
}
#endif
