#pragma once

#include "ZKHostExport.h"

#include "gui/LXOperationProgressDlg.h"

#include <QFuture>

#include <atomic>

/// Work on a worker that the person may cancel, under a dialog with a bar. The dialog shows only when the
/// work takes longer than a moment, and tells the time left. Main thread only, but for Run() and
/// IsCancelled().
class ZK_HOST_EXPORT LXOperationProgress : public LXOperationProgressDlg
{
    Q_OBJECT

public:
    explicit LXOperationProgress(QWidget* parent = nullptr);
    /// Run() must have ended: who derives waits for it while its own parts still stand.
    ~LXOperationProgress() override;

    /// Runs Run() and waits for its end, or until it is cancelled: 1 when it has come to its end, 0 when it
    /// was cancelled; then it may still be running. Mouse and keys wait as well.
    int Execute();

    /// Waits until Run() has ended.
    void WaitForFinished();

    /// Any thread.
    bool IsCancelled() const { return m_bCancelled; }

public slots:
    /// The work isn't wanted any more: Execute() answers 0 from now on. An override tells its Run() too, and
    /// calls this. Any thread.
    virtual void OnCancel();

protected:
    /// The work, on a worker of the global pool. Must not throw.
    virtual void Run() = 0;

private:
    std::atomic<bool> m_bCancelled{false};
    QFuture<void> m_Work;
};
