#include "app/ModifyMenu.h"

#include "app/MainWindow.h"
#include "app/MenuAction.h"
#include "app/ModifySelectionDialog.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"
#include "guicore/GuardedStep.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"

#include <QAction>
#include <QMenu>

using Kind = SelectionModify::Kind;

namespace {
// Both are given back whatever is thrown meanwhile, unless the document has been closed.

class OperationScope
{
public:
    explicit OperationScope(LXDocumentInterface* document) : m_pDocument(document)
    {
        m_pDocument->BeginOperation();
    }

    ~OperationScope()
    {
        if (m_pDocument) m_pDocument->EndOperation();
    }

    Q_DISABLE_COPY(OperationScope)

private:
    QPointer<LXDocumentInterface> m_pDocument;
};

class LockScope
{
public:
    explicit LockScope(LXDocumentInterface* document) : m_pDocument(document), m_bHeld(document->Lock()) {}

    ~LockScope()
    {
        if (m_bHeld && m_pDocument) m_pDocument->Unlock();
    }

    Q_DISABLE_COPY(LockScope)

    bool IsHeld() const { return m_bHeld; }

private:
    QPointer<LXDocumentInterface> m_pDocument;
    bool m_bHeld;
};
} // namespace

ModifyMenu::ModifyMenu(MainWindow* window)
    : QObject(window), m_pWindow(window), m_pMenu(std::make_unique<QMenu>(tr("&Modify")))
{
    Add(Kind::Grow, tr("&Grow…"), tr("Selects what lies around the selection too"), "growSelectionAction");
    Add(Kind::Shrink, tr("&Shrink…"), tr("Takes the rim of the selection away"), "shrinkSelectionAction");
    Add(Kind::Border, tr("&Border…"), tr("Selects a band along the edge of the selection"),
        "borderSelectionAction");
    Add(Kind::Feather, tr("&Feather…"), tr("Makes the edge of the selection soft"), "featherSelectionAction");
    Add(Kind::Smooth, tr("S&mooth…"), tr("Rounds corners and drops specks of the selection"),
        "smoothSelectionAction");
    AddMenuSeparator(this, ZKMenuManager::Selection, 19);
    ZKMenuManager::CreateMenu(ZKMenuManager::Selection, 20, m_pMenu.get());
    connect(window, &MainWindow::ActiveViewChanged, this, &ModifyMenu::Follow);
    UpdateActions();
}

ModifyMenu::~ModifyMenu() = default;

void ModifyMenu::Add(Kind kind, const QString& text, const QString& hint, const char* name)
{
    auto* action = new QAction(text, this);
    action->setObjectName(QLatin1String(name));
    action->setStatusTip(hint);
    action->setMenuRole(QAction::NoRole);
    connect(action, &QAction::triggered, this,
            [this, kind] { GuardedStep::Run(m_pWindow, [&] { Modify(kind); }); });
    m_pMenu->addAction(action);
}

void ModifyMenu::Follow(ZKDocumentView* view)
{
    if (m_pDocument) m_pDocument->disconnect(this);
    m_pHistory = view ? view->GetHistory() : nullptr;
    m_pDocument = view ? view->GetModel()->GetDocument() : nullptr;
    if (m_pDocument) {
        connect(m_pDocument, &LXDocumentInterface::SelectionChanged, this, &ModifyMenu::UpdateActions);
        connect(m_pDocument, &LXDocumentInterface::Locked, this, &ModifyMenu::UpdateActions);
        connect(m_pDocument, &LXDocumentInterface::Unlocked, this, &ModifyMenu::UpdateActions);
    }
    UpdateActions();
}

void ModifyMenu::Modify(Kind kind)
{
    const QPointer<LXDocumentInterface> document = m_pDocument;
    const QPointer<LexoUndoStack> history = m_pHistory;
    if (!document || !history || document->GetLockState()) return;

    // Pieces that float are put down first: they belong to the selection as it is now.
    const OperationScope operation(document);
    history->commit();
    if (!document->HasSelection()) return;
    PlacedMask former;
    {
        const LockScope lock(document);
        if (!lock.IsHeld()) return;
        ModifySelectionDialog dialog(document, kind, m_pWindow);
        if (dialog.Exec() != QDialog::Accepted || !document || !history) return;
        former = dialog.GetFormer();
    }
    history->push(SelectionModify::StepFrom(former, document, ModifySelectionDialog::TitleOf(kind)));
}

void ModifyMenu::UpdateActions()
{
    const bool isFree = m_pDocument && m_pHistory && !m_pDocument->GetLockState();
    const bool hasSelection = isFree && m_pDocument->HasSelection();
    m_pMenu->menuAction()->setEnabled(hasSelection);
    for (QAction* action : m_pMenu->actions())
        action->setEnabled(hasSelection);
}
