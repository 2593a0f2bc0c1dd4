#include "app/WaitedWork.h"
#include "gui/LXOperationProgressDlg.h"
#include "scripting/QuietEditor.h"
#include "support/TestRegistry.h"

#include <QApplication>
#include <QPushButton>
#include <QSemaphore>
#include <QTest>
#include <QThread>
#include <QThreadPool>
#include <QTimer>

#include <stdexcept>

class TestWaitedWork : public QObject
{
    Q_OBJECT

private slots:
    void workRunsOnAWorkerAndHasEndedAfterwards();
    void anExceptionComesOut();
    void shortWorkShowsNoDialog();
    void longWorkShowsHowFarItIs();
    void cancelReachesTheWork();
    void theCursorIsGivenBack();
    void nothingIsLeftThatCouldStillHappen();
};

namespace {
LXOperationProgressDlg* ShownDialog()
{
    return qobject_cast<LXOperationProgressDlg*>(QApplication::activeModalWidget());
}

/// Calls the action as soon as the waiting dialog stands.
void WhenDialogShows(const std::function<void(LXOperationProgressDlg*)>& action)
{
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, action] {
        LXOperationProgressDlg* dialog = ShownDialog();
        if (!dialog) return;
        timer->deleteLater();
        timer->stop();
        action(dialog);
    });
    timer->start(10);
}
} // namespace

void TestWaitedWork::workRunsOnAWorkerAndHasEndedAfterwards()
{
    QThread* worker = nullptr;
    WaitedWork::Run(nullptr, "Working…", false,
                    [&](const FileProgress&) { worker = QThread::currentThread(); });
    QVERIFY(worker);
    QVERIFY(worker != QThread::currentThread());
}

void TestWaitedWork::anExceptionComesOut()
{
    const auto fail = [](const FileProgress&) { throw std::runtime_error("full"); };
    QVERIFY_EXCEPTION_THROWN(WaitedWork::Run(nullptr, "Working…", false, fail), std::runtime_error);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestWaitedWork::shortWorkShowsNoDialog()
{
    bool hasShown = false;
    QSemaphore looked;
    QTimer::singleShot(50, qApp, [&] {
        hasShown = ShownDialog() != nullptr;
        looked.release();
    });
    WaitedWork::Run(nullptr, "Working…", true, [&](const FileProgress&) { looked.acquire(); });
    QVERIFY(!hasShown);
}

void TestWaitedWork::longWorkShowsHowFarItIs()
{
    int position = -1;
    bool tellsTimeLeft = false;
    QSemaphore looked;
    WhenDialogShows([&](LXOperationProgressDlg* dialog) {
        position = dialog->GetProgressPos();
        tellsTimeLeft = dialog->IsTimeLeftShown();
        QCOMPARE(dialog->GetProgressMaximum(), 1000);
        looked.release();
    });
    WaitedWork::Run(nullptr, "Working…", false, [&](const FileProgress& progress) {
        progress.Tell(250);
        looked.acquire();
    });
    QCOMPARE(position, 250);
    QVERIFY(tellsTimeLeft);
    QVERIFY(!ShownDialog());
}

void TestWaitedWork::cancelReachesTheWork()
{
    WhenDialogShows([](LXOperationProgressDlg* dialog) {
        auto* button = dialog->findChild<QPushButton*>();
        QVERIFY(button && button->isVisible());
        button->click();
    });
    bool isCancelled = false;
    WaitedWork::Run(nullptr, "Working…", true, [&](const FileProgress& progress) {
        while (!progress.IsCancelled())
            QThread::yieldCurrentThread();
        isCancelled = true;
    });
    QVERIFY(isCancelled);
    QVERIFY(!ShownDialog());
}

void TestWaitedWork::theCursorIsGivenBack()
{
    bool hadCursor = false;
    QSemaphore looked;
    QTimer::singleShot(0, qApp, [&] {
        hadCursor = QGuiApplication::overrideCursor() != nullptr;
        looked.release();
    });
    WaitedWork::Run(nullptr, "Working…", false, [&](const FileProgress&) { looked.acquire(); });
    QVERIFY(hadCursor);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestWaitedWork::nothingIsLeftThatCouldStillHappen()
{
    WaitedWork::Run(nullptr, "Working…", true, [](const FileProgress&) {});
    // The work is done a moment before the pool counts its thread as idle.
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    QCOMPARE(QuietEditor::Busy(), QStringList());
}

ZK_REGISTER_TEST(tst_waitedwork, TestWaitedWork)
#include "tst_waitedwork.moc"
