#pragma once

#include <QEvent>
#include <QObject>
#include <QPoint>

#include <atomic>
#include <mutex>

class LexoUndoStack;
class ZKDocumentView;

/// Something that floats above a document and follows the pointer. It lives on the worker of a
/// CopyPasteThread, which owns it and is the only way to reach it; it has no parent.
///
/// Begin, Commit and Cancel run on the main thread while no move is pending or running. Move runs on the
/// worker, or on the main thread, but never on both at once. An operation that fails in a known way answers
/// false, and the object can still be cancelled; what an operation lets through leaves it in an unknown
/// state.
class CopyPasteBase : public QObject
{
    Q_OBJECT

public:
    /// The wish to see the piece somewhere, on its way to the worker.
    class MoveEvent : public QEvent
    {
    public:
        static constexpr QEvent::Type EventType = static_cast<QEvent::Type>(1001);

        MoveEvent(const QPoint& position, quint64 ticket)
            : QEvent(EventType), m_Position(position), m_Ticket(ticket)
        {}

        QPoint GetPosition() const { return m_Position; }

        /// Tells an event that still counts from one that something newer has overtaken.
        quint64 GetTicket() const { return m_Ticket; }

    private:
        QPoint m_Position;
        quint64 m_Ticket;
    };

    CopyPasteBase() = default;
    ~CopyPasteBase() override = default;

    /// Lifts what shall float. Once for each object.
    /// @param layerID  whose pixels; objects without pixels ignore it
    virtual bool Begin(ZKDocumentView* view, unsigned int layerID) = 0;
    /// Turns what floats into commands.
    /// @param stack  null runs them without a history
    virtual bool Commit(LexoUndoStack* stack) = 0;
    /// Puts everything back.
    virtual bool Cancel() = 0;
    /// Puts the piece there. Each object tells what the position means; it is always counted from the start,
    /// never from the last move, so that skipped positions lose nothing.
    virtual bool Move(const QPoint& position) = 0;
    /// The drag has ended for now.
    virtual void Refresh() = 0;

    /// Whether an operation has let something through: what the object holds isn't known any more. Any
    /// thread.
    bool IsStateUnknown() const { return m_bStateUnknown; }

signals:
    /// A move on the worker has answered false. Sent by the worker.
    void UnexpectedException();
    /// An operation let something through. Sent by the thread on which that happened.
    void UnexpectedError();

protected:
    /// Carries out a MoveEvent. On the worker.
    void customEvent(QEvent* event) override;

    // What CopyPasteThread does, one caller at a time; see there.
    void PostMove(const QPoint& position);
    bool MoveNow(const QPoint& position);
    void RefreshNow();
    void Flush();

private:
    friend class CopyPasteThread;

    quint64 DropPostedLocked(int eventType);
    bool MoveUnderRing(const QPoint& position);

    void TellError();

    std::atomic<bool> m_bStateUnknown{false};
    std::mutex m_WorkMutex;  ///< held while the object's state is being changed
    std::mutex m_EventMutex; ///< held while move events are posted and read
    quint64 m_Ticket = 0;    ///< of the newest event, or of what has overtaken it; under m_EventMutex
};
