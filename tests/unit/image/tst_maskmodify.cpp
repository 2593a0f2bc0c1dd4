#include "image/MaskModify.h"
#include "support/MaskTwin.h"
#include "support/TestRegistry.h"

#include <QTest>

using Function = LXImage32 (*)(const LXImage32&, const QRect&, int);
using Twin = PlainImage (*)(const PlainImage&, const QRect&, int);
Q_DECLARE_METATYPE(Function)
Q_DECLARE_METATYPE(Twin)

namespace {
constexpr quint32 Full = 0xFF000000;

/// A mask of zeros with a selected rectangle.
PlainImage WithRect(int width, int height, const QRect& rect, quint32 color = Full)
{
    PlainImage mask(width, height);
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x)
            mask.At(x, y) = LXRGBA32i(color);
    }
    return mask;
}

/// The alpha of a row, in words.
QString RowOf(const LXImage32& mask, int y)
{
    QStringList values;
    for (int x = 0; x < mask.Width(); ++x)
        values += QString::number(mask.GetColor(x, y).Alpha());
    return values.join(' ');
}

int CountOf(const LXImage32& mask, quint32 color)
{
    const PlainImage plain = TestImages::ToPlain(mask);
    return static_cast<int>(std::count(plain.pixels.begin(), plain.pixels.end(), LXRGBA32i(color)));
}
} // namespace

/// Growing, shrinking, borders, feathering and smoothing of masks.
class TestMaskModify : public QObject
{
    Q_OBJECT

private slots:
    void growingAPixelGivesADisk();
    void shrinkingTakesTheRimAway();
    void shrinkingCountsTheEdgeOfTheMask();
    void aBorderLiesOnBothSidesOfTheEdge();
    void softValuesGrowAndShrinkAsTheyAre();
    void featheringAPixelGivesTheBell();
    void featheringTheInsideOfALargeMaskChangesNothing();
    void smoothingDropsASpeckAndFillsAHole();
    void smoothingKeepsAStraightEdge();
    void radiusNullChangesNothing();
    void wholeTilesOfOneValueAreShared();
    void anEmptyAreaGivesAnEmptyMask();
    void theLargestFeatherDoesNotOverflow();
    void masksAreModifiedAsPixelByPixel_data();
    void masksAreModifiedAsPixelByPixel();
};

void TestMaskModify::growingAPixelGivesADisk()
{
    const LXImage32 dot = TestImages::ToTiles(WithRect(1, 1, QRect(0, 0, 1, 1)));
    const LXImage32 grown = MaskModify::Grown(dot, QRect(-2, -2, 5, 5), 2);
    QCOMPARE(RowOf(grown, 0), QString("0 0 255 0 0"));
    QCOMPARE(RowOf(grown, 1), QString("0 255 255 255 0"));
    QCOMPARE(RowOf(grown, 2), QString("255 255 255 255 255"));
    QCOMPARE(RowOf(grown, 3), QString("0 255 255 255 0"));
    QCOMPARE(RowOf(grown, 4), QString("0 0 255 0 0"));
}

void TestMaskModify::shrinkingTakesTheRimAway()
{
    const LXImage32 square = TestImages::ToTiles(WithRect(9, 9, QRect(1, 1, 7, 7)));
    const LXImage32 shrunk = MaskModify::Shrunk(square, square.Rect(), 2);
    QCOMPARE(CountOf(shrunk, Full), 9);
    QCOMPARE(RowOf(shrunk, 3), QString("0 0 0 255 255 255 0 0 0"));
}

void TestMaskModify::shrinkingCountsTheEdgeOfTheMask()
{
    const LXImage32 all = TestImages::ToTiles(WithRect(6, 4, QRect(0, 0, 6, 4)));
    const LXImage32 shrunk = MaskModify::Shrunk(all, all.Rect(), 1);
    QCOMPARE(RowOf(shrunk, 0), QString("0 0 0 0 0 0"));
    QCOMPARE(RowOf(shrunk, 1), QString("0 255 255 255 255 0"));
}

