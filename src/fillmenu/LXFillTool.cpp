#include "fillmenu/LXFillTool.h"

#include "IDocumentView.h"
#include "fillmenu/FillOperations.h"

#include "common/LXUndefinedOperationProgressTemplate.h"
#include "common/Messages.h"
#include "common/PushCommand.h"
#include "common/Reports.h"
#include "core/ZKApplication.h"
#include "core/ZKMenuManager.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "document/LXDocumentModel.h"
#include "document/LayerKind.h"
#include "document/LayerLocks.h"
#include "gui/LXFillOptionsDialog.h"
#include "gui/LXMdiArea.h"
#include "gui/LayersWidget.h"
#include "gui/LexoAppKeyHook.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "image/BlendMode.h"

#include <QItemSelectionModel>
#include <QMainWindow>

namespace {
constexpr bool ApplyOnPush = true;
constexpr bool IsInDocument = false;

// Places in the menu "Edit".
constexpr int SeparatorPosition = 11;
constexpr int CleanupPosition = 12;
constexpr int FillMenuPosition = 13;

const QKeySequence& ForegroundKey()
{
    static const QKeySequence key(QStringLiteral("Alt+backspace"));
    return key;
}

// Nothing that a command throws may leave its slot.
template <class Work>
void Guard(const QString& failure, Work work)
{
    try {
        work();
        return;
    } catch (const std::exception& exception) {
        Reports::Exception(ZK_HERE, exception);
    } catch (...) {
        Reports::UnknownException(ZK_HERE);
    }
    Messages::ShowOperationError(failure);
}
} // namespace

LXFillTool::LXFillTool(QObject* parent)
    : LXDialogViewToolBase(parent), m_pFillMenu(std::make_unique<QMenu>(tr("&Fill")))
{
    connect(this, &LXViewToolBase::OnDocumentViewChanged, this, &LXFillTool::OnCurrentDocumentChanged);
    connect(this, &LXViewToolBase::CurrentDocumentLocked, this, &LXFillTool::OnDocumentLocked);
}

LXFillTool::~LXFillTool() = default;

// ---- the menus

void LXFillTool::Init(QObject* parent)
{
    LXDialogViewToolBase::Init(parent);
    AddCleanupEntry();
    AddFillMenu();
    UpdateActions();
    connect(LexoAppKeyHook::instance(), &LexoAppKeyHook::UnregisteredActivatedAmbiguously, this,
            &LXFillTool::OnActivatedAmbiguously);
}

void LXFillTool::AddCleanupEntry()
{
    m_pSeparator = new QAction(this);
    m_pSeparator->setSeparator(true);
    m_pCleanup = new QAction(tr("Clean up alpha"), this);
    m_pCleanup->setEnabled(false);
    m_pCleanup->setStatusTip(tr("Makes every pixel of the layer opaque, as far as something is selected"));
    connect(m_pCleanup, &QAction::triggered, this, &LXFillTool::OnCleanupAlpha);

    m_Entries.insert(MainMenuEntry({ZKMenuManager::Edit, SeparatorPosition}, m_pSeparator));
    m_Entries.insert(MainMenuEntry({ZKMenuManager::Edit, CleanupPosition}, m_pCleanup));
}

void LXFillTool::AddFillMenu()
{
    AddFillAction(tr("Foreground"), &LXFillTool::OnForeground, ForegroundKey());
    AddFillAction(tr("Background"), &LXFillTool::OnBackground,
                  QKeySequence(QStringLiteral("Ctrl+backspace")));
    AddFillAction(tr("Transparent"), &LXFillTool::OnTransparent);
    AddFillAction(tr("Custom"), &LXFillTool::OnCustom, QKeySequence(QStringLiteral("Shift+backspace")));
    m_pFillMenu->addSeparator();
    AddFillAction(tr("Dark grey"), &LXFillTool::OnGrey25);
    AddFillAction(tr("Grey"), &LXFillTool::OnGrey50);
    AddFillAction(tr("Light grey"), &LXFillTool::OnGrey75);
    AddFillAction(tr("White"), &LXFillTool::OnWhite);
    AddFillAction(tr("Red"), &LXFillTool::OnRed);
    AddFillAction(tr("Green"), &LXFillTool::OnGreen);
    AddFillAction(tr("Blue"), &LXFillTool::OnBlue);
    AddFillAction(tr("Cyan"), &LXFillTool::OnCyan);
    AddFillAction(tr("Magenta"), &LXFillTool::OnMagenta);
    AddFillAction(tr("Yellow"), &LXFillTool::OnYellow);
    AddFillAction(tr("Black"), &LXFillTool::OnBlack);
    m_Entries.insert(MainMenuEntry({ZKMenuManager::Edit, FillMenuPosition}, m_pFillMenu.get()));
}

