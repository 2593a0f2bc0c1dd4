#include "image/LevelCounts.h"
#include "image/TileWalk.h"
#include "support/LevelTwin.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"

#include <QTest>

namespace {
LevelCounts::Tile CountTileOf(const LXImage32& image, int column, int row)
{
    const QRect part = TileWalk::TileRect(column, row) & image.Rect();
    return LevelCounts::CountTile(image.ReadTile(column, row).Pixels(), part.size());
}

LevelCounts::Sum CountAll(const LXImage32& image)
{
    LevelCounts::Sum sum;
    TileWalk::ForEachTile(
        image.Rect(), [&](int column, int row, const QRect&) { sum.Add(CountTileOf(image, column, row)); });
    return sum;
}

QString Difference(const LevelCounts::Sum& sum, const LevelTwin::Counts& twin)
{
    for (std::size_t channel = 0; channel < LevelCounts::ChannelCount; ++channel) {
        for (std::size_t level = 0; level < LevelCounts::Levels; ++level) {
            const qint64 counted = sum.Of(LevelCounts::Channel(channel))[level];
            if (counted == twin[channel][level]) continue;
            return QString("channel %1, level %2: %3 instead of %4")
                .arg(channel)
                .arg(level)
                .arg(counted)
                .arg(twin[channel][level]);
        }
    }
    return {};
}
} // namespace

/// The kernel behind the histogram.
class TestLevelCounts : public QObject
{
    Q_OBJECT

private slots:
    void everySizeIsCountedAsByTheSlowTwin_data();
    void everySizeIsCountedAsByTheSlowTwin();
    void pixelsThatCannotBeSeenDoNotCount();
    void pixelsThatCanBarelyBeSeenCountWhole();
    void luminanceWeighsGreenMost_data();
    void luminanceWeighsGreenMost();
    void aTileOfOneColorFillsOneLevel();
    void aTileThatIsTakenBackLeavesWhatWas();
};

void TestLevelCounts::everySizeIsCountedAsByTheSlowTwin_data()
{
    QTest::addColumn<QSize>("size");
    for (const QSize& size : {QSize(1, 1), QSize(2, 1), QSize(127, 5), QSize(128, 128), QSize(129, 128),
                              QSize(130, 130), QSize(300, 257)})
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
}

void TestLevelCounts::everySizeIsCountedAsByTheSlowTwin()
{
    QFETCH(const QSize, size);
    std::mt19937 random(5);
    const PlainImage image = TestImages::Random(size.width(), size.height(), random);
    const QString difference = Difference(CountAll(TestImages::ToTiles(image)), LevelTwin::Count(image));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void TestLevelCounts::pixelsThatCannotBeSeenDoNotCount()
{
    const LXImage32 image = TestImages::ToTiles(PlainImage(40, 30, LXRGBA32i(0x00FF8040)));
    QCOMPARE(CountAll(image).Of(LevelCounts::Red)[0xFF], 0);
}

void TestLevelCounts::pixelsThatCanBarelyBeSeenCountWhole()
{
    const LevelCounts::Sum sum = CountAll(TestImages::ToTiles(PlainImage(40, 30, LXRGBA32i(0x01FF8040))));
    QCOMPARE(sum.Of(LevelCounts::Red)[0xFF], 1200);
    QCOMPARE(sum.Of(LevelCounts::Green)[0x80], 1200);
    QCOMPARE(sum.Of(LevelCounts::Blue)[0x40], 1200);
}

void TestLevelCounts::luminanceWeighsGreenMost_data()
{
    QTest::addColumn<quint32>("color");
    QTest::addColumn<int>("luminance");
    QTest::newRow("black") << 0xFF000000U << 0;
    QTest::newRow("white") << 0xFFFFFFFFU << 255;
    QTest::newRow("red, 76.5 goes up") << 0xFFFF0000U << 77;
    QTest::newRow("green, 150.45") << 0xFF00FF00U << 150;
    QTest::newRow("blue, 28.05") << 0xFF0000FFU << 28;
}

void TestLevelCounts::luminanceWeighsGreenMost()
{
    QFETCH(const quint32, color);
    QFETCH(const int, luminance);
    QCOMPARE(LevelCounts::LuminanceOf(LXRGBA32i(color)), luminance);
}

void TestLevelCounts::aTileOfOneColorFillsOneLevel()
{
    const LXImage32 image = TestImages::ToTiles(PlainImage(128, 128, LXRGBA32i(0xFF0A0A0A)));
    const LevelCounts::Tile tile = CountTileOf(image, 0, 0);
    for (const auto& channel : tile) {
        QCOMPARE(int(channel[0x0A]), 128 * 128);
        QCOMPARE(int(channel[0x0B]), 0);
    }
}

void TestLevelCounts::aTileThatIsTakenBackLeavesWhatWas()
{
    std::mt19937 random(6);
    const PlainImage plain = TestImages::Random(128, 100, random);
    const LXImage32 other = TestImages::ToTiles(TestImages::Random(90, 128, random));
    LevelCounts::Sum sum = CountAll(TestImages::ToTiles(plain));
    sum.Add(CountTileOf(other, 0, 0));
    sum.Subtract(CountTileOf(other, 0, 0));
    const QString difference = Difference(sum, LevelTwin::Count(plain));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

ZK_REGISTER_TEST(tst_levelcounts, TestLevelCounts)
#include "tst_levelcounts.moc"
