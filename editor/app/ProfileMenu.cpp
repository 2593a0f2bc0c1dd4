#include "app/ProfileMenu.h"

#include "app/MainWindow.h"
#include "app/MenuAction.h"
#include "app/ProfileDialog.h"
#include "app/WaitedWork.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LayerColors.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "history/ProfileCommands.h"
#include "image/TileThreads.h"
#include "resource/LXResource.h"

#include <QAction>

#include <memory>

namespace {
/// Below what tools put into the menu.
constexpr int Position = 20;
} // namespace

ProfileMenu::ProfileMenu(MainWindow* window) : QObject(window), m_pWindow(window)
{
    const auto add = [this](int position, const QString& text, const QString& hint, const char* name) {
        QAction* action = AddMenuAction(this, {ZKMenuManager::Image, position, text, hint, {}});
        action->setObjectName(QLatin1String(name));
        return action;
    };
    AddMenuSeparator(this, ZKMenuManager::Image, Position);
    m_pAssign = add(Position + 1, tr("Assign &Profile…"),
                    tr("Tells what colors the values of the pixels stand for; the values stay"),
                    "assignProfileAction");
    m_pConvert =
        add(Position + 2, tr("&Convert to Profile…"),
            tr("Gives the pixels values of another profile; the colors stay"), "convertToProfileAction");
    connect(m_pAssign, &QAction::triggered, this, &ProfileMenu::Assign);
    connect(m_pConvert, &QAction::triggered, this, &ProfileMenu::Convert);
    connect(window, &MainWindow::ActiveViewChanged, this, &ProfileMenu::Follow);
    UpdateActions();
}

void ProfileMenu::Follow(ZKDocumentView* view)
{
    if (m_pDocument) m_pDocument->disconnect(this);
    m_pDocument = view ? view->GetModel()->GetDocument() : nullptr;
    if (m_pDocument) {
        connect(m_pDocument, &LXDocumentInterface::Locked, this, &ProfileMenu::UpdateActions);
        connect(m_pDocument, &LXDocumentInterface::Unlocked, this, &ProfileMenu::UpdateActions);
    }
    UpdateActions();
}

void ProfileMenu::Assign()
{
    if (!m_pDocument || m_pDocument->GetLockState()) return;
    ProfileDialog dialog(ProfileDialog::Purpose::Assign, m_pDocument->GetICCProfile(), m_pWindow);
    if (dialog.Exec() != QDialog::Accepted || !m_pDocument || m_pDocument->GetLockState()) return;

    if (LexoCommand* command = ProfileCommands::Assign(m_pDocument, dialog.GetProfile())) Push(command);
}

void ProfileMenu::Convert()
{
    if (!m_pDocument || m_pDocument->GetLockState()) return;
    ProfileDialog dialog(ProfileDialog::Purpose::Convert, m_pDocument->GetICCProfile(), m_pWindow);
    if (dialog.Exec() == QDialog::Accepted && m_pDocument) {
        ConvertTo(dialog.GetProfile(), dialog.GetRendering());
    }
}

void ProfileMenu::ConvertTo(const ZKCMSProfile& target, const ZKCMSRendering& rendering)
{
    if (m_pDocument->GetICCProfile() == target) return;
    // What floats is put down before the pixels are read.
    const ZKDocumentView* view = m_pWindow->GetActiveView();
    if (view && view->GetHistory()) view->GetHistory()->commit();
    if (!m_pDocument || !m_pDocument->Lock()) return;

    LexoCommand* command = MakeConversion(target, rendering);
    m_pDocument->Unlock();
    if (command) Push(command);
}

/// Null when it was cancelled or failed, and that was told.
LexoCommand* ProfileMenu::MakeConversion(const ZKCMSProfile& target, const ZKCMSRendering& rendering)
{
    try {
        const LayerColors before = LayerColors::Of(m_pDocument);
        LayerColors after;
        WaitedWork::Run(m_pWindow, tr("Converting “%1”…").arg(m_pDocument->GetDocumentName()), true,
                        [&](const FileProgress& progress) {
                            const TileThreads::CancelScope scope(
                                [&progress] { return !progress.IsCancelled(); });
                            after = before.Converted(target, rendering, progress.setPermille);
                        });
        return ProfileCommands::Convert(m_pDocument, before, after);
    } catch (const TileThreads::Cancelled&) {
        return nullptr;
    } catch (const std::exception& error) {
        LXMessageBox::Critical(m_pWindow, LXResource::GetData(LXResource::ProductName).toString(),
                               tr("“%1” can't be converted: %2\nNothing was changed.")
                                   .arg(m_pDocument->GetDocumentName(), QString::fromUtf8(error.what())));
        return nullptr;
    }
}

void ProfileMenu::Push(LexoCommand* command)
{
    std::unique_ptr<LexoCommand> owned(command);
    const ZKDocumentView* view = m_pWindow->GetActiveView();
    if (view && view->GetHistory()) {
        view->GetHistory()->push(owned.release());
    } else {
        owned->redo();
    }
}

void ProfileMenu::UpdateActions()
{
    const bool isFree = m_pDocument && !m_pDocument->GetLockState();
    m_pAssign->setEnabled(isFree);
    m_pConvert->setEnabled(isFree);
}
