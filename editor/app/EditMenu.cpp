#include "app/EditMenu.h"

#include "app/MainWindow.h"
#include "app/MenuAction.h"
#include "document/LXDocumentInterface.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"

#include <QAction>

EditMenu::EditMenu(MainWindow* window) : QObject(window), m_pWindow(window)
{
    const QList<QKeySequence> redoKeys{Qt::CTRL + Qt::SHIFT + Qt::Key_Z, Qt::CTRL + Qt::Key_Y};
    m_pUndo = AddMenuAction(this, {ZKMenuManager::Edit,
                                   0,
                                   tr("&Undo"),
                                   tr("Takes the last step back"),
                                   {Qt::CTRL + Qt::Key_Z},
                                   "theme:edit_undo.png"});
    m_pRedo = AddMenuAction(
        this, {ZKMenuManager::Edit, 1, tr("&Redo"), tr("Does it again"), redoKeys, "theme:edit_redo.png"});
    m_pUndo->setObjectName(QStringLiteral("undoAction"));
    m_pRedo->setObjectName(QStringLiteral("redoAction"));
    connect(m_pUndo, &QAction::triggered, this, [this] { Step(&LexoUndoStack::undo); });
    connect(m_pRedo, &QAction::triggered, this, [this] { Step(&LexoUndoStack::redo); });

    connect(window, &MainWindow::ActiveViewChanged, this, &EditMenu::Follow);
    UpdateActions();
}

void EditMenu::Follow(ZKDocumentView* view)
{
    if (m_pHistory) m_pHistory->disconnect(this);
    m_pHistory = view ? view->GetHistory() : nullptr;
    if (m_pHistory) connect(m_pHistory, &LexoUndoStack::historyChanged, this, &EditMenu::UpdateActions);
    UpdateActions();
}

void EditMenu::Step(void (LexoUndoStack::*step)())
{
    // A tool that holds the document is in the middle of something that the step would pull away under it.
    const LXDocumentInterface* document = m_pWindow->GetActiveDocument();
    if (!m_pHistory || !document || document->GetLockState()) return;

    (m_pHistory->*step)();
}

void EditMenu::UpdateActions()
{
    const QString undone = m_pHistory ? m_pHistory->undoText() : QString();
    const QString redone = m_pHistory ? m_pHistory->redoText() : QString();
    m_pUndo->setEnabled(m_pHistory && m_pHistory->canUndo());
    m_pRedo->setEnabled(m_pHistory && m_pHistory->canRedo());
    m_pUndo->setText(undone.isEmpty() ? tr("&Undo") : tr("&Undo %1").arg(undone));
    m_pRedo->setText(redone.isEmpty() ? tr("&Redo") : tr("&Redo %1").arg(redone));
}
