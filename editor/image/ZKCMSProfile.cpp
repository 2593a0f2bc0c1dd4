#include "image/ZKCMSProfile.h"

#include "image/IccHandle.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace {
constexpr cmsUInt32Number Intents[] = {INTENT_RELATIVE_COLORIMETRIC, INTENT_PERCEPTUAL};
/// Of a name that people can still read in a list.
constexpr int LongestName = 100;

/// The library stamps what it makes with the time; equal profiles have equal bytes.
void PutFixedDate(QByteArray& icc)
{
    constexpr int dateAt = 24;
    constexpr std::array<quint16, 6> date{2000, 1, 1, 0, 0, 0};
    for (std::size_t i = 0; i < date.size(); ++i) {
        qToBigEndian(date[i], icc.data() + dateAt + 2 * i);
    }
}

void PutName(void* profile, const wchar_t* name)
{
    cmsMLU* text = cmsMLUalloc(nullptr, 1);
    cmsMLUsetWide(text, "en", "US", name);
    cmsWriteTag(profile, cmsSigProfileDescriptionTag, text);
    cmsMLUfree(text);
}

QByteArray MakeSRGB()
{
    const IccHandle profile(cmsCreate_sRGBProfile());
    PutName(profile.get(), L"sRGB");
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile.get(), nullptr, &size);
    QByteArray icc(static_cast<int>(size), '\0');
    cmsSaveProfileToMem(profile.get(), icc.data(), &size);
    PutFixedDate(icc);
    return icc;
}

/// Links of two devices and lists of named colors have a color space as well, but describe no picture.
bool DescribesColors(void* profile)
{
    const cmsProfileClassSignature kind = cmsGetDeviceClass(profile);
    return kind == cmsSigDisplayClass || kind == cmsSigInputClass || kind == cmsSigOutputClass ||
           kind == cmsSigColorSpaceClass;
}

/// Only a transform that the library agrees to make shows that all tables are there and whole.
bool CanTransform(void* profile, bool isTarget)
{
    const IccHandle other(cmsCreate_sRGBProfile());
    void* from = isTarget ? other.get() : profile;
    void* to = isTarget ? profile : other.get();
    // Each intent has tables of its own.
    return std::all_of(std::begin(Intents), std::end(Intents), [=](cmsUInt32Number intent) {
        void* transform = cmsCreateTransform(from, TYPE_RGB_8, to, TYPE_RGB_8, intent, cmsFLAGS_NOOPTIMIZE);
        if (transform) cmsDeleteTransform(transform);
        return transform != nullptr;
    });
}
} // namespace

ZKCMSProfile ZKCMSProfile::SRGB()
{
    static const QByteArray icc = MakeSRGB();
    return ZKCMSProfile(icc);
}

ZKCMSProfile::Kind ZKCMSProfile::GetKind() const
{
    if (IsNull()) return Kind::None;
    const IccHandle profile = OpenIcc(*this);
    if (!profile || !DescribesColors(profile.get())) return Kind::Damaged;
    switch (cmsGetColorSpace(profile.get())) {
    case cmsSigRgbData: return CanTransform(profile.get(), false) ? Kind::Rgb : Kind::Damaged;
    case cmsSigGrayData: return Kind::Gray;
    case cmsSigCmykData: return Kind::Cmyk;
    default: return Kind::Other;
    }
}

bool ZKCMSProfile::IsTarget() const
{
    if (!IsValid()) return false;
    const IccHandle profile = OpenIcc(*this);
    return CanTransform(profile.get(), true);
}

QString ZKCMSProfile::GetDescription() const
{
    const IccHandle profile = OpenIcc(*this);
    if (!profile) return QString();
    const cmsUInt32Number bytes =
        cmsGetProfileInfo(profile.get(), cmsInfoDescription, "en", "US", nullptr, 0);
    // With one more for the end, which not every profile has room for.
    std::vector<wchar_t> name(bytes / sizeof(wchar_t) + 1, L'\0');
    cmsGetProfileInfo(profile.get(), cmsInfoDescription, "en", "US", name.data(), bytes);
    const QString whole = QString::fromWCharArray(name.data()).simplified();
    return whole.size() <= LongestName ? whole : whole.left(LongestName - 1) + QChar(0x2026);
}
