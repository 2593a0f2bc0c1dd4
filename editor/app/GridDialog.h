#pragma once

#include "guicore/LXDialog.h"

#include <memory>

namespace Ui {
class GridDialog;
}

/// Asks for the distance between the lines of the grid. Main thread only.
class GridDialog : public LXDialog
{
    Q_OBJECT

public:
    /// @param step  the first offer, document pixels
    GridDialog(int step, QWidget* parent);
    ~GridDialog() override;

    int GetStep() const;

private:
    std::unique_ptr<Ui::GridDialog> m_pUi;
};
