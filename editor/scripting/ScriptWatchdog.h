#pragma once

#include "EditorExport.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

/// Calls a function when something takes too long, and a second one when even that did not help. Both run on
/// the watchdog's own thread. Deleting it calls it off and waits for a call that is under way.
class ZK_EDITOR_EXPORT ScriptWatchdog
{
public:
    using Milliseconds = std::chrono::milliseconds;

    /// @param limit  until onLate; the watchdog does nothing when it isn't above 0
    /// @param grace  from onLate to onStuck
    ScriptWatchdog(Milliseconds limit, Milliseconds grace, std::function<void()> onLate,
                   std::function<void()> onStuck);
    ~ScriptWatchdog();

    ScriptWatchdog(const ScriptWatchdog&) = delete;
    ScriptWatchdog& operator=(const ScriptWatchdog&) = delete;

private:
    bool IsOverWithin(Milliseconds time);

    std::mutex m_Mutex;
    std::condition_variable m_Changed;
    bool m_isOver = false;
    std::thread m_Thread;
};