QAction* LXFillTool::AddFillAction(const QString& text, Slot slot, const QKeySequence& key)
{
    QAction* action = m_pFillMenu->addAction(text);
    action->setEnabled(false);
    action->setShortcut(key);
    if (!key.isEmpty()) action->setShortcutContext(Qt::ApplicationShortcut);
    connect(action, &QAction::triggered, this, slot);
    return action;
}

MainMenuEntries LXFillTool::GetMainMenuEntries()
{
    return m_Entries;
}

// ---- whether the commands are open

LXFillTool::Target LXFillTool::FindTarget() const
{
    Target target;
    const int id = GetCurrentLayerId();
    if (!GetModel() || id < 0) return target;

    target.layerId = static_cast<unsigned int>(id);
    target.pixels = IsMaskTarget() ? PaintTarget::Mask : PaintTarget::Layer;
    if (!IsOpen(GetDocument(), target.layerId, target.pixels)) return target;

    target.document = GetDocument();
    target.history = GetHistory();
    return target;
}

bool LXFillTool::IsOpen(const LXDocumentInterface* document, unsigned int layerId, PaintTarget pixels)
{
    if (!document || document->GetLockState()) return false;

    const unsigned int locks = document->GetLayerLockFlags(layerId);
    if (pixels == PaintTarget::Mask && (locks & LayerLocks::AgainstMaskPaint) == 0) return true;

    const int kind = document->GetLayerKind(layerId);
    return kind != LayerKind::Text && kind != LayerKind::Adjustment &&
           (locks & LayerLocks::AgainstPaint) == 0;
}

void LXFillTool::UpdateActions()
{
    const bool isOpen = !FindTarget().document.isNull();
    for (const MainMenuEntry& entry : m_Entries) {
        if (entry.pAction) entry.pAction->setEnabled(isOpen);
        if (!entry.pMenu) continue;
        entry.pMenu->menuAction()->setEnabled(isOpen);
        const QList<QAction*> actions = entry.pMenu->actions();
        for (QAction* action : actions) {
            action->setEnabled(isOpen);
        }
    }
}

void LXFillTool::OnCurrentDocumentChanged(IDocumentView*, IDocumentView*)
{
    FollowLayerSelection(GetView() ? GetView()->GetLayerSelection() : nullptr);
    UpdateActions();
}

void LXFillTool::FollowLayerSelection(QItemSelectionModel* selection)
{
    if (m_pLayerSelection) {
        disconnect(m_pLayerSelection, nullptr, this, nullptr);
        disconnect(m_pLayerSelection->model(), nullptr, this, nullptr);
    }
    m_pLayerSelection = selection;
    if (!selection) return;

    const LXDocumentModel* model = GetModel();
    connect(selection, &QItemSelectionModel::selectionChanged, this, &LXFillTool::OnCurrentLayerSelChanged);
    connect(model, &LXDocumentModel::LayerSelectedChanged, this, &LXFillTool::OnLayerSelectionChanged);
    connect(model, &LXDocumentModel::MaskSelectedChanged, this, &LXFillTool::OnMaskSelectionChanged);
    connect(model, &LXDocumentModel::LocksChanged, this, &LXFillTool::OnLayerLocksChanged);
}

void LXFillTool::OnCurrentLayerSelChanged(QItemSelection, QItemSelection)
{
    UpdateActions();
}

void LXFillTool::OnLayerSelectionChanged(bool)
{
    UpdateActions();
}

void LXFillTool::OnMaskSelectionChanged(bool)
{
    UpdateActions();
}

void LXFillTool::OnLayerLocksChanged(uint, uint)
{
    UpdateActions();
}

void LXFillTool::OnDocumentLocked(bool)
{
    UpdateActions();
}

// ---- the commands

bool LXFillTool::IsMaskTarget() const
{
    return GetModel() && GetModel()->GetMaskSelected(GetCurrentLayerId() - 1);
}

