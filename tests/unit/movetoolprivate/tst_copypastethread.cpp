#include "ProbeObject.h"
#include "movetoolprivate/CopyPasteThread.h"

#include "support/TestRegistry.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <stdexcept>

/// The engine by itself, with an object that can be slow, refuse, and throw.
class TestCopyPasteThread : public QObject
{
    Q_OBJECT

private slots:
    void liftingCommittingAndCancellingRunWhereTheyAreCalled();
    void answersAreHandedOn();
    void withoutAnObjectNothingHappens();
    void aPostedMoveRunsOnTheWorker();
    void postsDuringAMoveLeaveOneThatComesAfterIt();
    void postingDoesNotWaitForAMove();
    void aMoveAtOnceRunsWhereItIsCalledAndHandsItsAnswerOn();
    void aMoveAtOnceOvertakesWhatIsPosted();
    void onlyTheNewestPostedMoveIsPending();
    void flushDropsWhatIsPosted();
    void flushReturnsOnlyAfterARunningMove();
    void aMoveThatWasTakenOutBeforeTheFlushIsNotCarriedOut();
    void otherEventsMoveNothing();
    void aPostedMoveThatRefusesIsToldOnTheMainThread();
    void aMoveAtOnceThatRefusesOnlyAnswers();
    void whateverAPostedMoveThrowsEndsInTheRing_data();
    void whateverAPostedMoveThrowsEndsInTheRing();
    void whateverAMoveAtOnceThrowsEndsInTheRing();
    void whateverARefreshThrowsEndsInTheRing();
    void theWorkerGoesOnAfterAFailure();
    void deletingWaitsForAMoveThatRuns();
    void anUnusedThreadEnds();
};

namespace {
const QRegularExpression
    UnknownInTheBase("Unexpected unknown exception: line=\\d+, file=\"src/movetoolprivate/CopyPasteBase\"$");

/// An engine with its probe, which stays readable until the engine goes.
struct Engine
{
    ProbeObject* probe = new ProbeObject;
    CopyPasteThread thread{probe};
};

bool Refuse(const QPoint&)
{
    return false;
}

/// Waits until the worker has done all that was posted before.
void WaitForWorker(ProbeObject* probe)
{
    QMetaObject::invokeMethod(
        probe, [] {}, Qt::BlockingQueuedConnection);
}

/// Keeps the worker from its events until the gate opens, without a move that runs.
void HoldWorker(ProbeObject* probe, Gate& gate)
{
    QMetaObject::invokeMethod(
        probe, [&gate] { gate.Pass(); }, Qt::QueuedConnection);
}

/// Opens the gate a while later, from elsewhere, since the caller is about to wait for the move behind it.
std::thread OpenLater(Gate& gate)
{
    return std::thread([&gate] {
        for (int i = 0; i < 1000; ++i)
            std::this_thread::yield();
        gate.Open();
    });
}
} // namespace

void TestCopyPasteThread::liftingCommittingAndCancellingRunWhereTheyAreCalled()
{
    Engine engine;
    auto* view = reinterpret_cast<ZKDocumentView*>(&engine);
    auto* stack = reinterpret_cast<LexoUndoStack*>(&engine);
    QVERIFY(engine.thread.Begin(view, 7));
    QCOMPARE(engine.probe->beginView, view);
    QCOMPARE(engine.probe->beginId, 7u);
    QVERIFY(engine.probe->beginThread == std::this_thread::get_id());
    QVERIFY(engine.thread.Commit(stack));
    QCOMPARE(engine.probe->commitStack, stack);
    QVERIFY(engine.thread.Cancel());
    engine.thread.Refresh();
    QCOMPARE(engine.probe->commits, 1);
    QCOMPARE(engine.probe->cancels, 1);
    QCOMPARE(engine.probe->refreshes, 1);
}

void TestCopyPasteThread::answersAreHandedOn()
{
    Engine engine;
    engine.probe->answer = false;
    QVERIFY(!engine.thread.Begin(nullptr, 1));
    QVERIFY(!engine.thread.Commit(nullptr));
    QVERIFY(!engine.thread.Cancel());
}

