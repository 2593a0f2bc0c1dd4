#include "Bystanders.h"
#include "PieceFixture.h"
#include "ProbeObject.h"
#include "movetoolprivate/CopyPasteThread.h"

#include "support/TestRegistry.h"

#include <QCoreApplication>
#include <QTest>

#include <atomic>
#include <chrono>
#include <random>
#include <thread>
#include <vector>

using namespace DocumentFixture;
using Clock = std::chrono::steady_clock;

namespace {
constexpr PieceKind Kinds[] = {PieceKind::LayerCopy, PieceKind::MaskCopy, PieceKind::LayerCut,
                               PieceKind::MaskCut};

/// How long the threads go on: a moment in the suite, longer for who asks with ZK_HAMMER_SECONDS.
Clock::time_point End()
{
    const int seconds = qEnvironmentVariableIntValue("ZK_HAMMER_SECONDS");
    return Clock::now() +
           (seconds > 0 ? std::chrono::milliseconds(seconds * 1000) : std::chrono::milliseconds(400));
}
} // namespace

/// The whole engine with its worker under load. The sanitizer can't see how Qt hands events from thread to
/// thread; tst_enginehammer and tst_piecehammer are for it.
class TestBusyEngine : public QObject
{
    Q_OBJECT

private slots:
    void manyCallersMoveOneAtATime();
    void afterAFlushNothingMoves();
    void enginesComeAndGoWithMovesUnderWay();
    void piecesAreCarriedBesideReadersAndComposition();
};

void TestBusyEngine::manyCallersMoveOneAtATime()
{
    std::atomic<int> inside{0};
    std::atomic<int> collisions{0};
    auto* probe = new ProbeObject;
    CopyPasteThread engine(probe);
    probe->onMove = [&](const QPoint&) {
        if (++inside != 1) ++collisions;
        std::this_thread::yield();
        --inside;
        return true;
    };
    probe->onRefresh = [&] {
        if (++inside != 1) ++collisions;
        --inside;
    };
    const Clock::time_point end = End();
    constexpr unsigned int callerCount = 4;
    std::vector<std::thread> callers;
    callers.reserve(callerCount);
    for (unsigned int seed = 0; seed < callerCount; ++seed) {
        callers.emplace_back([&engine, seed, end] {
            std::mt19937 random(seed);
            while (Clock::now() < end) {
                const QPoint position(static_cast<int>(random() % 100), 0);
                switch (random() % 6) {
                case 0: engine.Move(position); break;
                case 1: engine.Flush(); break;
                case 2: engine.Refresh(); break;
                default: engine.PostMove(position);
                }
            }
        });
    }
    for (std::thread& caller : callers)
        caller.join();
    engine.Flush();
    QCOMPARE(collisions.load(), 0);
    QVERIFY(probe->Moves().size() > 10);
}

void TestBusyEngine::afterAFlushNothingMoves()
{
    std::atomic<int> begun{0};
    std::atomic<int> ended{0};
    auto* probe = new ProbeObject;
    CopyPasteThread engine(probe);
    probe->onMove = [&](const QPoint&) {
        ++begun;
        std::this_thread::yield();
        ++ended;
        return true;
    };
    const Clock::time_point end = End();
    int flushes = 0;
    for (int x = 0; Clock::now() < end; ++x) {
        // Sometimes the worker has taken the event out already, sometimes it is in the middle of it.
        engine.PostMove(QPoint(x, 0));
        for (int i = x % 8; i > 0; --i)
            std::this_thread::yield();
        engine.Flush();
        const int before = begun;
        QCOMPARE(ended.load(), before);
        for (int i = 0; i < 4; ++i)
            std::this_thread::yield();
        QCOMPARE(begun.load(), before);
        ++flushes;
    }
    QVERIFY(flushes > 10);
}

void TestBusyEngine::enginesComeAndGoWithMovesUnderWay()
{
    const Clock::time_point end = End();
    int engines = 0;
    for (; Clock::now() < end; ++engines) {
        auto* probe = new ProbeObject;
        // Written without a lock: the end of the engine has to come after the last move.
        int last = 0;
        probe->onMove = [&](const QPoint& position) {
            last = position.x();
            return true;
        };
        probe->onDestroyed = [&last] { last = -1; };
        {
            CopyPasteThread engine(probe);
            for (int x = 1; x <= engines % 5; ++x)
                engine.PostMove(QPoint(x, 0));
        }
        QCOMPARE(last, -1);
    }
    QVERIFY(engines > 5);
}

void TestBusyEngine::piecesAreCarriedBesideReadersAndComposition()
{
    Random random(2);
    PieceFixture fixture(QSize(300, 200));
    fixture.FillWithNoise(random);
    const QStringList before = fixture.Describe();
    const Clock::time_point end = End();
    int pieces = 0;
    {
        const Bystanders bystanders(fixture.document.get());
        for (; Clock::now() < end || pieces < 8; ++pieces) {
            CopyPasteThread engine(PieceFixture::MakePiece(Kinds[pieces % 4]).release());
            QVERIFY(engine.Begin(fixture.view.get(), 1));
            for (int step = 0; step < 20; ++step) {
                engine.PostMove(QPoint(Pick(random, -40, 250), Pick(random, -40, 150)));
                const LXDocumentLayerLockerForRead look(fixture.document.get(), 0);
                QCoreApplication::sendPostedEvents();
            }
            const QPoint last(Pick(random, -40, 250), Pick(random, -40, 150));
            QVERIFY(engine.Move(last));
            engine.Flush();
            QCOMPARE(fixture.document->GetSelectionMaskOffset(), last);
            QVERIFY(pieces % 3 == 0 ? engine.Cancel() : engine.Commit(&fixture.history));
        }
        QCOMPARE(bystanders.Misfits(), 0);
    }
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    while (fixture.history.canUndo())
        fixture.history.undo();
    QCOMPARE(fixture.Describe(), before);
}

ZK_REGISTER_TEST(tst_busyengine, TestBusyEngine)
#include "tst_busyengine.moc"
