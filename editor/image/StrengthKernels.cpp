#include "image/StrengthKernels.h"

// Reads this file again for each instruction set, so it comes before all that is read more than once.
// clang-format off
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/StrengthKernels.cpp"
#include <hwy/foreach_target.h>
// clang-format on

#include "image/PixelLanes-inl.h"
#include "image/PixelMath.h"

HWY_BEFORE_NAMESPACE();

namespace ZkLanes {
namespace HWY_NAMESPACE {
namespace {

constexpr uint32_t HalfOfFactor = 1U << 23;

HWY_INLINE void Store(Pixels bytes, quint8* target)
{
    hn::StoreU(hn::TruncateTo(D8(), bytes), D8(), target);
}

/// alpha x factor / 2^24, rounded
void ScaledAlphaRow(const LXRGBA32i* pixels, int count, quint32 factor, quint8* result)
{
    const D32 d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    int i = 0;
    for (; i + lanes <= count; i += lanes) {
        const Pixels alpha = Alpha(hn::LoadU(d, Words(pixels + i)));
        const Pixels product = hn::Mul(alpha, hn::Set(d, factor));
        Store(hn::ShiftRight<24>(hn::Add(product, hn::Set(d, HalfOfFactor))), result + i);
    }
    for (; i < count; ++i) {
        const auto alpha = static_cast<quint32>(pixels[i].Alpha());
        result[i] = static_cast<quint8>((alpha * factor + HalfOfFactor) >> 24);
    }
}

void AlphaRow(const LXRGBA32i* pixels, int count, quint8* result)
{
    const D32 d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    int i = 0;
    for (; i + lanes <= count; i += lanes) {
        Store(Alpha(hn::LoadU(d, Words(pixels + i))), result + i);
    }
    for (; i < count; ++i) {
        result[i] = static_cast<quint8>(pixels[i].Alpha());
    }
}

void ProductRow(const LXRGBA32i* a, const LXRGBA32i* b, int count, quint8* result)
{
    const D32 d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    int i = 0;
    for (; i + lanes <= count; i += lanes) {
        const Pixels product = hn::Mul(Alpha(hn::LoadU(d, Words(a + i))), Alpha(hn::LoadU(d, Words(b + i))));
        Store(DivideBy255(product), result + i);
    }
    for (; i < count; ++i) {
        result[i] = static_cast<quint8>(PixelMath::DivideBy255(a[i].Alpha() * b[i].Alpha()));
    }
}

/// In the order of the formula's own factors, because double rounds each step.
void ExactRow(const LXRGBA32i* source, const LXRGBA32i* mask, int count, double opacity, quint8* result)
{
    const hn::Repartition<double, D32> d;
    const hn::Rebind<int32_t, decltype(d)> whole;
    const hn::RebindToUnsigned<decltype(whole)> words;
    const hn::Rebind<uint8_t, decltype(d)> bytes;
    const int lanes = static_cast<int>(hn::Lanes(d));
    const auto alphas = [&](const LXRGBA32i* pixels) HWY_ATTR {
        const auto alpha = hn::ShiftRight<24>(hn::LoadU(words, Words(pixels)));
        return hn::PromoteTo(d, hn::BitCast(whole, alpha));
    };
    int i = 0;
    for (; i + lanes <= count; i += lanes) {
        const auto product = hn::Mul(hn::Mul(alphas(source + i), hn::Set(d, opacity)), alphas(mask + i));
        const auto rounded = hn::Add(hn::Div(product, hn::Set(d, 255.0)), hn::Set(d, 0.5));
        hn::StoreU(hn::DemoteTo(bytes, hn::DemoteTo(whole, rounded)), bytes, result + i);
    }
    for (; i < count; ++i) {
        result[i] = static_cast<quint8>(PixelMath::Strength(source[i].Alpha(), opacity, mask[i].Alpha()));
    }
}

bool AnyAlpha(const LXRGBA32i* pixels, int count)
{
    const D32 d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    Pixels all = hn::Zero(d);
    int i = 0;
    for (; i + lanes <= count; i += lanes) {
        all = hn::Or(all, hn::LoadU(d, Words(pixels + i)));
    }
    bool hasAny = !hn::AllTrue(d, hn::Eq(Alpha(all), hn::Zero(d)));
    for (; i < count; ++i) {
        hasAny = hasAny || pixels[i].Alpha() != 0;
    }
    return hasAny;
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace ZkLanes

HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include <algorithm>
#include <cmath>

namespace ZkLanes {
HWY_EXPORT(AlphaRow);
HWY_EXPORT(AnyAlpha);
HWY_EXPORT(ExactRow);
HWY_EXPORT(ProductRow);
HWY_EXPORT(ScaledAlphaRow);
} // namespace ZkLanes

namespace {
bool Reproduces(quint32 factor, const std::array<quint8, 256>& table)
{
    for (quint32 alpha = 0; alpha < 256; ++alpha) {
        if ((alpha * factor + (1U << 23)) >> 24 != table[alpha]) return false;
    }
    return true;
}

/// A factor by which whole numbers give what the table holds; 0 when there is none.
quint32 FactorFor(const std::array<quint8, 256>& table, double opacity)
{
    const auto near = static_cast<quint32>(opacity * (1U << 24));
    for (const quint32 factor : {near, near + 1}) {
        if (factor <= (1U << 24) && Reproduces(factor, table)) return factor;
    }
    return 0;
}
} // namespace

StrengthKernel::StrengthKernel(StrengthRule rule, double opacity, bool hasMask)
    : m_Rule(rule), m_Opacity(opacity), m_HasMask(hasMask && rule != StrengthRule::AlphaOpacity)
{
    const bool usesAlpha = rule != StrengthRule::OpacityMask;
    if (usesAlpha && m_HasMask) {
        m_Way = opacity == 1.0 ? Way::Product : Way::Exact;
    } else {
        m_Way = usesAlpha || m_HasMask ? Way::OneAlpha : Way::Constant;
    }
    for (int alpha = 0; alpha < 256; ++alpha) {
        // The other factor is full; the formula's order of rounding differs by which of the two it is.
        m_OfByte[static_cast<std::size_t>(alpha)] = static_cast<quint8>(
            usesAlpha ? PixelMath::Strength(alpha, opacity, 255) : PixelMath::Strength(255, opacity, alpha));
    }
    m_Factor = FactorFor(m_OfByte, opacity);
}

void StrengthKernel::Row(const LXRGBA32i* source, const LXRGBA32i* mask, int count, quint8* strength) const
{
    if (m_HasMask && mask == nullptr) {
        std::fill_n(strength, count, quint8(0));
        return;
    }
    switch (m_Way) {
    case Way::Constant: std::fill_n(strength, count, m_OfByte[255]); return;
    case Way::Product: HWY_DYNAMIC_DISPATCH(ZkLanes::ProductRow)(source, mask, count, strength); return;
    case Way::Exact:
        HWY_DYNAMIC_DISPATCH(ZkLanes::ExactRow)(source, mask, count, m_Opacity, strength);
        return;
    case Way::OneAlpha: break;
    }
    const LXRGBA32i* const pixels = m_Rule == StrengthRule::OpacityMask ? mask : source;
    if (m_Factor != 0) {
        HWY_DYNAMIC_DISPATCH(ZkLanes::ScaledAlphaRow)(pixels, count, m_Factor, strength);
        return;
    }
    std::transform(pixels, pixels + count, strength,
                   [this](LXRGBA32i pixel) { return m_OfByte[static_cast<std::size_t>(pixel.Alpha())]; });
}

void StrengthKernels::Alphas(const LXRGBA32i* pixels, int count, quint8* alphas)
{
    HWY_DYNAMIC_DISPATCH(ZkLanes::AlphaRow)(pixels, count, alphas);
}

bool StrengthKernels::HasAlpha(const LXRGBA32i* pixels, int count)
{
    return HWY_DYNAMIC_DISPATCH(ZkLanes::AnyAlpha)(pixels, count);
}
#endif
