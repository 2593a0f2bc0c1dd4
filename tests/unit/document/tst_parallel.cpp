#include "document/Parallel.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <atomic>
#include <stdexcept>
#include <vector>

class TestParallel : public QObject
{
    Q_OBJECT

private slots:
    void everyCallIsMadeOnce_data();
    void everyCallIsMadeOnce();
    void anExceptionGoesOnAfterAllCallsEnded();
};

void TestParallel::everyCallIsMadeOnce_data()
{
    QTest::addColumn<int>("count");
    for (const int count : {0, 1, 31, 64, 1000}) {
        QTest::addRow("%d", count) << count;
    }
}

void TestParallel::everyCallIsMadeOnce()
{
    QFETCH(int, count);
    std::vector<int> calls(static_cast<std::size_t>(count), 0);
    Parallel::ForEach(count, [&calls](int i) { ++calls[static_cast<std::size_t>(i)]; });
    QCOMPARE(calls, std::vector<int>(static_cast<std::size_t>(count), 1));
}

void TestParallel::anExceptionGoesOnAfterAllCallsEnded()
{
    std::atomic<int> running{0};
    const auto work = [&running](int i) {
        ++running;
        if (i == 40) {
            --running;
            throw std::runtime_error("call");
        }
        --running;
    };
    QVERIFY_EXCEPTION_THROWN(Parallel::ForEach(200, work), std::runtime_error);
    QCOMPARE(running.load(), 0);
}

ZK_REGISTER_TEST(tst_parallel, TestParallel)
#include "tst_parallel.moc"
