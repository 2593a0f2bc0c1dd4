#include "image/LXImage.h"
#include "image/LXImageConvert.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"
#include "support/TransformTwin.h"

#include <QImage>
#include <QPointF>
#include <QTest>
#include <QTransform>

#include <cmath>
#include <limits>
#include <random>

class TestConvert : public QObject
{
    Q_OBJECT

private slots:
    void bothWaysKeepEveryByte_data();
    void bothWaysKeepEveryByte();
    void otherFormatsAreConverted();
    void nullGivesNull();
    void blankTilesOfAPictureAreShared();

    void scaleOneCopies();
    void scalingAveragesOrMixesAsTheTwin_data();
    void scalingAveragesOrMixesAsTheTwin();
    void shrinkingAverages();
    void shrinkingWeighsColorByAlpha();
    void stretchingKeepsEdgesOpaque();
    void stretchingMixesNeighbours();
    void originShiftsThePart();
    void farOutPartsAreThoseOfTheTwin_data();
    void farOutPartsAreThoseOfTheTwin();
    void outsideIsTransparent();
    void premultipliedTargetsAreServed();
    void anyScaleKeepsAPlainColor_data();
    void anyScaleKeepsAPlainColor();
    void impossibleScalesAreRefused();

private:
    static QImage Scaled(const LXImage32& source, const QPointF& origin, double scale, const QSize& size);
};

QImage TestConvert::Scaled(const LXImage32& source, const QPointF& origin, double scale, const QSize& size)
{
    QImage target(size, QImage::Format_ARGB32);
    target.fill(Qt::magenta);
    return ScaleImage(source, origin, scale, target) ? target : QImage();
}

void TestConvert::bothWaysKeepEveryByte_data()
{
    QTest::addColumn<QSize>("size");
    for (const QSize& size : {QSize(1, 1), QSize(127, 128), QSize(129, 130), QSize(300, 270)}) {
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
    }
}

void TestConvert::bothWaysKeepEveryByte()
{
    QFETCH(QSize, size);
    std::mt19937 random(21);
    const PlainImage plain = TestImages::Random(size.width(), size.height(), random);
    QImage picture;
    ConvertImage(TestImages::ToTiles(plain), picture);
    QCOMPARE(picture.format(), QImage::Format_ARGB32);
    QCOMPARE(picture.size(), size);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const auto* const row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
            QCOMPARE(row[x], plain.At(x, y).value);
        }
    }
    LXImage32 back;
    ConvertImage(picture, back);
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(back), plain), QString());
}

void TestConvert::otherFormatsAreConverted()
{
    QImage gray(3, 2, QImage::Format_Grayscale8);
    gray.fill(0x40);
    LXImage32 image;
    ConvertImage(gray, image);
    QCOMPARE(image.Rect(), QRect(0, 0, 3, 2));
    QCOMPARE(image.GetColor(2, 1).value, 0xFF404040u);

    QImage premultiplied(1, 1, QImage::Format_ARGB32_Premultiplied);
    premultiplied.fill(QColor(255, 0, 0, 51));
    ConvertImage(premultiplied, image);
    QCOMPARE(image.GetColor(0, 0).value, 0x33FF0000u);
}

void TestConvert::nullGivesNull()
{
    QImage picture(3, 3, QImage::Format_RGB32);
    ConvertImage(LXImage32(), picture);
    QVERIFY(picture.isNull());
    LXImage32 image(3, 3);
    ConvertImage(QImage(), image);
    QVERIFY(image.IsNull());
}

void TestConvert::blankTilesOfAPictureAreShared()
{
    const int before = LXTileManager::Instance().LiveTileCount();
    QImage picture(1280, 1280, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    picture.setPixel(700, 700, 0xFF112233);
    LXImage32 image;
    ConvertImage(picture, image);
    QCOMPARE(LXTileManager::Instance().LiveTileCount() - before, 2);
    QCOMPARE(image.GetColor(700, 700).value, 0xFF112233u);
}

void TestConvert::scalingAveragesOrMixesAsTheTwin_data()
{
    QTest::addColumn<double>("scale");
    for (const double scale : {0.07, 0.23, 1.0 / 3, 0.5, 0.77, 0.999, 1.001, 1.5, 3.3}) {
        QTest::addRow("%g", scale) << scale;
    }
}

/// Every target pixel lies inside the source, so that no coverage weakens the twin's.
void TestConvert::scalingAveragesOrMixesAsTheTwin()
{
    QFETCH(double, scale);
    std::mt19937 random(4);
    const PlainImage source = TestImages::Random(140, 300, random);
    const QSize size(std::min(330, static_cast<int>(140 * scale)),
                     std::min(330, static_cast<int>(300 * scale)));
    const QImage scaled = Scaled(TestImages::ToTiles(source), QPointF(0, 0), scale, size);
    PlainImage actual(size.width(), size.height());
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            actual.At(x, y) = LXRGBA32i(scaled.pixel(x, y));
        }
    }
    const PlainImage expected = TransformTwin::Transformed(source, QTransform::fromScale(scale, scale), size,
                                                           TransformTwin::Method::Linear);
    QVERIFY(TransformTwin::LargestDifference(actual, expected) <= 1);
}

