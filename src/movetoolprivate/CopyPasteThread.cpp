#include "movetoolprivate/CopyPasteThread.h"

#include "movetoolprivate/CopyPasteBase.h"

#include <QPoint>

using Guard = std::lock_guard<std::mutex>;

CopyPasteThread::CopyPasteThread(CopyPasteBase* object, QObject* parent) : QThread(parent), m_pObject(object)
{
    if (object) {
        object->moveToThread(this);
        connect(object, &CopyPasteBase::UnexpectedException, this, &CopyPasteThread::OnUnexpectedException,
                Qt::QueuedConnection);
        connect(object, &CopyPasteBase::UnexpectedError, this, &CopyPasteThread::OnUnexpectedError,
                Qt::QueuedConnection);
    }
    start(QThread::InheritPriority);
}

CopyPasteThread::~CopyPasteThread()
{
    exit(0);
    wait();
}

bool CopyPasteThread::Begin(ZKDocumentView* view, unsigned int layerID)
{
    const Guard guard(m_Mutex);
    return m_pObject && m_pObject->Begin(view, layerID);
}

bool CopyPasteThread::Commit(LexoUndoStack* stack)
{
    const Guard guard(m_Mutex);
    return m_pObject && m_pObject->Commit(stack);
}

bool CopyPasteThread::Cancel()
{
    const Guard guard(m_Mutex);
    return m_pObject && m_pObject->Cancel();
}

void CopyPasteThread::PostMove(const QPoint& position)
{
    const Guard guard(m_Mutex);
    if (m_pObject) m_pObject->PostMove(position);
}

bool CopyPasteThread::Move(const QPoint& position)
{
    const Guard guard(m_Mutex);
    return m_pObject && m_pObject->MoveNow(position);
}

void CopyPasteThread::Refresh()
{
    const Guard guard(m_Mutex);
    if (m_pObject) m_pObject->RefreshNow();
}

void CopyPasteThread::Flush()
{
    const Guard guard(m_Mutex);
    if (m_pObject) m_pObject->Flush();
}

bool CopyPasteThread::IsStateUnknown() const
{
    return m_pObject && m_pObject->IsStateUnknown();
}

void CopyPasteThread::OnUnexpectedException()
{
    emit UnexpectedException(this);
}

void CopyPasteThread::OnUnexpectedError()
{
    emit UnexpectedError(this);
}