void TestMaskModify::aBorderLiesOnBothSidesOfTheEdge()
{
    const LXImage32 half = TestImages::ToTiles(WithRect(12, 12, QRect(6, 0, 6, 12)));
    QCOMPARE(RowOf(MaskModify::Border(half, half.Rect(), 2), 6),
             QString("0 0 0 0 255 255 255 255 0 0 255 255")); // the mask ends at the right
}

void TestMaskModify::softValuesGrowAndShrinkAsTheyAre()
{
    PlainImage mask(5, 1);
    for (int x = 0; x < 5; ++x)
        mask.At(x, 0) = LXRGBA32i(static_cast<quint32>(50 * x) << 24);
    const LXImage32 image = TestImages::ToTiles(mask);
    QCOMPARE(RowOf(MaskModify::Grown(image, image.Rect(), 1), 0), QString("50 100 150 200 200"));
    QCOMPARE(RowOf(MaskModify::Shrunk(image, image.Rect(), 1), 0), QString("0 0 0 0 0")); // above and below
}

void TestMaskModify::featheringAPixelGivesTheBell()
{
    // A box of 3 taken three times weighs 1 3 6 7 6 3 1, of 27 together: 255 * 7 * 7 / 729 = 17.1 and so on.
    const LXImage32 dot = TestImages::ToTiles(WithRect(1, 1, QRect(0, 0, 1, 1)));
    const LXImage32 soft = MaskModify::Feathered(dot, QRect(-3, -3, 7, 7), 1);
    QCOMPARE(RowOf(soft, 3), QString("2 7 15 17 15 7 2"));
    QCOMPARE(RowOf(soft, 2), QString("2 6 13 15 13 6 2"));
    QCOMPARE(RowOf(soft, 0), QString("0 1 2 2 2 1 0"));
}

void TestMaskModify::featheringTheInsideOfALargeMaskChangesNothing()
{
    const LXImage32 all = TestImages::ToTiles(WithRect(60, 60, QRect(0, 0, 60, 60)));
    const LXImage32 soft = MaskModify::Feathered(all, all.Rect(), 5);
    QCOMPARE(int(soft.GetColor(15, 30).Alpha()), 255);
    QVERIFY(soft.GetColor(5, 30).Alpha() < 255);
    // Beyond the edge it goes on symmetrically.
    const LXImage32 beyond = MaskModify::Feathered(all, QRect(-1, 30, 2, 1), 5);
    QCOMPARE(int(beyond.GetColor(0, 0).Alpha()) + int(beyond.GetColor(1, 0).Alpha()), 255);
}

void TestMaskModify::smoothingDropsASpeckAndFillsAHole()
{
    PlainImage mask = WithRect(40, 20, QRect(20, 0, 20, 20));
    mask.At(5, 10) = LXRGBA32i(Full);
    mask.At(30, 10) = LXRGBA32i();
    const LXImage32 smooth = MaskModify::Smoothed(TestImages::ToTiles(mask), QRect(0, 0, 40, 20), 2);
    QCOMPARE(int(smooth.GetColor(5, 10).Alpha()), 0);
    QCOMPARE(int(smooth.GetColor(30, 10).Alpha()), 255);
}

void TestMaskModify::smoothingKeepsAStraightEdge()
{
    const LXImage32 half = TestImages::ToTiles(WithRect(40, 41, QRect(20, 0, 20, 41)));
    const LXImage32 smooth = MaskModify::Smoothed(half, half.Rect(), 6);
    QCOMPARE(int(smooth.GetColor(19, 20).Alpha()), 0);
    QCOMPARE(int(smooth.GetColor(20, 20).Alpha()), 255);
    // The corner is rounded.
    QCOMPARE(int(smooth.GetColor(39, 0).Alpha()), 0);
}

void TestMaskModify::radiusNullChangesNothing()
{
    std::mt19937 random(3);
    const LXImage32 mask = TestImages::ToTiles(TestImages::Random(20, 10, random));
    const QString row = RowOf(mask, 4);
    for (const Function function :
         {&MaskModify::Grown, &MaskModify::Shrunk, &MaskModify::Feathered, &MaskModify::Smoothed})
        QCOMPARE(RowOf(function(mask, mask.Rect(), 0), 4), row);
    QCOMPARE(CountOf(MaskModify::Border(mask, mask.Rect(), 0), 0), 200);
}