void TestConvert::scaleOneCopies()
{
    std::mt19937 random(22);
    PlainImage plain = TestImages::Random(300, 270, random);
    for (LXRGBA32i& pixel : plain.pixels) {
        if (pixel.Alpha() == 0) pixel = LXRGBA32i();
    }
    const QImage scaled = Scaled(TestImages::ToTiles(plain), QPointF(0, 0), 1.0, QSize(300, 270));
    for (int y = 0; y < 270; ++y) {
        for (int x = 0; x < 300; ++x) {
            QCOMPARE(scaled.pixel(x, y), plain.At(x, y).value);
        }
    }
}

void TestConvert::shrinkingAverages()
{
    LXImage32 image(4, 2);
    image.Fill(LXRGBA32i(0xFF000000));
    image.SetColor(0, 0, LXRGBA32i(0xFF64C8FF));
    const QImage scaled = Scaled(image, QPointF(0, 0), 0.5, QSize(2, 1));
    // 100 / 4, 200 / 4, 255 / 4
    QCOMPARE(scaled.pixel(0, 0), 0xFF193240u);
    QCOMPARE(scaled.pixel(1, 0), 0xFF000000u);
}

void TestConvert::shrinkingWeighsColorByAlpha()
{
    LXImage32 image(2, 1);
    image.SetColor(0, 0, LXRGBA32i(0xFFFF0000));
    image.SetColor(1, 0, LXRGBA32i(0x0000FF00));
    QCOMPARE(Scaled(image, QPointF(0, 0), 0.5, QSize(1, 1)).pixel(0, 0), 0x80FF0000u);
}

void TestConvert::stretchingKeepsEdgesOpaque()
{
    LXImage32 image(2, 2);
    image.Fill(LXRGBA32i(0xFF336699));
    const QImage scaled = Scaled(image, QPointF(0, 0), 4.0, QSize(8, 8));
    for (int i = 0; i < 8; ++i) {
        QCOMPARE(scaled.pixel(i, 0), 0xFF336699u);
        QCOMPARE(scaled.pixel(7, i), 0xFF336699u);
    }
}

void TestConvert::stretchingMixesNeighbours()
{
    LXImage32 image(2, 1);
    image.SetColor(0, 0, LXRGBA32i(0xFF000000));
    image.SetColor(1, 0, LXRGBA32i(0xFF0000C8));
    const QImage scaled = Scaled(image, QPointF(0, 0), 2.0, QSize(4, 2));
    // Middles at 0.25, 0.75, 1.25 and 1.75: 0, a quarter, three quarters, all of the second pixel.
    QCOMPARE(scaled.pixel(0, 0), 0xFF000000u);
    QCOMPARE(scaled.pixel(1, 0), 0xFF000032u);
    QCOMPARE(scaled.pixel(2, 1), 0xFF000096u);
    QCOMPARE(scaled.pixel(3, 1), 0xFF0000C8u);
}

void TestConvert::originShiftsThePart()
{
    LXImage32 image(300, 270);
    image.SetColor(200, 150, LXRGBA32i(0xFF112233));
    QCOMPARE(Scaled(image, QPointF(198, 149), 1.0, QSize(4, 4)).pixel(2, 1), 0xFF112233u);
    QCOMPARE(Scaled(image, QPointF(198, 149), 1.0, QSize(4, 4)).pixel(1, 1), 0u);
}

void TestConvert::farOutPartsAreThoseOfTheTwin_data()
{
    QTest::addColumn<double>("scale");
    for (const double scale : {0.31, 1.0, 1.7}) {
        QTest::addRow("%g", scale) << scale;
    }
}

