#include "guicore/LXColorComboBox.h"

#include "guicore/ColorSwatch.h"
#include "guicore/ColorText.h"

namespace {
constexpr QSize SwatchSize(32, 16);
constexpr int VisibleRows = 16;
} // namespace

LXColorComboBox::LXColorComboBox(QWidget* parent) : LXCommonComboBox(parent)
{
    setIconSize(SwatchSize);
    setMaxVisibleItems(VisibleRows);
}

LXColorComboBox::~LXColorComboBox() = default;

void LXColorComboBox::AddColor(const QColor& color)
{
    if (!color.isValid()) return;
    const QString text = color.alpha() == 255 ? ColorText::Opaque(color) : ColorText::WithAlpha(color);
    addItem(ColorSwatch::MakeIcon(color, SwatchSize), text, color);
}

QColor LXColorComboBox::GetColor(int row) const
{
    return itemData(row).value<QColor>();
}

int LXColorComboBox::FindColor(const QColor& color) const
{
    // Not by operator==, for which a color told in another model is another color.
    for (int row = 0; row < count(); ++row) {
        if (color.isValid() && GetColor(row).rgba() == color.rgba()) return row;
    }
    return -1;
}
