#pragma once

#include <functional>

/// How a reader or writer, running on a worker, talks with the one who waits for it. Both functions are
/// called on the worker, now and then; either may be left out.
struct FileProgress
{
    std::function<void(int permille)> setPermille; ///< 0 to 1000, rising
    std::function<bool()> isCancelled;             ///< true: stop as soon as possible

    void Tell(int permille) const
    {
        if (setPermille) setPermille(permille);
    }

    bool IsCancelled() const { return isCancelled && isCancelled(); }
};
