#include "image/ZKCMSTransform.h"

#include "image/IccHandle.h"
#include "image/LXImage.h"
#include "image/TileThreads.h"
#include "image/TileWalk.h"

#include <QHash>
#include <QRgba64>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {
struct DeleteTransform
{
    void operator()(void* transform) const { cmsDeleteTransform(transform); }
};

using TransformHandle = std::unique_ptr<void, DeleteTransform>;

// Without the cache of the last color the transform holds no state, so that threads may share it.
constexpr cmsUInt32Number CommonFlags = cmsFLAGS_NOCACHE;

ZKCMSProfile Meant(const ZKCMSProfile& profile)
{
    return profile.IsNull() ? ZKCMSProfile::SRGB() : profile;
}

IccHandle OpenRgb(const ZKCMSProfile& profile)
{
    IccHandle open = OpenIcc(profile);
    if (open && cmsGetColorSpace(open.get()) != cmsSigRgbData) open.reset();
    return open;
}

cmsUInt32Number IntentOf(const ZKCMSRendering& rendering)
{
    return rendering.intent == ZKCMSRendering::Intent::Perceptual ? INTENT_PERCEPTUAL
                                                                  : INTENT_RELATIVE_COLORIMETRIC;
}

/// Profiles of one meaning come in many spellings: whether no color moves by as much as half a step of 8
/// bits.
bool ChangesNothing(void* transform16)
{
    constexpr int steps = 17;
    constexpr int step = 0xFFFF / (steps - 1);
    constexpr int halfStep = 0xFFFF / 255 / 2;
    for (int i = 0; i < steps * steps * steps; ++i) {
        const std::array<quint16, 3> in{quint16(i / (steps * steps) * step),
                                        quint16(i / steps % steps * step), quint16(i % steps * step)};
        std::array<quint16, 3> out{};
        cmsDoTransform(transform16, in.data(), out.data(), 1);
        for (std::size_t c = 0; c < in.size(); ++c) {
            if (std::abs(in[c] - out[c]) >= halfStep) return false;
        }
    }
    return true;
}
} // namespace

struct ZKCMSTransform::Transforms
{
    TransformHandle colors; ///< 16 bits, red, green, blue
    TransformHandle pixels; ///< 8 bits as images hold them
};

ZKCMSTransform::ZKCMSTransform(const ZKCMSProfile& from, const ZKCMSProfile& to,
                               const ZKCMSRendering& rendering)
{
    if (Meant(from) == Meant(to)) return;

    const IccHandle source = OpenRgb(Meant(from));
    const IccHandle target = OpenRgb(Meant(to));
    if (!source || !target) return;

    const cmsUInt32Number flags =
        CommonFlags | (rendering.blackPoint ? cmsUInt32Number(cmsFLAGS_BLACKPOINTCOMPENSATION) : 0);
    const cmsUInt32Number intent = IntentOf(rendering);
    auto transforms = std::make_shared<Transforms>();
    transforms->colors.reset(
        cmsCreateTransform(source.get(), TYPE_RGB_16, target.get(), TYPE_RGB_16, intent, flags));
    if (!transforms->colors || ChangesNothing(transforms->colors.get())) return;
    transforms->pixels.reset(cmsCreateTransform(source.get(), TYPE_BGRA_8, target.get(), TYPE_BGRA_8, intent,
                                                flags | cmsFLAGS_COPY_ALPHA));
    if (transforms->pixels) m_pTransforms = transforms;
}

void ZKCMSTransform::operator()(QColor& color) const
{
    if (IsEmpty() || !color.isValid()) return;

    const QRgba64 source = color.rgba64();
    const std::array<quint16, 3> in{source.red(), source.green(), source.blue()};
    std::array<quint16, 3> out{};
    cmsDoTransform(m_pTransforms->colors.get(), in.data(), out.data(), 1);
    color = QColor::fromRgba64(out[0], out[1], out[2], source.alpha());
}

void ZKCMSTransform::operator()(LXRGBA32i* pixels, int count) const
{
    static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "a pixel's bytes are blue, green, red, alpha");
    if (IsEmpty()) return;

    constexpr int most = 512;
    std::array<LXRGBA32i, most> converted;
    for (int first = 0; first < count; first += most) {
        const int part = std::min(most, count - first);
        LXRGBA32i* const span = pixels + first;
        cmsDoTransform(m_pTransforms->pixels.get(), span, converted.data(),
                       static_cast<cmsUInt32Number>(part));
        std::transform(span, span + part, converted.begin(), span,
                       [](LXRGBA32i old, LXRGBA32i made) { return old.Alpha() == 0 ? old : made; });
    }
}

void ZKCMSTransform::operator()(LXImage32& image) const
{
    if (IsEmpty()) return;

    // Each tile once, however many slots hold it: blank and plain layers stay as small as they were.
    QHash<const LXTile*, int> places;
    std::vector<LXTilePointer> tiles;
    for (const LXTilePointer& slot : image.m_Tiles) {
        if (places.contains(slot.data())) continue;
        places.insert(slot.data(), static_cast<int>(tiles.size()));
        tiles.push_back(slot);
    }
    std::vector<LXTilePointer> converted = tiles;
    TileThreads::ForEach(static_cast<int>(tiles.size()), [&](int place) {
        LXTilePointer& slot = converted[static_cast<std::size_t>(place)];
        {
            const LXTileReader<LXRGBA32i> source(*slot);
            const bool isBlank = std::all_of(source.Pixels(), source.Pixels() + TileWalk::TilePixels,
                                             [](LXRGBA32i pixel) { return pixel.Alpha() == 0; });
            if (isBlank) return;
        }
        const LXTileWriter<LXRGBA32i> writer(slot);
        (*this)(writer.Pixels(), TileWalk::TilePixels);
    });
    for (LXTilePointer& slot : image.m_Tiles) {
        slot = converted[static_cast<std::size_t>(places.value(slot.data()))];
    }
}
