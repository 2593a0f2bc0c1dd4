#pragma once

#include "gui/TimeLeft.h"

#include <QTimer>

#include <functional>

class LXOperationProgressDlg;
class QLabel;
class QProgressBar;
class QPushButton;

/// The parts of a progress dialog. Main thread only.
class LXOperationProgressDlgPrivate
{
public:
    explicit LXOperationProgressDlgPrivate(LXOperationProgressDlg* dialog);

    static LXOperationProgressDlgPrivate* Get(const LXOperationProgressDlg* dialog);

    /// Another clock than that of the system, in milliseconds. What is noted of the work begins anew.
    void SetClock(std::function<qint64()> clock);

    /// Tells the time left of now.
    void UpdateTimeLeft();

private:
    friend class LXOperationProgressDlg;

    void SetUp();
    void SetRange(int minimum, int maximum);
    void SetPosition(int position);
    void BeginTimeLeft();

    LXOperationProgressDlg* m_pDialog;
    QLabel* m_pLabel;
    QProgressBar* m_pBar;
    QLabel* m_pTimeLbl;
    QPushButton* m_pCancelBtn;
    bool m_bCancelled = false;
    std::function<qint64()> m_Clock;
    TimeLeft m_TimeLeft;
    QTimer m_Second; ///< the time left goes on between two steps of the bar
};
