#pragma once

#include "guicore/LXDialog.h"

#include <memory>

class LexoPopupDialogPrivate;

/// A dialog without a frame that opens beside the control it belongs to, on the side where there is room:
/// below it if possible. A press outside and Escape reject it, Enter accepts. Main thread only.
///
/// With `show()` it leaves the program running, with `Exec()` it waits. A press outside only closes it.
class ZK_HOST_EXPORT LexoPopupDialog : public LXDialog
{
    Q_OBJECT

public:
    explicit LexoPopupDialog(QWidget* parent = nullptr);
    ~LexoPopupDialog() override;

    /// What it opens beside. Without one, or after its end, it opens where it was moved to, or in the middle
    /// of its parent.
    void SetAnchor(QWidget* anchor);

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    std::unique_ptr<LexoPopupDialogPrivate> m_pPrivate;
};
