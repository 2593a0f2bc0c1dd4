#include "selectionmenu/ColorRange.h"

#include "support/TestImages.h"
#include "support/TestRegistry.h"

#include <QTest>

namespace {
LXRGBA32i Pixel(int red, int green, int blue, int alpha = 255)
{
    return LXRGBA32i(qRgba(red, green, blue, alpha));
}
} // namespace

class TestColorRange : public QObject
{
    Q_OBJECT

private slots:
    void everyChannelCounts_data();
    void everyChannelCounts();
    void toleranceZeroTakesExactMatchesInAllFourChannels();
    void anyColorOfTheListIsEnough();
    void anEmptyListMatchesNothing();
    void theMaskIsTheMatchTestPixelByPixel_data();
    void theMaskIsTheMatchTestPixelByPixel();
    void manyColorsAreAllLookedFor_data();
    void manyColorsAreAllLookedFor();
    void tilesWithoutAMatchStayShared();
    void thePreviewSamplesMiddles();
    void aSmallPictureIsNotEnlarged();
    void aNullPictureHasNoPreview();
};

void TestColorRange::everyChannelCounts_data()
{
    QTest::addColumn<quint32>("pixel");
    QTest::addColumn<bool>("matches");
    // Around (100, 100, 100, 100) with a tolerance of 10.
    QTest::newRow("equal") << Pixel(100, 100, 100, 100).value << true;
    QTest::newRow("red at the limit") << Pixel(110, 100, 100, 100).value << true;
    QTest::newRow("red beyond") << Pixel(111, 100, 100, 100).value << false;
    QTest::newRow("green below") << Pixel(100, 89, 100, 100).value << false;
    QTest::newRow("blue beyond") << Pixel(100, 100, 111, 100).value << false;
    QTest::newRow("alpha at the limit") << Pixel(100, 100, 100, 90).value << true;
    QTest::newRow("alpha beyond") << Pixel(100, 100, 100, 89).value << false;
    QTest::newRow("all at the limit") << Pixel(110, 90, 110, 90).value << true;
}

void TestColorRange::everyChannelCounts()
{
    QFETCH(quint32, pixel);
    const ColorRange range{{Pixel(100, 100, 100, 100)}, 10};
    QTEST(range.Matches(LXRGBA32i(pixel)), "matches");
}

void TestColorRange::toleranceZeroTakesExactMatchesInAllFourChannels()
{
    const ColorRange range{{Pixel(1, 2, 3, 4)}, 0};
    QVERIFY(range.Matches(Pixel(1, 2, 3, 4)));
    for (const LXRGBA32i near :
         {Pixel(2, 2, 3, 4), Pixel(1, 1, 3, 4), Pixel(1, 2, 4, 4), Pixel(1, 2, 3, 5)}) {
        QVERIFY(!range.Matches(near));
    }
}

void TestColorRange::anyColorOfTheListIsEnough()
{
    const ColorRange range{{Pixel(0, 0, 0), Pixel(200, 0, 0)}, 5};
    QVERIFY(range.Matches(Pixel(3, 0, 0)));
    QVERIFY(range.Matches(Pixel(197, 0, 0)));
    QVERIFY(!range.Matches(Pixel(100, 0, 0)));
}

void TestColorRange::anEmptyListMatchesNothing()
{
    QVERIFY(!(ColorRange{{}, 255}.Matches(Pixel(0, 0, 0))));
    QCOMPARE(MakeColorRangeMask(LXImage32(5, 5), {{}, 255}).GetColor(2, 2).value, 0U);
}

void TestColorRange::theMaskIsTheMatchTestPixelByPixel_data()
{
    QTest::addColumn<QSize>("size");
    for (const QSize& size :
         {QSize(1, 1), QSize(127, 3), QSize(128, 128), QSize(129, 130), QSize(300, 140)}) {
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
    }
}

