#include "fillcan/FillCan_p.h"

#include "IDocumentView.h"
#include "ui_FillCanToolBar.h"
#include "ui_FillCanToolWidget.h"

#include "common/Messages.h"
#include "common/PushCommand.h"
#include "common/Reports.h"
#include "core/ZKActivateAction.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LayerKind.h"
#include "document/LayerLocks.h"
#include "fillcan/FillCanProgress.h"
#include "fillcan/FillCommand.h"
#include "gui/LToolBoxButton.h"
#include "gui/LXMdiArea.h"
#include "gui/LexoAppKeyHook.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "utils/ZKIconHelper.h"

#include <QItemSelectionModel>
#include <QMainWindow>
#include <QTimer>
#include <QTimerEvent>
#include <QtConcurrentRun>

namespace {
const QLatin1String ActiveKey("FillCanTool/Active");

constexpr int ToolBoxPosition = 7;
constexpr QPoint CursorHotSpot(3, 17);
constexpr int WaitBeforeProgress = 1000;

bool IsInside(const QPointF& scenePos, const QSize& size)
{
    return scenePos.x() >= 0 && scenePos.y() >= 0 && scenePos.x() < size.width() &&
           scenePos.y() < size.height();
}
} // namespace

FillCanPrivate::FillCanPrivate(QObject* parent)
    : LXViewToolBase(parent, false), m_pWatcher(new QFutureWatcher<FillJobResult>(this)), m_Work(*this)
{
    connect(this, &LXViewToolBase::OnActivate, this, &FillCanPrivate::ActivateSlot);
    connect(this, &LXViewToolBase::OnDocumentViewChange, this, &FillCanPrivate::FinishJobNow);
    connect(this, &LXViewToolBase::OnDocumentViewChanged, this, &FillCanPrivate::DocumentViewChangedSlot);
    connect(this, qOverload<QPointF, Qt::MouseButtons>(&LXViewToolBase::OnMousePress), this,
            &FillCanPrivate::OnMousePressSlot);
    connect(m_pWatcher, &QFutureWatcherBase::resultReadyAt, this, &FillCanPrivate::OnJobReady);
    connect(m_pWatcher, &QFutureWatcherBase::finished, this, &FillCanPrivate::OnJobFinished);
}

FillCanPrivate::~FillCanPrivate()
{
    DropJob();
    UpdateToolUi(false);
    SetToolBox(nullptr);
    delete m_pToolBoxButton;
    delete m_pToolBar;
    delete m_pToolWidget;
}

// ---- settings and lists

void FillCanPrivate::SaveSettings()
{
    ZKApplication::SetUserValue(ActiveKey, GetActivateAction()->IsChecked());
}

void FillCanPrivate::LoadSettings()
{
    const bool active = ZKApplication::GetUserValue(ActiveKey, false).toBool();
    GetActivateAction()->SetChecked(active);
    m_pToolBoxButton->setChecked(active);
}

QList<QAction*> FillCanPrivate::GetMenuActions()
{
    return {};
}

QList<QAction*> FillCanPrivate::GetToolBarActions()
{
    return m_ToolBarActions;
}

MainMenuEntries FillCanPrivate::GetMainMenuEntries()
{
    return m_MenuEntries;
}

// ---- widgets

QWidget* FillCanPrivate::GetToolWidget()
{
    return m_pToolWidget;
}

QWidget* FillCanPrivate::GetToolBar()
{
    return m_pToolBar;
}

LToolBoxButton* FillCanPrivate::GetToolBoxButton()
{
    return m_pToolBoxButton;
}

int FillCanPrivate::GetToolBoxPosition()
{
    return ToolBoxPosition;
}

// ---- cursor and target

FillCanPrivate::Target FillCanPrivate::CheckTarget() const
{
    const int id = GetCurrentLayerId();
    const LXDocumentInterface* document = GetDocument();
    const LXDocumentModel* model = GetModel();
    if (id < 0 || !document || !model) return Target::None;

    const auto layerId = static_cast<unsigned int>(id);
    const unsigned int locks = document->GetLayerLockFlags(layerId);
    if (model->GetMaskSelected(id - 1))
        return locks & LayerLocks::AgainstMaskPaint ? Target::Locked : Target::Paintable;
    if (document->GetLayerKind(layerId) != LayerKind::Raster) return Target::NotPixels;
    return locks & LayerLocks::AgainstPaint ? Target::Locked : Target::Paintable;
}

QCursor FillCanPrivate::GetCursor()
{
    if (CheckTarget() != Target::Paintable) return Qt::ForbiddenCursor;
    return {ZKIconHelper::ThemePixmap(QStringLiteral("theme:bucket_cursor.png")), CursorHotSpot.x(),
            CursorHotSpot.y()};
}

void FillCanPrivate::OnEnter(QEvent*)
{
    // The hand of a view that is being panned stays; the base shows the cursor afterwards.
    const IDocumentView* view = GetDocumentView();
    if (view && !view->IsPanning()) RefreshCursor();
}

void FillCanPrivate::DocumentViewChangedSlot(IDocumentView*, IDocumentView*)
{
    disconnect(m_LayerSelection);
    if (!GetView()) return;
    m_LayerSelection = connect(GetView()->GetLayerSelection(), &QItemSelectionModel::selectionChanged, this,
                               &FillCanPrivate::OnCurrentLayerSelChanged);
}

void FillCanPrivate::OnCurrentLayerSelChanged(QItemSelection, QItemSelection)
{
    if (IsActive() && IsMouseInView()) OnEnter(nullptr);
}

// ---- shortcuts of the blend modes

