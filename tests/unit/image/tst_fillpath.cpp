#include "image/BrushPixels.h"
#include "image/LXBlend.h"
#include "image/LXImage.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"

#include <QBrush>
#include <QImage>
#include <QLinearGradient>
#include <QPainterPath>
#include <QPixmap>
#include <QPolygonF>
#include <QTest>

#include <atomic>
#include <random>
#include <thread>
#include <vector>

namespace {
QPainterPath RectPath(const QRectF& rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}

QPainterPath Triangle(const QPointF& a, const QPointF& b, const QPointF& c)
{
    QPainterPath path;
    path.addPolygon(QPolygonF({a, b, c, a}));
    return path;
}

LXImage32 Filled(int width, int height, quint32 color)
{
    LXImage32 image(width, height);
    image.Fill(LXRGBA32i(color));
    return image;
}
} // namespace

class TestFillPath : public QObject
{
    Q_OBJECT

private slots:
    void byMiddleAgreesWithAPointInPolygonTest_data();
    void byMiddleAgreesWithAPointInPolygonTest();
    void wholePixelsTakeTheBrush_data();
    void wholePixelsTakeTheBrush();
    void pixelsOutsideThePathStay();
    void sourceMixesTheEdgeByCoverage();
    void sourceInTakesTheColorOfEveryTouchedPixelWhole();
    void sourceInMultipliesTheAlphas();
    void transparentBrushEmptiesACoverage();
    void normalFollowsThePixelsMiddle();
    void wedgesMeetWithoutSeams();
    void wedgesMeetFarOutOfAPaintersReach();
    void normalBlendsATranslucentBrush();
    void grayBrushPaintsIntoAMask();
    void texturesStartAtTheImagesOrigin();
    void translucentTexturesKeepTheirBytes();
    void texturesOfPixmapsAreReadByManyAtOnce();
    void gradientsAreSampledAtPixelMiddles();
    void almostTransparentGradientsKeepTheirColor();
    void pathsFollowTheirFillRule_data();
    void pathsFollowTheirFillRule();
    void farAndEmptyPathsDoNothing();
    void hugePathsFillTheImage();
    void coveredTilesAreDetachedAlone();
    void oneColorOnRepeatedTilesIsMadeOnce();
    void aRectangleAroundTheImageIsFilledLikeAnyPath_data();
    void aRectangleAroundTheImageIsFilledLikeAnyPath();
};

void TestFillPath::wholePixelsTakeTheBrush_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("normal") << 0;
    QTest::newRow("source") << 3;
    QTest::newRow("source in") << 5;
}

void TestFillPath::wholePixelsTakeTheBrush()
{
    QFETCH(int, mode);
    LXImage32 image = Filled(300, 270, 0xFF112233);
    PlainImage expected(300, 270, LXRGBA32i(0xFF112233));
    const QRect rect(100, 120, 150, 140);
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            expected.At(x, y) = LXRGBA32i(0xFFAABBCC);
        }
    }
    FillPath(image, mode, RectPath(rect), QBrush(QColor(0xAA, 0xBB, 0xCC)));
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(image), expected), QString());
}

void TestFillPath::pixelsOutsideThePathStay()
{
    for (const int mode : {0, 3, 5, 6, 92}) {
        LXImage32 image = Filled(10, 10, 0x80112233);
        FillPath(image, mode, RectPath(QRectF(2, 2, 3, 3)), QBrush(QColor(0, 0, 0, 0)));
        QCOMPARE(image.GetColor(1, 2).value, 0x80112233u);
        QCOMPARE(image.GetColor(5, 4).value, 0x80112233u);
    }
}

