#include "document/DirtyTiles.h"
#include "support/TestRegistry.h"

#include <QTest>

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
