#pragma once

#include "image/ZKCMSProfile.h"

#include <QColorSpace>

#include <lcms2.h>

/// Profiles for tests, made by Qt and by the color library.
namespace IccProfiles {
/// The bytes of a profile that the library makes itself, with a fixed date, since one made in the next second
/// would be another profile.
inline ZKCMSProfile Bytes(cmsHPROFILE profile)
{
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    QByteArray icc(int(size), '\0');
    cmsSaveProfileToMem(profile, icc.data(), &size);
    cmsCloseProfile(profile);
    constexpr int dateAt = 24; // in the header; year, month, day, hour, minute, second
    static const QByteArray date = QByteArray::fromHex("07d000010001000000000000");
    icc.replace(dateAt, date.size(), date);
    return ZKCMSProfile(icc);
}

/// sRGB's primaries with a straight line for a curve.
inline ZKCMSProfile Linear()
{
    const cmsCIExyY white{0.3127, 0.3290, 1.0};
    const cmsCIExyYTRIPLE primaries{{0.6400, 0.3300, 1.0}, {0.3000, 0.6000, 1.0}, {0.1500, 0.0600, 1.0}};
    cmsToneCurve* line = cmsBuildGamma(nullptr, 1.0);
    cmsToneCurve* curves[3] = {line, line, line};
    ZKCMSProfile profile = Bytes(cmsCreateRGBProfile(&white, &primaries, curves));
    cmsFreeToneCurve(line);
    return profile;
}

inline ZKCMSProfile AdobeRgb()
{
    return ZKCMSProfile(QColorSpace(QColorSpace::AdobeRgb).iccProfile());
}

/// Wide primaries and a plain power for a curve.
inline ZKCMSProfile WideRgb()
{
    return ZKCMSProfile(QColorSpace(QColorSpace::ProPhotoRgb).iccProfile());
}

inline ZKCMSProfile Gray()
{
    const cmsCIExyY white{0.3127, 0.3290, 1.0};
    cmsToneCurve* curve = cmsBuildGamma(nullptr, 2.2);
    ZKCMSProfile gray = Bytes(cmsCreateGrayProfile(&white, curve));
    cmsFreeToneCurve(curve);
    return gray;
}

inline ZKCMSProfile InkLink()
{
    return Bytes(cmsCreateInkLimitingDeviceLink(cmsSigCmykData, 250));
}

/// Writes a table from the profile's colors whose black has the lightness, 0 to 0xFFFF.
inline void WriteTable(cmsHPROFILE profile, cmsTagSignature tag, cmsUInt16Number black)
{
    cmsPipeline* table = cmsPipelineAlloc(nullptr, 3, 3);
    cmsStage* cube = cmsStageAllocCLut16bit(nullptr, 9, 3, 3, nullptr);
    cmsStageSampleCLut16bit(
        cube,
        [](const cmsUInt16Number* in, cmsUInt16Number* out, void* data) {
            const cmsUInt32Number lowest = *static_cast<const cmsUInt16Number*>(data);
            out[0] = static_cast<cmsUInt16Number>(lowest + in[1] * (0xFF00 - lowest) / 0xFFFF);
            out[1] = static_cast<cmsUInt16Number>(0x7000 + in[0] / 8);
            out[2] = static_cast<cmsUInt16Number>(0x7000 + in[2] / 8);
            return TRUE;
        },
        &black, 0);
    cmsPipelineInsertStage(table, cmsAT_END, cube);
    cmsWriteTag(profile, tag, table);
    cmsPipelineFree(table);
}

/// Has tables from its colors, as scanners' profiles do, and none to them; the one for the relative intent
/// has a lighter black than that for the perceptual one.
inline ZKCMSProfile OnlyReadable()
{
    cmsHPROFILE profile = cmsCreateProfilePlaceholder(nullptr);
    cmsSetProfileVersion(profile, 2.1);
    cmsSetDeviceClass(profile, cmsSigInputClass);
    cmsSetColorSpace(profile, cmsSigRgbData);
    cmsSetPCS(profile, cmsSigLabData);
    WriteTable(profile, cmsSigAToB0Tag, 0);
    WriteTable(profile, cmsSigAToB1Tag, 0x3000);
    cmsWriteTag(profile, cmsSigMediaWhitePointTag, cmsD50_XYZ());
    return Bytes(profile);
}
} // namespace IccProfiles
