#include "common/BlendToMask.h"
#include "common/LXBlender.h"
#include "common/PixelFunctors.h"
#include "common/TileMap.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <atomic>

namespace {
LXRGBA32i Pixel(int red, int green, int blue, int alpha)
{
    return LXRGBA32i(qRgba(red, green, blue, alpha));
}
} // namespace

class TestTileMap : public QObject
{
    Q_OBJECT

private slots:
    void theWholeImageIsMappedOncePerPixel_data();
    void theWholeImageIsMappedOncePerPixel();
    void onlyTheTilesOfTheRangeAreMapped();
    void tilesTouchingRoundsOutward_data();
    void tilesTouchingRoundsOutward();
    void aSharedTileIsDetachedBeforeTheFirstWrite();
    void slotsThatShareOneTileAreEachMappedOnce();
    void pixelsBeyondTheEdgeHaveNoEffectOnTheImage();
    void anEmptyImageMapsNothing();

    void cleanupAlphaKeepsTheColor();
    void aColorWithoutTransparencyKeepsTheAlpha();
    void aSourceIsCopiedWhole();

    void lightnessIsTheMiddleOfTheExtremes_data();
    void lightnessIsTheMiddleOfTheExtremes();
    void blendToMaskOfEveryAlpha_data();
    void blendToMaskOfEveryAlpha();
    void blendToMaskBySelection_data();
    void blendToMaskBySelection();
    void blendersTakeTheirPixelByIndex();
};

void TestTileMap::theWholeImageIsMappedOncePerPixel_data()
{
    QTest::addColumn<QSize>("size");
    for (const QSize& size :
         {QSize(1, 1), QSize(127, 128), QSize(128, 128), QSize(129, 1), QSize(130, 260)}) {
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
    }
}

void TestTileMap::theWholeImageIsMappedOncePerPixel()
{
    QFETCH(QSize, size);
    LXImage32 image(size.width(), size.height());
    std::atomic<int> calls{0};
    TileMap().RunAll(image, [&](LXRGBA32i* pixels, int, int) {
        return [&calls, pixels](int index) {
            ++calls;
            ++pixels[index].value;
        };
    });
    QCOMPARE(calls.load(), int(image.m_Tiles.size()) * 16384);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            if (image.GetColor(x, y).value != 1) QFAIL("a pixel was not mapped once");
        }
    }
}

void TestTileMap::onlyTheTilesOfTheRangeAreMapped()
{
    LXImage32 image(400, 300);
    QVector<QPoint> seen;
    TileMap().Run(image, QRect(1, 0, 2, 2), [&](LXRGBA32i* pixels, int column, int row) {
        seen.append({column, row});
        return [pixels](int index) { pixels[index].value = 7; };
    });
    QCOMPARE(seen, QVector<QPoint>({{1, 0}, {2, 0}, {1, 1}, {2, 1}}));
    QCOMPARE(image.GetColor(127, 0).value, 0U);
    QCOMPARE(image.GetColor(128, 0).value, 7U);
    QCOMPARE(image.GetColor(383, 255).value, 7U);
    QCOMPARE(image.GetColor(384, 255).value, 0U);
    QCOMPARE(image.GetColor(383, 256).value, 0U);
}

void TestTileMap::tilesTouchingRoundsOutward_data()
{
    QTest::addColumn<QRect>("pixels");
    QTest::addColumn<QRect>("tiles");
    QTest::newRow("inside one") << QRect(5, 5, 10, 10) << QRect(0, 0, 1, 1);
    QTest::newRow("up to an edge") << QRect(0, 0, 128, 128) << QRect(0, 0, 1, 1);
    QTest::newRow("one pixel over") << QRect(127, 127, 2, 2) << QRect(0, 0, 2, 2);
    QTest::newRow("clipped by the image") << QRect(-50, 250, 1000, 1000) << QRect(0, 1, 4, 2);
    QTest::newRow("outside") << QRect(400, 0, 10, 10) << QRect();
    QTest::newRow("empty") << QRect() << QRect();
}

void TestTileMap::tilesTouchingRoundsOutward()
{
    QFETCH(QRect, pixels);
    QFETCH(QRect, tiles);
    const QRect touching = TilesTouching(LXImage32(400, 300), pixels);
    QVERIFY(touching == tiles || (touching.isEmpty() && tiles.isEmpty()));
}

void TestTileMap::aSharedTileIsDetachedBeforeTheFirstWrite()
{
    LXImage32 image(200, 100);
    image.Fill(Pixel(1, 2, 3, 4));
    const LXImage32 other = image;
    TileMap().RunAll(image, [](LXRGBA32i* pixels, int, int) { return CleanupAlpha{pixels}; });
    QCOMPARE(image.GetColor(150, 50).value, Pixel(1, 2, 3, 255).value);
    QCOMPARE(other.GetColor(150, 50).value, Pixel(1, 2, 3, 4).value);
    QVERIFY(image.TileAt(0, 0) != other.TileAt(0, 0));
}

void TestTileMap::slotsThatShareOneTileAreEachMappedOnce()
{
    LXImage32 image(128 * 3, 128);
    QVERIFY(image.TileAt(0, 0) == image.TileAt(2, 0));
    TileMap().RunAll(image, [](LXRGBA32i* pixels, int column, int) {
        return [pixels, column](int index) { pixels[index].value += quint32(column) + 1; };
    });
    QCOMPARE(image.GetColor(0, 0).value, 1U);
    QCOMPARE(image.GetColor(128, 0).value, 2U);
    QCOMPARE(image.GetColor(256, 0).value, 3U);
}

