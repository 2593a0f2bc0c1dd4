#include "document/DirtyTiles.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <random>
#include <set>

using Tiles = std::vector<int>;

Q_DECLARE_METATYPE(Tiles)

class TestDirtyTiles : public QObject
{
    Q_OBJECT

private slots:
    void aNewCanvasIsDirtyEverywhere();
    void aMarkCoversTheTilesThatItTouches_data();
    void aMarkCoversTheTilesThatItTouches();
    void aTileMarkedAgainMeanwhileStaysDirty();
    void aSmallMarkMeanwhileLeavesTheRestOfALargeOne();
    void anyNumberOfMarksReachTheirTiles();
    void aPartIsTakenByItself();
    void tilesThatCouldNotBeComposedAreDirtyAgain();
    void anEmptyCanvasHasNoTiles();
};

void TestDirtyTiles::aNewCanvasIsDirtyEverywhere()
{
    DirtyTiles dirty;
    dirty.Reset(QSize(130, 256));
    QCOMPARE(dirty.Bounds(), QRect(0, 0, 256, 256));
    QCOMPARE(dirty.Take(dirty.Now()), Tiles({0, 1, 2, 3}));
    QVERIFY(dirty.Bounds().isEmpty());
}

void TestDirtyTiles::aMarkCoversTheTilesThatItTouches_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<Tiles>("tiles");
    QTest::newRow("one pixel") << QRect(128, 0, 1, 1) << Tiles({1});
    QTest::newRow("across a corner") << QRect(127, 127, 2, 2) << Tiles({0, 1, 3, 4});
    QTest::newRow("beyond the canvas") << QRect(290, -50, 100, 60) << Tiles({2});
    QTest::newRow("outside") << QRect(300, 0, 10, 10) << Tiles();
    QTest::newRow("empty") << QRect() << Tiles();
}

void TestDirtyTiles::aMarkCoversTheTilesThatItTouches()
{
    QFETCH(QRect, rect);
    QFETCH(Tiles, tiles);
    DirtyTiles dirty;
    dirty.Reset(QSize(300, 200));
    dirty.Take(dirty.Now());
    dirty.Mark(rect);
    QCOMPARE(dirty.Take(dirty.Now()), tiles);
}

void TestDirtyTiles::aTileMarkedAgainMeanwhileStaysDirty()
{
    DirtyTiles dirty;
    dirty.Reset(QSize(384, 128));
    const DirtyTiles::Count seen = dirty.Now();
    dirty.Mark(QRect(128, 0, 1, 1));
    QCOMPARE(dirty.Take(seen), Tiles({0, 2}));
    QCOMPARE(dirty.Bounds(), QRect(128, 0, 128, 128));
    QCOMPARE(dirty.Take(dirty.Now()), Tiles({1}));
}

void TestDirtyTiles::aSmallMarkMeanwhileLeavesTheRestOfALargeOne()
{
    DirtyTiles dirty;
    dirty.Reset(QSize(512, 128));
    dirty.Take(dirty.Now());
    dirty.Mark(QRect(0, 0, 512, 128));
    const DirtyTiles::Count seen = dirty.Now();
    dirty.Mark(QRect(130, 5, 1, 1));
    QCOMPARE(dirty.Take(seen), Tiles({0, 2, 3}));
    QCOMPARE(dirty.Take(dirty.Now()), Tiles({1}));
}

void TestDirtyTiles::anyNumberOfMarksReachTheirTiles()
{
    std::mt19937 random(1);
    const auto below = [&random](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    for (int round = 0; round < 50; ++round) {
        DirtyTiles dirty;
        dirty.Reset(QSize(1280, 1280));
        dirty.Take(dirty.Now());
        std::set<int> expected;
        for (int mark = below(40); mark >= 0; --mark) {
            const QRect tiles(QPoint(below(10), below(10)), QSize(1 + below(4), 1 + below(4)));
            dirty.Mark(QRect(tiles.topLeft() * 128, tiles.size() * 128));
            for (int tile = 0; tile < 100; ++tile) {
                if (tiles.contains(tile % 10, tile / 10)) expected.insert(tile);
            }
        }
        QCOMPARE(dirty.Take(dirty.Now()), Tiles(expected.begin(), expected.end()));
    }
}

void TestDirtyTiles::aPartIsTakenByItself()
{
    DirtyTiles dirty;
    dirty.Reset(QSize(384, 256));
    dirty.Take(dirty.Now());
    dirty.Mark(QRect(0, 0, 256, 256));
    const QRect part(200, 100, 100, 60);
    QCOMPARE(dirty.Bounds(part), QRect(128, 0, 128, 256));
    QCOMPARE(dirty.Take(dirty.Now(), part), Tiles({1, 4}));
    QVERIFY(dirty.Bounds(part).isEmpty());
    QVERIFY(dirty.Take(dirty.Now(), QRect()).empty());
    QVERIFY(dirty.Take(dirty.Now(), QRect(900, 0, 10, 10)).empty());
    QCOMPARE(dirty.Take(dirty.Now()), Tiles({0, 3}));
    QVERIFY(dirty.Bounds().isEmpty());
}

void TestDirtyTiles::tilesThatCouldNotBeComposedAreDirtyAgain()
{
    DirtyTiles dirty;
    dirty.Reset(QSize(256, 128));
    dirty.Take(dirty.Now());
    dirty.MarkTiles({1});
    QCOMPARE(dirty.Take(dirty.Now()), Tiles({1}));
}

void TestDirtyTiles::anEmptyCanvasHasNoTiles()
{
    DirtyTiles dirty;
    dirty.Reset(QSize(0, 0));
    dirty.Mark(QRect(0, 0, 10, 10));
    QVERIFY(dirty.Bounds().isEmpty());
    QVERIFY(dirty.Take(dirty.Now()).empty());
}

ZK_REGISTER_TEST(tst_dirtytiles, TestDirtyTiles)
#include "tst_dirtytiles.moc"
