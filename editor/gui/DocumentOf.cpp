#include "gui/DocumentOf.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/LXMdiSubWindow.h"
#include "gui/ZKDocumentView.h"
#include "gui/ZKDocumentWidget.h"
#include "history/LexoUndoStack.h"

ZKDocumentView* ViewOf(const LXMdiSubWindow* window)
{
    const auto* widget = window ? qobject_cast<ZKDocumentWidget*>(window->GetWidget()) : nullptr;
    return widget ? widget->GetView() : nullptr;
}

LXDocumentInterface* DocumentOf(const LXMdiSubWindow* window)
{
    const ZKDocumentView* view = ViewOf(window);
    return view ? view->GetModel()->GetDocument() : nullptr;
}

bool IsModified(const LXMdiSubWindow* window)
{
    const LXDocumentInterface* document = DocumentOf(window);
    if (!document) return false;
    const LexoUndoStack* history = ViewOf(window)->GetHistory();
    return document->GetDocumentState() > 0 || (history && !history->isClean());
}