void TestTileMap::pixelsBeyondTheEdgeHaveNoEffectOnTheImage()
{
    LXImage32 image(130, 5);
    TileMap().RunAll(image, [](LXRGBA32i* pixels, int, int) { return CleanupAlpha{pixels}; });
    LXImage32 target(200, 10);
    BlendOn(image, QRect(0, 0, 500, 500), BlendMode::Source, target, target.Rect(), 1.0, false);
    QCOMPARE(target.GetColor(129, 4).value, Pixel(0, 0, 0, 255).value);
    QCOMPARE(target.GetColor(130, 4).value, 0U);
    QCOMPARE(target.GetColor(129, 5).value, 0U);
}

void TestTileMap::anEmptyImageMapsNothing()
{
    LXImage32 image;
    int tiles = 0;
    TileMap().RunAll(image, [&](LXRGBA32i*, int, int) {
        ++tiles;
        return [](int) {};
    });
    QCOMPARE(tiles, 0);
}

void TestTileMap::cleanupAlphaKeepsTheColor()
{
    LXRGBA32i pixels[2] = {Pixel(10, 20, 30, 0), Pixel(10, 20, 30, 40)};
    CleanupAlpha{pixels}(1);
    QCOMPARE(pixels[0].value, Pixel(10, 20, 30, 0).value);
    QCOMPARE(pixels[1].value, Pixel(10, 20, 30, 255).value);
}

void TestTileMap::aColorWithoutTransparencyKeepsTheAlpha()
{
    LXRGBA32i pixels[2] = {Pixel(10, 20, 30, 40), Pixel(10, 20, 30, 40)};
    FillColorWithoutTransparency{pixels, 3, 2, 1}(1);
    QCOMPARE(pixels[0].value, Pixel(10, 20, 30, 40).value);
    QCOMPARE(pixels[1].value, Pixel(1, 2, 3, 40).value);
}

void TestTileMap::aSourceIsCopiedWhole()
{
    const LXRGBA32i source = Pixel(1, 2, 3, 0);
    LXRGBA32i target = Pixel(9, 9, 9, 9);
    LXBlend::LXSource<0>::Blend(source, target);
    QCOMPARE(target.value, source.value);
}

void TestTileMap::lightnessIsTheMiddleOfTheExtremes_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<int>("lightness");
    QTest::newRow("black") << QColor(0, 0, 0) << 0;
    QTest::newRow("white") << QColor(255, 255, 255) << 255;
    QTest::newRow("red") << QColor(255, 0, 0) << 127;
    QTest::newRow("odd sum truncates") << QColor(10, 200, 21) << 105;
}

void TestTileMap::lightnessIsTheMiddleOfTheExtremes()
{
    QFETCH(QColor, color);
    QTEST(LightnessOf(LXRGBA32i(color.rgba())), "lightness");
}

void TestTileMap::blendToMaskOfEveryAlpha_data()
{
    QTest::addColumn<int>("sourceAlpha");
    QTest::addColumn<int>("result");
    // Lightness 100 over the value 50.
    QTest::newRow("transparent leaves") << 0 << 50;
    QTest::newRow("opaque gives the lightness") << 255 << 100;
    // (100 x 128 + 127 x 50) / 255 = 19150 / 255 = 75.09
    QTest::newRow("half") << 128 << 75;
    // (100 x 254 + 1 x 50) / 255 = 25450 / 255 = 99.8, truncated
    QTest::newRow("nearly opaque truncates") << 254 << 99;
}

void TestTileMap::blendToMaskOfEveryAlpha()
{
    QFETCH(int, sourceAlpha);
    QFETCH(int, result);
    LXRGBA32i target = Pixel(7, 8, 9, 50);
    BlendToMask::Blend(Pixel(100, 100, 100, sourceAlpha), target);
    QCOMPARE(target.value, Pixel(7, 8, 9, result).value);
}

void TestTileMap::blendToMaskBySelection_data()
{
    QTest::addColumn<int>("sourceAlpha");
    QTest::addColumn<int>("selection");
    QTest::addColumn<int>("result");
    QTest::newRow("not selected leaves") << 255 << 0 << 50;
    QTest::newRow("selected, opaque") << 255 << 255 << 100;
    QTest::newRow("selected, transparent") << 0 << 255 << 50;
    // t = 75 (above); (75 x 100 + 155 x 50) / 255 = 15250 / 255 = 59.8, truncated
    QTest::newRow("both soft: truncated twice") << 128 << 100 << 59;
}

void TestTileMap::blendToMaskBySelection()
{
    QFETCH(int, sourceAlpha);
    QFETCH(int, selection);
    QFETCH(int, result);
    LXRGBA32i target = Pixel(7, 8, 9, 50);
    BlendToMaskBySelection::Blend(Pixel(100, 100, 100, sourceAlpha), target, Pixel(0, 0, 0, selection));
    QCOMPARE(target.value, Pixel(7, 8, 9, result).value);
}

void TestTileMap::blendersTakeTheirPixelByIndex()
{
    const LXRGBA32i source[2] = {Pixel(0, 0, 0, 255), Pixel(100, 100, 100, 255)};
    const LXRGBA32i selection[2] = {Pixel(0, 0, 0, 255), Pixel(0, 0, 0, 255)};
    LXRGBA32i target[2] = {Pixel(1, 1, 1, 50), Pixel(1, 1, 1, 50)};
    LXBlend::LXBlender<LXRGBA32i, BlendToMask>{source, target}(1);
    QCOMPARE(target[0].Alpha(), 50);
    QCOMPARE(target[1].Alpha(), 100);
    LXBlend::LXSelectionBlender<LXRGBA32i, BlendToMaskBySelection, LXRGBA32i>{source, target, selection}(0);
    QCOMPARE(target[0].Alpha(), 0);
    QCOMPARE(target[1].Alpha(), 100);
}

ZK_REGISTER_TEST(tst_tilemap, TestTileMap)
#include "tst_tilemap.moc"
