#include "gui/LXOperationProgress.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QPushButton>
#include <QSemaphore>
#include <QTest>
#include <QThread>
#include <QTimer>

namespace {
/// Works until it is let go, or cancelled.
class HeldWork : public LXOperationProgress
{
public:
    explicit HeldWork(bool endsWhenCancelled = true) : m_bEndsWhenCancelled(endsWhenCancelled) {}

    ~HeldWork() override
    {
        LetGo();
        WaitForFinished();
    }

    void LetGo() { m_Gate.release(); }

    void OnCancel() override
    {
        LXOperationProgress::OnCancel();
        if (m_bEndsWhenCancelled) LetGo();
    }

    bool hasEnded = false;
    QThread* worker = nullptr;

protected:
    void Run() override
    {
        worker = QThread::currentThread();
        m_Gate.acquire();
        hasEnded = true;
    }

private:
    bool m_bEndsWhenCancelled;
    QSemaphore m_Gate;
};
} // namespace

class TestOperationProgress : public QObject
{
    Q_OBJECT

private slots:
    void shortWorkShowsNoDialog();
    void longWorkShowsTheDialogUntilItEnds();
    void cancelAnswersZero();
    void cancelDoesNotWaitForTheWork();
    void escapeCancels();
    void cancelFromTheWorkerClosesTheDialog();
    void cancelBeforeTheDialogShowsNone();
};

void TestOperationProgress::shortWorkShowsNoDialog()
{
    HeldWork work;
    work.LetGo();
    QCOMPARE(work.Execute(), 1);
    work.WaitForFinished();
    QVERIFY(work.hasEnded);
    QVERIFY(work.worker != QThread::currentThread());
    QVERIFY(!work.testAttribute(Qt::WA_WState_Created) || !work.isVisible());
    QVERIFY(!work.IsCancelled());
}

void TestOperationProgress::longWorkShowsTheDialogUntilItEnds()
{
    HeldWork work;
    InputDriver input;
    input.WhenModalShows<LXOperationProgress>([&](LXOperationProgress*) { work.LetGo(); });
    QCOMPARE(work.Execute(), 1);
    QCOMPARE(input.CountWaitingActions(), 0);
    QVERIFY(!work.isVisible());
}

void TestOperationProgress::cancelAnswersZero()
{
    HeldWork work;
    InputDriver input;
    input.WhenModalShows<LXOperationProgress>([&](LXOperationProgress* dialog) {
        auto* button = dialog->findChild<QPushButton*>();
        QVERIFY(button->isVisible());
        input.Click(button);
    });
    QCOMPARE(work.Execute(), 0);
    work.WaitForFinished();
    QVERIFY(work.hasEnded);
    QVERIFY(work.IsCancelled());
    QVERIFY(!work.isVisible());
}

void TestOperationProgress::cancelDoesNotWaitForTheWork()
{
    HeldWork work(false);
    InputDriver input;
    input.WhenModalShows<LXOperationProgress>(
        [&](LXOperationProgress* dialog) { input.Click(dialog->findChild<QPushButton*>()); });
    QCOMPARE(work.Execute(), 0);
    QVERIFY(!work.hasEnded);
    work.LetGo();
    work.WaitForFinished();
    QVERIFY(work.hasEnded);
}

void TestOperationProgress::escapeCancels()
{
    HeldWork work;
    InputDriver input;
    input.WhenModalShows<LXOperationProgress>([&](LXOperationProgress*) { input.Key(Qt::Key_Escape); });
    QCOMPARE(work.Execute(), 0);
}

void TestOperationProgress::cancelFromTheWorkerClosesTheDialog()
{
    HeldWork work;
    InputDriver input;
    std::unique_ptr<QThread> other;
    input.WhenModalShows<LXOperationProgress>([&](LXOperationProgress*) {
        other.reset(QThread::create([&] { work.OnCancel(); }));
        other->start();
    });
    QCOMPARE(work.Execute(), 0);
    QVERIFY(other->wait());
}

void TestOperationProgress::cancelBeforeTheDialogShowsNone()
{
    HeldWork work;
    QTimer::singleShot(0, &work, [&] { work.OnCancel(); });
    QCOMPARE(work.Execute(), 0);
    QVERIFY(!work.isVisible());
}

ZK_REGISTER_TEST(tst_operationprogress, TestOperationProgress)
#include "tst_operationprogress.moc"
