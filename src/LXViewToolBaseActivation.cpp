#include "LXViewToolBase.h"

// How a view tool becomes active and follows the current view.

#include "IDocumentView.h"

#include "common/CursorAfterPanning.h"
#include "core/ZKActivateAction.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"

#include <QGraphicsScene>

namespace {
// Null also for a view that is being torn down.
LXDocumentInterface* DocumentOf(ZKDocumentView* view)
{
    return view && view->GetModel() ? view->GetModel()->GetDocument() : nullptr;
}
} // namespace

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

    KeepCursor();
    if (!m_bFilterAlways) InstallFilter(m_pDocumentView->Scene());
    if (m_pView) {
        ConnectPanning();
        if (!m_pDocumentView->IsPanning()) RefreshCursor();
    }
    if (IsMouseInView()) OnEnter(nullptr);
    return true;
}

void LXViewToolBase::KeepCursor()
{
    // The hand of a view that is being moved is not for keeping.
    m_Cursor = m_pDocumentView->IsPanning() ? QCursor() : m_pDocumentView->Cursor();
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
    GiveCursorBack();
}

void LXViewToolBase::GiveCursorBack()
{
    if (m_pView && m_pDocumentView->IsPanning()) {
        SetCursorAfterPanning(m_pView, m_Cursor);
        return;
    }
    // Twice: both the view's cursor and the one that the view object saved.
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
        GiveCursorBack();
        m_Cursor = QCursor();
    }

    m_pDocumentView = view;
    RewireView(view ? view->GetDocumentView() : nullptr);
    if (!view) return;

    KeepCursor();
    if (!view->IsPanning()) RefreshCursor();
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
