#include "gui/LXOperationProgress.h"

#include <QEventLoop>
#include <QFutureWatcher>
#include <QTimer>
#include <QtConcurrentRun>

namespace {
/// Work that is done by then shows no dialog: one that flashes up tells nothing.
constexpr int WaitBeforeShowing = 300;
} // namespace

LXOperationProgress::LXOperationProgress(QWidget* parent) : LXOperationProgressDlg(parent)
{
    ShowTimeLeft(true);
    connect(this, &LXOperationProgressDlg::Cancelled, this, &LXOperationProgress::OnCancel);
}

LXOperationProgress::~LXOperationProgress()
{
    Q_ASSERT(m_Work.isFinished());
}

int LXOperationProgress::Execute()
{
    m_Work = QtConcurrent::run([this] { Run(); });
    QFutureWatcher<void> watcher;
    QEventLoop moment;
    connect(&watcher, &QFutureWatcherBase::finished, &moment, &QEventLoop::quit);
    QTimer::singleShot(WaitBeforeShowing, &moment, &QEventLoop::quit);
    watcher.setFuture(m_Work);
    moment.exec(QEventLoop::ExcludeUserInputEvents);

    if (!watcher.isFinished() && !IsCancelled()) {
        connect(&watcher, &QFutureWatcherBase::finished, this, &LXOperationProgress::Accept);
        Exec();
    }
    return IsCancelled() ? QDialog::Rejected : QDialog::Accepted;
}

void LXOperationProgress::WaitForFinished()
{
    m_Work.waitForFinished();
}

void LXOperationProgress::OnCancel()
{
    m_bCancelled = true;
    // Rejecting would ask whoever shows the dialog, which is us.
    QMetaObject::invokeMethod(this, [this] { done(QDialog::Rejected); });
}
