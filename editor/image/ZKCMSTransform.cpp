#include "image/ZKCMSTransform.h"

#include <QRgba64>

#include <lcms2.h>

#include <array>

namespace {
struct CloseProfile
{
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};

using OpenProfile = std::unique_ptr<void, CloseProfile>;

OpenProfile Open(const ZKCMSProfile& profile)
{
    if (profile.IsNull()) return OpenProfile(cmsCreate_sRGBProfile());

    const QByteArray& icc = profile.GetData();
    OpenProfile open(cmsOpenProfileFromMem(icc.constData(), static_cast<cmsUInt32Number>(icc.size())));
    if (open && cmsGetColorSpace(open.get()) != cmsSigRgbData) open.reset();
    return open;
}
} // namespace

ZKCMSTransform::ZKCMSTransform(const ZKCMSProfile& from, const ZKCMSProfile& to)
{
    if (from == to) return;

    const OpenProfile source = Open(from);
    const OpenProfile target = Open(to);
    if (!source || !target) return;

    // Without the cache of the last color the transform holds no state, so that threads may share it.
    constexpr cmsUInt32Number flags = cmsFLAGS_BLACKPOINTCOMPENSATION | cmsFLAGS_NOCACHE;
    cmsHTRANSFORM transform = cmsCreateTransform(source.get(), TYPE_RGB_16, target.get(), TYPE_RGB_16,
                                                 INTENT_RELATIVE_COLORIMETRIC, flags);
    if (transform) m_pTransform = std::shared_ptr<void>(transform, cmsDeleteTransform);
}

void ZKCMSTransform::operator()(QColor& color) const
{
    if (IsEmpty() || !color.isValid()) return;

    const QRgba64 source = color.rgba64();
    const std::array<quint16, 3> in{source.red(), source.green(), source.blue()};
    std::array<quint16, 3> out{};
    cmsDoTransform(m_pTransform.get(), in.data(), out.data(), 1);
    color = QColor::fromRgba64(out[0], out[1], out[2], source.alpha());
}
