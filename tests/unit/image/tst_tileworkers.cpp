#include "image/LXBlend.h"
#include "image/LXImage.h"
#include "image/LXImageConvoluteAlpha.h"
#include "image/LXTransform.h"
#include "image/TileThreads.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QBrush>
#include <QPainterPath>
#include <QTest>
#include <QThreadPool>
#include <QTransform>

#include <atomic>
#include <functional>
#include <new>
#include <random>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {
using Work = std::function<void(const LXImage32& source, LXImage32& target)>;

void Turn(const LXImage32& source, LXImage32& target)
{
    TransformImage(source, QTransform().translate(200, -100).rotate(20), target, QRect());
}

void Shrink(const LXImage32& source, LXImage32& target)
{
    BicubicTransformImage(source, QTransform::fromScale(0.9, 0.8), target, QRect());
}

void Pick(const LXImage32& source, LXImage32& target)
{
    NearestNeighbourTransformImage(source, QTransform::fromScale(0.9, 0.8), target, QRect());
}

void Mix(const LXImage32& source, LXImage32& target)
{
    BlendOn(source, source.Rect(), BlendMode::Normal, target, target.Rect().translated(5, 3), 0.5, false);
}

void Fill(const LXImage32&, LXImage32& target)
{
    QPainterPath path;
    path.addEllipse(QRectF(target.Rect().adjusted(5, 5, -5, -5)));
    FillPath(target, static_cast<int>(BlendMode::Source), path, QBrush(Qt::red));
}

void Soften(const LXImage32&, LXImage32& target)
{
    const std::vector<double> kernel(25, 1.0 / 25);
    LXImageConvoluteAlpha(kernel.data(), QSize(5, 5))(target);
}

bool AreSame(const LXImage32& a, const LXImage32& b)
{
    return TestImages::Difference(TestImages::ToPlain(a), TestImages::ToPlain(b)).isEmpty();
}
} // namespace

Q_DECLARE_METATYPE(Work)

/// Work that is cut by tiles and spread over the pool.
class TestTileWorkers : public QObject
{
    Q_OBJECT

private slots:

    void initTestCase()
    {
        m_Threads = QThreadPool::globalInstance()->maxThreadCount();
        QThreadPool::globalInstance()->setMaxThreadCount(4);
    }

    void cleanupTestCase() { QThreadPool::globalInstance()->setMaxThreadCount(m_Threads); }

    void cleanup() { FaultSeams::Reset(); }

    void everyPieceIsDoneOnce();
    void everyTileIsVisitedWithItsPart();
    void failuresReachTheCallerAsTheyWereThrown();
    void noPieceIsBegunAfterAFailure();
    void lackOfMemoryStaysLackOfMemory();
    void whereNoHelperCanBeHadTheOthersDoTheWork();
    void nestedWorkDoesNotDeadlock();
    void manyCallersAtOnce();
    void unwantedWorkEndsBetweenPieces();
    void cancellingEndsWithItsScope();
    void cancelledWorkEndsInTheMiddle_data();
    void cancelledWorkEndsInTheMiddle();
    void oneThreadIsEnough();

private:
    int m_Threads = 1;
};

void TestTileWorkers::everyPieceIsDoneOnce()
{
    std::vector<std::atomic<int>> done(1000);
    TileThreads::ForEach(1000, [&](int piece) { ++done[static_cast<std::size_t>(piece)]; });
    QVERIFY(std::all_of(done.begin(), done.end(), [](const std::atomic<int>& count) { return count == 1; }));
    TileThreads::ForEach(0, [](int) { QFAIL("there is no piece"); });
}

void TestTileWorkers::everyTileIsVisitedWithItsPart()
{
    std::atomic<int> pixels{0};
    std::atomic<int> tiles{0};
    const QRect rect(100, 130, 700, 500);
    TileThreads::ForEachTile(rect, [&](int column, int row, const QRect& part) {
        pixels += part.width() * part.height();
        tiles += QRect(column * 128, row * 128, 128, 128).contains(part) && rect.contains(part) ? 1 : 0;
    });
    QCOMPARE(pixels.load(), 700 * 500);
    QCOMPARE(tiles.load(), 7 * 4);
    TileThreads::ForEachTile(QRect(), [](int, int, const QRect&) { QFAIL("there is no tile"); });
}

void TestTileWorkers::failuresReachTheCallerAsTheyWereThrown()
{
    try {
        TileThreads::ForEach(1000, [](int piece) {
            if (piece == 5) throw std::out_of_range("five");
        });
        QFAIL("nothing was thrown");
    } catch (const std::out_of_range& failure) {
        QCOMPARE(failure.what(), "five");
    }
}

/// On one thread, because others may well be through before a failure is noticed.
void TestTileWorkers::noPieceIsBegunAfterAFailure()
{
    QThreadPool::globalInstance()->setMaxThreadCount(1);
    int done = 0;
    const auto work = [&](int piece) {
        if (piece == 5) throw std::out_of_range("five");
        ++done;
    };
    QVERIFY_EXCEPTION_THROWN(TileThreads::ForEach(1000, work), std::out_of_range);
    QThreadPool::globalInstance()->setMaxThreadCount(4);
    QCOMPARE(done, 5);
}

void TestTileWorkers::lackOfMemoryStaysLackOfMemory()
{
    std::mt19937 random(1);
    const LXImage32 source = TestImages::ToTiles(TestImages::Random(1280, 1280, random));
    LXImage32 target(1280, 1280);
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 40);
    QVERIFY_EXCEPTION_THROWN(BlendOn(source, source.Rect(), 0, target, target.Rect(), 0.5, false),
                             std::bad_alloc);
    BlendOn(source, source.Rect(), 0, target, target.Rect(), 0.5, false);
}

