#include "movetoolprivate/CopyPasteBase.h"

#include "common/Reports.h"

#include <QCoreApplication>

namespace {
constexpr int AllTypes = 0;
} // namespace

void CopyPasteBase::PostMove(const QPoint& position)
{
    const std::lock_guard<std::mutex> guard(m_EventMutex);
    const quint64 ticket = DropPostedLocked(MoveEvent::EventType);
    QCoreApplication::postEvent(this, new MoveEvent(position, ticket));
}

bool CopyPasteBase::MoveNow(const QPoint& position)
{
    {
        // An older wish must not come after this one.
        const std::lock_guard<std::mutex> guard(m_EventMutex);
        DropPostedLocked(MoveEvent::EventType);
    }
    const std::lock_guard<std::mutex> guard(m_WorkMutex);
    return MoveUnderRing(position);
}

void CopyPasteBase::RefreshNow()
{
    const std::lock_guard<std::mutex> guard(m_WorkMutex);
    try {
        Refresh();
    } catch (...) {
        Reports::UnknownException(ZK_HERE);
        TellError();
    }
}

void CopyPasteBase::Flush()
{
    {
        const std::lock_guard<std::mutex> guard(m_EventMutex);
        DropPostedLocked(AllTypes);
    }
    // Waits for a move that is running.
    const std::lock_guard<std::mutex> guard(m_WorkMutex);
}

void CopyPasteBase::TellError()
{
    m_bStateUnknown = true;
    emit UnexpectedError();
}

/// Also overtakes the event that the worker has taken out of its queue but not yet begun to carry out.
quint64 CopyPasteBase::DropPostedLocked(int eventType)
{
    QCoreApplication::removePostedEvents(this, eventType);
    return ++m_Ticket;
}

bool CopyPasteBase::MoveUnderRing(const QPoint& position)
{
    try {
        return Move(position);
    } catch (...) {
        Reports::UnknownException(ZK_HERE);
        TellError();
    }
    return false;
}

void CopyPasteBase::customEvent(QEvent* event)
{
    if (event->type() != MoveEvent::EventType) return;

    const std::lock_guard<std::mutex> guard(m_WorkMutex);
    QPoint position;
    {
        const std::lock_guard<std::mutex> eventGuard(m_EventMutex);
        const auto* move = static_cast<const MoveEvent*>(event);
        if (move->GetTicket() != m_Ticket) return;
        position = move->GetPosition();
    }
    try {
        if (!Move(position)) emit UnexpectedException();
    } catch (...) {
        Reports::UnknownException(ZK_HERE);
        TellError();
    }
}
