#include "core/ZKCMSManager.h"

ZKCMSManager* ZKCMSManager::GetInstance()
{
    static ZKCMSManager manager;
    return &manager;
}

int ZKCMSManager::GetRGBProfileCount() const
{
    return 1;
}

int ZKCMSManager::GetWorkingRGBIndex() const
{
    return 0;
}

ZKCMSProfile ZKCMSManager::GetRGBProfile(int) const
{
    return ZKCMSProfile();
}
