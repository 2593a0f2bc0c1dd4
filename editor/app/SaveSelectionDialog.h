#pragma once

#include "guicore/LXDialog.h"

#include <QStringList>

#include <memory>

namespace Ui {
class SaveSelectionDialog;
}

/// Asks for the name that a selection is kept under: a new one, or one of those that are there, which is then
/// replaced. Main thread only.
class SaveSelectionDialog : public LXDialog
{
    Q_OBJECT

public:
    /// The first offer is a name that isn't there yet.
    SaveSelectionDialog(const QStringList& names, QWidget* parent);
    ~SaveSelectionDialog() override;

    /// Without spaces around it; never empty once the dialog is accepted.
    QString GetName() const;

public slots:
    void Accept() override;

private:
    void ShowOutcome();

    std::unique_ptr<Ui::SaveSelectionDialog> m_pUi;
    QStringList m_Names;
};
