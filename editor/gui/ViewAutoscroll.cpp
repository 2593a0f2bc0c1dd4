#include "gui/ViewAutoscroll.h"

#include <QCoreApplication>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScrollBar>

namespace {
constexpr int StepMilliseconds = 25;
constexpr int MaxStep = 64; ///< viewport pixels
} // namespace

ViewAutoscroll::ViewAutoscroll(QGraphicsView* view) : QObject(view), m_pView(view) {}

void ViewAutoscroll::Enable(bool enable)
{
    m_bEnabled = enable;
    if (!enable) m_Timer.stop();
}

void ViewAutoscroll::Move(const QPoint& viewPos, Qt::MouseButtons buttons)
{
    m_Pos = viewPos;
    m_Buttons = buttons;
    const bool wanted = m_bEnabled && buttons != Qt::NoButton && !Overshoot().isNull();
    if (!wanted) {
        m_Timer.stop();
    } else if (!m_Timer.isActive()) {
        m_Timer.start(StepMilliseconds, this);
    }
}

void ViewAutoscroll::timerEvent(QTimerEvent*)
{
    const QPoint step = Overshoot();
    m_pView->horizontalScrollBar()->setValue(m_pView->horizontalScrollBar()->value() + step.x());
    m_pView->verticalScrollBar()->setValue(m_pView->verticalScrollBar()->value() + step.y());

    QMouseEvent move(QEvent::MouseMove, m_Pos, m_pView->viewport()->mapToGlobal(m_Pos), Qt::NoButton,
                     m_Buttons, QGuiApplication::keyboardModifiers());
    QCoreApplication::sendEvent(m_pView->viewport(), &move);
}

QPoint ViewAutoscroll::Overshoot() const
{
    const QRect inside = m_pView->viewport()->rect();
    const auto beyond = [](int value, int first, int last) {
        return value < first ? qMax(value - first, -MaxStep) : qMin(qMax(value - last, 0), MaxStep);
    };
    return {beyond(m_Pos.x(), inside.left(), inside.right()),
            beyond(m_Pos.y(), inside.top(), inside.bottom())};
}
