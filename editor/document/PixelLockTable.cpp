#include "document/PixelLockTable.h"

#include <algorithm>

void PixelLockTable::LockRead(Key key)
{
    const Thread me = std::this_thread::get_id();
    std::unique_lock<std::mutex> guard(m_Mutex);
    m_Changed.wait(guard, [&] { return MayRead(me, key); });
    ++HoldOf(me, key).reads;
}

void PixelLockTable::LockWrite(Key key)
{
    const Thread me = std::this_thread::get_id();
    std::unique_lock<std::mutex> guard(m_Mutex);
    HoldOf(me, key).wantsWrite = true;
    // Another thread that waits to write as well may go on now that this one no longer counts as a reader.
    m_Changed.notify_all();
    m_Changed.wait(guard, [&] { return MayWrite(me, key); });
    Hold& hold = HoldOf(me, key);
    hold.wantsWrite = false;
    ++hold.writes;
}

void PixelLockTable::UnlockRead(Key key, Thread owner)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    Hold& hold = HoldOf(owner, key);
    --hold.reads;
    DropIfUnused(hold);
    m_Changed.notify_all();
}

void PixelLockTable::UnlockWrite(Key key, Thread owner)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    Hold& hold = HoldOf(owner, key);
    --hold.writes;
    DropIfUnused(hold);
    m_Changed.notify_all();
}

void PixelLockTable::WaitForOthers()
{
    const Thread me = std::this_thread::get_id();
    std::unique_lock<std::mutex> guard(m_Mutex);
    m_Changed.wait(guard, [&] {
        return std::none_of(m_Holds.begin(), m_Holds.end(),
                            [me](const Hold& hold) { return hold.thread != me && hold.IsHeld(); });
    });
}

PixelLockTable::Hold& PixelLockTable::HoldOf(Thread thread, Key key)
{
    const auto found = std::find_if(m_Holds.begin(), m_Holds.end(), [&](const Hold& hold) {
        return hold.thread == thread && hold.key == key;
    });
    if (found != m_Holds.end()) return *found;
    Hold hold;
    hold.thread = thread;
    hold.key = key;
    m_Holds.push_back(hold);
    return m_Holds.back();
}

void PixelLockTable::DropIfUnused(const Hold& hold)
{
    if (hold.IsHeld() || hold.wantsWrite) return;
    m_Holds.erase(m_Holds.begin() + (&hold - m_Holds.data()));
}

bool PixelLockTable::MayRead(Thread thread, Key key) const
{
    const bool givesWay = !HoldsAnything(thread);
    return std::none_of(m_Holds.begin(), m_Holds.end(), [&](const Hold& hold) {
        if (hold.thread == thread || hold.key != key) return false;
        return hold.writes > 0 || (givesWay && hold.wantsWrite);
    });
}

bool PixelLockTable::MayWrite(Thread thread, Key key) const
{
    return std::none_of(m_Holds.begin(), m_Holds.end(), [&](const Hold& hold) {
        if (hold.thread == thread || hold.key != key) return false;
        return hold.writes > 0 || (hold.reads > 0 && !hold.wantsWrite);
    });
}

bool PixelLockTable::HoldsAnything(Thread thread) const
{
    return std::any_of(m_Holds.begin(), m_Holds.end(),
                       [thread](const Hold& hold) { return hold.thread == thread && hold.IsHeld(); });
}

PixelWriteScope::PixelWriteScope(PixelLockTable& table, PixelLockTable::Key key) : m_Table(table), m_Key(key)
{
    m_Table.LockWrite(m_Key);
}

PixelWriteScope::~PixelWriteScope()
{
    m_Table.UnlockWrite(m_Key, std::this_thread::get_id());
}

PixelReadScope::PixelReadScope(PixelLockTable& table, PixelLockTable::Key key) : m_Table(table), m_Key(key)
{
    m_Table.LockRead(m_Key);
}

PixelReadScope::~PixelReadScope()
{
    m_Table.UnlockRead(m_Key, std::this_thread::get_id());
}
