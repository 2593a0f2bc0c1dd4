#include "gui/HistogramLevels.h"
#include "gui/HistogramPainter.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <vector>

using namespace HistogramLevels;

namespace {
/// Counts of pixels of the colors.
LevelCounts::Sum SumOf(const std::vector<std::pair<quint32, int>>& colors)
{
    LevelCounts::Sum sum;
    for (const auto& [color, count] : colors) {
        const std::vector<LXRGBA32i> row(128, LXRGBA32i(color));
        sum.Add(LevelCounts::CountTile(row.data(), QSize(count, 1)));
    }
    return sum;
}

/// How many pixels of a column aren't the ground's.
int HeightAt(const QImage& image, int x, const QColor& ground)
{
    int height = 0;
    for (int y = 0; y < image.height(); ++y)
        height += image.pixel(x, y) != ground.rgb() ? 1 : 0;
    return height;
}

const HistogramLook Dark = HistogramLook::On(QColor(40, 40, 40), QColor(180, 180, 180));
const HistogramLook Light = HistogramLook::On(QColor(250, 250, 250), QColor(90, 90, 90));
} // namespace

/// What a histogram tells of counts, and how it is drawn.
class TestHistogramLevels : public QObject
{
    Q_OBJECT

private slots:
    void bitsNameTheChannels();
    void oneChannelCountsItsPixels();
    void severalChannelsCountTheirMean();
    void allLevelsTogetherAreAllPixels();
    void thePeakLeavesOutBlackAndWhite();
    void thePeakOfBlackAndWhiteAloneIsTheirs();
    void aFewHighLevelsDoNotPressTheOthersFlat();
    void aFewLevelsAloneKeepTheirHeights();
    void columnsShareOutAllLevels_data();
    void columnsShareOutAllLevels();
    void levelsBesideThePlotAreItsEnds();
    void barsStandOnTheirLevels();
    void aSinglePixelIsSeen();
    void channelsBrightenADarkGroundAndDarkenALightOne();
    void theStripGoesFromBlackToTheChannel();
};

void TestHistogramLevels::bitsNameTheChannels()
{
    using Channels = std::vector<LevelCounts::Channel>;
    QCOMPARE(ChannelsOf(0), Channels({LevelCounts::Luminance}));
    QCOMPARE(ChannelsOf(1), Channels({LevelCounts::Red}));
    QCOMPARE(ChannelsOf(2), Channels({LevelCounts::Green}));
    QCOMPARE(ChannelsOf(4), Channels({LevelCounts::Blue}));
    QCOMPARE(ChannelsOf(5), Channels({LevelCounts::Red, LevelCounts::Blue}));
    QCOMPARE(ChannelsOf(7), Channels({LevelCounts::Red, LevelCounts::Green, LevelCounts::Blue}));
}

void TestHistogramLevels::oneChannelCountsItsPixels()
{
    const LevelCounts::Sum sum = SumOf({{0xFF102030, 10}, {0xFF112030, 5}, {0xFF400000, 1}});
    QCOMPARE(PixelsIn(sum, 1, {0x10, 0x10}), 10);
    QCOMPARE(PixelsIn(sum, 1, {0x10, 0x11}), 15);
    QCOMPARE(PixelsIn(sum, 1, {0x11, 0xFF}), 6);
    QCOMPARE(PixelsIn(sum, 2, {0x20, 0x20}), 15);
    QCOMPARE(PixelsIn(sum, 4, {0, 0}), 1);
}

void TestHistogramLevels::severalChannelsCountTheirMean()
{
    // Level 16: 10 in red, 0 in green, 1 in blue.
    const LevelCounts::Sum sum = SumOf({{0xFF102030, 10}, {0xFF000010, 1}});
    QCOMPARE(PixelsIn(sum, 7, {0x10, 0x10}), 4);
    QCOMPARE(PixelsIn(sum, 3, {0x10, 0x10}), 5);
    QCOMPARE(PixelsIn(sum, 5, {0x10, 0x10}), 6);
}

void TestHistogramLevels::allLevelsTogetherAreAllPixels()
{
    const LevelCounts::Sum sum = SumOf({{0xFF102030, 10}, {0x80FF2030, 7}, {0x00FFFFFF, 9}});
    for (int bits = 0; bits <= AllBits; ++bits)
        QCOMPARE(PixelsIn(sum, bits, {0, LastLevel}), 17);
}

void TestHistogramLevels::thePeakLeavesOutBlackAndWhite()
{
    const LevelCounts::Sum sum =
        SumOf({{0xFF000000, 100}, {0xFFFFFFFF, 90}, {0xFF010101, 5}, {0xFFFE0101, 3}});
    QCOMPARE(PeakOf(sum, 7), 8);
    QCOMPARE(PeakOf(sum, 1), 5);
}

void TestHistogramLevels::thePeakOfBlackAndWhiteAloneIsTheirs()
{
    QCOMPARE(PeakOf(SumOf({{0xFF000000, 100}, {0xFFFFFFFF, 90}}), 7), 100);
    QCOMPARE(PeakOf(LevelCounts::Sum(), 7), 0);
}

