#include "selectionmenu/ColorSwatch.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {
constexpr int Side = 16;
} // namespace

ColorSwatch::ColorSwatch(const QColor& color, QWidget* parent) : QLabel(parent)
{
    QPixmap picture(Side, Side);
    picture.fill(color);
    setPixmap(picture);
    setMaximumSize(Side, Side);
    setFocusPolicy(Qt::StrongFocus);
    setToolTip(color.name());
    setAccessibleName(tr("Color %1").arg(color.name()));
}

void ColorSwatch::SetCurrent(bool current)
{
    if (current == m_bCurrent) return;
    m_bCurrent = current;
    update();
}

void ColorSwatch::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) emit Chosen();
}

void ColorSwatch::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space) {
        emit Chosen();
    } else {
        QLabel::keyPressEvent(event);
    }
}

void ColorSwatch::paintEvent(QPaintEvent* event)
{
    QLabel::paintEvent(event);
    if (!m_bCurrent && !hasFocus()) return;

    // A dark line inside a light one shows on every color.
    QPainter painter(this);
    painter.setPen(Qt::white);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.setPen(QPen(Qt::black, 1, hasFocus() && !m_bCurrent ? Qt::DotLine : Qt::SolidLine));
    painter.drawRect(rect().adjusted(1, 1, -2, -2));
}

void ColorSwatch::focusInEvent(QFocusEvent* event)
{
    QLabel::focusInEvent(event);
    update();
}

void ColorSwatch::focusOutEvent(QFocusEvent* event)
{
    QLabel::focusOutEvent(event);
    update();
}
