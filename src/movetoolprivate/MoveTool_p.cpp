#include "movetoolprivate/MoveTool_p.h"

#include "IDocumentView.h"
#include "ZKActivateActionByMember.h"
#include "movetoolprivate/CopyPasteThread.h"
#include "ui_MoveToolBar.h"

#include "common/CursorAfterPanning.h"
#include "common/Reports.h"
#include "core/ZKApplication.h"
#include "core/ZKToolBarManager.h"
#include "core/ZKToolGroupManager.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/LToolBoxButton.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LXDragGuide.h"
#include "gui/LexoAppKeyHook.h"
#include "gui/ZKDocumentView.h"
#include "utils/ZKIconHelper.h"

#include <QActionGroup>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QItemSelectionModel>

#include <utility>

namespace {
const QLatin1String ActiveKey("MoveTool/Active");
const QLatin1String IconName("theme:move_tool.png");
const QLatin1String CursorName("theme:move_tool_cursor.png");

constexpr int ToolBoxPosition = 1;
constexpr int HotSpotInTheMiddle = -1;
} // namespace

MoveToolPrivate::MoveToolPrivate(QObject* parent)
    : QObject(parent),
      m_pActivateAction(
          new ZKActivateActionByMember<MoveToolPrivate>(this, this, &MoveToolPrivate::IsAllowChange))
{
    ZKToolGroupManager::Add(m_pActivateAction);
    connect(m_pActivateAction, &ZKActivateAction::Toggled, this, &MoveToolPrivate::OnExplicitlyActivated);
    connect(m_pActivateAction, &ZKActivateAction::ImplicitToggled, this,
            &MoveToolPrivate::OnImplicitlyActivated);

    CreateToolBar();
    CreateToolButton();
    CreateShortcuts();

    // For the tool's whole life: Ctrl calls it, and Return puts down, while another tool is active.
    LexoAppKeyHook* hook = LexoAppKeyHook::instance();
    connect(hook, &LexoAppKeyHook::KeyPressed, this, &MoveToolPrivate::KeyPressEvent);
    connect(hook, &LexoAppKeyHook::KeyReleased, this, &MoveToolPrivate::KeyReleaseEvent);
}

MoveToolPrivate::~MoveToolPrivate()
{
    // Asked first: without a drag the view is left alone, which may be gone by now.
    if (m_bDragging) AbandonDrag();
    m_Frame.Remove();
    while (!m_Views.empty()) {
        LandRecord(*m_Views.begin()->second);
    }
    SetToolBox(nullptr);
    for (const QPointer<LXShortcut>& shortcut : qAsConst(m_Shortcuts)) {
        delete shortcut;
    }
    delete m_pToolButton;
    delete m_pToolBar;
}

// ---- forms and settings

void MoveToolPrivate::CreateToolBar()
{
    m_pToolBar = new QWidget;
    m_ToolBarUi = std::make_unique<Ui::MoveToolBar>();
    m_ToolBarUi->setupUi(m_pToolBar);
    m_pToolBar->setWindowTitle(tr("Move toolbar"));
    m_pToolBar->setStatusTip(
        tr("Drag moves layers, or the selected pixels; Alt moves a copy; Ctrl+arrows nudge the selection"));
    m_ToolBarUi->m_pPictureLabelMain->setPixmap(
        ZKIconHelper::DisabledIcon(IconName).pixmap(m_ToolBarUi->m_pPictureLabelMain->maximumSize()));
    m_ToolBarUi->m_pShowTransformControls->setEnabled(false);
    connect(m_ToolBarUi->m_pShowTransformControls, &QCheckBox::toggled, this,
            &MoveToolPrivate::OnShowTransformControls);
}

void MoveToolPrivate::CreateToolButton()
{
    m_pToolButton = new LToolBoxButton;
    connect(m_pToolButton, &LToolBoxButton::LMousePressed, this, &MoveToolPrivate::ToolButtonPressed);
    connect(m_pToolButton, &LToolBoxButton::RMousePressed, this, &MoveToolPrivate::ToolButtonPressed);
    m_pToolButton->SetShortcut(QKeySequence(Qt::Key_V));

    m_pMenu = std::make_unique<QMenu>();
    auto* group = new QActionGroup(m_pMenu.get());
    group->setExclusive(true);
    QAction* action = m_pMenu->addAction(ZKIconHelper::DisabledIcon(IconName), tr("Move tool"));
    action->setCheckable(true);
    action->setChecked(true);
    group->addAction(action);
    connect(m_pMenu.get(), &QMenu::triggered, m_pToolButton.data(), &QToolButton::setDefaultAction);
    m_pToolButton->setDefaultAction(action);
    m_pToolButton->setChecked(false);
}

