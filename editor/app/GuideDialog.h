#pragma once

#include "document/LXGuide.h"
#include "guicore/LXDialog.h"

#include <QSize>

#include <memory>

namespace Ui {
class GuideDialog;
}

/// Asks how a new guide runs and where. Main thread only.
class GuideDialog : public LXDialog
{
    Q_OBJECT

public:
    /// @param canvas  guides lie on it or on its edges; the first offer is its middle
    GuideDialog(const QSize& canvas, QWidget* parent);
    ~GuideDialog() override;

    LXGuide GetGuide() const;

private:
    void OfferMiddle();

    std::unique_ptr<Ui::GuideDialog> m_pUi;
    QSize m_Canvas;
};
