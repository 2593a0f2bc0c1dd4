#include "gui/ColorWell.h"

#include <QPainter>

ColorWell::ColorWell(QWidget* parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
}

void ColorWell::SetColor(const QColor& color)
{
    m_Color = color;
    update();
}

QSize ColorWell::sizeHint() const
{
    return {22, 22};
}

void ColorWell::paintEvent(QPaintEvent*)
{
    // A line that shows on the panel, then one that shows on the color.
    QPainter painter(this);
    painter.setPen(hasFocus() ? palette().color(QPalette::Link) : palette().color(QPalette::Mid));
    painter.setBrush(m_Color);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.setPen(m_Color.lightness() < 128 ? QColor(255, 255, 255, 96) : QColor(255, 255, 255, 160));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(1, 1, -2, -2));
}
