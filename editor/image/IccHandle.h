#pragma once

#include "image/ZKCMSProfile.h"

#include <lcms2.h>

#include <memory>

/// A profile of the color library, closed with its scope.
struct CloseIccProfile
{
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};

using IccHandle = std::unique_ptr<void, CloseIccProfile>;

/// Null for bytes that the library refuses, and without a profile. Any thread; the result belongs to one.
inline IccHandle OpenIcc(const ZKCMSProfile& profile)
{
    const QByteArray& icc = profile.GetData();
    if (icc.isEmpty()) return IccHandle();
    return IccHandle(cmsOpenProfileFromMem(icc.constData(), static_cast<cmsUInt32Number>(icc.size())));
}
