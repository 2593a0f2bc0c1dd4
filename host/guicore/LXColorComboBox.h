#pragma once

#include "guicore/LXCommonComboBox.h"

#include <QColor>

/// A combo box of colors: each row shows its color and tells it as "#RRGGBB", or as "#AARRGGBB" when it is
/// translucent. Colors are the program's own: what is shown follows the screen, what is told doesn't. Main
/// thread only.
class ZK_HOST_EXPORT LXColorComboBox : public LXCommonComboBox
{
    Q_OBJECT

public:
    explicit LXColorComboBox(QWidget* parent = nullptr);
    ~LXColorComboBox() override;

    /// Appends a row, also for a color that is there already. An invalid color is ignored.
    void AddColor(const QColor& color);

    /// The color of a row; invalid for a bad one.
    QColor GetColor(int row) const;

    /// The first row of this color, all four channels compared; -1 if absent.
    int FindColor(const QColor& color) const;

private:
    void ShowColors();
};