void TestFillPath::sourceMixesTheEdgeByCoverage()
{
    LXImage32 image(4, 1);
    FillPath(image, 3, RectPath(QRectF(0, 0, 2.5, 1)), QBrush(QColor(10, 20, 30)));
    QCOMPARE(image.GetColor(1, 0).value, 0xFF0A141Eu);
    const LXRGBA32i edge = image.GetColor(2, 0);
    QVERIFY2(std::abs(edge.Alpha() - 128) <= 1, QByteArray::number(edge.Alpha()));
    QCOMPARE(edge.value & 0x00FFFFFFu, 0x000A141Eu);
    QCOMPARE(image.GetColor(3, 0).value, 0u);
}

void TestFillPath::sourceInTakesTheColorOfEveryTouchedPixelWhole()
{
    LXImage32 image = Filled(4, 1, 0x64000000);
    FillPath(image, 5, RectPath(QRectF(0, 0, 2.5, 1)), QBrush(QColor(10, 20, 30)));
    QCOMPARE(image.GetColor(1, 0).value, 0x640A141Eu);
    QCOMPARE(image.GetColor(2, 0).value, 0x640A141Eu);
    QCOMPARE(image.GetColor(3, 0).value, 0x64000000u);
}

void TestFillPath::sourceInMultipliesTheAlphas()
{
    // 200 x 100 / 255 = 78.4
    LXImage32 image = Filled(1, 1, 0xC8000000);
    FillPath(image, 5, RectPath(QRectF(0, 0, 1, 1)), QBrush(QColor(10, 20, 30, 100)));
    QCOMPARE(image.GetColor(0, 0).value, 0x4E0A141Eu);
}

void TestFillPath::transparentBrushEmptiesACoverage()
{
    LXImage32 image = Filled(1, 1, 0xFF000000);
    FillPath(image, 5, RectPath(QRectF(0, 0, 1, 1)), QBrush(QColor(0, 0, 0, 0)));
    QCOMPARE(image.GetColor(0, 0).Alpha(), 0);
}

void TestFillPath::normalFollowsThePixelsMiddle()
{
    LXImage32 image(6, 1);
    FillPath(image, 0, RectPath(QRectF(0.6, 0, 2.8, 1)), QBrush(Qt::white));
    const int expected[] = {0, 255, 255, 0, 0, 0};
    for (int x = 0; x < 6; ++x) {
        QCOMPARE(image.GetColor(x, 0).Alpha(), expected[x]);
    }
}

void TestFillPath::byMiddleAgreesWithAPointInPolygonTest_data()
{
    QTest::addColumn<Qt::FillRule>("rule");
    QTest::newRow("odd even") << Qt::OddEvenFill;
    QTest::newRow("winding") << Qt::WindingFill;
}

void TestFillPath::byMiddleAgreesWithAPointInPolygonTest()
{
    QFETCH(Qt::FillRule, rule);
    std::mt19937 random(31);
    const auto coordinate = [&] { return static_cast<double>(random() % 40000) / 100 - 50.013; };
    for (int turn = 0; turn < 20; ++turn) {
        QPolygonF polygon;
        for (int i = 0; i < 9; ++i) {
            polygon << QPointF(coordinate(), coordinate());
        }
        QPainterPath path;
        path.addPolygon(polygon);
        path.setFillRule(rule);
        LXImage32 image(300, 270);
        FillPath(image, 0, path, QBrush(Qt::white));
        const PlainImage plain = TestImages::ToPlain(image);
        for (int y = 0; y < 270; ++y) {
            for (int x = 0; x < 300; ++x) {
                const bool isInside = polygon.containsPoint(QPointF(x + 0.5, y + 0.5), rule);
                QVERIFY2(plain.At(x, y).Alpha() == (isInside ? 255 : 0),
                         QByteArray::number(x) + ' ' + QByteArray::number(y));
            }
        }
    }
}

