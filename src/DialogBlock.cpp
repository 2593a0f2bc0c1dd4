#include "DialogBlock.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/LToolBoxWidget.h"
#include "gui/ZKDocumentView.h"

namespace {
void SetViewBlocked(ZKDocumentView* view, bool blocked)
{
    view->BlockLayerOrderOperations(blocked);
    view->BlockPathOrderOperations(blocked);
    view->BlockStylizationView(blocked);
}
} // namespace

DialogBlock::~DialogBlock()
{
    ReleaseView();
    ReleaseToolBox();
}

void DialogBlock::BlockView(ZKDocumentView* view, LToolBoxWidget* toolBox)
{
    m_pView = view;
    m_pToolBox = toolBox;
    if (m_pView) SetViewBlocked(m_pView, true);
    if (m_pToolBox) m_pToolBox->setEnabled(false);
}

void DialogBlock::LockDocument()
{
    LXDocumentModel* model = m_pView ? m_pView->GetModel() : nullptr;
    LXDocumentInterface* document = model ? model->GetDocument() : nullptr;
    if (document && document->Lock()) m_pLockedDocument = document;
}

void DialogBlock::ReleaseView()
{
    if (m_pView) SetViewBlocked(m_pView, false);
    m_pView = nullptr;
    if (m_pLockedDocument) m_pLockedDocument->Unlock();
    m_pLockedDocument = nullptr;
}

void DialogBlock::ReleaseToolBox()
{
    if (m_pToolBox) m_pToolBox->setEnabled(true);
    m_pToolBox = nullptr;
}
