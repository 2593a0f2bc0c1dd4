#include "gui/ColorPatch.h"

#include "gui/DisplayColors.h"
#include "guicore/ColorSwatch.h"
#include "guicore/ColorText.h"

#include <QPainter>

ColorPatch::ColorPatch(QWidget* parent) : QWidget(parent) {}

void ColorPatch::SetColor(const QColor& color)
{
    m_Color = color;
    setAccessibleDescription(ColorText::WithAlpha(color));
    update();
}

QSize ColorPatch::sizeHint() const
{
    return {48, 32};
}

void ColorPatch::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    ColorSwatch::PaintFramed(painter, rect(), DisplayColors::ShownOwn(m_Color),
                             palette().color(QPalette::Mid));
}