/// The four triangles between a rectangle's corners and a point inside; translucent, so that a pixel filled
/// twice would show.
void TestFillPath::wedgesMeetWithoutSeams()
{
    const QPointF corners[] = {{0, 0}, {300, 0}, {300, 270}, {0, 270}};
    const QPointF middles[] = {{150, 135}, {100.5, 99.5}, {37.3, 201.7}, {0, 0}, {299.5, 0.5}};
    for (const QPointF& middle : middles) {
        LXImage32 image(300, 270);
        for (int i = 0; i < 4; ++i) {
            FillPath(image, 0, Triangle(corners[i], corners[(i + 1) % 4], middle),
                     QBrush(QColor(255, 0, 0, 128)));
        }
        const PlainImage expected(300, 270, LXRGBA32i(0x80FF0000));
        QCOMPARE(TestImages::Difference(TestImages::ToPlain(image), expected), QString());
    }
}

/// A painter's own coordinates end at 32767.
void TestFillPath::wedgesMeetFarOutOfAPaintersReach()
{
    const QPointF corners[] = {{0, 0}, {70000, 0}, {70000, 20}, {0, 20}};
    const QPointF middles[] = {{35000, 10}, {69000.5, 3.3}, {150.2, 19.5}};
    for (const QPointF& middle : middles) {
        LXImage32 image(70000, 20);
        for (int i = 0; i < 4; ++i) {
            FillPath(image, 0, Triangle(corners[i], corners[(i + 1) % 4], middle),
                     QBrush(QColor(255, 0, 0, 128)));
        }
        const PlainImage expected(70000, 20, LXRGBA32i(0x80FF0000));
        QCOMPARE(TestImages::Difference(TestImages::ToPlain(image), expected), QString());
    }
}

void TestFillPath::normalBlendsATranslucentBrush()
{
    LXImage32 image = Filled(1, 1, 0xFF000000);
    FillPath(image, 0, RectPath(QRectF(0, 0, 1, 1)), QBrush(QColor(255, 255, 255, 128)));
    QCOMPARE(image.GetColor(0, 0).value, 0xFF808080u);
}

void TestFillPath::grayBrushPaintsIntoAMask()
{
    LXImage32 image = Filled(1, 1, 0xFF000000);
    FillPath(image, 64, RectPath(QRectF(0, 0, 1, 1)), QBrush(QColor(100, 100, 100)));
    QCOMPARE(image.GetColor(0, 0).value, 0x64000000u);
}

void TestFillPath::texturesStartAtTheImagesOrigin()
{
    std::mt19937 random(3);
    const PlainImage tile = TestImages::Random(7, 5, random);
    QImage texture(7, 5, QImage::Format_ARGB32);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 7; ++x) {
            texture.setPixel(x, y, tile.At(x, y).value);
        }
    }
    LXImage32 image(300, 270);
    const QRect rect(10, 20, 280, 240);
    FillPath(image, 3, RectPath(rect), QBrush(texture));
    PlainImage expected(300, 270);
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            expected.At(x, y) = tile.At(x % 7, y % 5);
        }
    }
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(image), expected), QString());
}

void TestFillPath::translucentTexturesKeepTheirBytes()
{
    QImage texture(1, 1, QImage::Format_ARGB32);
    texture.setPixel(0, 0, 0x03C89664);
    LXImage32 image(2, 2);
    FillPath(image, 3, RectPath(QRectF(0, 0, 2, 2)), QBrush(texture));
    QCOMPARE(image.GetColor(1, 1).value, 0x03C89664u);
}

