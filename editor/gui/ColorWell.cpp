#include "gui/ColorWell.h"

#include "core/ZKCMSManager.h"
#include "gui/DisplayColors.h"
#include "guicore/ColorSwatch.h"

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
    QPainter painter(this);
    const QColor line = palette().color(hasFocus() ? QPalette::Link : QPalette::Mid);
    ColorSwatch::PaintFramed(painter, rect(), DisplayColors::ShownOwn(m_Color), line);
}