void TestHistogramLevels::aFewHighLevelsDoNotPressTheOthersFlat()
{
    // The fifth highest count of red is 5.
    const LevelCounts::Sum sum = SumOf({{0xFF100000, 128},
                                        {0xFF200000, 90},
                                        {0xFF300000, 6},
                                        {0xFF310000, 6},
                                        {0xFF320000, 5},
                                        {0xFF330000, 5},
                                        {0xFF340000, 1}});
    QCOMPARE(PeakOf(sum, 1), 10);
    // A smooth hill keeps its top.
    const LevelCounts::Sum hill = SumOf({{0xFF300000, 4},
                                         {0xFF310000, 5},
                                         {0xFF320000, 7},
                                         {0xFF330000, 6},
                                         {0xFF340000, 4},
                                         {0xFF350000, 3}});
    QCOMPARE(PeakOf(hill, 1), 7);
}

void TestHistogramLevels::aFewLevelsAloneKeepTheirHeights()
{
    const LevelCounts::Sum sum =
        SumOf({{0xFF100000, 128}, {0xFF200000, 9}, {0xFF300000, 6}, {0xFF310000, 6}});
    QCOMPARE(PeakOf(sum, 1), 128);
}

void TestHistogramLevels::columnsShareOutAllLevels_data()
{
    QTest::addColumn<int>("columns");
    for (const int columns : {1, 3, 100, 255, 256, 257, 500, 512})
        QTest::addRow("%d", columns) << columns;
}

void TestHistogramLevels::columnsShareOutAllLevels()
{
    QFETCH(const int, columns);
    int next = 0;
    for (int column = 0; column < columns; ++column) {
        const Range levels = LevelsOfColumn(column, columns);
        QVERIFY(levels.first == next || (columns > 256 && levels.first == next - 1));
        QVERIFY(levels.second >= levels.first);
        QCOMPARE(LevelAt(column, columns), levels.first);
        next = levels.second + 1;
    }
    QCOMPARE(next, 256);
}

void TestHistogramLevels::levelsBesideThePlotAreItsEnds()
{
    QCOMPARE(LevelAt(-5, 100), 0);
    QCOMPARE(LevelAt(100, 100), 255);
    QCOMPARE(LevelAt(900, 100), 255);
    QCOMPARE(LevelAt(3, 0), 0);
}

void TestHistogramLevels::barsStandOnTheirLevels()
{
    const LevelCounts::Sum sum = SumOf({{0xFF202020, 100}, {0xFF402020, 50}, {0xFF000000, 120}});
    const QImage image = RenderHistogram(sum, 1, {512, 60}, Dark);
    QCOMPARE(HeightAt(image, 2 * 0x20, Dark.ground), 60);
    QCOMPARE(HeightAt(image, 2 * 0x20 + 1, Dark.ground), 60);
    QCOMPARE(HeightAt(image, 2 * 0x40, Dark.ground), 30);
    QCOMPARE(HeightAt(image, 2 * 0x41, Dark.ground), 0);
    // Black is above the peak and cut at the top.
    QCOMPARE(HeightAt(image, 0, Dark.ground), 60);
    QCOMPARE(image.pixel(2 * 0x40, 29), Dark.ground.rgb());
    QVERIFY(image.pixel(2 * 0x40, 30) != Dark.ground.rgb());
}

void TestHistogramLevels::aSinglePixelIsSeen()
{
    LevelCounts::Sum sum = SumOf({{0xFF303030, 1}});
    for (int i = 0; i < 50; ++i)
        sum.Add(LevelCounts::CountTile(std::vector<LXRGBA32i>(128, LXRGBA32i(0xFF808080)).data(), {128, 1}));
    for (const int width : {60, 256, 512})
        QCOMPARE(HeightAt(RenderHistogram(sum, 0, {width, 50}, Light), 0x30 * width / 256, Light.ground), 1);
}

void TestHistogramLevels::channelsBrightenADarkGroundAndDarkenALightOne()
{
    const LevelCounts::Sum sum = SumOf({{0xFF202020, 100}});
    int before = Dark.ground.lightness();
    for (const int bits : {1, 3, 7}) {
        const int lightness = QColor(RenderHistogram(sum, bits, {256, 10}, Dark).pixel(0x20, 5)).lightness();
        QVERIFY(lightness > before);
        before = lightness;
    }
    before = Light.ground.lightness();
    for (const int bits : {1, 3, 7}) {
        const int lightness = QColor(RenderHistogram(sum, bits, {256, 10}, Light).pixel(0x20, 5)).lightness();
        QVERIFY(lightness < before);
        before = lightness;
    }
}

void TestHistogramLevels::theStripGoesFromBlackToTheChannel()
{
    const std::vector<std::pair<int, QColor>> ends{{0, Qt::white}, {7, Qt::white}, {1, Qt::red},
                                                   {2, Qt::green}, {4, Qt::blue},  {6, Qt::cyan}};
    for (const auto& [bits, end] : ends) {
        const QImage strip = RenderLevelStrip(bits, {256, 4});
        QCOMPARE(QColor(strip.pixel(0, 3)), QColor(Qt::black));
        QCOMPARE(QColor(strip.pixel(255, 0)), end);
    }
}

ZK_REGISTER_TEST(tst_histogramlevels, TestHistogramLevels)
#include "tst_histogramlevels.moc"