/// Of a pixmap Qt makes the image late and without a lock, and threads that meet there lose one: it then
/// lives on when all who held it are gone.
void TestFillPath::texturesOfPixmapsAreReadByManyAtOnce()
{
    QImage picture(8, 8, QImage::Format_ARGB32_Premultiplied);
    picture.fill(0x80402010);
    constexpr int threadCount = 2;
    for (int round = 0; round < 200; ++round) {
        QBrush brush(QPixmap::fromImage(picture, Qt::NoFormatConversion));
        brush.setTransform(QTransform().rotate(30));
        const BrushPixels pixels(brush);
        brush = QBrush();
        std::atomic<int> ready{0};
        std::atomic<int> wrong{0};
        const auto read = [&] {
            LXRGBA32i pixel;
            for (++ready; ready < threadCount;) {
            }
            pixels.Read(QRect(4, 4, 1, 1), &pixel);
            if (pixel.Alpha() != 0x80) ++wrong;
        };
        std::vector<std::thread> threads;
        threads.reserve(threadCount);
        for (int i = 0; i < threadCount; ++i) {
            threads.emplace_back(read);
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        QCOMPARE(wrong.load(), 0);
    }
    QVERIFY(picture.isDetached());
}

void TestFillPath::gradientsAreSampledAtPixelMiddles()
{
    QLinearGradient gradient(0, 0, 256, 0);
    gradient.setColorAt(0, Qt::black);
    gradient.setColorAt(1, Qt::white);
    LXImage32 image(256, 3);
    FillPath(image, 0, RectPath(QRectF(0, 0, 256, 3)), QBrush(gradient));
    for (int x = 0; x < 256; ++x) {
        const LXRGBA32i pixel = image.GetColor(x, 2);
        const double exact = (x + 0.5) / 256 * 255;
        QVERIFY2(std::abs(pixel.Red() - exact) <= 1.0, QByteArray::number(x));
        QCOMPARE(pixel.Alpha(), 255);
    }
}

void TestFillPath::almostTransparentGradientsKeepTheirColor()
{
    const QColor faint(200, 150, 100, 3);
    QLinearGradient gradient(0, 0, 256, 0);
    gradient.setColorAt(0, faint);
    gradient.setColorAt(1, faint);
    LXImage32 image(256, 1);
    FillPath(image, 0, RectPath(QRectF(0, 0, 256, 1)), QBrush(gradient));
    QCOMPARE(image.GetColor(100, 0).value, 0x03C89664u);
}

void TestFillPath::pathsFollowTheirFillRule_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<Qt::FillRule>("rule");
    QTest::addColumn<int>("inner");
    QTest::newRow("odd even, by middle") << 0 << Qt::OddEvenFill << 0;
    QTest::newRow("winding, by middle") << 0 << Qt::WindingFill << 255;
    QTest::newRow("odd even, antialiased") << 3 << Qt::OddEvenFill << 0;
    QTest::newRow("winding, antialiased") << 3 << Qt::WindingFill << 255;
}

void TestFillPath::pathsFollowTheirFillRule()
{
    QFETCH(int, mode);
    QFETCH(Qt::FillRule, rule);
    QFETCH(int, inner);
    QPainterPath path = RectPath(QRectF(0, 0, 9, 9));
    path.addRect(QRectF(3, 3, 3, 3));
    path.setFillRule(rule);
    LXImage32 image(10, 10);
    FillPath(image, mode, path, QBrush(Qt::white));
    QCOMPARE(image.GetColor(0, 0).Alpha(), 255);
    QCOMPARE(image.GetColor(8, 4).Alpha(), 255);
    QCOMPARE(image.GetColor(4, 4).Alpha(), inner);
    QCOMPARE(image.GetColor(9, 4).Alpha(), 0);
}

void TestFillPath::farAndEmptyPathsDoNothing()
{
    LXImage32 image(300, 270);
    const LXImage32 before = image;
    for (const int mode : {0, 3, 5}) {
        FillPath(image, mode, QPainterPath(), QBrush(Qt::white));
        FillPath(image, mode, RectPath(QRectF(300, 0, 50, 50)), QBrush(Qt::white));
        FillPath(image, mode, RectPath(QRectF(-1e12, -1e12, 1e6, 1e6)), QBrush(Qt::white));
        FillPath(image, mode, RectPath(QRectF(0, 0, 50, 50)), QBrush(Qt::NoBrush));
    }
    QVERIFY(image.m_Tiles == before.m_Tiles);
    LXImage32 null;
    FillPath(null, 3, RectPath(QRectF(0, 0, 50, 50)), QBrush(Qt::white));
    QVERIFY(null.IsNull());
}