void MoveToolPrivate::SetToolBox(LToolBoxWidget* toolBox)
{
    if (toolBox == m_pToolBox) return;

    if (m_pToolBox && m_pToolButton) m_pToolBox->RemoveButton(m_pToolButton);
    m_pToolBox = toolBox;
    if (m_pToolBox) m_pToolBox->AddToolButton(m_pToolButton, ToolBoxPosition);
}

void MoveToolPrivate::SetToolBarManager(ZKToolBarManager*)
{
    ZKToolBarManager::Add(m_pToolBar, m_pToolBar->windowTitle());
}

void MoveToolPrivate::SaveSettings()
{
    ZKApplication::SetUserValue(ActiveKey, m_pActivateAction->IsChecked());
}

void MoveToolPrivate::LoadSettings()
{
    const bool active = ZKApplication::GetUserValue(ActiveKey, true).toBool();
    m_pActivateAction->SetChecked(active);
    m_pToolButton->setChecked(active);
}

// ---- activation

void MoveToolPrivate::ToolButtonPressed(LToolBoxButton*)
{
    if (!m_pActivateAction->IsChecked()) ZKToolGroupManager::Activate(m_pActivateAction);
}

void MoveToolPrivate::OnExplicitlyActivated(bool checked)
{
    OnImplicitlyActivated(checked);
}

void MoveToolPrivate::OnImplicitlyActivated(bool)
{
    // A turn that Ctrl gives for a moment leaves button and option bar as they are.
    const bool isChosen = m_pActivateAction->IsChecked();
    m_pToolButton->setChecked(isChosen);
    if (isChosen) ZKToolBarManager::Activate(m_pToolBar);
    Activate(m_pActivateAction->IsImplicitlyChecked());
    UpdateFrame();
}

bool MoveToolPrivate::Activate(bool active)
{
    if (!active) {
        Deactivate();
        return true;
    }
    if (m_bActive) return true;
    if (m_pDocumentView && (m_pDocumentView->GetState() & IDocumentView::LockBit)) return false;

    m_bActive = true;
    if (m_pDocumentView) TakeView();
    return true;
}

void MoveToolPrivate::Deactivate()
{
    if (!m_bActive) return;

    if (m_pDocumentView) LeaveView();
    m_bActive = false;
    m_LockCode = 0;
    m_PathPair = MoveViewState::NoPaths();
}

// ---- the current view

bool MoveToolPrivate::SetDocumentView(IDocumentView* view)
{
    if (view == m_pDocumentView) return true;

    if (m_bActive && m_pDocumentView) LeaveView();
    m_pDocumentView = nullptr;
    m_LockCode = 0;
    FollowDocument(nullptr);
    if (m_bActive && view && (view->GetState() & IDocumentView::LockBit)) {
        Reports::Condition(ZK_HERE, QStringLiteral("Internal error: set locked document."));
        return false;
    }

    m_pDocumentView = view;
    FollowDocument(GetDocument());
    if (m_bActive && m_pDocumentView) TakeView();
    UpdateFrameControl();
    return true;
}

void MoveToolPrivate::TakeView()
{
    if (QGraphicsScene* scene = m_pDocumentView->Scene()) scene->installEventFilter(this);
    connect(GetView(), &ZKDocumentView::PanningEnabled, this, &MoveToolPrivate::OnPanningEnabled);
    if (!m_pDocumentView->IsPanning()) TakeCursor();

    const LXDocumentModel* model = GetModel();
    connect(model, &LXDocumentModel::MaskSelectedChanged, this, &MoveToolPrivate::OnMaskSelectionChanged);
    connect(GetView()->GetLayerSelection(), &QItemSelectionModel::selectionChanged, this,
            &MoveToolPrivate::OnSelectionChanged);
    connect(model, &LXDocumentModel::LayerPositionChanged, this, &MoveToolPrivate::OnLayerPositionChanged);
    connect(model, &LXDocumentModel::MaskPositionChanged, this, &MoveToolPrivate::OnLayerPositionChanged);
    connect(model, &LXDocumentModel::LayerDataChanged, this, &MoveToolPrivate::OnLayerDataChanged);
    connect(model, &LXDocumentModel::LayerMaskChanged, this, &MoveToolPrivate::OnLayerDataChanged);
    UpdateFrameControl();
    UpdateFrame();
}

void MoveToolPrivate::LeaveView()
{
    if (m_bDragging) AbandonDrag();
    m_Frame.Remove();
    disconnect(GetModel(), nullptr, this, nullptr);
    disconnect(GetView()->GetLayerSelection(), nullptr, this, nullptr);
    GiveCursorBack();
    if (QGraphicsScene* scene = m_pDocumentView->Scene()) scene->removeEventFilter(this);
}

void MoveToolPrivate::TakeCursor()
{
    if (!m_bHasCursor) m_SavedCursor = m_pDocumentView->Cursor();
    m_bHasCursor = true;
    m_pDocumentView->SetCursor(
        QCursor(ZKIconHelper::ThemePixmap(CursorName), HotSpotInTheMiddle, HotSpotInTheMiddle));
}