/// At the end of a long source.
void TestConvert::farOutPartsAreThoseOfTheTwin()
{
    QFETCH(double, scale);
    std::mt19937 random(7);
    constexpr int first = 28928; // of the noise: a whole number of tiles
    const PlainImage end = TestImages::Random(30000 - first, 40, random);
    LXImage32 tiles(30000, 40);
    const LXImage32 endTiles = TestImages::ToTiles(end);
    for (int column = 0; column < static_cast<int>(endTiles.m_TilesX); ++column) {
        tiles.TileAt(first / 128 + column, 0) = endTiles.TileAt(column, 0);
    }
    const QPointF origin(29000.5, 0.25);
    const QSize size(300, std::min(30, static_cast<int>(39 * scale)));
    const QImage scaled = Scaled(tiles, origin, scale, size);
    PlainImage actual(size.width(), size.height());
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            actual.At(x, y) = LXRGBA32i(scaled.pixel(x, y));
        }
    }
    const QTransform transform =
        QTransform::fromTranslate(first - origin.x(), -origin.y()) * QTransform::fromScale(scale, scale);
    const PlainImage expected =
        TransformTwin::Transformed(end, transform, size, TransformTwin::Method::Linear);
    QVERIFY(TransformTwin::LargestDifference(actual, expected) <= 1);
}

void TestConvert::outsideIsTransparent()
{
    LXImage32 image(2, 2);
    image.Fill(LXRGBA32i(0xFFFFFFFF));
    const QImage scaled = Scaled(image, QPointF(-2, -2), 1.0, QSize(6, 6));
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 6; ++x) {
            const bool isInside = x >= 2 && x < 4 && y >= 2 && y < 4;
            QCOMPARE(scaled.pixel(x, y), isInside ? 0xFFFFFFFFu : 0u);
        }
    }
    QCOMPARE(Scaled(image, QPointF(50, 50), 2.0, QSize(3, 3)).pixel(1, 1), 0u);
}

void TestConvert::premultipliedTargetsAreServed()
{
    LXImage32 image(1, 1);
    image.SetColor(0, 0, LXRGBA32i(0x80FF0000));
    QImage target(1, 1, QImage::Format_ARGB32_Premultiplied);
    QVERIFY(ScaleImage(image, QPointF(0, 0), 1.0, target));
    QCOMPARE(*reinterpret_cast<const QRgb*>(target.constScanLine(0)), 0x80800000u);
}

void TestConvert::anyScaleKeepsAPlainColor_data()
{
    QTest::addColumn<double>("scale");
    for (const double scale : {0.01, 0.1, 1.0 / 3, 0.77, 0.999, 1.001, 1.5, 3.3, 17.0}) {
        QTest::addRow("%g", scale) << scale;
    }
}

void TestConvert::anyScaleKeepsAPlainColor()
{
    QFETCH(double, scale);
    LXImage32 image(300, 270);
    image.Fill(LXRGBA32i(0xFF80C8FF));
    const QSize size(std::max(1, static_cast<int>(300 * scale)), std::max(1, static_cast<int>(270 * scale)));
    const QImage scaled = Scaled(image, QPointF(0, 0), scale, size.boundedTo(QSize(500, 500)));
    for (int y = 0; y < scaled.height(); ++y) {
        for (int x = 0; x < scaled.width(); ++x) {
            QCOMPARE(scaled.pixel(x, y), 0xFF80C8FFu);
        }
    }
}

void TestConvert::impossibleScalesAreRefused()
{
    const LXImage32 image(3, 3);
    QImage target(3, 3, QImage::Format_ARGB32);
    target.fill(0x12345678);
    const QImage before = target;
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double scale : {0.0, -1.0, nan, std::numeric_limits<double>::infinity()}) {
        QVERIFY(!ScaleImage(image, QPointF(0, 0), scale, target));
    }
    QVERIFY(!ScaleImage(image, QPointF(nan, 0), 1.0, target));
    QVERIFY(!ScaleImage(LXImage32(), QPointF(0, 0), 1.0, target));
    QCOMPARE(target, before);
    QImage null;
    QVERIFY(!ScaleImage(image, QPointF(0, 0), 1.0, null));
    QImage gray(3, 3, QImage::Format_Grayscale8);
    QVERIFY(!ScaleImage(image, QPointF(0, 0), 1.0, gray));
}

ZK_REGISTER_TEST(tst_convert, TestConvert)
#include "tst_convert.moc"
