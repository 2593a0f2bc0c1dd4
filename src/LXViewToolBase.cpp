#include "LXViewToolBase.h"

#include "IDocumentView.h"
#include "ZKActivateActionByMember.h"

#include "core/ZKToolBarManager.h"
#include "core/ZKToolGroupManager.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/LToolBoxButton.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LXToolWidgetManager.h"
#include "gui/LayersWidget.h"
#include "gui/LexoAppKeyHook.h"

#include <QGraphicsSceneMouseEvent>
#include <QGuiApplication>
#include <QItemSelectionModel>

namespace {
// Null also for a view that is being torn down.
LXDocumentInterface* DocumentOf(ZKDocumentView* view)
{
    return view && view->GetModel() ? view->GetModel()->GetDocument() : nullptr;
}
} // namespace

LXViewToolBase::LXViewToolBase(QObject* parent, bool filterAlways)
    : QObject(parent), m_Locks(QStringLiteral("src/LXViewToolBase")), m_bFilterAlways(filterAlways)
{}

LXViewToolBase::~LXViewToolBase()
{
    // The tool's own slots are gone by now; the document's listeners hear of the unlock all the same.
    blockSignals(true);
    // Asked first: without a lock the view is left alone, which may be gone by now.
    if (m_Locks.HoldsDocument()) UnlockDocument();
    if (m_Locks.HoldsView()) UnlockView();
}

// ---- handing over, settings, lists

void LXViewToolBase::SetToolBox(LToolBoxWidget* toolBox)
{
    if (toolBox == m_pToolBox) return;

    LToolBoxButton* button = GetToolBoxButton();
    if (m_pToolBox && button) m_pToolBox->RemoveButton(button);
    m_pToolBox = toolBox;
    if (m_pToolBox && button) m_pToolBox->AddToolButton(button, GetToolBoxPosition());
}

void LXViewToolBase::SetToolBarManager(ZKToolBarManager*)
{
    if (QWidget* toolBar = GetToolBar()) ZKToolBarManager::Add(toolBar, toolBar->windowTitle());
}

void LXViewToolBase::SetToolWidgetManager(LXToolWidgetManager*) {}

void LXViewToolBase::SetLayersWidget(LayersWidget* layersWidget)
{
    if (layersWidget == m_pLayersWidget) return;

    emit LayerWidgetChanged(m_pLayersWidget, layersWidget);
    m_pLayersWidget = layersWidget;
}

void LXViewToolBase::SetMainWidget(QWidget* widget)
{
    m_pMainWidget = widget;
    emit OnSetMainWidget();
}

void LXViewToolBase::SaveSettings() {}

void LXViewToolBase::LoadSettings() {}

quint64 LXViewToolBase::GetDocumentViewState()
{
    return IDocumentView::LockBit;
}

QList<QAction*> LXViewToolBase::GetMenuActions()
{
    return {};
}

QList<QAction*> LXViewToolBase::GetToolBarActions()
{
    return {};
}

MainMenuEntries LXViewToolBase::GetMainMenuEntries()
{
    return {};
}

void LXViewToolBase::Init(QObject* parent)
{
    setParent(parent);

    m_pActivateAction =
        new ZKActivateActionByMember<LXViewToolBase>(this, this, &LXViewToolBase::AllowDeactivate);
    ZKToolGroupManager::Add(m_pActivateAction);
    connect(m_pActivateAction, &ZKActivateAction::Toggled, this, &LXViewToolBase::OnExplicitlyActivated);
    connect(m_pActivateAction, &ZKActivateAction::ImplicitToggled, this,
            &LXViewToolBase::OnImplicitlyActivated);

    CreateToolWidget();
    CreateToolBar();
    CreateToolBoxButton();
}

// ---- what tools override

void LXViewToolBase::OnEnter(QEvent*) {}

void LXViewToolBase::OnLeave(QEvent*) {}

void LXViewToolBase::OnSceneMouseMove(QGraphicsSceneMouseEvent* event)
{
    emit OnMouseMove(event->scenePos(), QGuiApplication::mouseButtons());
}