void TestCopyPasteThread::withoutAnObjectNothingHappens()
{
    CopyPasteThread thread(nullptr);
    QVERIFY(!thread.Begin(nullptr, 1));
    QVERIFY(!thread.Move(QPoint(1, 1)));
    QVERIFY(!thread.Commit(nullptr));
    QVERIFY(!thread.Cancel());
    thread.PostMove(QPoint(1, 1));
    thread.Refresh();
    thread.Flush();
}

void TestCopyPasteThread::aPostedMoveRunsOnTheWorker()
{
    Engine engine;
    engine.thread.PostMove(QPoint(3, -4));
    QTRY_COMPARE(engine.probe->Moves().size(), std::size_t(1));
    QCOMPARE(engine.probe->Moves()[0].position, QPoint(3, -4));
    QVERIFY(engine.probe->Moves()[0].thread != std::this_thread::get_id());
}

void TestCopyPasteThread::postsDuringAMoveLeaveOneThatComesAfterIt()
{
    Gate started;
    Gate held;
    Engine engine;
    engine.probe->onMove = [&](const QPoint&) {
        started.Open();
        held.Pass();
        return true;
    };
    engine.thread.PostMove(QPoint(1, 0));
    started.Pass();
    for (int x = 2; x <= 5; ++x)
        engine.thread.PostMove(QPoint(x, 0));
    held.Open();
    QTRY_COMPARE(engine.probe->Positions(), QList<QPoint>({QPoint(1, 0), QPoint(5, 0)}));
    engine.thread.Flush();
    QCOMPARE(engine.probe->Positions(), QList<QPoint>({QPoint(1, 0), QPoint(5, 0)}));
}

void TestCopyPasteThread::postingDoesNotWaitForAMove()
{
    Gate started;
    Gate held;
    Engine engine;
    engine.probe->onMove = [&](const QPoint&) {
        started.Open();
        held.Pass();
        return true;
    };
    engine.thread.PostMove(QPoint(1, 0));
    started.Pass();
    // Comes back although the move can't end before the gate is opened below.
    engine.thread.PostMove(QPoint(2, 0));
    QVERIFY(!held.IsOpen());
    held.Open();
    QTRY_COMPARE(engine.probe->Moves().size(), std::size_t(2));
}

void TestCopyPasteThread::aMoveAtOnceRunsWhereItIsCalledAndHandsItsAnswerOn()
{
    Engine engine;
    QVERIFY(engine.thread.Move(QPoint(1, 2)));
    QVERIFY(engine.probe->Moves()[0].thread == std::this_thread::get_id());
    engine.probe->onMove = Refuse;
    QVERIFY(!engine.thread.Move(QPoint(3, 4)));
    QCOMPARE(engine.probe->Positions(), QList<QPoint>({QPoint(1, 2), QPoint(3, 4)}));
}

void TestCopyPasteThread::aMoveAtOnceOvertakesWhatIsPosted()
{
    Gate held;
    Engine engine;
    HoldWorker(engine.probe, held);
    engine.thread.PostMove(QPoint(1, 0));
    QVERIFY(engine.thread.Move(QPoint(2, 0)));
    held.Open();
    WaitForWorker(engine.probe);
    QCOMPARE(engine.probe->Positions(), QList<QPoint>({QPoint(2, 0)}));
}

void TestCopyPasteThread::onlyTheNewestPostedMoveIsPending()
{
    Gate held;
    Engine engine;
    HoldWorker(engine.probe, held);
    for (int x = 1; x <= 5; ++x)
        engine.thread.PostMove(QPoint(x, 0));
    held.Open();
    WaitForWorker(engine.probe);
    QCOMPARE(engine.probe->Positions(), QList<QPoint>({QPoint(5, 0)}));
    QCOMPARE(engine.probe->Delivered(), 1);
}

