#pragma once

#include <QThread>

#include <memory>
#include <mutex>

class CopyPasteBase;
class LexoUndoStack;
class QPoint;
class ZKDocumentView;

/// The worker of one floating object, and the only way to reach that object.
///
/// All operations belong to the main thread and answer false, or do nothing, without an object. Only PostMove
/// leaves its work to the worker, and only the newest posted position is ever pending: the pointer never
/// waits for a move, however slow it is. **Before Commit and Cancel call Flush**, and send no move between:
/// they don't wait for a move that runs.
class CopyPasteThread : public QThread
{
    Q_OBJECT

public:
    /// Starts the worker.
    /// @param object  moves to the worker and becomes the thread's own; it must have no parent
    explicit CopyPasteThread(CopyPasteBase* object, QObject* parent = nullptr);
    /// Waits until the worker has ended, then deletes the object. Moves that are pending may be lost.
    ~CopyPasteThread() override;

    /// Lifts; see CopyPasteBase.
    bool Begin(ZKDocumentView* view, unsigned int layerID);
    bool Commit(LexoUndoStack* stack);
    bool Cancel();
    /// The worker moves the piece there soon, unless a newer position comes first.
    void PostMove(const QPoint& position);
    /// Moves at once, after a move that runs. A posted position that hasn't begun by then is dropped.
    bool Move(const QPoint& position);
    void Refresh();
    /// Drops what is posted and waits for a move that runs: afterwards nothing moves until the next call.
    void Flush();
    /// Whether something was let through; then a move that answered false can't be rolled back.
    bool IsStateUnknown() const;

signals:
    /// A posted move failed in a known way: the object can be cancelled. On the main thread, later.
    void UnexpectedException(CopyPasteThread* thread);
    /// The object's state is unknown. On the main thread, later.
    void UnexpectedError(CopyPasteThread* thread);

public slots:
    void OnUnexpectedException();
    void OnUnexpectedError();

private:
    std::unique_ptr<CopyPasteBase> m_pObject;
    std::mutex m_Mutex;
};