void LXViewToolBase::OnSceneMousePress(QGraphicsSceneMouseEvent* event)
{
    // Kept, because a handler of the first signal may run an event loop.
    const QPointF scenePos = event->scenePos();
    const Qt::MouseButton button = event->button();
    emit OnMousePress(scenePos, QGuiApplication::mouseButtons());
    emit OnMousePress(scenePos, button);
}

void LXViewToolBase::OnSceneMouseRelease(QGraphicsSceneMouseEvent* event)
{
    const QPointF scenePos = event->scenePos();
    const Qt::MouseButton button = event->button();
    emit OnMouseRelease(scenePos, QGuiApplication::mouseButtons());
    emit OnMouseRelease(scenePos, button);
}

void LXViewToolBase::OnSceneMouseDoubleClick(QGraphicsSceneMouseEvent*) {}

QWidget* LXViewToolBase::GetToolWidget()
{
    return nullptr;
}

QWidget* LXViewToolBase::GetToolBar()
{
    return nullptr;
}

LToolBoxButton* LXViewToolBase::GetToolBoxButton()
{
    return nullptr;
}

void LXViewToolBase::UpdateToolUi(bool checked)
{
    if (LToolBoxButton* button = GetToolBoxButton()) button->setChecked(checked);

    if (LXToolWidgetManager* manager = LXToolWidgetManager::instance()) {
        if (checked) {
            manager->AddWidget(GetToolWidget());
        } else {
            manager->RemoveWidget(GetToolWidget());
        }
    }
    if (checked) ZKToolBarManager::Activate(GetToolBar());
}

void LXViewToolBase::OnToolBoxButtonPressed(LToolBoxButton*)
{
    if (!m_pActivateAction->IsChecked()) ZKToolGroupManager::Activate(m_pActivateAction);
}

bool LXViewToolBase::AllowDeactivate()
{
    return true;
}

// ---- the current view

LXDocumentInterface* LXViewToolBase::GetDocument() const
{
    return m_pDocumentView ? m_pDocumentView->GetDocument() : nullptr;
}

LXDocumentModel* LXViewToolBase::GetModel() const
{
    return m_pView ? m_pView->GetModel() : nullptr;
}

LexoUndoStack* LXViewToolBase::GetHistory() const
{
    return m_pView ? m_pView->GetHistory() : nullptr;
}

QGraphicsScene* LXViewToolBase::GetScene() const
{
    return m_pView ? m_pView->scene() : nullptr;
}

QSize LXViewToolBase::GetDocumentSize() const
{
    LXDocumentInterface* document = GetDocument();
    return document ? document->GetDocumentSize() : QSize();
}

int LXViewToolBase::GetCurrentLayerId() const
{
    const QList<int> ids = GetSelectedLayerIds();
    return ids.size() == 1 ? ids.first() : -1;
}

QList<int> LXViewToolBase::GetSelectedLayerIds() const
{
    QItemSelectionModel* selection = m_pView ? m_pView->GetLayerSelection() : nullptr;
    if (!selection) return {};

    QList<int> ids;
    const QModelIndexList rows = selection->selectedRows(0);
    for (const QModelIndex& index : rows) {
        ids.append(index.row() + 1);
    }
    return ids;
}

void LXViewToolBase::RefreshCursor()
{
    if (m_pDocumentView) m_pDocumentView->SetCursor(GetCursor());
}

bool LXViewToolBase::IsMouseInView() const
{
    if (!m_pDocumentView) return false;
    return m_pDocumentView->Rect().contains(m_pDocumentView->MapFromGlobal(QCursor::pos()), false);
}

// ---- activation

void LXViewToolBase::ToolBoxButtonPressed(LToolBoxButton* button)
{
    OnToolBoxButtonPressed(button);
}

void LXViewToolBase::OnExplicitlyActivated(bool)
{
    FollowActionState();
}

