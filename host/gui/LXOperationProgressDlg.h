#pragma once

#include "ZKHostExport.h"

#include "guicore/LXDialog.h"

#include <memory>

class LXOperationProgressDlgPrivate;

/// A label, a bar and, once Cancelled() is connected, a button to cancel. Without a connection the dialog
/// can't be closed by the person. Main thread only.
class ZK_HOST_EXPORT LXOperationProgressDlg : public LXDialog
{
    Q_OBJECT

public:
    explicit LXOperationProgressDlg(QWidget* parent = nullptr);
    ~LXOperationProgressDlg() override;

    /// 0 to 100 at first. Equal bounds make the bar an endless one.
    void SetProgressRange(int minimum, int maximum);
    /// Clamped to the range.
    void SetProgressPos(int position);
    int GetProgressPos() const;
    int GetProgressMinimum() const;
    int GetProgressMaximum() const;
    void SetProgressLabel(const QString& label);

    /// Whether work that lasts longer than a few seconds also tells how long it will still take. Off at
    /// first: only a bar whose position follows the work tells anything about time. Another range, and a
    /// position that goes back, begin a new estimate.
    void ShowTimeLeft(bool show);
    bool IsTimeLeftShown() const;

public slots:
    /// Sends Cancelled(), once; the dialog stays until whoever shows it closes it.
    void Reject() override;

signals:
    void Cancelled();

protected:
    void closeEvent(QCloseEvent* event) override;
    void connectNotify(const QMetaMethod& signal) override;

private:
    friend class LXOperationProgressDlgPrivate;
    std::unique_ptr<LXOperationProgressDlgPrivate> m_pPrivate;
};
