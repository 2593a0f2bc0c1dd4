#include "common/CursorAfterPanning.h"

#include "gui/ZKDocumentView.h"

#include <QCursor>

void SetCursorAfterPanning(ZKDocumentView* view, const QCursor& cursor)
{
    auto* const end = new QObject(view);
    QObject::connect(view, &ZKDocumentView::PanningEnabled, end, [end, view, cursor] {
        // Once: the object stays until the event loop runs, and the next panning may begin before.
        view->disconnect(end);
        view->setCursor(cursor);
        end->deleteLater();
    });
}
