#include "fillcan/FillCan_p.h"

#include "IDocumentView.h"
#include "ui_FillCanToolBar.h"
#include "ui_FillCanToolWidget.h"

#include "common/BlendModeTable.h"
#include "common/JoinBothWays.h"
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
#include "gui/PatternSelectWidget.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "utils/ZKIconHelper.h"

#include <QAction>
#include <QDir>
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
constexpr int PatternFillMode = 1;

// Toward minus infinity, since a truncation alone would fold -0.5 into the canvas.
int PixelAt(double coordinate)
{
    return static_cast<int>(coordinate < 0 ? coordinate - 0.999 : coordinate);
}

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

void FillCanPrivate::CreateToolBoxButton()
{
    m_pToolBoxButton = new LToolBoxButton;
    connect(m_pToolBoxButton, &LToolBoxButton::LMousePressed, this, &FillCanPrivate::ToolBoxButtonPressed);
    connect(m_pToolBoxButton, &LToolBoxButton::RMousePressed, this, &FillCanPrivate::ToolBoxButtonPressed);
    m_pToolBoxButton->SetShortcut(QKeySequence(Qt::Key_F));

    auto* action = new QAction(ZKIconHelper::DisabledIcon(QStringLiteral("theme:tool-bar-bucket.png")),
                               tr("Fill can tool"), m_pToolBoxButton);
    action->setCheckable(true);
    action->setChecked(true);
    m_pToolBoxButton->setDefaultAction(action);
    m_pToolBoxButton->setChecked(false);
}

void FillCanPrivate::CreateToolWidget()
{
    m_pToolWidget = new QWidget;
    m_ToolWidgetUi = std::make_unique<Ui::FillCanToolWidget>();
    m_ToolWidgetUi->setupUi(m_pToolWidget);
    m_ToolWidgetUi->m_pBlendCombo->addItems(BlendModeTable::Texts());
}

void FillCanPrivate::CreateToolBar()
{
    m_pToolBar = new QWidget;
    m_ToolBarUi = std::make_unique<Ui::FillCanToolBar>();
    m_ToolBarUi->setupUi(m_pToolBar);
    m_ToolBarUi->m_pBlendCombo->addItems(BlendModeTable::Texts());
    m_pToolBar->setStatusTip(tr(
        "Click fills the area; Shift++ and Shift+- change the blending, Shift+Alt and a letter choose it"));
    m_pToolBar->setWindowIcon(ZKIconHelper::DisabledIcon(QStringLiteral("theme:tool-bar-bucket.png")));

    JoinForms();
    FillPatterns();
    connect(m_ToolWidgetUi->m_pFillModeCmb, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &FillCanPrivate::FillModeChanged);
}

void FillCanPrivate::JoinForms()
{
    const Ui::FillCanToolBar& bar = *m_ToolBarUi;
    const Ui::FillCanToolWidget& panel = *m_ToolWidgetUi;
    JoinBothWays(panel.m_pToleranceSpn, panel.m_pToleranceSldr);
    JoinBothWays(panel.m_pToleranceSpn, bar.m_pToleranceSpn);
    JoinBothWays(panel.m_pOpacitySpn, panel.m_pOpacitySldr);
    JoinBothWays(panel.m_pOpacitySpn, bar.m_pOpacitySpn);
    JoinBothWays(panel.m_pFillModeCmb, bar.m_pFillModeCmb);
    JoinBothWays(panel.m_pBlendCombo, bar.m_pBlendCombo);
    JoinBothWays(panel.m_pIgnoreChb, bar.m_pIgnoreChb);
    JoinBothWays(panel.m_pAntialiasingChb, bar.m_pAntialiasingChb);
    JoinBothWays(panel.m_pContiguousChb, bar.m_pContiguousChb);
    JoinBothWays(panel.m_pAllLayersChb, bar.m_pAllLayersChb);
}

// ---- patterns

