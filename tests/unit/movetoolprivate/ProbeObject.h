#pragma once

#include "movetoolprivate/CopyPasteBase.h"

#include <QThread>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/// A door that one thread keeps shut until another opens it.
class Gate
{
public:
    void Open()
    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_IsOpen = true;
        m_Opened.notify_all();
    }

    void Pass()
    {
        std::unique_lock<std::mutex> guard(m_Mutex);
        m_Opened.wait(guard, [this] { return m_IsOpen; });
    }

    bool IsOpen()
    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        return m_IsOpen;
    }

private:
    std::mutex m_Mutex;
    std::condition_variable m_Opened;
    bool m_IsOpen = false;
};

/// A floating object that notes what it is asked, and that can be slow, refuse, and throw.
class ProbeObject : public CopyPasteBase
{
public:
    struct Call
    {
        QPoint position;
        std::thread::id thread;
    };

    ~ProbeObject() override
    {
        if (onDestroyed) onDestroyed();
    }

    bool Begin(ZKDocumentView* view, unsigned int layerID) override
    {
        beginView = view;
        beginId = layerID;
        beginThread = std::this_thread::get_id();
        return answer;
    }

    bool Commit(LexoUndoStack* stack) override
    {
        commitStack = stack;
        ++commits;
        return answer;
    }

    bool Cancel() override
    {
        ++cancels;
        return answer;
    }

    bool Move(const QPoint& position) override
    {
        {
            const std::lock_guard<std::mutex> guard(m_Mutex);
            m_Moves.push_back({position, std::this_thread::get_id()});
        }
        return onMove ? onMove(position) : true;
    }

    void Refresh() override
    {
        ++refreshes;
        if (onRefresh) onRefresh();
    }

    /// As the worker takes them out of its queue.
    void Deliver(const QPoint& position, quint64 ticket)
    {
        MoveEvent event(position, ticket);
        CopyPasteBase::customEvent(&event);
    }

    using CopyPasteBase::Flush;
    using CopyPasteBase::MoveNow;
    using CopyPasteBase::RefreshNow;

    /// How many move events have reached the object, carried out or not.
    int Delivered() const { return m_Delivered; }

    std::vector<Call> Moves()
    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        return m_Moves;
    }

    /// The positions of the moves so far.
    QList<QPoint> Positions()
    {
        QList<QPoint> positions;
        for (const Call& call : Moves())
            positions << call.position;
        return positions;
    }

    std::function<bool(const QPoint&)> onMove;
    std::function<void()> onRefresh;
    std::function<void()> onDestroyed;
    bool answer = true;

    ZKDocumentView* beginView = nullptr;
    unsigned int beginId = 0;
    std::thread::id beginThread;
    LexoUndoStack* commitStack = nullptr;
    int commits = 0;
    int cancels = 0;
    int refreshes = 0;

protected:
    void customEvent(QEvent* event) override
    {
        ++m_Delivered;
        CopyPasteBase::customEvent(event);
    }

private:
    std::mutex m_Mutex;
    std::vector<Call> m_Moves;
    std::atomic<int> m_Delivered{0};
};
