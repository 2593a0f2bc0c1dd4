#include "gui/ViewCursor.h"

#include "gui/ZKDocumentView.h"

#include <QCursor>
#include <QEvent>
#include <QGraphicsItem>

#include <algorithm>

ViewCursor::ViewCursor(ZKDocumentView* view) : QObject(view), m_pView(view)
{
    view->viewport()->installEventFilter(this);
    connect(view, &ZKDocumentView::PanningEnabled, this, &ViewCursor::GiveBack);
}

bool ViewCursor::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::CursorChange) GiveBack();
    return QObject::eventFilter(watched, event);
}

void ViewCursor::GiveBack() const
{
    if (!m_pView->viewport()->testAttribute(Qt::WA_SetCursor)) return;
    if (m_pView->IsPanningEnabled() || !IsOnItemWithCursor()) m_pView->viewport()->unsetCursor();
}

bool ViewCursor::IsOnItemWithCursor() const
{
    const QPoint pos = m_pView->viewport()->mapFromGlobal(QCursor::pos());
    const QList<QGraphicsItem*> items = m_pView->items(pos);
    return std::any_of(items.begin(), items.end(),
                       [](const QGraphicsItem* item) { return item->isEnabled() && item->hasCursor(); });
}