void LXFillTool::LandPieces(const Target& target)
{
    if (target.history) target.history->commit();
}

bool LXFillTool::KeepsAlpha(const Target& target)
{
    return (target.document->GetLayerLockFlags(target.layerId) & LayerLocks::Transparency) != 0;
}

void LXFillTool::FillSolid(const QColor& color, const QString& text)
{
    FillSolidOperation operation;
    operation.color = color;
    RunSolid(std::move(operation), text);
}

void LXFillTool::RunSolid(FillSolidOperation operation, const QString& text)
{
    const Target target = FindTarget();
    if (!target.document) return;

    LandPieces(target);
    const bool isMask = target.pixels == PaintTarget::Mask;
    const QString failure = isMask ? tr("Cannot fill mask. Unexpected error occurred.")
                                   : tr("Cannot fill pixels. Unexpected error occurred.");
    Guard(failure, [&] {
        operation.keepAlpha = KeepsAlpha(target);
        operation.pixels = ReadFillPixels(target.document, target.layerId, target.pixels);
        RunFill(target, operation, isMask ? tr("Fill mask:") : tr("Fill a layer:"), failure, text);
    });
}

void LXFillTool::FillCustom(const Target& target, const QBrush& brush, unsigned int mode, double opacity)
{
    LandPieces(target);
    const bool isMask = target.pixels == PaintTarget::Mask;
    const QString failure = isMask ? tr("Cannot fill mask pixels. Unexpected error occurred.")
                                   : tr("Cannot fill pixels. Unexpected error occurred.");
    Guard(failure, [&] {
        FillPixels pixels = ReadFillPixels(target.document, target.layerId, target.pixels);
        if (isMask) {
            MaskFillCustomOperation operation{std::move(pixels), brush, mode, opacity};
            RunFill(target, operation, tr("Fill mask:"), failure, tr("Fill mask"));
        } else {
            LayerFillCustomOperation operation{std::move(pixels), brush, mode, opacity, KeepsAlpha(target)};
            RunFill(target, operation, tr("Fill layer:"), failure, tr("Fill layer"));
        }
    });
}

template <class Operation>
void LXFillTool::RunFill(const Target& target, Operation& operation, const QString& label,
                         const QString& failure, const QString& text)
{
    // Tiles are shared, so this is no copy of the pixels.
    const FillPixels before = operation.pixels;
    LXUndefinedOperationProgressTemplate<Operation> progress(operation, LXMdiArea::MainWindow());
    progress.SetProgressLabel(label);
    progress.Execute();
    if (!target.document) return;
    if (operation.error) {
        Messages::ShowOperationError(failure);
        return;
    }
    const PaintChange change = MakePaintChange(before, operation.pixels.image);
    Push(target, MakePaintCommand(target.document, before.target, change, ApplyOnPush), text);
}

void LXFillTool::Push(const Target& target, std::unique_ptr<LexoCommand> command, const QString& text)
{
    command->setText(text);
    PushCommand(target.history, std::move(command));
}

void LXFillTool::OnForeground()
{
    FillSolid(IsMaskTarget() ? ZKApplication::GetMaskForeground() : ZKApplication::GetForeground(),
              tr("Fill with foreground"));
}

void LXFillTool::OnBackground()
{
    FillSolid(IsMaskTarget() ? ZKApplication::GetMaskBackground() : ZKApplication::GetBackground(),
              tr("Fill with background"));
}

void LXFillTool::OnTransparent()
{
    const Target target = FindTarget();
    if (!target.document) return;

    const QString text = tr("Fill with transparent");
    const bool isMask = target.pixels == PaintTarget::Mask;
    // The panel would take alpha away in spite of the lock on it.
    const bool keepsAlpha = !isMask && KeepsAlpha(target);
    if (target.document->HasSelection() && !keepsAlpha) {
        Guard(tr("Cannot fill pixels. Unexpected error occurred."),
              [&] { LayersWidget::GetInstance()->DeleteSelection(text); });
        return;
    }
    if (isMask) {
        FillSolid(Qt::black, text);
        return;
    }
    FillSolidOperation operation;
    operation.clear = true;
    RunSolid(std::move(operation), text);
}

