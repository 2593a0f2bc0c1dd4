#include "scripting/ScriptWatchdog.h"

#include <utility>

ScriptWatchdog::ScriptWatchdog(Milliseconds limit, Milliseconds grace, std::function<void()> onLate,
                               std::function<void()> onStuck)
{
    if (limit.count() <= 0) return;
    m_Thread = std::thread([this, limit, grace, onLate = std::move(onLate), onStuck = std::move(onStuck)] {
        if (IsOverWithin(limit)) return;
        onLate();
        if (IsOverWithin(grace)) return;
        onStuck();
    });
}

ScriptWatchdog::~ScriptWatchdog()
{
    {
        const std::lock_guard<std::mutex> lock(m_Mutex);
        m_isOver = true;
    }
    m_Changed.notify_all();
    if (m_Thread.joinable()) m_Thread.join();
}

bool ScriptWatchdog::IsOverWithin(Milliseconds time)
{
    std::unique_lock<std::mutex> lock(m_Mutex);
    return m_Changed.wait_for(lock, time, [this] { return m_isOver; });
}
