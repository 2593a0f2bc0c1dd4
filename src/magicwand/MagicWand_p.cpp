#include "magicwand/MagicWand_p.h"

#include "IDocumentView.h"
#include "ZKActivateActionByMember.h"
#include "ui_MWSelectionToolBar.h"
#include "ui_MWToolWidget.h"

#include "common/CursorAfterPanning.h"
#include "core/ZKApplication.h"
#include "core/ZKToolBarManager.h"
#include "core/ZKToolGroupManager.h"
#include "document/LXDocumentInterface.h"
#include "gui/LToolBoxButton.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LXToolWidgetManager.h"
#include "gui/LexoAppKeyHook.h"
#include "gui/ZKDocumentView.h"

#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGuiApplication>

#include <utility>

namespace {
const QLatin1String ActiveKey("MagicWandTool/Active");
const QLatin1String ToleranceKey("MagicWandTool/Tolerance");
const QLatin1String ModeKey("MagicWandTool/Mode");
const QLatin1String SampleAllKey("MagicWandTool/SampleAll");
const QLatin1String ContiguousKey("MagicWandTool/Contiguous");

constexpr int ToolBoxPosition = 2;
constexpr int DefaultTolerance = 32;
} // namespace

MagicWandPrivate::MagicWandPrivate(QObject* parent)
    : QObject(parent),
      m_pActivateAction(
          new ZKActivateActionByMember<MagicWandPrivate>(this, this, &MagicWandPrivate::AllowDeactivate)),
      m_pContextMenu(std::make_unique<QMenu>())
{
    ZKToolGroupManager::Add(m_pActivateAction);
    connect(m_pActivateAction, &ZKActivateAction::Toggled, this, &MagicWandPrivate::OnExplicitlyActivated);
    connect(m_pActivateAction, &ZKActivateAction::ImplicitToggled, this,
            &MagicWandPrivate::OnImplicitlyActivated);

    CreateToolWidget();
    CreateToolBar();
    CreateToolButton();

    ZKApplication* application = ZKApplication::GetInstance();
    connect(application, &ZKApplication::RefineSelectionRegistered, this,
            &MagicWandPrivate::OnRefineRegistered);
    OnRefineRegistered(application->GetRefineSelection());
}

MagicWandPrivate::~MagicWandPrivate()
{
    // Asked first: without a gesture the view is left alone, which may be gone by now.
    if (m_bInputCaptured || m_pLockedDocument) AbandonGesture();
    LXToolWidgetManager::instance()->RemoveWidget(m_pToolWidget);
    SetToolBox(nullptr);
    delete m_pToolButton;
    delete m_pToolBarWidget;
    delete m_pToolWidget;
}

// ---- handing over and settings

void MagicWandPrivate::SetToolBox(LToolBoxWidget* toolBox)
{
    if (toolBox == m_pToolBox) return;

    if (m_pToolBox && m_pToolButton) m_pToolBox->RemoveButton(m_pToolButton);
    m_pToolBox = toolBox;
    if (m_pToolBox) m_pToolBox->AddToolButton(m_pToolButton, ToolBoxPosition);
}

void MagicWandPrivate::SetToolBarManager(ZKToolBarManager*)
{
    ZKToolBarManager::Add(m_pToolBarWidget, m_pToolBarWidget->windowTitle());
}

void MagicWandPrivate::SaveSettings()
{
    const Ui::MWToolWidget& panel = *m_ToolWidgetUi;
    ZKApplication::SetUserValue(ActiveKey, m_pActivateAction->IsChecked());
    ZKApplication::SetUserValue(ToleranceKey, panel.m_pToleranceSpin->value());
    ZKApplication::SetUserValue(ModeKey, panel.m_pModeCombo->currentIndex());
    ZKApplication::SetUserValue(SampleAllKey, panel.m_pSampleAllLayers->isChecked());
    ZKApplication::SetUserValue(ContiguousKey, panel.m_pContiguousAreas->isChecked());
}

void MagicWandPrivate::LoadSettings()
{
    const Ui::MWToolWidget& panel = *m_ToolWidgetUi;
    panel.m_pToleranceSpin->setValue(ZKApplication::GetUserValue(ToleranceKey, DefaultTolerance).toInt());
    const int mode = ZKApplication::GetUserValue(ModeKey, 0).toInt();
    // A row that a damaged file names would leave the combo empty.
    if (mode >= 0 && mode < panel.m_pModeCombo->count()) panel.m_pModeCombo->setCurrentIndex(mode);
    panel.m_pSampleAllLayers->setChecked(ZKApplication::GetUserValue(SampleAllKey, true).toBool());
    panel.m_pContiguousAreas->setChecked(ZKApplication::GetUserValue(ContiguousKey, true).toBool());
    const bool active = ZKApplication::GetUserValue(ActiveKey, false).toBool();
    m_pActivateAction->SetChecked(active);
    m_pToolButton->setChecked(active);
}

// ---- activation

void MagicWandPrivate::ToolButtonPressed(LToolBoxButton*)
{
    if (!m_pActivateAction->IsChecked()) ZKToolGroupManager::Activate(m_pActivateAction);
}

void MagicWandPrivate::OnExplicitlyActivated(bool)
{
    FollowActionState();
}

