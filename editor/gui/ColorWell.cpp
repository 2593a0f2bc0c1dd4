#include "gui/ColorWell.h"

#include "core/ZKCMSManager.h"
#include "gui/DisplayColors.h"

#include <QPainter>

ColorWell::ColorWell(QWidget* parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    const auto repaint = qOverload<>(&QWidget::update);
    connect(ZKCMSManager::GetInstance(), &ZKCMSManager::DisplayChanged, this, repaint);
    connect(ZKCMSManager::GetInstance(), &ZKCMSManager::WorkingProfileChanged, this, repaint);
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
    const QColor shown = DisplayColors::ShownOwn(m_Color);
    QPainter painter(this);
    painter.setPen(hasFocus() ? palette().color(QPalette::Link) : palette().color(QPalette::Mid));
    painter.setBrush(shown);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.setPen(shown.lightness() < 128 ? QColor(255, 255, 255, 96) : QColor(255, 255, 255, 160));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(1, 1, -2, -2));
}