void TestCopyPasteThread::flushDropsWhatIsPosted()
{
    Gate started;
    Gate held;
    Engine engine;
    QMetaObject::invokeMethod(
        engine.probe,
        [&] {
            started.Open();
            held.Pass();
        },
        Qt::QueuedConnection);
    started.Pass();
    engine.thread.PostMove(QPoint(1, 0));
    engine.thread.Flush();
    held.Open();
    WaitForWorker(engine.probe);
    QCOMPARE(engine.probe->Delivered(), 0);
    // A later one is carried out again.
    engine.thread.PostMove(QPoint(2, 0));
    WaitForWorker(engine.probe);
    QCOMPARE(engine.probe->Positions(), QList<QPoint>({QPoint(2, 0)}));
}

void TestCopyPasteThread::flushReturnsOnlyAfterARunningMove()
{
    Gate started;
    Gate flushing;
    std::atomic<bool> hasEnded{false};
    Engine engine;
    engine.probe->onMove = [&](const QPoint&) {
        started.Open();
        flushing.Pass();
        for (int i = 0; i < 1000; ++i)
            std::this_thread::yield();
        hasEnded = true;
        return true;
    };
    engine.thread.PostMove(QPoint(1, 0));
    started.Pass();
    flushing.Open();
    engine.thread.Flush();
    QVERIFY(hasEnded);
}

void TestCopyPasteThread::aMoveThatWasTakenOutBeforeTheFlushIsNotCarriedOut()
{
    // Qt has taken the event out of the worker's queue: nobody can remove it there any more.
    ProbeObject probe;
    CopyPasteBase::MoveEvent counts(QPoint(1, 0), 0);
    QCoreApplication::sendEvent(&probe, &counts);
    QCOMPARE(probe.Positions(), QList<QPoint>({QPoint(1, 0)}));
    CopyPasteBase::MoveEvent overtaken(QPoint(2, 0), 1);
    QCoreApplication::sendEvent(&probe, &overtaken);
    QCOMPARE(probe.Positions(), QList<QPoint>({QPoint(1, 0)}));
}

void TestCopyPasteThread::otherEventsMoveNothing()
{
    ProbeObject probe;
    QEvent other(static_cast<QEvent::Type>(QEvent::User + 2));
    QCoreApplication::sendEvent(&probe, &other);
    QCOMPARE(probe.Moves().size(), std::size_t(0));
}

void TestCopyPasteThread::aPostedMoveThatRefusesIsToldOnTheMainThread()
{
    Engine engine;
    QSignalSpy refused(&engine.thread, &CopyPasteThread::UnexpectedException);
    QSignalSpy broken(&engine.thread, &CopyPasteThread::UnexpectedError);
    QThread* heardOn = nullptr;
    connect(
        &engine.thread, &CopyPasteThread::UnexpectedException, &engine.thread,
        [&] { heardOn = QThread::currentThread(); }, Qt::DirectConnection);
    engine.probe->onMove = Refuse;
    engine.thread.PostMove(QPoint(1, 0));
    QTRY_COMPARE(refused.count(), 1);
    QCOMPARE(refused[0][0].value<CopyPasteThread*>(), &engine.thread);
    QCOMPARE(heardOn, QThread::currentThread());
    QCOMPARE(broken.count(), 0);
}

void TestCopyPasteThread::aMoveAtOnceThatRefusesOnlyAnswers()
{
    Engine engine;
    QSignalSpy refused(&engine.thread, &CopyPasteThread::UnexpectedException);
    engine.probe->onMove = Refuse;
    QVERIFY(!engine.thread.Move(QPoint(1, 0)));
    QVERIFY(!engine.thread.IsStateUnknown());
    QCoreApplication::sendPostedEvents();
    QCOMPARE(refused.count(), 0);
}

void TestCopyPasteThread::whateverAPostedMoveThrowsEndsInTheRing_data()
{
    QTest::addColumn<bool>("isStandard");
    QTest::newRow("a standard exception that the object's own ring let through") << true;
    QTest::newRow("anything else") << false;
}

