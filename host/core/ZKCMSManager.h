#pragma once

#include "ZKHostExport.h"

#include "image/ZKCMSProfile.h"

/// The color profiles that the program works with. Main thread only.
///
/// There is one, sRGB, which is also what a picture without a profile counts as.
class ZK_HOST_EXPORT ZKCMSManager
{
public:
    static ZKCMSManager* GetInstance();

    int GetRGBProfileCount() const;
    /// Which of the profiles the program's own colors (foreground, gradients) are meant in.
    int GetWorkingRGBIndex() const;
    /// @param index  from 0 to GetRGBProfileCount() - 1; any other gives sRGB
    ZKCMSProfile GetRGBProfile(int index) const;

private:
    ZKCMSManager() = default;
};
