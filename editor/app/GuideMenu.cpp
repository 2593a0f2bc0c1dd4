#include "app/GuideMenu.h"

#include "app/GuideDialog.h"
#include "app/MainWindow.h"
#include "app/MenuAction.h"
#include "app/TargetDocument.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"
#include "history/GuideCommands.h"
#include "history/LexoCommand.h"

#include <QAction>

namespace {
const QLatin1String ShownKey("Editor/ShowGuides");
}

GuideMenu::GuideMenu(MainWindow* window) : QObject(window), m_pWindow(window)
{
    const auto add = [this](int position, const QString& text, const QString& hint, const char* name,
                            const QList<QKeySequence>& keys = {}) {
        QAction* action = AddMenuAction(this, {ZKMenuManager::View, position, text, hint, keys});
        action->setObjectName(QLatin1String(name));
        return action;
    };
    AddMenuSeparator(this, ZKMenuManager::View, 5);
    m_pShow = add(6, tr("Show &Guides"), tr("Draws the lines that things are lined up with"),
                  "showGuidesAction", {Qt::CTRL + Qt::Key_Semicolon});
    m_pAdd = add(7, tr("&Add Guide…"), tr("Puts a line across the canvas"), "addGuideAction");
    m_pClear = add(8, tr("C&lear Guides"), tr("Takes all guides of the picture away"), "clearGuidesAction");

    m_pShow->setCheckable(true);
    m_pShow->setChecked(ZKApplication::GetUserValue(ShownKey, true).toBool());
    connect(m_pShow, &QAction::triggered, this, &GuideMenu::Show);
    connect(m_pAdd, &QAction::triggered, this, &GuideMenu::AskForGuide);
    connect(m_pClear, &QAction::triggered, this, &GuideMenu::Clear);
    connect(window, &MainWindow::ActiveViewChanged, this, &GuideMenu::Follow);
    UpdateActions();
}

void GuideMenu::Follow(ZKDocumentView* view)
{
    if (m_pDocument) m_pDocument->disconnect(this);
    m_pDocument = view ? view->GetModel()->GetDocument() : nullptr;
    if (m_pDocument) {
        connect(m_pDocument, &LXDocumentInterface::GuidesChanged, this, &GuideMenu::UpdateActions);
        connect(m_pDocument, &LXDocumentInterface::Locked, this, &GuideMenu::UpdateActions);
        connect(m_pDocument, &LXDocumentInterface::Unlocked, this, &GuideMenu::UpdateActions);
    }
    if (view) view->ShowGuides(m_pShow->isChecked());
    UpdateActions();
}

void GuideMenu::Show(bool shown)
{
    ZKApplication::SetUserValue(ShownKey, shown);
    if (ZKDocumentView* view = m_pWindow->GetActiveView()) view->ShowGuides(shown);
}

void GuideMenu::AskForGuide()
{
    const TargetDocument target(m_pWindow->GetActiveView());
    if (!target.IsFree()) return;
    GuideDialog dialog(target.Get()->GetDocumentSize(), m_pWindow);
    if (dialog.Exec() != QDialog::Accepted || !target.IsFree()) return;

    target.Push(std::unique_ptr<LexoCommand>(GuideCommands::Add(target.Get(), dialog.GetGuide())));
    // A guide that was asked for is to be seen.
    m_pShow->setChecked(true);
    Show(true);
}

void GuideMenu::Clear()
{
    const TargetDocument target(m_pWindow->GetActiveView());
    if (target.IsFree()) target.Push(std::unique_ptr<LexoCommand>(GuideCommands::Clear(target.Get())));
}

void GuideMenu::UpdateActions()
{
    const bool isFree = m_pDocument && !m_pDocument->GetLockState();
    m_pAdd->setEnabled(isFree);
    m_pClear->setEnabled(isFree && !m_pDocument->GetGuides().isEmpty());
}
