#include "ProbeObject.h"

#include "support/TestRegistry.h"

#include <QTest>

#include <atomic>
#include <chrono>
#include <random>
#include <thread>
#include <vector>

using Clock = std::chrono::steady_clock;

namespace {
/// How long the threads go on: a moment in the suite, longer for who asks with ZK_HAMMER_SECONDS.
Clock::time_point End()
{
    const int seconds = qEnvironmentVariableIntValue("ZK_HAMMER_SECONDS");
    return Clock::now() +
           (seconds > 0 ? std::chrono::milliseconds(seconds * 1000) : std::chrono::milliseconds(400));
}

} // namespace

/// The engine's locks, without the queue of a thread's events, whose own the sanitizer can't see. Clean under
/// the thread sanitizer, and over before the test's limit.
class TestEngineHammer : public QObject
{
    Q_OBJECT

private slots:
    void aWorkerAndItsCallersMoveOneAtATime();
};

void TestEngineHammer::aWorkerAndItsCallersMoveOneAtATime()
{
    ProbeObject probe;
    // Changed without a lock of their own: the engine's has to do.
    int inside = 0;
    int collisions = 0;
    int byTheWorker = 0;
    const auto enter = [&] {
        if (++inside != 1) ++collisions;
        std::this_thread::yield();
        --inside;
    };
    probe.onMove = [&](const QPoint& position) {
        enter();
        if (position.x() < 0) ++byTheWorker;
        return true;
    };
    probe.onRefresh = enter;

    const Clock::time_point end = End();
    // Each move at once and each flush counts one: events that are taken out in time bear that number.
    std::atomic<quint64> overtakings{0};
    std::thread worker([&] {
        while (Clock::now() < end)
            probe.Deliver(QPoint(-1, 0), overtakings);
    });
    std::thread caller([&] {
        std::mt19937 random(1);
        while (Clock::now() < end) {
            switch (random() % 8) {
            case 0:
                probe.MoveNow(QPoint(1, 0));
                ++overtakings;
                break;
            case 1:
                probe.Flush();
                ++overtakings;
                break;
            case 2: probe.RefreshNow(); break;
            default: std::this_thread::yield();
            }
        }
    });
    worker.join();
    caller.join();
    QCOMPARE(collisions, 0);
    QVERIFY(byTheWorker > 0);
    QVERIFY(static_cast<std::size_t>(byTheWorker) < probe.Moves().size());
}

ZK_REGISTER_TEST(tst_enginehammer, TestEngineHammer)
#include "tst_enginehammer.moc"