void TestTileWorkers::whereNoHelperCanBeHadTheOthersDoTheWork()
{
    for (const int failing : {1, 2, 3}) {
        FaultSeams::FailNth(FaultSeams::Seam::HelperCall, failing);
        std::vector<std::atomic<int>> done(1000);
        TileThreads::ForEach(1000, [&](int piece) { ++done[static_cast<std::size_t>(piece)]; });
        QVERIFY(std::all_of(done.begin(), done.end(), [](const auto& count) { return count == 1; }));
    }
}

/// More levels than the pool has threads, each on all of them.
void TestTileWorkers::nestedWorkDoesNotDeadlock()
{
    std::atomic<int> leaves{0};
    TileThreads::ForEach(8, [&](int) {
        TileThreads::ForEach(8, [&](int) { TileThreads::ForEach(8, [&](int) { ++leaves; }); });
    });
    QCOMPARE(leaves.load(), 8 * 8 * 8);
}

void TestTileWorkers::manyCallersAtOnce()
{
    std::atomic<int> done{0};
    constexpr int callerCount = 8;
    std::vector<std::thread> callers;
    callers.reserve(callerCount);
    for (int i = 0; i < callerCount; ++i) {
        callers.emplace_back([&] {
            for (int round = 0; round < 200; ++round) {
                TileThreads::ForEach(16, [&](int) { ++done; });
            }
        });
    }
    for (std::thread& caller : callers) {
        caller.join();
    }
    QCOMPARE(done.load(), callerCount * 200 * 16);
}

void TestTileWorkers::unwantedWorkEndsBetweenPieces()
{
    std::atomic<int> done{0};
    const TileThreads::CancelScope scope([&] { return done < 10; });
    QVERIFY_EXCEPTION_THROWN(TileThreads::ForEach(100000, [&](int) { ++done; }), TileThreads::Cancelled);
    QVERIFY(done >= 10 && done <= 10 + 4);
}

void TestTileWorkers::cancellingEndsWithItsScope()
{
    {
        const TileThreads::CancelScope scope([] { return false; });
        const TileThreads::CancelScope inner([] { return true; });
        TileThreads::ForEach(10, [](int) {});
    }
    TileThreads::ForEach(10, [](int) {});
}

void TestTileWorkers::cancelledWorkEndsInTheMiddle_data()
{
    QTest::addColumn<Work>("work");
    QTest::addColumn<bool>("isWholeTiles");
    QTest::newRow("turned") << Work(Turn) << true;
    QTest::newRow("shrunk") << Work(Shrink) << true;
    QTest::newRow("picked") << Work(Pick) << true;
    QTest::newRow("blended") << Work(Mix) << true;
    QTest::newRow("filled") << Work(Fill) << true;
    QTest::newRow("softened") << Work(Soften) << false; // in several passes
}

/// What was to be written is written in part, nothing else has changed, and the work can be done again.
void TestTileWorkers::cancelledWorkEndsInTheMiddle()
{
    QFETCH(Work, work);
    QFETCH(bool, isWholeTiles);
    std::mt19937 random(1);
    const LXImage32 source = TestImages::ToTiles(TestImages::Random(500, 1280, random));
    const LXImage32 before = TestImages::ToTiles(TestImages::Random(500, 1280, random));
    const PlainImage plain = TestImages::ToPlain(before);
    LXImage32 after = before;
    work(source, after);
    const int live = LXTileManager::Instance().LiveTileCount();
    QVERIFY(live > 0);
    for (const int most : {0, 1, 4, 7}) {
        LXImage32 target = before;
        {
            std::atomic<int> asked{0};
            const TileThreads::CancelScope scope([&] { return asked++ < most; });
            QVERIFY_EXCEPTION_THROWN(work(source, target), TileThreads::Cancelled);
        }
        QCOMPARE(TestImages::Difference(TestImages::ToPlain(before), plain), QString());
        QVERIFY(!AreSame(target, after));
        if (isWholeTiles) QCOMPARE(AreSame(target, before), most == 0);
        for (std::size_t i = 0; isWholeTiles && i < target.m_Tiles.size(); ++i) {
            const auto bytes = [i](const LXImage32& image) {
                const LXTileReader<LXRGBA32i> tile(*image.m_Tiles[i]);
                return QByteArray(reinterpret_cast<const char*>(tile.Pixels()), 128 * 128 * 4);
            };
            QVERIFY(bytes(target) == bytes(before) || bytes(target) == bytes(after));
        }
        LXImage32 again = before;
        work(source, again);
        QVERIFY(AreSame(again, after));
        again = LXImage32();
        target = LXImage32();
        QCOMPARE(LXTileManager::Instance().LiveTileCount(), live);
    }
}

void TestTileWorkers::oneThreadIsEnough()
{
    QThreadPool::globalInstance()->setMaxThreadCount(1);
    const std::thread::id here = std::this_thread::get_id();
    std::atomic<int> elsewhere{0};
    TileThreads::ForEach(100, [&](int) { elsewhere += std::this_thread::get_id() == here ? 0 : 1; });
    QThreadPool::globalInstance()->setMaxThreadCount(4);
    QCOMPARE(elsewhere.load(), 0);
}

ZK_REGISTER_TEST(tst_tileworkers, TestTileWorkers)
#include "tst_tileworkers.moc"
