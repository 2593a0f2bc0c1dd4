#include "image/SwapPlace.h"

#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>

qint64 FirstTileBudget(qint64 available, int sharers)
{
    constexpr qint64 least = qint64(1) << 30;
    return std::max(least, available / 4 * 3) / std::max(1, sharers);
}

std::string ChooseSwapFolder(const std::vector<std::string>& folders,
                             const std::function<bool(const std::string&)>& liesInMemory)
{
    const auto isGood = [&](const std::string& folder) {
        return ::access(folder.c_str(), W_OK | X_OK) == 0 && !liesInMemory(folder);
    };
    const auto good = std::find_if(folders.begin(), folders.end(), isGood);
    return good == folders.end() ? folders.front() : *good;
}

bool LiesInMemory(const std::string& folder)
{
    struct statfs system = {};
    if (::statfs(folder.c_str(), &system) != 0) return false;
    return system.f_type == TMPFS_MAGIC || system.f_type == RAMFS_MAGIC;
}
