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

quint64 LXViewToolBase::GetDocumentViewState()
{
    return IDocumentView::LockBit;
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