void LXFillTool::OnCustom()
{
    const Target target = FindTarget();
    if (!target.document) return;

    LXFillOptionsDialog dialog(LXMdiArea::MainWindow());
    dialog.SetRenderOptionsVisible(false);
    if (dialog.Exec() != QDialog::Accepted || !IsOpen(target.document, target.layerId, target.pixels)) return;

    constexpr double percent = 100.0;
    const bool isMask = target.pixels == PaintTarget::Mask;
    FillCustom(target, isMask ? dialog.GetContentsMaskBrush() : dialog.GetContentsBrush(),
               static_cast<unsigned int>(dialog.GetCompositionMode()), dialog.GetOpacity() / percent);
}

void LXFillTool::OnGrey25()
{
    FillSolid(Qt::darkGray, tr("Fill with dark grey"));
}

void LXFillTool::OnGrey50()
{
    const Target target = FindTarget();
    if (target.document) FillCustom(target, QBrush(Qt::gray), BlendMode::Normal, 1.0);
}

void LXFillTool::OnGrey75()
{
    FillSolid(Qt::lightGray, tr("Fill with light grey"));
}

void LXFillTool::OnWhite()
{
    FillSolid(Qt::white, tr("Fill with white"));
}

void LXFillTool::OnRed()
{
    FillSolid(Qt::red, tr("Fill with red"));
}

void LXFillTool::OnGreen()
{
    FillSolid(Qt::green, tr("Fill with green"));
}

void LXFillTool::OnBlue()
{
    FillSolid(Qt::blue, tr("Fill with blue"));
}

void LXFillTool::OnCyan()
{
    FillSolid(Qt::cyan, tr("Fill with cyan"));
}

void LXFillTool::OnMagenta()
{
    FillSolid(Qt::magenta, tr("Fill with magenta"));
}

void LXFillTool::OnYellow()
{
    FillSolid(Qt::yellow, tr("Fill with yellow"));
}

void LXFillTool::OnBlack()
{
    FillSolid(Qt::black, tr("Fill with black"));
}

void LXFillTool::OnActivatedAmbiguously(QKeySequence key, int)
{
    if (key.matches(ForegroundKey()) == QKeySequence::ExactMatch) OnForeground();
}

// ---- cleaning up

// With its mask as the target a layer may be locked, or not consist of pixels, and the commands be open.
bool LXFillTool::MayCleanUp(const Target& target)
{
    if ((target.document->GetLayerLockFlags(target.layerId) & LayerLocks::AgainstPaint) != 0) {
        Messages::ShowWarning(GetView(), tr("Cannot fill. Layer is locked."));
        return false;
    }
    if (target.document->GetLayerKind(target.layerId) != LayerKind::Raster) {
        Messages::ShowWarning(GetView(), tr("Cannot rasterize. Pixel data are not editable."));
        return false;
    }
    return true;
}

void LXFillTool::OnCleanupAlpha()
{
    const Target target = FindTarget();
    if (!target.document) return;

    LandPieces(target);
    if (!MayCleanUp(target)) return;
    Guard(tr("Cannot cleans up alpha. Unexpected error occurred."), [&] { CleanUp(target); });
}

void LXFillTool::CleanUp(const Target& target)
{
    const FillPixels before = ReadFillPixels(target.document, target.layerId, PaintTarget::Layer);
    CleanupAlphaOperation operation{before};
    LXUndefinedOperationProgressTemplate<CleanupAlphaOperation> progress(operation, LXMdiArea::MainWindow());
    progress.SetProgressLabel(tr("Clean up alpha:"));
    progress.Execute();
    LXDocumentInterface* document = target.document;
    if (!document) return;
    if (operation.error) {
        Messages::ShowOperationError(tr("Cannot cleans up alpha. Unexpected error occurred."));
        return;
    }
    {
        const LXDocumentLayerLockerForWrite locker(document, before.layerId);
        *document->GetLayerImage(before.layerId) = operation.pixels.image;
    }
    const QRect changed = before.workRect.translated(before.geometry.topLeft());
    if (!before.workRect.isEmpty()) document->LayerImageChanged(before.layerId, changed);

    const PaintChange change{before.layerId, before.image, operation.pixels.image, before.geometry,
                             before.geometry};
    Push(target, MakePaintCommand(document, PaintTarget::Layer, change, IsInDocument), tr("Clean up alpha"));
}
