#include "gui/NavigatorWidget.h"
#include "gui/NavigatorWidget_p.h"

#include <QKeyEvent>
#include <QPainter>

namespace {
constexpr int Padding = 4;
constexpr int ClickSlack = 3; ///< widget pixels that a hand may move in a click
constexpr double KeyStep = 0.1;
constexpr int FrameReach = 3; ///< what is drawn round the frame
} // namespace

NavigatorWidgetPrivate::NavigatorWidgetPrivate(NavigatorWidget* widget)
    : QObject(widget), m_pWidget(widget), m_Picture(this)
{
    connect(&m_Picture, &NavigatorPicture::Changed, this, &NavigatorWidgetPrivate::OnPictureChanged);
}

NavigatorWidgetPrivate* NavigatorWidgetPrivate::Get(const NavigatorWidget* widget)
{
    return widget->m_pPrivate.get();
}

void NavigatorWidgetPrivate::SetViewRect(const QRectF& rect)
{
    if (rect == m_ViewRect) return;
    const auto touched = [this] {
        return m_Place.Frame(m_ViewRect).adjusted(-FrameReach, -FrameReach, FrameReach, FrameReach);
    };
    const QRect before = touched();
    m_ViewRect = rect;
    m_pWidget->update(before);
    m_pWidget->update(touched());
}

void NavigatorWidgetPrivate::UpdatePlace()
{
    const QRect room = m_pWidget->rect().adjusted(Padding, Padding, -Padding, -Padding);
    m_Place = NavigatorPlace(m_Picture.Survey().GetCanvas(), room);
    if (!m_Place.Picture().isEmpty()) m_Picture.SetLevel(m_Place.Level(m_pWidget->devicePixelRatioF()));
    m_pWidget->update();
}

void NavigatorWidgetPrivate::UpdateLook()
{
    m_Look = CanvasLook::ForSurround(m_pWidget->palette().color(QPalette::Dark));
}

void NavigatorWidgetPrivate::UpdateCursor(const QPoint& pos)
{
    if (m_State == State::Dragging) {
        m_pWidget->setCursor(Qt::ClosedHandCursor);
    } else if (m_Place.Frame(m_ViewRect).contains(pos)) {
        m_pWidget->setCursor(Qt::OpenHandCursor);
    } else {
        m_pWidget->unsetCursor();
    }
}

void NavigatorWidgetPrivate::OnPictureChanged(const QRect& docRect)
{
    if (docRect.isEmpty()) {
        if (!Survey().HasDocument()) m_State = State::Idle;
        UpdatePlace();
        return;
    }
    // Neighbours are mixed into what is scaled.
    m_pWidget->update(m_Place.ToWidget(docRect).toAlignedRect().adjusted(-2, -2, 2, 2));
}

void NavigatorWidgetPrivate::Press(const QPoint& pos)
{
    if (m_Place.Picture().isEmpty()) return;
    m_Told.reset();
    m_PressPos = pos;
    m_Former = m_ViewRect.center();
    const bool isInside = m_Place.Frame(m_ViewRect).contains(pos);
    m_Grip = isInside ? m_Place.ToDocument(pos) - m_Former : QPointF();
    m_State = isInside ? State::Pressed : State::Dragging;
    if (!isInside) AskFor(m_Place.ToDocument(pos));
    UpdateCursor(pos);
}

void NavigatorWidgetPrivate::Move(const QPoint& pos)
{
    if (m_State == State::Pressed && (pos - m_PressPos).manhattanLength() > ClickSlack)
        m_State = State::Dragging;
    if (m_State == State::Dragging) AskFor(m_Place.ToDocument(pos) - m_Grip);
    UpdateCursor(pos);
}

void NavigatorWidgetPrivate::Release(const QPoint& pos)
{
    if (m_State == State::Pressed) AskFor(m_Place.ToDocument(pos));
    m_State = State::Idle;
    UpdateCursor(pos);
}

void NavigatorWidgetPrivate::AbortDrag()
{
    if (m_State == State::Dragging && !m_ViewRect.isEmpty()) {
        emit m_pWidget->ViewRectPosChanged(QPoint(qRound(m_Former.x()), qRound(m_Former.y())));
    }
    m_State = State::Idle;
}

bool NavigatorWidgetPrivate::TakeKey(const QKeyEvent& event)
{
    if (event.key() == Qt::Key_Escape && m_State != State::Idle) {
        AbortDrag();
        return true;
    }
    const bool isPlain = !(event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    if (!isPlain || m_ViewRect.isEmpty() || m_State != State::Idle) return false;

    const double part = event.modifiers() & Qt::ShiftModifier ? 1 : KeyStep;
    const double across = qMax(1.0, m_ViewRect.width() * part);
    const double down = qMax(1.0, m_ViewRect.height() * part);
    QPointF step;
    switch (event.key()) {
    case Qt::Key_Left: step = {-across, 0}; break;
    case Qt::Key_Right: step = {across, 0}; break;
    case Qt::Key_Up: step = {0, -down}; break;
    case Qt::Key_Down: step = {0, down}; break;
    default: return false;
    }
    m_Told.reset();
    AskFor(m_ViewRect.center() + step);
    return true;
}

void NavigatorWidgetPrivate::AskFor(const QPointF& center)
{
    if (m_Place.Picture().isEmpty()) return;
    const QPoint nearest = m_Place.NearestCenter(center, m_ViewRect.size());
    if (m_Told == nearest) return;
    m_Told = nearest;
    emit m_pWidget->ViewRectPosChanged(nearest);
}

void NavigatorWidgetPrivate::Paint(QPainter& painter) const
{
    painter.fillRect(m_pWidget->rect(), m_Look.surround);
    const QRect picture = m_Place.Picture();
    if (picture.isEmpty()) return;
    painter.setPen(m_Look.edge);
    painter.drawRect(picture.adjusted(-1, -1, 0, 0));

    const QImage& image = m_Picture.Image();
    const QSizeF covered = QSizeF(image.size()) * m_Picture.Box();
    painter.save();
    painter.setClipRect(picture, Qt::IntersectClip);
    painter.setBrushOrigin(picture.topLeft());
    painter.fillRect(picture, m_Look.checker);
    painter.setRenderHint(QPainter::SmoothPixmapTransform,
                          m_Place.Scale() * m_pWidget->devicePixelRatioF() < 1);
    painter.drawImage(m_Place.ToWidget(QRectF(QPointF(0, 0), covered)), image, QRectF(image.rect()));
    painter.restore();
    PaintFrame(painter);
}

/// White between two black lines, to be seen on any picture.
void NavigatorWidgetPrivate::PaintFrame(QPainter& painter) const
{
    const QRect frame = m_Place.Frame(m_ViewRect);
    if (frame.isEmpty()) return;
    const QRect line = frame.adjusted(0, 0, -1, -1);
    painter.setPen(QColor(0, 0, 0, 160));
    painter.drawRect(line.adjusted(-1, -1, 1, 1));
    painter.drawRect(line.adjusted(1, 1, -1, -1));
    painter.setPen(Qt::white);
    painter.drawRect(line);
}
