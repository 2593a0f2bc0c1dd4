#include "app/EditMenu.h"

#include "app/MainWindow.h"
#include "app/MenuAction.h"
#include "app/PreferencesUse.h"
#include "document/AlphaScan.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "gui/ZKDocumentView.h"
#include "guicore/GuardedStep.h"
#include "history/LexoUndoStack.h"
#include "history/SelectionCommand.h"
#include "history/SelectionCommandData.h"
#include "image/LXImage.h"

#include <QAction>
#include <QPainterPath>

#include <memory>

namespace {
bool IsAllSelected(const LXDocumentInterface* document)
{
    const QRect canvas(QPoint(0, 0), document->GetDocumentSize());
    if (document->GetSelectionBoundingRect() != canvas) return false;

    bool isOpaque = false;
    // Asked in the middle of signals, which must not fail; what can't be read may be selected again.
    GuardedStep::Try([&] {
        const LXDocumentSelectionLockerForRead locker(document);
        isOpaque = AlphaScan::IsOpaque(document->GetSelectionMask(),
                                       canvas.translated(-document->GetSelectionMaskOffset()));
    });
    return isOpaque;
}
} // namespace

EditMenu::EditMenu(MainWindow* window, PreferencesUse* preferences) : QObject(window), m_pWindow(window)
{
    AddHistoryEntries();
    AddSelectionEntries();
    AddPreferences(preferences);
    connect(window, &MainWindow::ActiveViewChanged, this, &EditMenu::Follow);
    UpdateActions();
    UpdateSelectionActions();
}

void EditMenu::AddHistoryEntries()
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
}

void EditMenu::AddSelectionEntries()
{
    AddMenuSeparator(this, ZKMenuManager::Edit, 60);
    m_pSelectAll = AddMenuAction(
        this,
        {ZKMenuManager::Edit, 61, tr("Select &All"), tr("Selects the whole canvas"), {Qt::CTRL + Qt::Key_A}});
    m_pSelectAll->setObjectName(QStringLiteral("selectAllAction"));
    connect(m_pSelectAll, &QAction::triggered, this,
            [this] { GuardedStep::Run(m_pWindow, [this] { SelectAll(); }); });
}

void EditMenu::AddPreferences(PreferencesUse* preferences)
{
    AddMenuSeparator(this, ZKMenuManager::Edit, 90);
    QAction* ask = AddMenuAction(this, {ZKMenuManager::Edit,
                                        91,
                                        tr("Pre&ferences…"),
                                        tr("Changes look, memory and limits of the program"),
                                        {Qt::CTRL + Qt::Key_Comma}});
    ask->setObjectName(QStringLiteral("preferencesAction"));
    connect(ask, &QAction::triggered, preferences, &PreferencesUse::AskAndUse);
}

void EditMenu::Follow(ZKDocumentView* view)
{
    if (m_pHistory) m_pHistory->disconnect(this);
    m_pHistory = view ? view->GetHistory() : nullptr;
    if (m_pHistory) connect(m_pHistory, &LexoUndoStack::historyChanged, this, &EditMenu::UpdateActions);

    if (m_pDocument) m_pDocument->disconnect(this);
    m_pDocument = view ? view->GetModel()->GetDocument() : nullptr;
    if (m_pDocument) {
        const auto update = &EditMenu::UpdateSelectionActions;
        connect(m_pDocument, &LXDocumentInterface::SelectionChanged, this, update);
        connect(m_pDocument, &LXDocumentInterface::DocumentSizeChanged, this, update);
        connect(m_pDocument, &LXDocumentInterface::Locked, this, update);
        connect(m_pDocument, &LXDocumentInterface::Unlocked, this, update);
        connect(m_pDocument, &LXDocumentInterface::DocumentStateChanged, this, &EditMenu::UpdateActions);
    }
    UpdateActions();
    UpdateSelectionActions();
}

void EditMenu::Step(void (LexoUndoStack::*step)())
{
    // A tool that holds the document is in the middle of something that the step would pull away under it.
    const LXDocumentInterface* document = m_pWindow->GetActiveDocument();
    if (!m_pHistory || !document || document->GetLockState()) return;

    GuardedStep::Run(m_pWindow, [&] { (m_pHistory->*step)(); });
}

void EditMenu::SelectAll()
{
    if (!m_pHistory || !m_pDocument || m_pDocument->GetLockState()) return;

    QPainterPath canvas;
    canvas.addRect(QRect(QPoint(0, 0), m_pDocument->GetDocumentSize()));
    // A piece that floats lands before the selection is read.
    m_pHistory->commit();
    auto data = std::make_unique<SelectionCommandData>();
    data->SetSelectionOp(SelectionCommandData::Replace);
    data->SetSelectionGeometry(canvas);
    {
        const LXDocumentSelectionLockerForRead locker(m_pDocument);
        data->SetUndoSel(m_pDocument->GetSelectionMaskOffset(), m_pDocument->GetSelectionMask());
    }
    auto command = std::make_unique<SelectionCommand>(m_pDocument);
    command->setText(tr("Select all"));
    if (!command->SetCommandData(data.get())) return;

    static_cast<void>(data.release()); // the command has it now
    m_pHistory->push(command.release());
}

void EditMenu::UpdateSelectionActions()
{
    const bool isFree = m_pDocument && m_pHistory && !m_pDocument->GetLockState();
    m_pSelectAll->setEnabled(isFree && !IsAllSelected(m_pDocument));
}

void EditMenu::UpdateActions()
{
    const QString undone = m_pHistory ? m_pHistory->undoText() : QString();
    const QString redone = m_pHistory ? m_pHistory->redoText() : QString();
    // A piece that floats becomes a step as soon as the history is asked.
    const bool hasPiece = m_pDocument && m_pDocument->GetDocumentState() > 0;
    m_pUndo->setEnabled(m_pHistory && (m_pHistory->canUndo() || hasPiece));
    m_pRedo->setEnabled(m_pHistory && m_pHistory->canRedo());
    m_pUndo->setText(undone.isEmpty() ? tr("&Undo") : tr("&Undo %1").arg(undone));
    m_pRedo->setText(redone.isEmpty() ? tr("&Redo") : tr("&Redo %1").arg(redone));
}
