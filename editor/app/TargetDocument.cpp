#include "app/TargetDocument.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "history/PushOrRun.h"

TargetDocument::TargetDocument(const ZKDocumentView* view)
    : m_pDocument(view ? view->GetModel()->GetDocument() : nullptr),
      m_pHistory(view ? view->GetHistory() : nullptr)
{}

LXDocumentInterface* TargetDocument::Get() const
{
    return m_pDocument;
}

bool TargetDocument::IsFree() const
{
    return m_pDocument && !m_pDocument->GetLockState();
}

void TargetDocument::LandPieces() const
{
    if (m_pHistory) m_pHistory->commit();
}

void TargetDocument::Push(std::unique_ptr<LexoCommand> command) const
{
    if (m_pDocument) PushOrRun(m_pHistory, std::move(command));
}
