#pragma once

#include "guicore/LXDialog.h"

#include <QColor>
#include <QSize>

#include <memory>

namespace Ui {
class NewDocumentDialog;
}

/// Asks for the size and the ground of a new picture, starting with what was chosen last time.
/// Main thread only.
class NewDocumentDialog : public LXDialog
{
    Q_OBJECT

public:
    explicit NewDocumentDialog(QWidget* parent);
    ~NewDocumentDialog() override;

    /// In pixels.
    QSize GetSize() const;

    /// White, the background color, or `Qt::transparent`.
    QColor GetBackground() const;

    void Accept() override;

private:
    std::unique_ptr<Ui::NewDocumentDialog> m_pUi;
};