void FillCanPrivate::FillPatterns()
{
    m_pSelectPatternBtn = m_ToolBarUi->m_pSelectPatternBtn;
    m_pPatternSelect = new PatternSelectWidget(m_pToolBar);
    for (int i = 0; i < ZKApplication::GetPatternCount(); ++i) {
        const QString file = ZKApplication::GetPatternFile(i);
        m_pPatternSelect->AddItem(file, file.mid(file.lastIndexOf(QDir::separator()) + 1));
    }
    m_pPatternSelect->SelectItem(ZKApplication::GetTexturePatternIndex());
    PatternChanged(m_pPatternSelect->GetCurrentItem());

    m_pPatternSelect->installEventFilter(this);
    connect(m_pPatternSelect, &PatternSelectWidget::CurrentItemChanged, this,
            &FillCanPrivate::PatternChanged);
    connect(m_pPatternSelect, &PatternSelectWidget::ItemDoubleClicked, this,
            &FillCanPrivate::PatternDoubleClicked);
    connect(m_pSelectPatternBtn, &QToolButton::toggled, this, &FillCanPrivate::ShowPatternSelectMenu);
}

void FillCanPrivate::FillModeChanged(int) {}

void FillCanPrivate::PatternChanged(int index)
{
    m_pSelectPatternBtn->setIcon(ZKIconHelper::DisabledIcon(m_pPatternSelect->GetItemImage(index)));
}

void FillCanPrivate::PatternDoubleClicked(int)
{
    m_pSelectPatternBtn->setChecked(false);
}

void FillCanPrivate::ShowPatternSelectMenu(bool show)
{
    if (!show) {
        m_pPatternSelect->hide();
        return;
    }
    m_pPatternSelect->move(m_pSelectPatternBtn->mapToGlobal(QPoint(0, m_pSelectPatternBtn->height() + 1)));
    m_pPatternSelect->show();
    m_pPatternSelect->setFocus();
}

bool FillCanPrivate::eventFilter(QObject* object, QEvent* event)
{
    if (object == m_pPatternSelect) FollowPatternSelect(event->type());
    return LXViewToolBase::eventFilter(object, event);
}

void FillCanPrivate::FollowPatternSelect(QEvent::Type type)
{
    // The bar deletes its button before its pop-up list, which hides then.
    if (!m_pSelectPatternBtn) return;

    if (type == QEvent::Hide) m_pSelectPatternBtn->setChecked(false);
    if (type == QEvent::WindowDeactivate && !IsPatternButtonUnderMouse()) m_pPatternSelect->hide();
}

// A press on the checked button will hide the list by itself; hidden before, it would open again.
bool FillCanPrivate::IsPatternButtonUnderMouse() const
{
    const QPoint position = m_pSelectPatternBtn->mapFromGlobal(QCursor::pos());
    return m_pSelectPatternBtn->isChecked() && m_pSelectPatternBtn->rect().contains(position);
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
    RefreshCursor();
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

FillJobData FillCanPrivate::MakeJobData(const QPointF& scenePos) const
{
    const Ui::FillCanToolBar& bar = *m_ToolBarUi;
    const Ui::FillCanToolWidget& panel = *m_ToolWidgetUi;
    FillJobData data;
    data.position = QPoint(PixelAt(scenePos.x()), PixelAt(scenePos.y()));
    data.opacity = bar.m_pOpacitySpn->value() / 100.0;
    data.antialiasing = bar.m_pAntialiasingChb->isChecked();
    data.contiguous = panel.m_pContiguousChb->isChecked();
    data.allLayers = bar.m_pAllLayersChb->isChecked();
    data.ignoreTransparency = panel.m_pIgnoreChb->isChecked();
    data.layerId = static_cast<unsigned int>(GetCurrentLayerId());
    data.tolerance = panel.m_pToleranceSpn->value();
    data.blendMode = panel.m_pBlendCombo->currentIndex();
    return data;
}

QBrush FillCanPrivate::MakeBrush(const QColor& color) const
{
    if (m_ToolWidgetUi->m_pFillModeCmb->currentIndex() != PatternFillMode) return color;
    // As an image: the job is on another thread, where there are no pixmaps.
    return m_pPatternSelect->GetPattern().textureImage();
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
