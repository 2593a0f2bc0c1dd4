#include "app/WaitedWork.h"

#include "gui/LXOperationProgressDlg.h"

#include <QEventLoop>
#include <QFutureWatcher>
#include <QGuiApplication>
#include <QTimer>
#include <QtConcurrent>

#include <atomic>
#include <exception>

namespace {
constexpr int ShowDialogAfter = 700; // ms
constexpr int DialogInterval = 100;  // ms
constexpr int FullProgress = 1000;

/// What the worker and the dialog tell each other.
struct Exchange
{
    std::atomic<int> permille{0}; // 0 while nobody knows
    std::atomic<bool> isCancelled{false};
};

class WaitCursor
{
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }

    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }

    Q_DISABLE_COPY(WaitCursor)
};

void WaitUnderCursor(QFutureWatcher<void>& watcher)
{
    const WaitCursor cursor;
    QEventLoop loop;
    QObject::connect(&watcher, &QFutureWatcherBase::finished, &loop, &QEventLoop::quit);
    // One that goes with this function: left behind, it would look like work that is still to come.
    QTimer limit;
    limit.setSingleShot(true);
    QObject::connect(&limit, &QTimer::timeout, &loop, &QEventLoop::quit);
    limit.start(ShowDialogAfter);
    if (!watcher.isFinished()) loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void WaitUnderDialog(QFutureWatcher<void>& watcher, QWidget* parent, const QString& label, bool canCancel,
                     Exchange& exchange)
{
    LXOperationProgressDlg dialog(parent);
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.SetProgressLabel(label);
    dialog.ShowTimeLeft(true);
    if (canCancel) {
        QObject::connect(&dialog, &LXOperationProgressDlg::Cancelled, &dialog,
                         [&exchange] { exchange.isCancelled = true; });
    }

    const auto update = [&] {
        const int permille = exchange.permille;
        dialog.SetProgressRange(0, permille == 0 ? 0 : FullProgress);
        dialog.SetProgressPos(permille);
    };
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &dialog, update);
    timer.start(DialogInterval);
    update();

    QEventLoop loop;
    QObject::connect(&watcher, &QFutureWatcherBase::finished, &loop, &QEventLoop::quit);
    dialog.show();
    if (!watcher.isFinished()) loop.exec();
}
} // namespace

void WaitedWork::Run(QWidget* parent, const QString& label, bool canCancel,
                     const std::function<void(const FileProgress&)>& work)
{
    Exchange exchange;
    FileProgress progress;
    progress.setPermille = [&exchange](int permille) { exchange.permille = permille; };
    progress.isCancelled = [&exchange] { return exchange.isCancelled.load(); };

    std::exception_ptr failure;
    QFutureWatcher<void> watcher;
    watcher.setFuture(QtConcurrent::run([&] {
        try {
            work(progress);
        } catch (...) {
            failure = std::current_exception();
        }
    }));

    WaitUnderCursor(watcher);
    if (!watcher.isFinished()) WaitUnderDialog(watcher, parent, label, canCancel, exchange);
    watcher.waitForFinished();
    if (failure) std::rethrow_exception(failure);
}
