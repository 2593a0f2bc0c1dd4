#include "gui/ColorField.h"

#include "gui/ColorChoice.h"
#include "gui/ColorMark.h"
#include "gui/ShownGradients.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace {
constexpr int Line = 1; // round the field, where the focus shows
constexpr int LastHue = 359;
constexpr QSize WantedSize(258, 194);
constexpr QSize LeastSize(122, 92);
constexpr int MarkRadius = 5;

constexpr double HueStep = 1;
constexpr double SaturationStep = 0.01;
constexpr double LargeFactor = 10;

/// Between two primary colors and at full saturation, the hue goes in a straight line.
QLinearGradient HuesOver(const QRect& place)
{
    QLinearGradient hues(place.left() + 0.5, 0, place.right() + 0.5, 0);
    for (int hue = 0; hue < LastHue; hue += 60)
        hues.setColorAt(double(hue) / LastHue, ToRgb({double(hue), 1, 1}));
    hues.setColorAt(1, ToRgb({LastHue, 1, 1}));
    return hues;
}

/// At full value, less saturation is as much white.
QLinearGradient WhiteOver(const QRect& place)
{
    QLinearGradient white(0, place.top() + 0.5, 0, place.bottom() + 0.5);
    white.setColorAt(0, QColor(255, 255, 255, 0));
    white.setColorAt(1, Qt::white);
    return white;
}
} // namespace

ColorField::ColorField(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
}

void ColorField::SetHueSaturation(double hue, double saturation)
{
    m_Hue = hue;
    m_Saturation = saturation;
    setAccessibleDescription(tr("Hue %1°, saturation %2 %").arg(qRound(hue)).arg(qRound(100 * saturation)));
    update();
}

QPoint ColorField::PlaceOf(double hue, double saturation) const
{
    const QRect inside = Inside();
    const double across = std::min<double>(hue, LastHue) / LastHue;
    return {inside.left() + qRound(across * (inside.width() - 1)),
            inside.bottom() - qRound(saturation * (inside.height() - 1))};
}

QSize ColorField::sizeHint() const
{
    return WantedSize;
}

QSize ColorField::minimumSizeHint() const
{
    return LeastSize;
}

QRect ColorField::Inside() const
{
    return rect().adjusted(Line, Line, -Line, -Line);
}

void ColorField::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect inside = Inside();
    PaintShownGradients(painter, inside, {HuesOver(inside), WhiteOver(inside)});
    ColorMark::PaintLine(painter, rect(), *this);

    painter.setClipRect(inside);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF middle = QPointF(PlaceOf(m_Hue, m_Saturation)) + QPointF(0.5, 0.5);
    ColorMark::PaintRing(painter, middle, MarkRadius);
}

void ColorField::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) return;
    m_Former = {m_Hue, m_Saturation};
    emit DragBegan();
    PickAt(event->pos());
}

void ColorField::mouseMoveEvent(QMouseEvent* event)
{
    if (m_Former) PickAt(event->pos());
}

void ColorField::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) m_Former.reset();
}

void ColorField::hideEvent(QHideEvent* event)
{
    m_Former.reset();
    QWidget::hideEvent(event);
}

void ColorField::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_Former) return CancelDrag();
    const double factor = event->modifiers().testFlag(Qt::ShiftModifier) ? LargeFactor : 1;
    switch (event->key()) {
    case Qt::Key_Left: return Pick(m_Hue - factor * HueStep, m_Saturation);
    case Qt::Key_Right: return Pick(m_Hue + factor * HueStep, m_Saturation);
    case Qt::Key_Up: return Pick(m_Hue, m_Saturation + factor * SaturationStep);
    case Qt::Key_Down: return Pick(m_Hue, m_Saturation - factor * SaturationStep);
    case Qt::Key_Home: return Pick(0, m_Saturation);
    case Qt::Key_End: return Pick(LastHue, m_Saturation);
    case Qt::Key_PageUp: return Pick(m_Hue, 1);
    case Qt::Key_PageDown: return Pick(m_Hue, 0);
    default: QWidget::keyPressEvent(event);
    }
}

void ColorField::CancelDrag()
{
    const auto [hue, saturation] = *std::exchange(m_Former, std::nullopt);
    emit DragCancelled();
    if (hue == m_Hue && saturation == m_Saturation) return;
    SetHueSaturation(hue, saturation);
    emit Picked(hue, saturation);
}

void ColorField::PickAt(const QPoint& pos)
{
    const QRect inside = Inside();
    if (inside.width() < 2 || inside.height() < 2) return;
    Pick(LastHue * double(pos.x() - inside.left()) / (inside.width() - 1),
         double(inside.bottom() - pos.y()) / (inside.height() - 1));
}

void ColorField::Pick(double hue, double saturation)
{
    // The field ends at both sides; a drag beyond stays at the edge.
    SetHueSaturation(std::clamp<double>(hue, 0, LastHue), std::clamp<double>(saturation, 0, 1));
    emit Picked(m_Hue, m_Saturation);
}