void LXViewToolBase::OnImplicitlyActivated(bool)
{
    FollowActionState();
}

void LXViewToolBase::FollowActionState()
{
    const bool checked = m_pActivateAction->IsChecked();
    UpdateToolUi(checked);
    Activate(checked && m_pActivateAction->IsImplicitlyChecked());
}

bool LXViewToolBase::Activate(bool active)
{
    if (!active) return Deactivate();
    if (m_bActive) return true;
    if (m_pDocumentView && !ActivateOnView()) return false;

    m_bActive = true;
    emit OnActivate(true);
    return true;
}

bool LXViewToolBase::ActivateOnView()
{
    if (m_pDocumentView->GetState() & IDocumentView::LockBit) return false;

    m_Cursor = m_pDocumentView->Cursor();
    if (!m_bFilterAlways) InstallFilter(m_pDocumentView->Scene());
    if (m_pView) {
        ConnectPanning();
        if (!m_pDocumentView->IsPanning()) RefreshCursor();
    }
    if (IsMouseInView()) OnEnter(nullptr);
    return true;
}

bool LXViewToolBase::Deactivate()
{
    if (m_bActive) {
        if (!AllowDeactivate()) return false;
        if (m_pDocumentView) DeactivateOnView();
        m_bActive = false;
    }
    emit OnActivate(false);
    return true;
}

void LXViewToolBase::DeactivateOnView()
{
    m_Cursor = QCursor();
    if (m_pDocumentView->Scene()) {
        OnLeave(nullptr);
        if (!m_bFilterAlways) RemoveFilter(m_pDocumentView->Scene());
    }
    if (!m_pView) return;

    DisconnectPanning();
    if (m_pDocumentView->IsPanning()) return;
    // Twice: the view's cursor and the view object's saved cursor both become the default one.
    m_pDocumentView->SetCursor(m_Cursor);
    m_pDocumentView->SetCursor(m_Cursor);
}

// ---- following the view

bool LXViewToolBase::SetDocumentView(IDocumentView* view)
{
    if (view == m_pDocumentView) return true;

    IDocumentView* oldView = m_pDocumentView;
    emit OnDocumentViewChange(oldView, view);
    if (m_bActive) {
        ChangeViewWhileActive(view);
    } else {
        ChangeViewWhileInactive(view);
    }
    emit OnDocumentViewChanged(oldView, view);
    return true;
}

void LXViewToolBase::ChangeViewWhileActive(IDocumentView* view)
{
    if (m_pDocumentView) {
        if (!m_bFilterAlways) RemoveFilter(m_pDocumentView->Scene());
        m_pDocumentView->SetCursor(m_Cursor);
        m_pDocumentView->SetCursor(m_Cursor);
        m_Cursor = QCursor();
    }

    m_pDocumentView = view;
    RewireView(view ? view->GetDocumentView() : nullptr);
    if (!view) return;

    m_Cursor = view->Cursor();
    view->SetCursor(GetCursor());
    // A tool that always filters is a panel and isn't activated, so it gets no filter here.
    if (!m_bFilterAlways) InstallFilter(view->Scene());
    if (IsMouseInView()) OnEnter(nullptr);
}

void LXViewToolBase::ChangeViewWhileInactive(IDocumentView* view)
{
    if (m_pDocumentView && m_bFilterAlways) RemoveFilter(m_pDocumentView->Scene());

    m_pDocumentView = view;
    RewireView(view ? view->GetDocumentView() : nullptr);
    if (view && m_bFilterAlways) InstallFilter(view->Scene());
}

void LXViewToolBase::RewireView(ZKDocumentView* view)
{
    if (LXDocumentInterface* document = DocumentOf(m_pView)) {
        disconnect(document, &LXDocumentInterface::Locked, this, &LXViewToolBase::OnCurrentDocumentLocked);
        disconnect(document, &LXDocumentInterface::Unlocked, this,
                   &LXViewToolBase::OnCurrentDocumentUnlocked);
    }
    if (m_pView && m_bActive) DisconnectPanning();

    m_pView = view;
    if (LXDocumentInterface* document = DocumentOf(view)) {
        connect(document, &LXDocumentInterface::Locked, this, &LXViewToolBase::OnCurrentDocumentLocked);
        connect(document, &LXDocumentInterface::Unlocked, this, &LXViewToolBase::OnCurrentDocumentUnlocked);
    }
    if (view && m_bActive) ConnectPanning();
}

