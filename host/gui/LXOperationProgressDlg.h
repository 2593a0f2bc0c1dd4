#pragma once

#include "ZKHostExport.h"

#include "guicore/LXDialog.h"

class QLabel;
class QProgressBar;
class QPushButton;

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

public slots:
    /// Sends Cancelled(), once; the dialog stays until whoever shows it closes it.
    void Reject() override;

signals:
    void Cancelled();

protected:
    void closeEvent(QCloseEvent* event) override;
    void connectNotify(const QMetaMethod& signal) override;

private:
    QLabel* m_pLabel;
    QProgressBar* m_pBar;
    QPushButton* m_pCancelBtn;
    bool m_bCancelled = false;
};
