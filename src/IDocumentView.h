#pragma once

#include "DocumentViewNotifier.h"

#include <QCursor>
#include <QGraphicsView>
#include <QList>
#include <QPointF>
#include <QPolygonF>
#include <QRect>

class LXDocumentInterface;
class LexoUndoStack;
class QGraphicsItem;
class QGraphicsScene;
class ZKDocumentView;
class ZKDocumentWidget;

/// The view on the current document, one object for all tools; its contents change when another document
/// window is activated. A tool calls it only between being handed it and being handed null: no operation
/// but SetDocumentWidget(), GetState() and the two locks works without a widget. Scene coordinates are
/// document pixels, view coordinates pixels of the viewport. Main thread only.
class IDocumentView
{
public:
    /// Bit 0 of the state: the view lock, which keeps other tools from becoming active.
    static constexpr quint64 LockBit = 1;

    IDocumentView() = default;
    Q_DISABLE_COPY(IDocumentView)

    /// Points the object at a widget, not owned, or at none; the state and the saved cursor start anew.
    void SetDocumentWidget(ZKDocumentWidget* widget);

    ZKDocumentView* GetDocumentView() const;
    LXDocumentInterface* GetDocument() const;
    LexoUndoStack* GetHistory() const;

    quint64 GetState() const { return m_State; }

    /// Takes the view lock. False when it is held; the owner is not recorded.
    bool Lock(QObject* owner);

    /// Gives the view lock back, whoever took it; true always.
    bool Unlock(QObject* owner);

    /// Tells changes of the state.
    DocumentViewNotifier* GetNotifier() { return &m_Notifier; }

    QGraphicsScene* Scene() const;

    /// Screen pixels for a document pixel.
    double GetScale() const;

    /// Zooms about a point of the viewport, rounded to a whole pixel.
    /// Returns the scale that was set: 0.05 to 40.
    double SetScale(double scale, const QPointF& center);

    void FitSizeToViewPort();

    void CenterOn(const QPointF& scenePos);
    void CenterOn(double sceneX, double sceneY);
    void CenterOn(const QGraphicsItem* item);

    void EnsureVisible(const QRectF& sceneRect, int xMargin = 50, int yMargin = 50);
    void EnsureVisible(const QGraphicsItem* item, int xMargin = 50, int yMargin = 50);

    void DisablePanning();

    /// True while the view pans and panning is allowed.
    bool IsPanning() const;

    QRect Rect() const;
    QCursor Cursor() const;

    /// Keeps the view's present cursor for RestoreCursor(), then sets another; true always.
    bool SetCursor(const QCursor& cursor);

    /// Sets the cursor from before the last SetCursor(); true always.
    bool RestoreCursor();

    QPoint MapFromGlobal(const QPoint& globalPos) const;
    QPoint MapToGlobal(const QPoint& viewPos) const;
    QPoint MapFromScene(const QPointF& scenePos) const;
    QRect MapFromScene(const QRectF& sceneRect) const;
    QPointF MapToScene(const QPoint& viewPos) const;
    QRectF MapToScene(const QRect& viewRect) const;

    QGraphicsItem* ItemAt(const QPoint& viewPos) const;
    QList<QGraphicsItem*> Items() const;
    QList<QGraphicsItem*> Items(const QPoint& viewPos) const;
    QList<QGraphicsItem*> Items(const QRect& viewRect,
                                Qt::ItemSelectionMode mode = Qt::IntersectsItemShape) const;

    /// The items whose bounding rectangle meets an ellipse; center and radii in viewport pixels.
    QList<QGraphicsItem*> ItemsInEllipse(const QPointF& center, double rx, double ry) const;

    /// Moves what the widget shows by so many pixels, without drawing it anew.
    void Scroll(int dx, int dy);

    /// The rectangle of the main window's central widget in its own coordinates; null without a main window.
    static QRect CentralRect();

private:
    void SetState(quint64 state);

    ZKDocumentWidget* m_pWidget = nullptr;
    quint64 m_State = 0;
    QCursor m_SavedCursor;
    DocumentViewNotifier m_Notifier;
};