void TestFillPath::hugePathsFillTheImage()
{
    for (const int mode : {0, 3}) {
        LXImage32 image(300, 270);
        FillPath(image, mode, RectPath(QRectF(-1e6, -1e6, 2e6, 2e6)), QBrush(Qt::white));
        const PlainImage expected(300, 270, LXRGBA32i(0xFFFFFFFF));
        QCOMPARE(TestImages::Difference(TestImages::ToPlain(image), expected), QString());
    }
}

void TestFillPath::oneColorOnRepeatedTilesIsMadeOnce()
{
    LXImage32 coverage(640, 384);
    coverage.Fill(LXRGBA32i(0x80000000));
    coverage.SetColor(300, 200, LXRGBA32i(0x40000000)); // in the middle
    const LXImage32 before = coverage;
    QPainterPath path;
    path.addRect(QRectF(coverage.Rect()));
    FillPath(coverage, BlendMode::SourceIn, path, QColor(255, 0, 0));
    QCOMPARE(coverage.GetColor(300, 200).value, 0x40FF0000u);
    QCOMPARE(coverage.GetColor(301, 200).value, 0x80FF0000u);
    QCOMPARE(before.GetColor(0, 0).value, 0x80000000u);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 5; ++column)
            QCOMPARE(coverage.GetColor(column * 128, row * 128).value, 0x80FF0000u);
        // The path's edges run through the outer columns.
        QCOMPARE(coverage.TileAt(2, row) == coverage.TileAt(1, row), row != 1);
        QCOMPARE(coverage.TileAt(3, row) == coverage.TileAt(2, row), row != 1);
    }
}

void TestFillPath::coveredTilesAreDetachedAlone()
{
    LXImage32 image(1280, 1280);
    const LXImage32 before = image;
    // A thin diagonal: its box is the whole image.
    FillPath(image, 3, Triangle({0, 0}, {1280, 1278}, {1280, 1280}), QBrush(Qt::white));
    QVERIFY(image.TileAt(9, 0) == before.TileAt(9, 0));
    QVERIFY(image.TileAt(0, 9) == before.TileAt(0, 9));
    QVERIFY(image.TileAt(5, 5) != before.TileAt(5, 5));
}

void TestFillPath::aRectangleAroundTheImageIsFilledLikeAnyPath_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QBrush>("brush");
    QImage texture(7, 5, QImage::Format_ARGB32);
    texture.fill(0x8010C0F0);
    texture.setPixel(3, 2, 0xFF102030);
    for (const unsigned int mode : {BlendMode::Normal, BlendMode::Source, BlendMode::SourceIn}) {
        QTest::addRow("mode %u, opaque", mode) << int(mode) << QBrush(QColor(200, 100, 50));
        QTest::addRow("mode %u, translucent", mode) << int(mode) << QBrush(QColor(200, 100, 50, 90));
        QTest::addRow("mode %u, texture", mode) << int(mode) << QBrush(texture);
    }
}

void TestFillPath::aRectangleAroundTheImageIsFilledLikeAnyPath()
{
    QFETCH(int, mode);
    QFETCH(QBrush, brush);
    std::mt19937 random(3);
    LXImage32 filled = Filled(400, 300, 0x80102030);
    const LXImage32 noise = TestImages::ToTiles(TestImages::Random(150, 120, random));
    BlendOn(noise, noise.Rect(), BlendMode::Source, filled, noise.Rect().translated(250, 100), 1.0, false);
    LXImage32 expected = filled;
    FillPath(filled, mode, RectPath(QRectF(filled.Rect())), brush);
    // A corner more hides that it is a rectangle.
    QPainterPath path;
    path.addPolygon(QPolygonF({{0, 0}, {200, 0}, {400, 0}, {400, 300}, {0, 300}, {0, 0}}));
    FillPath(expected, mode, path, brush);
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(filled), TestImages::ToPlain(expected)), QString());
}

ZK_REGISTER_TEST(tst_fillpath, TestFillPath)
#include "tst_fillpath.moc"
