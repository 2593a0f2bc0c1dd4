#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QPoint>

class QGraphicsView;

/// Scrolls a view while a drag is outside its viewport, the faster the farther, and repeats the mouse move
/// so that what is dragged follows. Owned by its view.
class ViewAutoscroll : public QObject
{
    Q_OBJECT

public:
    explicit ViewAutoscroll(QGraphicsView* view);

    void Enable(bool enable);
    /// Called with each mouse move of the viewport.
    void Move(const QPoint& viewPos, Qt::MouseButtons buttons);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    QPoint Overshoot() const;

    QGraphicsView* m_pView;
    QBasicTimer m_Timer;
    QPoint m_Pos;
    Qt::MouseButtons m_Buttons;
    bool m_bEnabled = false;
};