void MagicWandPrivate::OnImplicitlyActivated(bool)
{
    FollowActionState();
}

void MagicWandPrivate::FollowActionState()
{
    if (m_pActivateAction->IsChecked()) {
        LXToolWidgetManager::instance()->AddWidget(m_pToolWidget);
        ZKToolBarManager::Activate(m_pToolBarWidget);
        m_pToolButton->setChecked(true);
    } else {
        m_pToolButton->setChecked(false);
        LXToolWidgetManager::instance()->RemoveWidget(m_pToolWidget);
    }
    Activate(m_pActivateAction->IsImplicitlyChecked());
}

bool MagicWandPrivate::Activate(bool active)
{
    if (!active) {
        Deactivate();
        return true;
    }
    if (m_bActive) return true;
    if (m_pDocumentView && (m_pDocumentView->GetState() & IDocumentView::LockBit)) return false;

    m_bActive = true;
    if (m_pDocumentView) TakeView();
    m_pKeyHook = LexoAppKeyHook::instance();
    connect(m_pKeyHook, &LexoAppKeyHook::KeyPressed, this, &MagicWandPrivate::KeyPressed);
    connect(m_pKeyHook, &LexoAppKeyHook::KeyReleased, this, &MagicWandPrivate::KeyReleased);
    m_Modifiers = QGuiApplication::keyboardModifiers();
    return true;
}

void MagicWandPrivate::Deactivate()
{
    if (!m_bActive) return;

    if (m_pDocumentView) LeaveView();
    m_bActive = false;
    disconnect(m_pKeyHook, nullptr, this, nullptr);
    m_pKeyHook = nullptr;
    m_Modifiers = Qt::NoModifier;
    // Nobody tells of the release of a key that is down now.
    FollowModifiers();
}

// ---- the current view

bool MagicWandPrivate::SetDocumentView(IDocumentView* view)
{
    if (view == m_pDocumentView) return true;

    if (m_bActive && m_pDocumentView) LeaveView();
    m_pDocumentView = view;
    if (m_bActive && m_pDocumentView) TakeView();
    return true;
}

void MagicWandPrivate::TakeView()
{
    if (QGraphicsScene* scene = m_pDocumentView->Scene()) scene->installEventFilter(this);
    connect(m_pDocumentView->GetDocumentView(), &ZKDocumentView::PanningEnabled, this,
            &MagicWandPrivate::OnPanningEnabled);
    if (!m_pDocumentView->IsPanning()) TakeCursor();
}

void MagicWandPrivate::LeaveView()
{
    AbandonGesture();
    m_bSelectionDragArmed = false;
    GiveCursorBack();
    if (QGraphicsScene* scene = m_pDocumentView->Scene()) scene->removeEventFilter(this);
}

void MagicWandPrivate::TakeCursor()
{
    if (!m_bHasCursor) m_SavedCursor = m_pDocumentView->Cursor();
    m_bHasCursor = true;
    RefreshCursor();
}

void MagicWandPrivate::GiveCursorBack()
{
    ZKDocumentView* view = m_pDocumentView->GetDocumentView();
    disconnect(view, &ZKDocumentView::PanningEnabled, this, &MagicWandPrivate::OnPanningEnabled);
    if (!m_bHasCursor) return;

    m_bHasCursor = false;
    const QCursor cursor = std::exchange(m_SavedCursor, QCursor());
    if (m_pDocumentView->IsPanning()) {
        SetCursorAfterPanning(view, cursor);
    } else {
        m_pDocumentView->SetCursor(cursor);
    }
}

void MagicWandPrivate::OnPanningEnabled(bool enabled)
{
    // The view shows the hand by itself, and afterwards the cursor that it had before.
    if (enabled) return;

    TakeCursor();
    // A drag takes the picture along, so the pointer is where it was.
    if (m_bSelectionDragArmed && m_Op == SelectionCommandData::Replace) ShowCursor(Qt::ArrowCursor);
}

LXDocumentInterface* MagicWandPrivate::GetDocument() const
{
    return m_pDocumentView ? m_pDocumentView->GetDocument() : nullptr;
}

LexoUndoStack* MagicWandPrivate::GetHistory() const
{
    return m_pDocumentView ? m_pDocumentView->GetHistory() : nullptr;
}

bool MagicWandPrivate::eventFilter(QObject* object, QEvent* event)
{
    // Never eats an event: scene items live on the same ones.
    if (!m_pDocumentView || object != m_pDocumentView->Scene()) return false;
    // The filter hears what moves a panned view, too, ahead of the scene that swallows it.
    const bool isInGesture = m_bSelectionPressed || m_pLockedDocument;
    if (m_pDocumentView->GetDocumentView()->IsPanningEnabled() && !isInGesture) return false;

    switch (event->type()) {
    case QEvent::GraphicsSceneMousePress: OnPress(static_cast<QGraphicsSceneMouseEvent*>(event)); break;
    case QEvent::GraphicsSceneMouseMove: OnMove(static_cast<QGraphicsSceneMouseEvent*>(event)); break;
    case QEvent::GraphicsSceneMouseRelease: OnRelease(static_cast<QGraphicsSceneMouseEvent*>(event)); break;
    default: break;
    }
    return false;
}
