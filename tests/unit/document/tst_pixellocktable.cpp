#include "document/PixelLockTable.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <atomic>
#include <future>
#include <thread>
#include <vector>

namespace {
constexpr PixelLockTable::Key A = 1;
constexpr PixelLockTable::Key B = 2;

/// A job that waits for a lock is still at it after the short limit; one that doesn't is done within the
/// long.
constexpr auto ShortLimit = std::chrono::milliseconds(30);
constexpr auto LongLimit = std::chrono::seconds(20);

template <typename Job>
std::future<void> OnThread(Job job)
{
    return std::async(std::launch::async, job);
}

bool IsDone(const std::future<void>& job)
{
    return job.wait_for(LongLimit) == std::future_status::ready;
}

bool IsWaiting(const std::future<void>& job)
{
    return job.wait_for(ShortLimit) == std::future_status::timeout;
}

void ReadAndGiveBack(PixelLockTable& locks, PixelLockTable::Key key)
{
    const PixelReadScope scope(locks, key);
}

void WriteAndGiveBack(PixelLockTable& locks, PixelLockTable::Key key)
{
    const PixelWriteScope scope(locks, key);
}
} // namespace

class TestPixelLockTable : public QObject
{
    Q_OBJECT

private slots:
    void readersShare();
    void aWriterExcludesReadersAndWritersOfItsKeyOnly();
    void bothLocksAreRecursiveOnTheirThread();
    void aThreadsOwnReaderDoesNotBlockItsWriter();
    void aReaderThatStaysKeepsOtherWritersOut();
    void twoReadersThatWantToWriteBothGetTheirTurn();
    void whoHoldsNothingGivesWayToAWaitingWriter();
    void whoHoldsAnotherKeyDoesNotGiveWay();
    void aLockCanBeGivenBackForItsOwner();
    void waitForOthersIgnoresTheCaller();
    void writersUnderHammeringLoseNoStep();
};

void TestPixelLockTable::readersShare()
{
    PixelLockTable locks;
    const PixelReadScope mine(locks, A);
    QVERIFY(IsDone(OnThread([&] { ReadAndGiveBack(locks, A); })));
}

void TestPixelLockTable::aWriterExcludesReadersAndWritersOfItsKeyOnly()
{
    PixelLockTable locks;
    std::future<void> reader;
    std::future<void> writer;
    {
        const PixelWriteScope mine(locks, A);
        reader = OnThread([&] { ReadAndGiveBack(locks, A); });
        writer = OnThread([&] { WriteAndGiveBack(locks, A); });
        QVERIFY(IsDone(OnThread([&] { WriteAndGiveBack(locks, B); })));
        QVERIFY(IsWaiting(reader));
        QVERIFY(IsWaiting(writer));
    }
    QVERIFY(IsDone(reader));
    QVERIFY(IsDone(writer));
}

void TestPixelLockTable::bothLocksAreRecursiveOnTheirThread()
{
    PixelLockTable locks;
    std::future<void> other;
    {
        const PixelWriteScope outer(locks, A);
        {
            const PixelWriteScope inner(locks, A);
            const PixelReadScope innermost(locks, A);
        }
        other = OnThread([&] { ReadAndGiveBack(locks, A); });
        QVERIFY2(IsWaiting(other), "the outer writer is still held");
    }
    QVERIFY(IsDone(other));
}

void TestPixelLockTable::aThreadsOwnReaderDoesNotBlockItsWriter()
{
    PixelLockTable locks;
    QVERIFY(IsDone(OnThread([&] {
        const PixelReadScope reader(locks, A);
        const PixelWriteScope writer(locks, A);
    })));
}

void TestPixelLockTable::aReaderThatStaysKeepsOtherWritersOut()
{
    PixelLockTable locks;
    std::future<void> writer;
    {
        const PixelReadScope mine(locks, A);
        writer = OnThread([&] { WriteAndGiveBack(locks, A); });
        QVERIFY(IsWaiting(writer));
    }
    QVERIFY(IsDone(writer));
}

void TestPixelLockTable::twoReadersThatWantToWriteBothGetTheirTurn()
{
    PixelLockTable locks;
    std::atomic<int> readers{0};
    const auto readThenWrite = [&] {
        locks.LockRead(A);
        ++readers;
        while (readers < 2) {
            std::this_thread::yield();
        }
        WriteAndGiveBack(locks, A);
        locks.UnlockRead(A, std::this_thread::get_id());
    };
    const std::future<void> first = OnThread(readThenWrite);
    const std::future<void> second = OnThread(readThenWrite);
    QVERIFY(IsDone(first));
    QVERIFY(IsDone(second));
}

void TestPixelLockTable::whoHoldsNothingGivesWayToAWaitingWriter()
{
    PixelLockTable locks;
    std::future<void> writer;
    std::future<void> newcomer;
    {
        const PixelReadScope mine(locks, A);
        writer = OnThread([&] { WriteAndGiveBack(locks, A); });
        QVERIFY(IsWaiting(writer));
        newcomer = OnThread([&] { ReadAndGiveBack(locks, A); });
        QVERIFY(IsWaiting(newcomer));
    }
    QVERIFY(IsDone(writer));
    QVERIFY(IsDone(newcomer));
}

void TestPixelLockTable::whoHoldsAnotherKeyDoesNotGiveWay()
{
    PixelLockTable locks;
    std::future<void> writer;
    {
        const PixelReadScope mine(locks, A);
        writer = OnThread([&] { WriteAndGiveBack(locks, A); });
        QVERIFY(IsWaiting(writer));
        QVERIFY(IsDone(OnThread([&] {
            const PixelReadScope other(locks, B);
            ReadAndGiveBack(locks, A);
        })));
    }
    QVERIFY(IsDone(writer));
}

void TestPixelLockTable::aLockCanBeGivenBackForItsOwner()
{
    PixelLockTable locks;
    locks.LockWrite(A);
    const std::thread::id owner = std::this_thread::get_id();
    QVERIFY(IsDone(OnThread([&] { locks.UnlockWrite(A, owner); })));
    QVERIFY(IsDone(OnThread([&] { WriteAndGiveBack(locks, A); })));
}

void TestPixelLockTable::waitForOthersIgnoresTheCaller()
{
    PixelLockTable locks;
    std::future<void> other;
    {
        const PixelReadScope mine(locks, A);
        locks.WaitForOthers();
        other = OnThread([&] { locks.WaitForOthers(); });
        QVERIFY(IsWaiting(other));
    }
    QVERIFY(IsDone(other));
}

void TestPixelLockTable::writersUnderHammeringLoseNoStep()
{
    constexpr int threadCount = 8;
    constexpr int rounds = 300;
    PixelLockTable locks;
    int counters[2] = {0, 0};
    std::atomic<int> torn{0};

    const auto hammer = [&](int seed) {
        for (int round = 0; round < rounds; ++round) {
            const PixelLockTable::Key key = static_cast<PixelLockTable::Key>((seed + round) % 2);
            const PixelReadScope reader(locks, key);
            const int seen = counters[key];
            std::this_thread::yield();
            if (seen != counters[key]) ++torn;
            // Every third round writes while it reads.
            if (round % 3 != 0) continue;
            const PixelWriteScope writer(locks, key);
            const int before = counters[key];
            std::this_thread::yield();
            counters[key] = before + 1;
        }
    };
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back(hammer, i);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    QCOMPARE(torn.load(), 0);
    QCOMPARE(counters[0] + counters[1], threadCount * rounds / 3);
}

ZK_REGISTER_TEST(tst_pixellocktable, TestPixelLockTable)
#include "tst_pixellocktable.moc"
