#include "LXDialogViewToolBase.h"

#include "core/ZKActivateAction.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxWidget.h"

#include <QEvent>

LXDialogViewToolBase::LXDialogViewToolBase(QObject* parent) : LXViewToolBase(parent, false) {}

LXDialogViewToolBase::~LXDialogViewToolBase() = default;

void LXDialogViewToolBase::StartDialog()
{
    if (GetActivateAction()->IsChecked()) return;

    ZKActivateAction* previous = ZKToolGroupManager::GetExplicitAction();
    if (!ZKToolGroupManager::Activate(GetActivateAction())) return;

    m_pPreviousAction = previous;
    if (GetDocumentView()) OpenDialog();
}

void LXDialogViewToolBase::OpenDialog()
{
    m_pDialog = CreateDialog(GetView());
    connect(m_pDialog, SIGNAL(Accepted()), this, SLOT(OnAccepted()));
    connect(m_pDialog, SIGNAL(Rejected()), this, SLOT(OnRejected()));
    m_pDialog->installEventFilter(this);

    m_Block.BlockView(GetView(), GetToolBox());
    m_pDialog->show();
    m_pDialog->raise();
    m_pDialog->setFocus();
    m_Block.LockDocument();
    DialogStarted();
}

void LXDialogViewToolBase::EndDialog()
{
    if (m_pDialog) {
        disconnect(m_pDialog, SIGNAL(Accepted()), this, SLOT(OnAccepted()));
        disconnect(m_pDialog, SIGNAL(Rejected()), this, SLOT(OnRejected()));
        m_pDialog->setParent(nullptr);
    }
    DialogFinished();

    m_Block.ReleaseView();
    // Null stands for no tool, as it was before: a tool that stayed current could not open its dialog again.
    if (!ZKToolGroupManager::Activate(m_pPreviousAction)) return;

    m_Block.ReleaseToolBox();
    m_pDialog = nullptr;
}

void LXDialogViewToolBase::OnAccepted()
{
    EndDialog();
    DialogAccepted();
}

void LXDialogViewToolBase::OnRejected()
{
    EndDialog();
    DialogRejected();
}

bool LXDialogViewToolBase::eventFilter(QObject* object, QEvent* event)
{
    if (object != m_pDialog) return LXViewToolBase::eventFilter(object, event);

    if (event->type() == QEvent::Close) {
        EndDialog();
        DialogRejected();
    }
    return false;
}