void TestMaskModify::wholeTilesOfOneValueAreShared()
{
    LXImage32 mask(128 * 5, 128 * 5);
    mask.Fill(LXRGBA32i(Full));
    const LXImage32 grown = MaskModify::Grown(mask, mask.Rect(), 3);
    QCOMPARE(CountOf(grown, Full), 640 * 640);
    QVERIFY(grown.TileAt(1, 1).data() == grown.TileAt(3, 3).data());
    const LXImage32 border = MaskModify::Border(mask, mask.Rect(), 3);
    QVERIFY(border.TileAt(1, 1).data() == border.TileAt(3, 3).data());
    QCOMPARE(int(border.GetColor(300, 300).Alpha()), 0);
}

void TestMaskModify::anEmptyAreaGivesAnEmptyMask()
{
    const LXImage32 dot = TestImages::ToTiles(WithRect(1, 1, QRect(0, 0, 1, 1)));
    QVERIFY(MaskModify::Grown(dot, QRect(), 3).IsNull());
    QVERIFY(MaskModify::Feathered(dot, QRect(), 3).IsNull());
}

void TestMaskModify::theLargestFeatherDoesNotOverflow()
{
    // Wide enough that its middle sees nothing but the mask, and the surroundings aren't of one value.
    constexpr int side = 1600;
    LXImage32 mask(side, side);
    mask.Fill(LXRGBA32i(Full));
    const LXImage32 soft = MaskModify::Feathered(mask, QRect(0, side / 2, side, 1), MaskModify::MaxRadius);
    QCOMPARE(int(soft.GetColor(side / 2, 0).Alpha()), 255);
    // Half a pixel inside the edge, 255/2 and half of the bell's middle.
    QCOMPARE(int(soft.GetColor(0, 0).Alpha()), 128);
}

void TestMaskModify::masksAreModifiedAsPixelByPixel_data()
{
    QTest::addColumn<Function>("function");
    QTest::addColumn<Twin>("twin");
    QTest::newRow("grow") << &MaskModify::Grown << &MaskTwin::Grown;
    QTest::newRow("shrink") << &MaskModify::Shrunk << &MaskTwin::Shrunk;
    QTest::newRow("border") << &MaskModify::Border << &MaskTwin::Border;
    QTest::newRow("feather") << &MaskModify::Feathered << &MaskTwin::Feathered;
    QTest::newRow("smooth") << &MaskModify::Smoothed << &MaskTwin::Smoothed;
}

void TestMaskModify::masksAreModifiedAsPixelByPixel()
{
    QFETCH(Function, function);
    QFETCH(Twin, twin);
    std::mt19937 random(11);
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    for (int round = 0; round < 12; ++round) {
        // Over the seams of tiles; random pixels in one part, one value in another.
        PlainImage mask = WithRect(150 + below(30), 20 + below(20), QRect(0, 0, 140, 18), 0x90000000);
        const PlainImage noise = TestImages::Random(30, 15, random);
        for (int i = 0; i < 30 * 15; ++i)
            mask.At(115 + i % 30, 3 + i / 30) = LXRGBA32i(noise.At(i % 30, i / 30).value);
        const int radius = 1 + below(4);
        const QRect area(-below(14), -below(14), mask.width + below(28), mask.height + below(28));
        const LXImage32 modified = function(TestImages::ToTiles(mask), area, radius);
        QCOMPARE(TestImages::Difference(TestImages::ToPlain(modified), twin(mask, area, radius)), QString());
    }
    // Larger radii cut other pieces.
    const PlainImage noise = TestImages::Random(200, 12, random);
    const QRect area(-10, -10, 20, 30);
    const LXImage32 modified = function(TestImages::ToTiles(noise), area, 45);
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(modified), twin(noise, area, 45)), QString());
}

ZK_REGISTER_TEST(tst_maskmodify, TestMaskModify)
#include "tst_maskmodify.moc"