void TestCopyPasteThread::whateverAPostedMoveThrowsEndsInTheRing()
{
    QFETCH(bool, isStandard);
    Engine engine;
    QSignalSpy refused(&engine.thread, &CopyPasteThread::UnexpectedException);
    QSignalSpy broken(&engine.thread, &CopyPasteThread::UnexpectedError);
    engine.probe->onMove = [isStandard](const QPoint&) -> bool {
        if (isStandard) throw std::runtime_error("no room");
        throw 5;
    };
    QTest::ignoreMessage(QtDebugMsg, UnknownInTheBase);
    engine.thread.PostMove(QPoint(1, 0));
    QTRY_COMPARE(broken.count(), 1);
    QCOMPARE(broken[0][0].value<CopyPasteThread*>(), &engine.thread);
    QCOMPARE(refused.count(), 0);
}

void TestCopyPasteThread::whateverAMoveAtOnceThrowsEndsInTheRing()
{
    Engine engine;
    QSignalSpy broken(&engine.thread, &CopyPasteThread::UnexpectedError);
    engine.probe->onMove = [](const QPoint&) -> bool { throw 5; };
    QTest::ignoreMessage(QtDebugMsg, UnknownInTheBase);
    QVERIFY(!engine.thread.IsStateUnknown());
    QVERIFY(!engine.thread.Move(QPoint(1, 0)));
    QVERIFY(engine.thread.IsStateUnknown());
    QCOMPARE(broken.count(), 0);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(broken.count(), 1);
}

void TestCopyPasteThread::whateverARefreshThrowsEndsInTheRing()
{
    Engine engine;
    QSignalSpy broken(&engine.thread, &CopyPasteThread::UnexpectedError);
    engine.probe->onRefresh = [] { throw std::runtime_error("no room"); };
    QTest::ignoreMessage(QtDebugMsg, UnknownInTheBase);
    engine.thread.Refresh();
    QCoreApplication::sendPostedEvents();
    QCOMPARE(broken.count(), 1);
    // The mutex is free again.
    QVERIFY(engine.thread.Move(QPoint(1, 0)));
}

void TestCopyPasteThread::theWorkerGoesOnAfterAFailure()
{
    Engine engine;
    QSignalSpy broken(&engine.thread, &CopyPasteThread::UnexpectedError);
    engine.probe->onMove = [](const QPoint& position) {
        if (position.x() == 1) throw 5;
        return true;
    };
    QTest::ignoreMessage(QtDebugMsg, UnknownInTheBase);
    engine.thread.PostMove(QPoint(1, 0));
    QTRY_COMPARE(broken.count(), 1);
    engine.thread.PostMove(QPoint(2, 0));
    QTRY_COMPARE(engine.probe->Positions(), QList<QPoint>({QPoint(1, 0), QPoint(2, 0)}));
}

void TestCopyPasteThread::deletingWaitsForAMoveThatRuns()
{
    Gate started;
    Gate held;
    std::atomic<bool> hasEnded{false};
    QList<QPoint> moves;
    bool wasEndedWhenDestroyed = false;
    std::thread opener;
    {
        Engine engine;
        engine.probe->onMove = [&](const QPoint& position) {
            moves << position;
            started.Open();
            held.Pass();
            hasEnded = true;
            return true;
        };
        engine.probe->onDestroyed = [&] { wasEndedWhenDestroyed = hasEnded; };
        engine.thread.PostMove(QPoint(1, 0));
        started.Pass();
        engine.thread.PostMove(QPoint(2, 0));
        opener = OpenLater(held);
    }
    opener.join();
    QVERIFY(wasEndedWhenDestroyed);
    QCOMPARE(moves.first(), QPoint(1, 0));
    QVERIFY(moves.size() <= 2);
}

void TestCopyPasteThread::anUnusedThreadEnds()
{
    bool isDestroyed = false;
    {
        Engine engine;
        engine.probe->onDestroyed = [&] { isDestroyed = true; };
    }
    QVERIFY(isDestroyed);
}

ZK_REGISTER_TEST(tst_copypastethread, TestCopyPasteThread)
#include "tst_copypastethread.moc"
