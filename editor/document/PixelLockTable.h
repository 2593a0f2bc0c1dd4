#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

/// The pixel locks of one document: a reader/writer lock for each key, recursive on every thread.
///
/// - A thread's own readers never block its own writer.
/// - Of two threads that read and both want to write, one goes first: a reader that waits to write counts as
///   absent for other writers.
/// - A thread that holds nothing gives way to waiting writers, so that readers can't starve them; a thread
/// that
///   holds anything doesn't, so that two readers of two keys can't wait for each other.
///
/// Any thread.
class PixelLockTable
{
public:
    using Key = unsigned int;
    using Thread = std::thread::id;

    /// Lock for the calling thread; wait as long as needed.
    void LockRead(Key key);
    void LockWrite(Key key);

    /// Give back what that thread took.
    void UnlockRead(Key key, Thread owner);
    void UnlockWrite(Key key, Thread owner);

    /// Waits until no other thread holds anything.
    void WaitForOthers();

private:
    struct Hold
    {
        Thread thread;
        Key key = 0;
        int reads = 0;
        int writes = 0;
        bool wantsWrite = false;

        bool IsHeld() const { return reads > 0 || writes > 0; }
    };

    Hold& HoldOf(Thread thread, Key key);
    void DropIfUnused(const Hold& hold);
    bool MayRead(Thread thread, Key key) const;
    bool MayWrite(Thread thread, Key key) const;
    bool HoldsAnything(Thread thread) const;

    std::mutex m_Mutex;
    std::condition_variable m_Changed;
    std::vector<Hold> m_Holds; ///< few at any time, so a search beats a map
};

/// Holds one lock of the table for a scope.
class PixelWriteScope
{
public:
    PixelWriteScope(PixelLockTable& table, PixelLockTable::Key key);
    ~PixelWriteScope();
    PixelWriteScope(const PixelWriteScope&) = delete;
    PixelWriteScope& operator=(const PixelWriteScope&) = delete;

private:
    PixelLockTable& m_Table;
    PixelLockTable::Key m_Key;
};

/// Holds one lock of the table for a scope.
class PixelReadScope
{
public:
    PixelReadScope(PixelLockTable& table, PixelLockTable::Key key);
    ~PixelReadScope();
    PixelReadScope(const PixelReadScope&) = delete;
    PixelReadScope& operator=(const PixelReadScope&) = delete;

private:
    PixelLockTable& m_Table;
    PixelLockTable::Key m_Key;
};
