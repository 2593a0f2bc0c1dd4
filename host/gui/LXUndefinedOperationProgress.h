#pragma once

#include "ZKHostExport.h"

#include "guicore/LXDialog.h"

class QLabel;
class QProgressBar;

/// Work of unknown length on a worker, under a dialog with an endless bar. The person can't close the dialog,
/// and it shows only when the work takes longer than a moment. Main thread, but for Run().
class ZK_HOST_EXPORT LXUndefinedOperationProgress : public LXDialog
{
    Q_OBJECT

public:
    explicit LXUndefinedOperationProgress(QWidget* parent = nullptr);
    ~LXUndefinedOperationProgress() override;

    void SetProgressLabel(const QString& label);

    /// Runs Run() and waits for its end: 1. Mouse and keys wait as well.
    int Execute();

    void setVisible(bool visible) override;

public slots:
    /// Does nothing: the work has no way to be stopped.
    void Reject() override;

protected:
    /// The work, on a worker of the global pool. Must not throw.
    virtual void Run() = 0;

    void closeEvent(QCloseEvent* event) override;

private:
    void Build();

    QString m_Label;
    QLabel* m_pLabel = nullptr; ///< null until the dialog is about to show, as is the bar
    QProgressBar* m_pBar = nullptr;
};
