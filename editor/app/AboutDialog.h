#pragma once

#include "guicore/LXDialog.h"

#include <memory>

namespace Ui {
class AboutDialog;
}

/// Tells the program's version and the versions of the libraries that it runs with. Main thread only.
class AboutDialog : public LXDialog
{
    Q_OBJECT

public:
    explicit AboutDialog(QWidget* parent);
    ~AboutDialog() override;

private:
    std::unique_ptr<Ui::AboutDialog> m_pUi;
};
