#include "gui/LXMdiSubWindow.h"

#include "document/LXDocumentInterface.h"
#include "gui/DocumentOf.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiArea_p.h"
#include "gui/LaterUpdate.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"

#include <QCloseEvent>

LXMdiSubWindow::LXMdiSubWindow(QWidget* widget, QWidget* parent) : QMdiSubWindow(parent)
{
    setAttribute(Qt::WA_QuitOnClose, false);
    // Its entries have keys that belong to the program's own menus.
    setSystemMenu(nullptr);
    setWidget(widget);

    LXDocumentInterface* const document = DocumentOf(this);
    if (!document) return;
    connect(document, &LXDocumentInterface::DocumentNameChanged, this, &LXMdiSubWindow::UpdateTitle);
    connect(document, &LXDocumentInterface::DocumentStateChanged, this, &LXMdiSubWindow::UpdateTitle);
    if (const LexoUndoStack* history = ViewOf(this)->GetHistory()) {
        auto* const later = new LaterUpdate(this, [this] { UpdateTitle(); });
        connect(history, &LexoUndoStack::cleanChanged, later, &LaterUpdate::AskAfterPicture);
    }
    UpdateTitle();
}

LXMdiSubWindow::~LXMdiSubWindow()
{
    // Before the base says that it is destroyed: then the document goes, which the view still shows.
    delete widget();
}

QWidget* LXMdiSubWindow::GetWidget() const
{
    return widget();
}

void LXMdiSubWindow::closeEvent(QCloseEvent* event)
{
    auto* const area = qobject_cast<LXMdiArea*>(mdiArea());
    if (!area) {
        QMdiSubWindow::closeEvent(event);
        return;
    }
    const QPointer<LXMdiSubWindow> self = this;
    LXMdiAreaPrivate* const insides = LXMdiAreaPrivate::Get(area);
    if (!insides->MayClose(this)) {
        event->ignore();
        return;
    }
    // While the question stood, the window may have been closed from elsewhere.
    if (self && mdiArea() == area) insides->Close(this);
    event->accept();
}

bool LXMdiSubWindow::focusNextPrevChild(bool next)
{
    // The base goes round inside of a sub window as if it were a window.
    QWidget* const from = window()->focusWidget();
    QWidget* widget = from ? from : this;
    do {
        widget = next ? widget->nextInFocusChain() : widget->previousInFocusChain();
        const bool takesTab = (widget->focusPolicy() & Qt::TabFocus) != 0 && !widget->focusProxy();
        if (takesTab && widget->isVisible() && widget->isEnabled() && widget->window() == window()) {
            widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    } while (widget != from && widget != this);
    return false;
}

void LXMdiSubWindow::UpdateTitle()
{
    setWindowTitle(tr("%1[*]").arg(DocumentOf(this)->GetDocumentName()));
    setWindowModified(IsModified(this));
}
