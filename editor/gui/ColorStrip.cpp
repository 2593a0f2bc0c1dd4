#include "gui/ColorStrip.h"

#include "gui/ColorMark.h"
#include "gui/ShownGradients.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <utility>

namespace {
constexpr int Line = 1; // round the strip, where the focus shows
constexpr int Highest = 255;
constexpr int LargeStep = 16;
constexpr QSize WantedSize(22, 194);
constexpr QSize LeastSize(16, 92);
} // namespace

ColorStrip::ColorStrip(QWidget* parent) : QAbstractSlider(parent)
{
    setOrientation(Qt::Vertical);
    setRange(0, Highest);
    setPageStep(LargeStep);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

void ColorStrip::SetBrightest(const QColor& color)
{
    m_Brightest = color;
    update();
}

int ColorStrip::PlaceOf(int value) const
{
    const QRect inside = Inside();
    return inside.bottom() - qRound(double(value) / Highest * (inside.height() - 1));
}

QSize ColorStrip::sizeHint() const
{
    return WantedSize;
}

QSize ColorStrip::minimumSizeHint() const
{
    return LeastSize;
}

QRect ColorStrip::Inside() const
{
    return rect().adjusted(Line, Line, -Line, -Line);
}

void ColorStrip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect inside = Inside();
    QLinearGradient values(0, inside.bottom() + 0.5, 0, inside.top() + 0.5);
    values.setColorAt(0, Qt::black);
    values.setColorAt(1, m_Brightest);
    PaintShownGradients(painter, inside, {values});
    ColorMark::PaintLine(painter, rect(), *this);
    painter.setClipRect(inside);
    ColorMark::PaintBar(painter, inside, PlaceOf(value()));
}

void ColorStrip::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) return;
    m_Former = value();
    emit DragBegan();
    PickAt(event->pos().y());
}

void ColorStrip::mouseMoveEvent(QMouseEvent* event)
{
    if (m_Former) PickAt(event->pos().y());
}

void ColorStrip::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) m_Former.reset();
}

void ColorStrip::hideEvent(QHideEvent* event)
{
    m_Former.reset();
    QAbstractSlider::hideEvent(event);
}

void ColorStrip::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape || !m_Former) {
        QAbstractSlider::keyPressEvent(event);
        return;
    }
    const int former = *std::exchange(m_Former, std::nullopt);
    emit DragCancelled();
    setValue(former);
}

void ColorStrip::PickAt(int y)
{
    const QRect inside = Inside();
    if (inside.height() < 2) return;
    setValue(qRound(Highest * double(inside.bottom() - y) / (inside.height() - 1)));
}