void LXViewToolBase::ConnectPanning()
{
    connect(m_pView, &ZKDocumentView::PanningEnabled, this, &LXViewToolBase::OnPanningEnabled);
}

void LXViewToolBase::DisconnectPanning()
{
    disconnect(m_pView, &ZKDocumentView::PanningEnabled, this, &LXViewToolBase::OnPanningEnabled);
}

void LXViewToolBase::OnCurrentDocumentLocked()
{
    emit CurrentDocumentLocked(true);
}

void LXViewToolBase::OnCurrentDocumentUnlocked()
{
    emit CurrentDocumentLocked(false);
}

void LXViewToolBase::OnPanningEnabled(bool enabled)
{
    // The view sets its own cursor when panning begins; at the end the tool's comes back.
    if (!enabled) RefreshCursor();
    emit PanningEnabled(enabled);
}

// ---- events of the scene

void LXViewToolBase::InstallFilter(QGraphicsScene* scene)
{
    if (scene) scene->installEventFilter(this);
}

void LXViewToolBase::RemoveFilter(QGraphicsScene* scene)
{
    if (scene) scene->removeEventFilter(this);
}

bool LXViewToolBase::eventFilter(QObject* object, QEvent* event)
{
    // Never eats an event: scene items live on the same ones.
    if (!m_pDocumentView) return false;

    auto* scene = qobject_cast<QGraphicsScene*>(object);
    if (scene && scene == m_pDocumentView->Scene()) DeliverSceneEvent(event);
    return false;
}

bool LXViewToolBase::IsSkipped() const
{
    return m_bSkipWhilePanning && m_pView && m_pView->IsPanningEnabled();
}

void LXViewToolBase::DeliverSceneEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::FocusIn: emit FocusIn(); break;
    case QEvent::FocusOut: emit FocusOut(); break;
    case QEvent::Enter:
        OnEnter(event);
        emit Enter();
        break;
    case QEvent::Leave:
        OnLeave(event);
        emit Leave();
        break;
    case QEvent::GraphicsSceneMouseMove:
        if (!IsSkipped()) OnSceneMouseMove(static_cast<QGraphicsSceneMouseEvent*>(event));
        break;
    case QEvent::GraphicsSceneMousePress:
        if (!IsSkipped()) OnSceneMousePress(static_cast<QGraphicsSceneMouseEvent*>(event));
        break;
    case QEvent::GraphicsSceneMouseRelease:
        if (!IsSkipped()) OnSceneMouseRelease(static_cast<QGraphicsSceneMouseEvent*>(event));
        break;
    case QEvent::GraphicsSceneMouseDoubleClick:
        OnSceneMouseDoubleClick(static_cast<QGraphicsSceneMouseEvent*>(event));
        break;
    default: break;
    }
}

// ---- locks

bool LXViewToolBase::LockDocument()
{
    return m_Locks.LockDocument(GetDocument());
}

bool LXViewToolBase::UnlockDocument()
{
    return m_Locks.UnlockDocument(GetDocument());
}

bool LXViewToolBase::LockView()
{
    return m_Locks.LockView(m_pDocumentView, parent());
}

bool LXViewToolBase::UnlockView()
{
    return m_Locks.UnlockView(m_pDocumentView, parent());
}

bool LXViewToolBase::DisableShortcuts()
{
    LexoAppKeyHook::instance()->DisableAllRegisteredShortcuts();
    return true;
}

bool LXViewToolBase::EnableShortcuts()
{
    LexoAppKeyHook::instance()->EnableAllRegisteredShortcuts();
    return true;
}
