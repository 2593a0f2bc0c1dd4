#include "guicore/LXColorComboBox.h"

#include "core/ZKCMSManager.h"
#include "guicore/ColorSwatch.h"
#include "guicore/ColorText.h"

namespace {
constexpr QSize SwatchSize(32, 16);
constexpr int VisibleRows = 16;

QIcon SwatchOf(QColor color, const ZKCMSTransform& toScreen)
{
    toScreen(color);
    return ColorSwatch::MakeIcon(color, SwatchSize);
}
} // namespace

LXColorComboBox::LXColorComboBox(QWidget* parent) : LXCommonComboBox(parent)
{
    setIconSize(SwatchSize);
    setMaxVisibleItems(VisibleRows);
    const ZKCMSManager* manager = ZKCMSManager::GetInstance();
    connect(manager, &ZKCMSManager::DisplayChanged, this, &LXColorComboBox::ShowColors);
    connect(manager, &ZKCMSManager::WorkingProfileChanged, this, &LXColorComboBox::ShowColors);
}

LXColorComboBox::~LXColorComboBox() = default;

void LXColorComboBox::AddColor(const QColor& color)
{
    if (!color.isValid()) return;
    const QString text = color.alpha() == 255 ? ColorText::Opaque(color) : ColorText::WithAlpha(color);
    addItem(SwatchOf(color, ZKCMSManager::GetInstance()->OwnToDisplay()), text, color);
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

void LXColorComboBox::ShowColors()
{
    const ZKCMSTransform toScreen = ZKCMSManager::GetInstance()->OwnToDisplay();
    for (int row = 0; row < count(); ++row) {
        setItemIcon(row, SwatchOf(GetColor(row), toScreen));
    }
}