void TestColorRange::theMaskIsTheMatchTestPixelByPixel()
{
    QFETCH(QSize, size);
    std::mt19937 random(7);
    const PlainImage picture = TestImages::Random(size.width(), size.height(), random);
    const ColorRange range{{picture.At(0, 0), Pixel(255, 0, 255), Pixel(128, 128, 128, 128)}, 70};
    PlainImage expected(size.width(), size.height());
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        if (range.Matches(picture.pixels[i])) expected.pixels[i] = LXRGBA32i(0xFF000000U);
    }
    const QString difference = TestImages::Difference(
        TestImages::ToPlain(MakeColorRangeMask(TestImages::ToTiles(picture), range)), expected);
    QVERIFY2(difference.isEmpty(), qUtf8Printable(difference));
}

void TestColorRange::manyColorsAreAllLookedFor_data()
{
    QTest::addColumn<int>("colors");
    QTest::addColumn<int>("tolerance");
    // Around the ends of machine words.
    for (const int colors : {1, 63, 64, 65, 128, 129, 256}) {
        for (const int tolerance : {0, 12, 255}) {
            QTest::addRow("%d colors within %d", colors, tolerance) << colors << tolerance;
        }
    }
}

void TestColorRange::manyColorsAreAllLookedFor()
{
    QFETCH(int, colors);
    QFETCH(int, tolerance);
    std::mt19937 random(11);
    const PlainImage picture = TestImages::Random(140, 40, random);
    ColorRange range{{}, tolerance};
    for (int i = 0; i < colors; ++i) {
        // One for each pixel from the first on, and the last one for the last pixel.
        range.colors.push_back(i + 1 < colors ? picture.pixels[i] : picture.pixels.back());
    }
    PlainImage expected(140, 40);
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        if (range.Matches(picture.pixels[i])) expected.pixels[i] = LXRGBA32i(0xFF000000U);
    }
    QVERIFY(expected.pixels.back().value != 0);
    const QString difference = TestImages::Difference(
        TestImages::ToPlain(MakeColorRangeMask(TestImages::ToTiles(picture), range)), expected);
    QVERIFY2(difference.isEmpty(), qUtf8Printable(difference));
}

void TestColorRange::tilesWithoutAMatchStayShared()
{
    LXImage32 picture(384, 128);
    picture.SetColor(200, 5, Pixel(9, 9, 9));
    const LXImage32 mask = MakeColorRangeMask(picture, {{Pixel(9, 9, 9)}, 0});
    QVERIFY(mask.TileAt(0, 0) == mask.TileAt(2, 0));
    QVERIFY(mask.TileAt(0, 0) != mask.TileAt(1, 0));
    QCOMPARE(mask.GetColor(200, 5).value, 0xFF000000U);
}

void TestColorRange::thePreviewSamplesMiddles()
{
    // 6 x 2 into 3 x 3: 3 x 1, whose pixels stand for the columns 1, 3 and 5 of row 1.
    LXImage32 picture(6, 2);
    picture.SetColor(3, 1, Pixel(50, 0, 0));
    const QImage preview = MakeColorRangePreview(picture, {{Pixel(50, 0, 0)}, 0}, {3, 3});
    QCOMPARE(preview.size(), QSize(3, 1));
    QCOMPARE(preview.pixel(0, 0), qRgb(0, 0, 0));
    QCOMPARE(preview.pixel(1, 0), qRgb(255, 255, 255));
    QCOMPARE(preview.pixel(2, 0), qRgb(0, 0, 0));
}

void TestColorRange::aSmallPictureIsNotEnlarged()
{
    QCOMPARE(MakeColorRangePreview(LXImage32(6, 2), {{Pixel(0, 0, 0, 0)}, 0}, {100, 100}).size(),
             QSize(6, 2));
}

void TestColorRange::aNullPictureHasNoPreview()
{
    QVERIFY(MakeColorRangePreview(LXImage32(), {{}, 0}, {10, 10}).isNull());
}

ZK_REGISTER_TEST(tst_colorrange, TestColorRange)
#include "tst_colorrange.moc"