void FillCanPrivate::ActivateSlot(bool active)
{
    LexoAppKeyHook* hook = LexoAppKeyHook::instance();
    disconnect(hook, nullptr, this, nullptr);
    m_BlendShortcuts.Delete();
    if (!active) return;

    m_BlendShortcuts.Create(LXMdiArea::MainWindow());
    connect(hook, &LexoAppKeyHook::ShortcutActivated, this, &FillCanPrivate::OnShortcutActivated);
    connect(hook, &LexoAppKeyHook::ShortcutActivatedAmbiguously, this, &FillCanPrivate::OnShortcutActivated);
}

void FillCanPrivate::OnShortcutActivated(QKeySequence key, int)
{
    QComboBox* combo = m_ToolWidgetUi->m_pBlendCombo;
    const int index = BlendShortcuts::IndexFor(key, combo->currentIndex());
    if (index >= 0 && combo->isEnabled()) combo->setCurrentIndex(index);
}

// ---- a click and its job

void FillCanPrivate::OnMousePressSlot(QPointF scenePos, Qt::MouseButtons buttons)
{
    if (buttons != Qt::LeftButton || !IsInside(scenePos, GetDocumentSize())) return;

    switch (CheckTarget()) {
    case Target::None: return;
    case Target::Locked: Messages::ShowWarning(GetView(), tr("Cannot fill. Layer is locked.")); return;
    case Target::NotPixels:
        Messages::ShowWarning(GetView(), tr("Cannot rasterize. Pixel data are not editable."));
        return;
    case Target::Paintable: break;
    }
    FinishJobNow();
    // A floating piece lands before the pixels are read.
    if (LexoUndoStack* history = GetHistory()) history->commit();
    // Somebody else works on the document: nothing may change it now.
    if (GetDocument()->GetLockState()) return;
    StartWork(StartJob(scenePos));
}

// A future without a result when neither the mask nor the pixels of the layer are the target.
QFuture<FillJobResult> FillCanPrivate::StartJob(const QPointF& scenePos)
{
    const LXDocumentInterface* document = GetDocument();
    FillJobData data = MakeJobData(scenePos);
    const int row = GetCurrentLayerId() - 1;
    if (GetModel()->GetMaskSelected(row)) {
        data.brush = MakeBrush(ZKApplication::GetMaskForeground());
        document->GetMaskInverted(data.layerId, &data.maskReveals);
        return QtConcurrent::run(RunMaskFillJob, document, data);
    }
    if (GetModel()->GetLayerSelected(row)) {
        data.brush = MakeBrush(ZKApplication::GetForeground());
        return QtConcurrent::run(RunLayerFillJob, document, data);
    }
    return {};
}

void FillCanPrivate::StartWork(const QFuture<FillJobResult>& job)
{
    m_pWatcher->setFuture(job);
    m_bResultPending = true;
    if (!m_Work.BeginWork()) {
        DropJob();
        return;
    }
    m_WaitTimer = startTimer(WaitBeforeProgress, Qt::CoarseTimer);
    m_DocumentClose =
        connect(GetDocument(), &LXDocumentInterface::AboutToClose, this, &FillCanPrivate::DropJob);
}

void FillCanPrivate::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_WaitTimer) {
        LXViewToolBase::timerEvent(event);
        return;
    }
    StopWaitTimer();
    m_Work.RestoreCursor();

    const QPointer<FillCanPrivate> self(this);
    FillCanProgress progress(nullptr);
    m_pProgress = &progress;
    progress.activateWindow();
    progress.Exec();
    if (self) m_pProgress = nullptr;
}

void FillCanPrivate::StopWaitTimer()
{
    if (m_WaitTimer < 0) return;

    killTimer(m_WaitTimer);
    m_WaitTimer = -1;
}

void FillCanPrivate::OnJobReady(int index)
{
    if (!PushResult(m_pWatcher->resultAt(index))) ShowFailure();
}

// False when the fill failed, which is in the log then.
bool FillCanPrivate::PushResult(const FillJobResult& result)
{
    m_bResultPending = false;
    if (result.error != 0) return false;

    try {
        PushCommand(GetDocumentView()->GetHistory(), MakeFillCommand(GetDocument(), result));
        return true;
    } catch (const std::exception& exception) {
        Reports::Exception(ZK_PLACE(501, "src/fillcan/FillCan_p"), exception);
    } catch (...) {
        Reports::UnknownException(ZK_PLACE(506, "src/fillcan/FillCan_p"));
    }
    return false;
}

void FillCanPrivate::ShowFailure()
{
    Messages::ShowOperationError(tr("Cannot fill. Unexpected error occurred."));
}

void FillCanPrivate::OnJobFinished()
{
    StopWaitTimer();
    disconnect(m_DocumentClose);
    m_bResultPending = false;
    if (m_pProgress) m_pProgress->close();
    m_Work.EndWork();
    // The result's images would outlive the document. An empty future counts as cancelled.
    if (!m_pWatcher->isCanceled()) m_pWatcher->setFuture(QFuture<FillJobResult>());
}

// The tool is about to leave the document, or to start the next job.
void FillCanPrivate::FinishJobNow()
{
    if (!m_Work.IsWorking()) return;

    QFuture<FillJobResult> job = m_pWatcher->future();
    job.waitForFinished();
    // The message waits for the event loop: the caller is in the middle of something else.
    if (m_bResultPending && job.resultCount() > 0 && !PushResult(job.result())) {
        QTimer::singleShot(0, this, &FillCanPrivate::ShowFailure);
    }
    ForgetJob();
}

void FillCanPrivate::DropJob()
{
    m_pWatcher->waitForFinished();
    ForgetJob();
}

// The watcher's signals of the job would come too late.
void FillCanPrivate::ForgetJob()
{
    m_pWatcher->setFuture(QFuture<FillJobResult>());
    OnJobFinished();
}
