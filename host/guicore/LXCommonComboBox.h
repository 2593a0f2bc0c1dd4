#pragma once

#include "ZKHostExport.h"

#include <QComboBox>

/// The combo box of the program: its list opens wide enough for the longest row, so that no row is cut,
/// however narrow the box itself is. Main thread only.
class ZK_HOST_EXPORT LXCommonComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit LXCommonComboBox(QWidget* parent = nullptr);
    ~LXCommonComboBox() override;

    /// Never narrower than the view's own minimum width, and inside the screen.
    void showPopup() override;
};
