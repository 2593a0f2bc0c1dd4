#include "ZKOldToolContainer.h"

#include "IDocumentView.h"
#include "IDocumentViewState.h"
#include "IDocumentViewTool.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiSubWindow.h"
#include "gui/ZKDocumentView.h"
#include "gui/ZKDocumentWidget.h"

namespace {
ZKDocumentWidget* DocumentWidgetOf(LXMdiSubWindow* window)
{
    return window ? qobject_cast<ZKDocumentWidget*>(window->GetWidget()) : nullptr;
}

// Null also for a view that is being torn down.
LXDocumentInterface* DocumentOf(LXMdiSubWindow* window)
{
    ZKDocumentWidget* widget = DocumentWidgetOf(window);
    if (!widget || !widget->GetView() || !widget->GetView()->GetModel()) return nullptr;
    return widget->GetView()->GetModel()->GetDocument();
}
} // namespace

ZKOldToolContainer::ZKOldToolContainer() : m_pDocumentView(std::make_unique<IDocumentView>())
{
    connect(m_pDocumentView->GetNotifier(), &DocumentViewNotifier::StateChanged, this,
            &ZKOldToolContainer::TellViewState);
    if (LXMdiArea* area = LXDocumentManager::GetDocumentArea()) {
        connect(area, &LXMdiArea::SubWindowActivated, this, &ZKOldToolContainer::OnDocumentActivated);
    }
}

ZKOldToolContainer::~ZKOldToolContainer() = default;

void ZKOldToolContainer::UpdateTools() {}

void ZKOldToolContainer::DocumentStateChanged(int) {}

void ZKOldToolContainer::DocumentActivated(LXMdiSubWindow* window)
{
    if (!window) return;

    ZKDocumentWidget* widget = DocumentWidgetOf(window);
    if (widget) m_pDocumentView->SetDocumentWidget(widget);
    HandViewToTools(widget ? m_pDocumentView.get() : nullptr);
}

void ZKOldToolContainer::DocumentDeactivated(LXMdiSubWindow*)
{
    HandViewToTools(nullptr);
    m_pDocumentView->SetDocumentWidget(nullptr);
}

void ZKOldToolContainer::AddTool(QObject* tool)
{
    if (!tool) return;

    m_Tools.append(tool);
    connect(tool, &QObject::destroyed, this, [this](QObject* gone) { m_Tools.removeAll(gone); });
}

void ZKOldToolContainer::OnDocumentActivated(LXMdiSubWindow* window)
{
    DisconnectDocument();
    DocumentDeactivated(m_pActiveSubWindow);
    m_pActiveSubWindow = window;
    ConnectDocument();
    DocumentActivated(window);
    UpdateTools();
}

void ZKOldToolContainer::OnDocumentLocked()
{
    UpdateTools();
}

void ZKOldToolContainer::OnDocumentUnlocked()
{
    UpdateTools();
}

void ZKOldToolContainer::OnDocumentStateChanged(int state)
{
    DocumentStateChanged(state);
}

void ZKOldToolContainer::ConnectDocument()
{
    LXDocumentInterface* document = DocumentOf(m_pActiveSubWindow);
    if (!document) return;

    connect(document, &LXDocumentInterface::Locked, this, &ZKOldToolContainer::OnDocumentLocked);
    connect(document, &LXDocumentInterface::Unlocked, this, &ZKOldToolContainer::OnDocumentUnlocked);
    connect(document, &LXDocumentInterface::DocumentStateChanged, this,
            &ZKOldToolContainer::OnDocumentStateChanged);
}

void ZKOldToolContainer::DisconnectDocument()
{
    LXDocumentInterface* document = DocumentOf(m_pActiveSubWindow);
    if (document) disconnect(document, nullptr, this, nullptr);
}

void ZKOldToolContainer::HandViewToTools(IDocumentView* view)
{
    for (QObject* tool : GetTools()) {
        if (auto* viewTool = qobject_cast<IDocumentViewTool*>(tool)) viewTool->SetDocumentView(view);
    }
}

void ZKOldToolContainer::TellViewState(quint64 oldState, quint64 newState)
{
    for (QObject* tool : GetTools()) {
        if (auto* follower = qobject_cast<IDocumentViewState*>(tool)) {
            follower->DocumentViewStateChanged(oldState, newState);
        }
    }
}
