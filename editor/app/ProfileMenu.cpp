#include "app/ProfileMenu.h"

#include "app/MainWindow.h"
#include "app/MenuAction.h"
#include "app/ProfileDialog.h"
#include "app/TargetDocument.h"
#include "app/WaitedWork.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LayerColors.h"
#include "history/LexoCommand.h"
#include "history/ProfileCommands.h"
#include "image/TileThreads.h"
#include "resource/LXResource.h"

#include <QAction>

#include <memory>

namespace {
/// Below what tools put into the menu.
constexpr int Position = 20;

/// Null when it was cancelled, when it failed, which was told, and when the picture was closed meanwhile.
std::unique_ptr<LexoCommand> MakeConversion(const TargetDocument& target, const ZKCMSProfile& profile,
                                            const ZKCMSRendering& rendering, QWidget* window)
{
    const QString name = target.Get()->GetDocumentName();
    try {
        const LayerColors before = LayerColors::Of(target.Get());
        LayerColors after;
        WaitedWork::Run(
            window, ProfileMenu::tr("Converting “%1”…").arg(name), true, [&](const FileProgress& progress) {
                const TileThreads::CancelScope scope([&progress] { return !progress.IsCancelled(); });
                after = before.Converted(profile, rendering, progress.setPermille);
            });
        if (!target.Get()) return nullptr;
        return std::unique_ptr<LexoCommand>(ProfileCommands::Convert(target.Get(), before, after));
    } catch (const TileThreads::Cancelled&) {
        return nullptr;
    } catch (const std::exception& error) {
        LXMessageBox::Critical(window, LXResource::GetData(LXResource::ProductName).toString(),
                               ProfileMenu::tr("“%1” can't be converted: %2\nNothing was changed.")
                                   .arg(name, QString::fromUtf8(error.what())));
        return nullptr;
    }
}
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
    const TargetDocument target(m_pWindow->GetActiveView());
    if (!target.IsFree()) return;
    ProfileDialog dialog(ProfileDialog::Purpose::Assign, target.Get()->GetICCProfile(), m_pWindow);
    if (dialog.Exec() != QDialog::Accepted || !target.IsFree()) return;

    target.Push(std::unique_ptr<LexoCommand>(ProfileCommands::Assign(target.Get(), dialog.GetProfile())));
}

void ProfileMenu::Convert()
{
    const TargetDocument target(m_pWindow->GetActiveView());
    if (!target.IsFree()) return;
    ProfileDialog dialog(ProfileDialog::Purpose::Convert, target.Get()->GetICCProfile(), m_pWindow);
    if (dialog.Exec() == QDialog::Accepted && target.IsFree()) {
        ConvertTo(target, dialog.GetProfile(), dialog.GetRendering());
    }
}

void ProfileMenu::ConvertTo(const TargetDocument& target, const ZKCMSProfile& profile,
                            const ZKCMSRendering& rendering)
{
    if (target.Get()->GetICCProfile() == profile) return;
    // What floats is put down before the pixels are read.
    target.LandPieces();
    if (!target.Get() || !target.Get()->Lock()) return;

    std::unique_ptr<LexoCommand> command = MakeConversion(target, profile, rendering, m_pWindow);
    if (target.Get()) target.Get()->Unlock();
    target.Push(std::move(command));
}

void ProfileMenu::UpdateActions()
{
    const bool isFree = m_pDocument && !m_pDocument->GetLockState();
    m_pAssign->setEnabled(isFree);
    m_pConvert->setEnabled(isFree);
}
