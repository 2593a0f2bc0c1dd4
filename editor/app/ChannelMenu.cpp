#include "app/ChannelMenu.h"

#include "app/LoadSelectionDialog.h"
#include "app/MainWindow.h"
#include "app/MenuAction.h"
#include "app/SaveSelectionDialog.h"
#include "app/TargetDocument.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel.h"
#include "document/SelectionChannels.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/ChannelCommands.h"
#include "history/LexoCommand.h"
#include "image/LXTileExceptions.h"

#include <QAction>
#include <QMenu>

#include <new>

namespace {
SelectionChannels* ChannelsOf(LXDocumentInterface* document)
{
    return LXDocumentInterfacePrivate::Get(document)->channels;
}

/// A piece that floats lands before the selection is read. False when nothing can be changed now.
bool Begin(const TargetDocument& target)
{
    if (!target.IsFree()) return false;
    target.LandPieces();
    return true;
}
} // namespace

ChannelMenu::ChannelMenu(MainWindow* window)
    : QObject(window), m_pWindow(window), m_pDelete(std::make_unique<QMenu>(tr("&Delete Saved Selection")))
{
    const auto add = [this](int position, const QString& text, const QString& hint, const char* name) {
        QAction* action = AddMenuAction(this, {ZKMenuManager::Selection, position, text, hint, {}});
        action->setObjectName(QLatin1String(name));
        return action;
    };
    AddMenuSeparator(this, ZKMenuManager::Selection, 21);
    m_pSave = add(22, tr("&Save Selection…"), tr("Keeps the selection in the picture, under a name"),
                  "saveSelectionAction");
    m_pLoad = add(23, tr("&Load Selection…"), tr("Selects again what was kept under a name"),
                  "loadSelectionAction");
    ZKMenuManager::CreateMenu(ZKMenuManager::Selection, 24, m_pDelete.get());

    connect(m_pSave, &QAction::triggered, this, &ChannelMenu::Save);
    connect(m_pLoad, &QAction::triggered, this, &ChannelMenu::Load);
    connect(window, &MainWindow::ActiveViewChanged, this, &ChannelMenu::Follow);
    UpdateActions();
}

ChannelMenu::~ChannelMenu() = default;

void ChannelMenu::Follow(ZKDocumentView* view)
{
    if (m_pDocument) {
        m_pDocument->disconnect(this);
        ChannelsOf(m_pDocument)->disconnect(this);
    }
    m_pDocument = view ? view->GetModel()->GetDocument() : nullptr;
    if (m_pDocument) {
        connect(m_pDocument, &LXDocumentInterface::SelectionChanged, this, &ChannelMenu::UpdateActions);
        connect(m_pDocument, &LXDocumentInterface::Locked, this, &ChannelMenu::UpdateActions);
        connect(m_pDocument, &LXDocumentInterface::Unlocked, this, &ChannelMenu::UpdateActions);
        connect(ChannelsOf(m_pDocument), &SelectionChannels::Changed, this, &ChannelMenu::ListChannels);
    }
    ListChannels();
}

void ChannelMenu::Save()
{
    const TargetDocument target(m_pWindow->GetActiveView());
    if (!Begin(target) || !target.Get()->HasSelection()) return;

    SaveSelectionDialog dialog(ChannelsOf(target.Get())->Names(), m_pWindow);
    if (dialog.Exec() != QDialog::Accepted || !Begin(target)) return;
    target.Push(std::unique_ptr<LexoCommand>(ChannelCommands::Save(target.Get(), dialog.GetName())));
}

void ChannelMenu::Load()
{
    const TargetDocument target(m_pWindow->GetActiveView());
    if (!Begin(target) || ChannelsOf(target.Get())->All().isEmpty()) return;

    LoadSelectionDialog dialog(ChannelsOf(target.Get())->Names(), target.Get()->HasSelection(), m_pWindow);
    if (dialog.Exec() != QDialog::Accepted || !Begin(target)) return;
    try {
        target.Push(std::unique_ptr<LexoCommand>(
            ChannelCommands::Load(target.Get(), dialog.GetRow(), dialog.GetOperation())));
    } catch (const std::bad_alloc&) {
        TellMissingMemory();
    } catch (const LXTMSwapError&) {
        TellMissingMemory();
    } catch (const LXTMSwapFileError&) {
        TellMissingMemory();
    }
}

void ChannelMenu::TellMissingMemory()
{
    LXMessageBox::Warning(m_pWindow, tr("Load selection"),
                          tr("There is not enough memory to combine the selections."), LXMessageBox::Ok);
}

void ChannelMenu::Delete(int row)
{
    const TargetDocument target(m_pWindow->GetActiveView());
    if (Begin(target)) {
        target.Push(std::unique_ptr<LexoCommand>(ChannelCommands::Delete(target.Get(), row)));
    }
}

void ChannelMenu::ListChannels()
{
    m_pDelete->clear();
    const QStringList names = m_pDocument ? ChannelsOf(m_pDocument)->Names() : QStringList();
    for (int row = 0; row < names.size(); ++row) {
        // A name's own ampersand isn't a mnemonic.
        QString text = names[row];
        QAction* action = m_pDelete->addAction(text.replace(QLatin1Char('&'), QLatin1String("&&")));
        connect(
            action, &QAction::triggered, this, [this, row] { Delete(row); }, Qt::QueuedConnection);
    }
    UpdateActions();
}

void ChannelMenu::UpdateActions()
{
    const bool isFree = m_pDocument && !m_pDocument->GetLockState();
    const bool hasChannels = !m_pDelete->isEmpty();
    m_pSave->setEnabled(isFree && m_pDocument->HasSelection());
    m_pLoad->setEnabled(isFree && hasChannels);
    m_pDelete->menuAction()->setEnabled(isFree && hasChannels);
    for (QAction* action : m_pDelete->actions())
        action->setEnabled(isFree);
}