void MoveToolPrivate::GiveCursorBack()
{
    ZKDocumentView* view = GetView();
    disconnect(view, &ZKDocumentView::PanningEnabled, this, &MoveToolPrivate::OnPanningEnabled);
    if (!m_bHasCursor) return;

    m_bHasCursor = false;
    const QCursor cursor = std::exchange(m_SavedCursor, QCursor());
    if (m_pDocumentView->IsPanning()) {
        SetCursorAfterPanning(view, cursor);
    } else {
        m_pDocumentView->SetCursor(cursor);
    }
}

void MoveToolPrivate::OnPanningEnabled(bool enabled)
{
    // The view shows the hand by itself, and afterwards the cursor that it had before.
    if (!enabled) TakeCursor();
}

// The document whose lock switches the shortcuts; null for none.
void MoveToolPrivate::FollowDocument(LXDocumentInterface* document)
{
    if (m_pFollowed) {
        disconnect(m_pFollowed, &LXDocumentInterface::Locked, this, &MoveToolPrivate::OnDocumentLocked);
        disconnect(m_pFollowed, &LXDocumentInterface::Unlocked, this, &MoveToolPrivate::OnDocumentUnlocked);
    }
    m_pFollowed = document;
    if (m_pFollowed) {
        connect(m_pFollowed, &LXDocumentInterface::Locked, this, &MoveToolPrivate::OnDocumentLocked);
        connect(m_pFollowed, &LXDocumentInterface::Unlocked, this, &MoveToolPrivate::OnDocumentUnlocked);
    }
    EnableShortcuts(m_pFollowed && !m_pFollowed->GetLockState());
}

LXDocumentInterface* MoveToolPrivate::GetDocument() const
{
    return m_pDocumentView ? m_pDocumentView->GetDocument() : nullptr;
}

ZKDocumentView* MoveToolPrivate::GetView() const
{
    return m_pDocumentView ? m_pDocumentView->GetDocumentView() : nullptr;
}

LXDocumentModel* MoveToolPrivate::GetModel() const
{
    return m_pDocumentView ? GetView()->GetModel() : nullptr;
}

LexoUndoStack* MoveToolPrivate::GetHistory() const
{
    return m_pDocumentView ? m_pDocumentView->GetHistory() : nullptr;
}

QList<int> MoveToolPrivate::SelectedRows() const
{
    QList<int> rows;
    if (!m_pDocumentView) return rows;
    const QModelIndexList indexes = GetView()->GetLayerSelection()->selectedRows(0);
    for (const QModelIndex& index : indexes) {
        rows.append(index.row());
    }
    return rows;
}

// ---- the frame

void MoveToolPrivate::UpdateFrame()
{
    const QCheckBox* control = m_ToolBarUi->m_pShowTransformControls;
    const bool isWanted = m_bActive && m_pDocumentView && control->isChecked() && control->isEnabled();
    if (isWanted) {
        m_Frame.Show(m_pDocumentView->Scene(), MoveFrame::RectAround(*GetModel(), SelectedRows()));
    } else {
        m_Frame.Remove();
    }
}

void MoveToolPrivate::UpdateFrameControl()
{
    const bool canFrame = m_pDocumentView && MoveFrame::CanFrame(*GetModel(), SelectedRows());
    m_ToolBarUi->m_pShowTransformControls->setEnabled(canFrame);
}

void MoveToolPrivate::OnMaskSelectionChanged(bool)
{
    UpdateFrameControl();
    UpdateFrame();
}

void MoveToolPrivate::OnSelectionChanged(const QItemSelection&, const QItemSelection&)
{
    UpdateFrameControl();
    UpdateFrame();
}

void MoveToolPrivate::OnShowTransformControls(bool)
{
    UpdateFrame();
}

void MoveToolPrivate::OnLayerPositionChanged(uint, const QPoint&)
{
    // The drag itself carries the frame along.
    if (!m_bDragging) UpdateFrame();
}

void MoveToolPrivate::OnLayerDataChanged(uint)
{
    if (!m_bDragging) UpdateFrame();
}

// ---- events

bool MoveToolPrivate::eventFilter(QObject* object, QEvent* event)
{
    // Never eats an event: scene items live on the same ones.
    if (!m_pDocumentView || object != m_pDocumentView->Scene()) return false;

    const auto mouse = [event] { return static_cast<const QGraphicsSceneMouseEvent*>(event); };
    switch (event->type()) {
    case QEvent::GraphicsSceneMousePress:
    // The second press of two quick ones.
    case QEvent::GraphicsSceneMouseDoubleClick: OnPress(mouse()); break;
    case QEvent::GraphicsSceneMouseMove: OnMove(mouse()); break;
    case QEvent::GraphicsSceneMouseRelease: OnRelease(mouse()); break;
    default: break;
    }
    return false;
}
