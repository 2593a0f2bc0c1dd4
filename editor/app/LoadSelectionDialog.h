#pragma once

#include "guicore/LXDialog.h"
#include "history/SelectionCommandData.h"

#include <QStringList>

#include <memory>

namespace Ui {
class LoadSelectionDialog;
}

/// Asks which of the saved selections comes back, and how it goes with the present one. Main thread only.
class LoadSelectionDialog : public LXDialog
{
    Q_OBJECT

public:
    /// @param names         at least one
    /// @param hasSelection  without one there is nothing to combine
    LoadSelectionDialog(const QStringList& names, bool hasSelection, QWidget* parent);
    ~LoadSelectionDialog() override;

    /// Among the names.
    int GetRow() const;
    SelectionCommandData::LogicalOp GetOperation() const;

private:
    std::unique_ptr<Ui::LoadSelectionDialog> m_pUi;
};
