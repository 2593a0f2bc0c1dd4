#include "movetoolprivate/MoveViewState.h"

#include "movetoolprivate/CopyPasteThread.h"

#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"

MoveViewState::MoveViewState(ZKDocumentView* view, std::unique_ptr<CopyPasteThread> thread)
    : m_pView(view),
      m_pThread(std::move(thread)),
      m_pUndoStack(view->GetHistory()),
      m_pDocument(view->GetModel()->GetDocument())
{
    m_pDocument->SetDocumentState(m_pDocument->GetDocumentState() + 1);
}

MoveViewState::~MoveViewState()
{
    if (m_pDocument) m_pDocument->SetDocumentState(m_pDocument->GetDocumentState() - 1);
    if (m_pThread) m_pThread->Flush();
}
