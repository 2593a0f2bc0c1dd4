#include "IDocumentView.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/LXMdiArea.h"
#include "gui/ZKDocumentView.h"
#include "gui/ZKDocumentWidget.h"

#include <QMainWindow>
#include <QPainterPath>

#include <algorithm>

namespace {
constexpr double SmallestScale = 0.05;
constexpr double LargestScale = 40.0;
} // namespace

void IDocumentView::SetDocumentWidget(ZKDocumentWidget* widget)
{
    m_pWidget = widget;
    m_SavedCursor = QCursor();
    SetState(0);
}

ZKDocumentView* IDocumentView::GetDocumentView() const
{
    return m_pWidget->GetView();
}

LXDocumentInterface* IDocumentView::GetDocument() const
{
    return GetDocumentView()->GetModel()->GetDocument();
}

LexoUndoStack* IDocumentView::GetHistory() const
{
    return GetDocumentView()->GetHistory();
}

bool IDocumentView::Lock(QObject*)
{
    if (m_State & LockBit) return false;

    SetState(m_State | LockBit);
    return true;
}

bool IDocumentView::Unlock(QObject*)
{
    SetState(m_State & ~LockBit);
    return true;
}

void IDocumentView::SetState(quint64 state)
{
    if (state == m_State) return;

    const quint64 oldState = m_State;
    m_State = state;
    emit m_Notifier.StateChanged(oldState, state);
}

QGraphicsScene* IDocumentView::Scene() const
{
    return GetDocumentView()->scene();
}

double IDocumentView::GetScale() const
{
    return GetDocumentView()->GetScale();
}

double IDocumentView::SetScale(double scale, const QPointF& center)
{
    const double clamped = std::clamp(scale, SmallestScale, LargestScale);
    GetDocumentView()->Scale(clamped / GetScale(), center.toPoint());
    return clamped;
}

void IDocumentView::FitSizeToViewPort()
{
    GetDocumentView()->FitSizeToViewPort();
}

void IDocumentView::CenterOn(const QPointF& scenePos)
{
    GetDocumentView()->centerOn(scenePos);
}

void IDocumentView::CenterOn(double sceneX, double sceneY)
{
    GetDocumentView()->centerOn(sceneX, sceneY);
}

void IDocumentView::CenterOn(const QGraphicsItem* item)
{
    GetDocumentView()->centerOn(item);
}

void IDocumentView::EnsureVisible(const QRectF& sceneRect, int xMargin, int yMargin)
{
    GetDocumentView()->ensureVisible(sceneRect, xMargin, yMargin);
}

void IDocumentView::EnsureVisible(const QGraphicsItem* item, int xMargin, int yMargin)
{
    GetDocumentView()->ensureVisible(item, xMargin, yMargin);
}

void IDocumentView::DisablePanning()
{
    GetDocumentView()->EnablePanning(false);
}

bool IDocumentView::IsPanning() const
{
    return GetDocumentView()->IsPanningEnabled() && GetDocumentView()->IsPanningAllowed();
}

QRect IDocumentView::Rect() const
{
    return GetDocumentView()->rect();
}

QCursor IDocumentView::Cursor() const
{
    return GetDocumentView()->cursor();
}

bool IDocumentView::SetCursor(const QCursor& cursor)
{
    m_SavedCursor = Cursor();
    GetDocumentView()->setCursor(cursor);
    return true;
}

bool IDocumentView::RestoreCursor()
{
    GetDocumentView()->setCursor(m_SavedCursor);
    return true;
}

QPoint IDocumentView::MapFromGlobal(const QPoint& globalPos) const
{
    return GetDocumentView()->mapFromGlobal(globalPos);
}

QPoint IDocumentView::MapToGlobal(const QPoint& viewPos) const
{
    return GetDocumentView()->mapToGlobal(viewPos);
}

QPoint IDocumentView::MapFromScene(const QPointF& scenePos) const
{
    return GetDocumentView()->mapFromScene(scenePos);
}

QRect IDocumentView::MapFromScene(const QRectF& sceneRect) const
{
    return GetDocumentView()->mapFromScene(sceneRect).boundingRect();
}

QPointF IDocumentView::MapToScene(const QPoint& viewPos) const
{
    return GetDocumentView()->mapToScene(viewPos);
}

QRectF IDocumentView::MapToScene(const QRect& viewRect) const
{
    return GetDocumentView()->mapToScene(viewRect).boundingRect();
}

QGraphicsItem* IDocumentView::ItemAt(const QPoint& viewPos) const
{
    return GetDocumentView()->itemAt(viewPos);
}

QList<QGraphicsItem*> IDocumentView::Items() const
{
    return GetDocumentView()->items();
}

QList<QGraphicsItem*> IDocumentView::Items(const QPoint& viewPos) const
{
    return GetDocumentView()->items(viewPos);
}

QList<QGraphicsItem*> IDocumentView::Items(const QRect& viewRect, Qt::ItemSelectionMode mode) const
{
    return GetDocumentView()->items(viewRect, mode);
}

QList<QGraphicsItem*> IDocumentView::ItemsInEllipse(const QPointF& center, double rx, double ry) const
{
    QPainterPath ellipse;
    ellipse.addEllipse(QRectF(center.x() - rx, center.y() - ry, 2 * rx, 2 * ry));
    return GetDocumentView()->items(ellipse, Qt::IntersectsItemBoundingRect);
}

void IDocumentView::Scroll(int dx, int dy)
{
    GetDocumentView()->scroll(dx, dy);
}

QRect IDocumentView::CentralRect()
{
    QMainWindow* window = LXMdiArea::MainWindow();
    if (!window || !window->centralWidget()) return {};
    return window->centralWidget()->rect();
}
