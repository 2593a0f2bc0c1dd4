#include "image/AxisScaler.h"
#include "image/LXBlend.h"
#include "image/LXImage.h"
#include "image/LXTransform.h"
#include "image/ResampleTaps.h"
#include "image/TileWalk.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"
#include "support/TransformTwin.h"

#include <QTest>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {
using Function = bool (*)(const LXImage32&, const QTransform&, LXImage32&, const QRect&);
using TransformTwin::Method;

struct Named
{
    const char* name;
    Function function;
    Method method;
};

constexpr Named Functions[] = {{"bilinear", TransformImage, Method::Linear},
                               {"bicubic", BicubicTransformImage, Method::Cubic},
                               {"nearest", NearestNeighbourTransformImage, Method::Nearest}};

PlainImage Result(Function function, const PlainImage& source, const QTransform& transform, const QSize& size)
{
    LXImage32 target(size.width(), size.height());
    target.Fill(LXRGBA32i(0xFFABCDEF));
    return function(TestImages::ToTiles(source), transform, target, QRect()) ? TestImages::ToPlain(target)
                                                                             : PlainImage();
}

PlainImage Row(std::initializer_list<quint32> pixels)
{
    PlainImage row(static_cast<int>(pixels.size()), 1);
    int x = 0;
    for (const quint32 pixel : pixels) {
        row.At(x++, 0) = LXRGBA32i(pixel);
    }
    return row;
}

/// The unit square, pixel by pixel, of a map of whole pixels.
PlainImage Rearranged(const PlainImage& source, const QTransform& transform, const QSize& size)
{
    PlainImage target(size.width(), size.height());
    for (int y = 0; y < source.height; ++y) {
        for (int x = 0; x < source.width; ++x) {
            const QPointF to = transform.map(QPointF(x + 0.5, y + 0.5));
            const int column = static_cast<int>(std::floor(to.x()));
            const int row = static_cast<int>(std::floor(to.y()));
            if (target.Contains(column, row)) target.At(column, row) = source.At(x, y);
        }
    }
    return target;
}

/// Random numbers without a fraction of their own, so that a failure can be read.
double Between(std::mt19937& random, double low, double high)
{
    return low + (high - low) * (random() % 1000) / 1000.0;
}
} // namespace

class TestTransform : public QObject
{
    Q_OBJECT

private slots:
    void narrowSourcesAreOnlyEnds();
    void mapsOfWholePixelsCopyBytes_data();
    void mapsOfWholePixelsCopyBytes();
    void noiseOfAQuadIsNoFraction();
    void tilesOfATranslationAreBlankWhereNothingLies();

    void halfAPixelMixesTwo();
    void halvingAverages();
    void shrinkingByAFractionAveragesByArea();
    void colorIsWeightedByAlpha();
    void enlargedBordersStayOpaque_data();
    void enlargedBordersStayOpaque();
    void theCurvePassesThroughThePixels();
    void theCurveOvershootsAndIsCut();
    void nearestTakesThePixelUnderTheMiddle();
    void aTurnedSquareKeepsItsAreaAndFadesOnlyAtItsEdge();
    void shrinkingStripesLeavesNoMoire();
    void plainColorStaysPlain_data();
    void plainColorStaysPlain();
    void shrinkingALotHoldsFewRows();
    void shrinkingALotMixesEveryPixel_data();
    void shrinkingALotMixesEveryPixel();

    void whatLiesBehindTheEyeIsNotShown();
    void greatAndSmallNumbersMakeTheSamePicture_data();
    void greatAndSmallNumbersMakeTheSamePicture();
    void resultsAreThoseOfTheTwin_data();
    void resultsAreThoseOfTheTwin();
    void picturesOfManyTilesAreThoseOfTheTwin_data();
    void picturesOfManyTilesAreThoseOfTheTwin();
    void farOutResultsAreThoseOfTheTwin_data();
    void farOutResultsAreThoseOfTheTwin();

    void theClipIsHonoured();
    void aClipOutsideWritesNothing();
    void theTargetMayBeTheSource();
    void impossibleTransformsAreRefused_data();
    void impossibleTransformsAreRefused();
};

/// No pixel of the target lies so far inside that it needs no look at the source's ends.
void TestTransform::narrowSourcesAreOnlyEnds()
{
    std::mt19937 random(4);
    const QTransform turned =
        QTransform::fromScale(1.5, 2.1) * QTransform().rotate(77) * QTransform::fromTranslate(45, 8);
    for (const QSize& size : {QSize(1, 57), QSize(57, 1), QSize(2, 2), QSize(4, 40), QSize(3, 3)}) {
        const PlainImage source = TestImages::Random(size.width(), size.height(), random);
        for (const Named& named : {Functions[0], Functions[1]}) {
            const PlainImage result = Result(named.function, source, turned, QSize(60, 60));
            const PlainImage expected =
                TransformTwin::Transformed(source, turned, QSize(60, 60), named.method);
            QVERIFY2(TransformTwin::LargestDifference(result, expected) <= 1, named.name);
        }
    }
}

void TestTransform::mapsOfWholePixelsCopyBytes_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QTransform>("transform");

    const struct
    {
        const char* name;
        QTransform transform;
    } maps[] = {
        {"identity", QTransform()},
        {"right and down", QTransform::fromTranslate(13, 7)},
        {"left and up", QTransform::fromTranslate(-131, -40)},
        {"far outside", QTransform::fromTranslate(5000, 0)},
        {"90", QTransform().translate(140, 0).rotate(90)},
        {"180", QTransform().translate(150, 140).rotate(180)},
        {"270", QTransform().translate(0, 150).rotate(-90)},
        {"mirrored across", QTransform().translate(150, 0).scale(-1, 1)},
        {"mirrored down", QTransform().translate(3, 140).scale(1, -1)},
        {"mirrored and turned", QTransform().translate(150, 9).scale(-1, 1).rotate(90)},
    };

    for (int index = 0; index < 3; ++index) {
        for (const auto& map : maps) {
            QTest::addRow("%s, %s", Functions[index].name, map.name) << index << map.transform;
        }
    }
}

void TestTransform::mapsOfWholePixelsCopyBytes()
{
    QFETCH(int, index);
    QFETCH(QTransform, transform);
    std::mt19937 random(1);
    const PlainImage source = TestImages::Random(150, 140, random);
    const QSize size(160, 155);
    const PlainImage expected = Rearranged(source, transform, size);
    QCOMPARE(TestImages::Difference(Result(Functions[index].function, source, transform, size), expected),
             QString());
}

void TestTransform::noiseOfAQuadIsNoFraction()
{
    std::mt19937 random(2);
    const PlainImage source = TestImages::Random(90, 70, random);
    const QPolygonF box({QPointF(11, 5), QPointF(61, 5), QPointF(61, 45), QPointF(11, 45)});
    const QPolygonF canvas({QPointF(0, 0), QPointF(50, 0), QPointF(50, 40), QPointF(0, 40)});
    QTransform transform;
    QVERIFY(QTransform::quadToQuad(box, canvas, transform));
    const PlainImage expected = Rearranged(source, QTransform::fromTranslate(-11, -5), QSize(50, 40));
    for (const Named& named : Functions) {
        QCOMPARE(TestImages::Difference(Result(named.function, source, transform, QSize(50, 40)), expected),
                 QString());
    }
}

void TestTransform::tilesOfATranslationAreBlankWhereNothingLies()
{
    LXImage32 source(100, 100);
    source.Fill(LXRGBA32i(0xFF808080));
    LXImage32 target(1280, 1280);
    const int before = LXTileManager::Instance().LiveTileCount();
    QVERIFY(TransformImage(source, QTransform().translate(600.5, 600.25).rotate(30), target, QRect()));
    // Turned about its corner the square reaches 50 to the left and 137 down: 2 x 2 tiles, the rest shares
    // one.
    QVERIFY(LXTileManager::Instance().LiveTileCount() - before <= 5);
    QCOMPARE(target.GetColor(600, 660).value, 0xFF808080u);
}

void TestTransform::halfAPixelMixesTwo()
{
    const PlainImage source = Row({0xFF000000, 0xFF0000C8, 0xFF0000FF});
    const PlainImage result = Result(TransformImage, source, QTransform::fromTranslate(0.5, 0), QSize(4, 1));
    // The ends are half covered; between them (0 + 200) / 2 and (200 + 255) / 2 = 227.5.
    QCOMPARE(TestImages::Difference(result, Row({0x80000000, 0xFF000064, 0xFF0000E4, 0x800000FF})),
             QString());
}

void TestTransform::halvingAverages()
{
    PlainImage source(4, 2, LXRGBA32i(0xFF000000));
    source.At(0, 0) = LXRGBA32i(0xFF64C8FF);
    // 100 / 4, 200 / 4, 255 / 4
    QCOMPARE(
        TestImages::Difference(Result(TransformImage, source, QTransform::fromScale(0.5, 0.5), QSize(2, 1)),
                               Row({0xFF193240, 0xFF000000})),
        QString());
}

void TestTransform::shrinkingByAFractionAveragesByArea()
{
    const PlainImage source = Row({0xFF00005A, 0xFF000000, 0xFF0000B4});
    // Two pixels of 1.5: (90 + 0 / 2) / 1.5 = 60 and (180 + 0 / 2) / 1.5 = 120.
    QCOMPARE(
        TestImages::Difference(Result(TransformImage, source, QTransform::fromScale(2.0 / 3, 1), QSize(2, 1)),
                               Row({0xFF00003C, 0xFF000078})),
        QString());
}

void TestTransform::colorIsWeightedByAlpha()
{
    const PlainImage source = Row({0xFFFF0000, 0x0000FF00});
    for (const Function function : {TransformImage, BicubicTransformImage}) {
        const PlainImage result = Result(function, source, QTransform::fromScale(0.5, 1), QSize(1, 1));
        QCOMPARE(result.At(0, 0).value, 0x80FF0000u);
    }
}

void TestTransform::enlargedBordersStayOpaque_data()
{
    QTest::addColumn<double>("scale");
    for (const double scale : {1.5, 2.0, 3.3, 7.0, 30.0}) {
        QTest::addRow("%g", scale) << scale;
    }
}

void TestTransform::enlargedBordersStayOpaque()
{
    QFETCH(double, scale);
    std::mt19937 random(3);
    PlainImage source = TestImages::Random(5, 4, random);
    for (LXRGBA32i& pixel : source.pixels) {
        pixel.bytes[3] = 255;
    }
    const QSize whole(static_cast<int>(5 * scale), static_cast<int>(4 * scale));
    for (const Named& named : Functions) {
        const PlainImage result =
            Result(named.function, source, QTransform::fromScale(scale, scale), whole + QSize(3, 3));
        for (int y = 0; y < result.height; ++y) {
            for (int x = 0; x < result.width; ++x) {
                const bool isInside = x < whole.width() && y < whole.height();
                const bool isOutside = x >= std::ceil(5 * scale) || y >= std::ceil(4 * scale);
                if (isInside) QCOMPARE(result.At(x, y).Alpha(), 255);
                if (isOutside) QCOMPARE(result.At(x, y).value, 0u);
            }
        }
    }
}

void TestTransform::theCurvePassesThroughThePixels()
{
    std::mt19937 random(4);
    PlainImage source = TestImages::Random(9, 7, random);
    for (LXRGBA32i& pixel : source.pixels) {
        pixel.bytes[3] = 255;
    }
    // Three target pixels to a source pixel: the middle one lies on the source pixel's middle.
    const PlainImage result =
        Result(BicubicTransformImage, source, QTransform::fromScale(3, 3), QSize(27, 21));
    for (int y = 0; y < source.height; ++y) {
        for (int x = 0; x < source.width; ++x) {
            QCOMPARE(result.At(3 * x + 1, 3 * y + 1).value, source.At(x, y).value);
        }
    }
}

void TestTransform::theCurveOvershootsAndIsCut()
{
    const PlainImage source = Row({0xFF000014, 0xFF000014, 0xFF000014, 0xFF0000DC, 0xFF0000DC, 0xFF0000DC});
    const PlainImage shifted =
        Result(BicubicTransformImage, source, QTransform::fromTranslate(0.5, 0), QSize(6, 1));
    // Weights -1/16, 9/16, 9/16, -1/16 of 20 and 220.
    QCOMPARE(shifted.At(2, 0).value, 0xFF000008u); // 20 x 17/16 - 220/16 = 7.5
    QCOMPARE(shifted.At(3, 0).value, 0xFF000078u); // 120
    QCOMPARE(shifted.At(4, 0).value, 0xFF0000E9u); // 232.5

    const PlainImage steep = Row({0xFF000000, 0xFF000000, 0xFF000000, 0xFF0000FF, 0xFF0000FF, 0xFF0000FF});
    const PlainImage cut =
        Result(BicubicTransformImage, steep, QTransform::fromTranslate(0.5, 0), QSize(6, 1));
    QCOMPARE(cut.At(2, 0).value, 0xFF000000u);
    QCOMPARE(cut.At(4, 0).value, 0xFF0000FFu);
}

void TestTransform::nearestTakesThePixelUnderTheMiddle()
{
    const PlainImage source = Row({0x00112233, 0xFF000001, 0x7F000002});
    QCOMPARE(TestImages::Difference(Result(NearestNeighbourTransformImage, source,
                                           QTransform::fromTranslate(0.4, 0), QSize(4, 1)),
                                    Row({0x00112233, 0xFF000001, 0x7F000002, 0})),
             QString());
    QCOMPARE(TestImages::Difference(
                 Result(NearestNeighbourTransformImage, source, QTransform::fromScale(2, 1), QSize(7, 1)),
                 Row({0x00112233, 0x00112233, 0xFF000001, 0xFF000001, 0x7F000002, 0x7F000002, 0})),
             QString());
}

void TestTransform::aTurnedSquareKeepsItsAreaAndFadesOnlyAtItsEdge()
{
    const PlainImage source(40, 40, LXRGBA32i(0xFF3366CC));
    for (const double angle : {1.0, 17.0, 45.0, 73.5}) {
        const QTransform transform = QTransform().translate(50, 50).rotate(angle).translate(-20, -20);
        const QTransform back = transform.inverted();
        const PlainImage result = Result(TransformImage, source, transform, QSize(100, 100));
        double area = 0;
        for (int y = 0; y < 100; ++y) {
            for (int x = 0; x < 100; ++x) {
                const LXRGBA32i pixel = result.At(x, y);
                area += pixel.Alpha() / 255.0;
                const QPointF from = back.map(QPointF(x + 0.5, y + 0.5));
                const double inside = std::min({from.x(), from.y(), 40 - from.x(), 40 - from.y()});
                if (inside > 0.8) QCOMPARE(pixel.value, 0xFF3366CCu);
                if (inside < -0.8) QCOMPARE(pixel.value, 0u);
                if (pixel.Alpha() != 0) QCOMPARE(pixel.value & 0xFFFFFF, 0x3366CCu);
            }
        }
        QVERIFY2(std::abs(area - 1600) < 4, qPrintable(QString("%1: %2").arg(angle).arg(area)));
    }
}

void TestTransform::shrinkingStripesLeavesNoMoire()
{
    PlainImage stripes(200, 200, LXRGBA32i(0xFF000000));
    for (int y = 0; y < 200; ++y) {
        for (int x = 0; x < 200; x += 2) {
            stripes.At(x, y) = LXRGBA32i(0xFFFFFFFF);
        }
    }
    const QTransform transform =
        QTransform().translate(40, 40).rotate(30).scale(0.13, 0.13).translate(-100, -100);
    for (const Function function : {TransformImage, BicubicTransformImage}) {
        const PlainImage result = Result(function, stripes, transform, QSize(80, 80));
        for (int y = 35; y < 45; ++y) {
            for (int x = 35; x < 45; ++x) {
                const int gray = result.At(x, y).Red();
                QVERIFY2(std::abs(gray - 127) <= 9, qPrintable(QString::number(gray)));
            }
        }
    }
}

void TestTransform::plainColorStaysPlain_data()
{
    QTest::addColumn<QTransform>("transform");
    QTest::newRow("shrunk") << QTransform::fromScale(0.137, 0.211);
    QTest::newRow("turned") << QTransform().translate(30, 20).rotate(33);
    QTest::newRow("sheared") << QTransform().shear(0.7, 0.1).scale(0.8, 1.3);
    QTest::newRow("perspective") << QTransform(1, 0.1, 0.002, 0.2, 1, 0.003, 4, 5, 1);
}

void TestTransform::plainColorStaysPlain()
{
    QFETCH(QTransform, transform);
    const PlainImage source(150, 140, LXRGBA32i(0x80C86432));
    for (const Named& named : Functions) {
        const PlainImage result = Result(named.function, source, transform, QSize(140, 150));
        int full = 0;
        for (const LXRGBA32i pixel : result.pixels) {
            QVERIFY(pixel.Alpha() <= 128);
            if (pixel.Alpha() != 0) QCOMPARE(pixel.value & 0xFFFFFF, 0xC86432u);
            if (pixel.Alpha() == 128) ++full;
        }
        QVERIFY(full > 400);
    }
}

/// However many rows of the source make one of the target.
void TestTransform::shrinkingALotHoldsFewRows()
{
    constexpr int side = 20000;
    const LXImage32 source(side, side);
    for (const auto kind : {ResampleKernel::Kind::Linear, ResampleKernel::Kind::Cubic}) {
        std::vector<ResampleTaps> taps(8);
        for (int i = 0; i < 8; ++i) {
            const SourceSpan span{(i + 0.5) * side / 8, side / 8.0, 0};
            ResampleKernel::FindTaps(kind, span, side, ResampleKernel::Unlimited,
                                     taps[static_cast<std::size_t>(i)]);
        }
        const AxisScaler scaler(source, QPoint(0, 0), taps, taps);
        const AxisScaler::Part part = scaler.Enter(QRect(0, 0, 8, 8));
        QVERIFY2(part.LineBytes() < 5000000, qPrintable(QString::number(part.LineBytes())));
    }
}

void TestTransform::shrinkingALotMixesEveryPixel_data()
{
    QTest::addColumn<QSize>("tiles");
    QTest::newRow("wide") << QSize(160, 8);
    QTest::newRow("high") << QSize(8, 160);
    QTest::newRow("both") << QSize(48, 48);
}

/// Tiles of one color each: the picture of a pixel for each tile, averaged by area.
void TestTransform::shrinkingALotMixesEveryPixel()
{
    QFETCH(QSize, tiles);
    constexpr int side = TileWalk::TileSide;
    std::mt19937 random(8);
    const PlainImage palette = TestImages::Random(7, 1, random);
    std::vector<LXTilePointer> plain;
    for (const LXRGBA32i color : palette.pixels) {
        LXImage32 tile(side, side);
        tile.Fill(color);
        plain.push_back(tile.TileAt(0, 0));
    }
    PlainImage small(tiles.width(), tiles.height());
    LXImage32 source(tiles.width() * side, tiles.height() * side);
    for (int y = 0; y < small.height; ++y) {
        for (int x = 0; x < small.width; ++x) {
            const std::size_t color = random() % plain.size();
            small.At(x, y) = palette.pixels[color];
            source.TileAt(x, y) = plain[color];
        }
    }
    const QSize size(8, 5);
    const QTransform shrunk = QTransform::fromScale(8.0 / small.width, 5.0 / small.height);
    LXImage32 target(size.width(), size.height());
    QVERIFY(TransformImage(source, QTransform::fromScale(1.0 / side, 1.0 / side) * shrunk, target, QRect()));
    const PlainImage expected = TransformTwin::Transformed(small, shrunk, size, Method::Linear);
    QVERIFY2(TransformTwin::LargestDifference(TestImages::ToPlain(target), expected) <= 1,
             qPrintable(TestImages::Difference(TestImages::ToPlain(target), expected)));
}

void TestTransform::whatLiesBehindTheEyeIsNotShown()
{
    // w = 1 - x / 50: source columns from 50 on lie behind the eye, and would come out left of 0.
    const QTransform transform(1, 0, -1.0 / 50, 0, 1, 0, 0, 0, 1);
    const PlainImage source(100, 4, LXRGBA32i(0xFFFFFFFF));
    for (const Named& named : Functions) {
        LXImage32 target(200, 4);
        const QTransform moved = transform * QTransform::fromTranslate(150, 0);
        QVERIFY(named.function(TestImages::ToTiles(source), moved, target, QRect()));
        for (int x = 0; x < 149; ++x) {
            QCOMPARE(target.GetColor(x, 1).value, 0u);
        }
        QCOMPARE(target.GetColor(170, 1).value, 0xFFFFFFFFu);
    }
    // All of it is behind, wherever that would come out.
    const QTransform turnedAway(1, 0, 0, 0, 1, 0, 0, 0, -1);
    const QTransform scaledAway = turnedAway * QTransform::fromScale(1.5, 2.5);
    const QTransform mirroredAway = QTransform::fromScale(-0.7, -0.7) * turnedAway;
    for (const QTransform& away : {turnedAway, scaledAway, mirroredAway}) {
        for (const Named& named : Functions) {
            const PlainImage result = Result(named.function, source, away, QSize(140, 8));
            QCOMPARE(TestImages::Difference(result, PlainImage(140, 8)), QString());
        }
    }
}

/// The same map at any magnitude of its numbers.
void TestTransform::greatAndSmallNumbersMakeTheSamePicture_data()
{
    QTest::addColumn<double>("factor");
    for (const double factor : {1e-90, 1e-40, 1e-20, 1e-11, 1e11, 1e20, 1e40, 1e90}) {
        QTest::addRow("%g", factor) << factor;
    }
}

void TestTransform::greatAndSmallNumbersMakeTheSamePicture()
{
    QFETCH(double, factor);
    std::mt19937 random(6);
    const PlainImage source = TestImages::Random(90, 80, random);
    const QTransform plain = QTransform().translate(20, 4).rotate(21).scale(1.3, 1.1) *
                             QTransform(1, 0, 0.002, 0, 1, 0.001, 0, 0, 1);
    const QTransform scaled(plain.m11() * factor, plain.m12() * factor, plain.m13() * factor,
                            plain.m21() * factor, plain.m22() * factor, plain.m23() * factor,
                            plain.m31() * factor, plain.m32() * factor, plain.m33() * factor);
    const QSize size(150, 140);
    for (const Named& named : {Functions[0], Functions[1]}) {
        const PlainImage result = Result(named.function, source, scaled, size);
        const PlainImage expected = TransformTwin::Transformed(source, plain, size, named.method);
        QVERIFY2(TransformTwin::LargestDifference(result, expected) <= 1,
                 qPrintable(TestImages::Difference(result, expected)));
    }
}

void TestTransform::resultsAreThoseOfTheTwin_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("seed");
    for (int index = 0; index < 3; ++index) {
        for (int seed = 0; seed < 24; ++seed) {
            QTest::addRow("%s %d", Functions[index].name, seed) << index << seed;
        }
    }
}

void TestTransform::resultsAreThoseOfTheTwin()
{
    QFETCH(int, index);
    QFETCH(int, seed);
    std::mt19937 random(static_cast<unsigned int>(seed));
    const PlainImage source =
        TestImages::Random(1 + static_cast<int>(random() % 40), 1 + static_cast<int>(random() % 40), random);
    QTransform transform;
    transform.translate(Between(random, -10, 30), Between(random, -10, 30));
    if (seed % 4 != 0) transform.rotate(Between(random, -180, 180));
    transform.scale(Between(random, -2, 2) + 0.013, Between(random, 0.1, 2));
    if (seed % 4 == 2) transform.shear(Between(random, -1, 1), 0);
    if (seed % 4 == 3) {
        transform =
            QTransform(1, 0, Between(random, -0.02, 0.02), 0, 1, Between(random, -0.02, 0.02), 0, 0, 1) *
            transform;
    }
    const QSize size(20 + static_cast<int>(random() % 140), 20 + static_cast<int>(random() % 20));
    const PlainImage result = Result(Functions[index].function, source, transform, size);
    const PlainImage expected = TransformTwin::Transformed(source, transform, size, Functions[index].method);
    if (Functions[index].method == Method::Nearest) {
        QCOMPARE(TestImages::Difference(result, expected), QString());
    } else {
        QVERIFY2(TransformTwin::LargestDifference(result, expected) <= 1,
                 qPrintable(TestImages::Difference(result, expected)));
    }
}

void TestTransform::picturesOfManyTilesAreThoseOfTheTwin_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<double>("scale");
    for (int index = 0; index < 3; ++index) {
        for (const double scale : {0.083, 0.3, 0.7, 1.4}) {
            QTest::addRow("%s %g", Functions[index].name, scale) << index << scale;
        }
    }
}

/// So large that the tiles that a target's tile reads don't all stay at hand, and turned.
void TestTransform::picturesOfManyTilesAreThoseOfTheTwin()
{
    QFETCH(int, index);
    QFETCH(double, scale);
    std::mt19937 random(12);
    const PlainImage source = TestImages::Random(1500, 1400, random);
    const QTransform transform =
        QTransform().translate(64.013, 64.021).rotate(12).scale(scale, scale).translate(-750, -700);
    const QRect part(20, 30, 100, 70);
    LXImage32 target(140, 130);
    QVERIFY(Functions[index].function(TestImages::ToTiles(source), transform, target, part));
    const PlainImage result = TestImages::ToPlain(CopyPart(target, part));
    const PlainImage expected = TransformTwin::Part(source, transform, part, Functions[index].method);
    const int allowed = Functions[index].method == Method::Nearest ? 0 : 1;
    QVERIFY2(TransformTwin::LargestDifference(result, expected) <= allowed,
             qPrintable(TestImages::Difference(result, expected)));
}

void TestTransform::farOutResultsAreThoseOfTheTwin_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<int>("left");
    const QTransform turned = QTransform().rotate(0.3).translate(0, -150);
    const QTransform tilted = QTransform(1, 0, 1e-7, 0, 1, 1e-6, 0, 0, 1);
    const QTransform shifted = QTransform::fromTranslate(0.37, 0.61);
    const QTransform shrunk = QTransform::fromScale(0.97, 0.83);
    for (int index = 0; index < 3; ++index) {
        const char* const name = Functions[index].name;
        QTest::addRow("%s, turned", name) << index << turned << 29800;
        QTest::addRow("%s, in perspective", name) << index << turned * tilted << 29710;
        QTest::addRow("%s, shifted", name) << index << shifted << 29800;
        QTest::addRow("%s, shrunk", name) << index << shrunk << 28900;
    }
}

/// At the end of a long source, where a place summed up from the start in float would be off by a part of a
/// pixel.
void TestTransform::farOutResultsAreThoseOfTheTwin()
{
    QFETCH(int, index);
    QFETCH(QTransform, transform);
    QFETCH(int, left);
    constexpr int width = 30000;
    constexpr int height = 300;
    constexpr int noise = 29696; // from there on
    std::mt19937 random(9);
    const PlainImage end = TestImages::Random(width - noise, height, random);
    PlainImage source(width, height);
    LXImage32 tiles(width, height);
    const LXImage32 endTiles = TestImages::ToTiles(end);
    for (int row = 0; row < static_cast<int>(endTiles.m_TilesY); ++row) {
        for (int column = 0; column < static_cast<int>(endTiles.m_TilesX); ++column) {
            tiles.TileAt(noise / TileWalk::TileSide + column, row) = endTiles.TileAt(column, row);
        }
    }
    for (int y = 0; y < height; ++y) {
        std::copy_n(&end.pixels[end.Index(0, y)], end.width, &source.pixels[source.Index(noise, y)]);
    }

    const QRect part(left, 100, 100, 100);
    LXImage32 target(width, height);
    QVERIFY(Functions[index].function(tiles, transform, target, part));
    const PlainImage result = TestImages::ToPlain(CopyPart(target, part));
    const PlainImage expected = TransformTwin::Part(source, transform, part, Functions[index].method);
    QVERIFY(std::count_if(expected.pixels.begin(), expected.pixels.end(),
                          [](LXRGBA32i pixel) { return pixel.Alpha() != 0; }) > 5000);
    const int allowed = Functions[index].method == Method::Nearest ? 0 : 1;
    QVERIFY2(TransformTwin::LargestDifference(result, expected) <= allowed,
             qPrintable(TestImages::Difference(result, expected)));
}

void TestTransform::theClipIsHonoured()
{
    const PlainImage source(30, 30, LXRGBA32i(0xFF00FF00));
    const QRect clip(100, 120, 40, 30);
    for (const QTransform& transform :
         {QTransform::fromTranslate(105, 125), QTransform::fromTranslate(105.5, 125),
          QTransform().translate(120, 110).rotate(45)}) {
        for (const Named& named : Functions) {
            LXImage32 whole(200, 200);
            QVERIFY(named.function(TestImages::ToTiles(source), transform, whole, QRect()));
            LXImage32 clipped(200, 200);
            clipped.Fill(LXRGBA32i(0x12345678));
            QVERIFY(named.function(TestImages::ToTiles(source), transform, clipped, clip));
            for (int y = 0; y < 200; ++y) {
                for (int x = 0; x < 200; ++x) {
                    const quint32 expected = clip.contains(x, y) ? whole.GetColor(x, y).value : 0x12345678u;
                    QCOMPARE(clipped.GetColor(x, y).value, expected);
                }
            }
        }
    }
}

void TestTransform::aClipOutsideWritesNothing()
{
    const LXImage32 source(5, 5);
    LXImage32 target(10, 10);
    target.Fill(LXRGBA32i(0xFFFFFFFF));
    QVERIFY(TransformImage(source, QTransform(), target, QRect(10, 0, 5, 5)));
    QVERIFY(TransformImage(source, QTransform().rotate(30), target, QRect(-5, -5, 5, 5)));
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(target), PlainImage(10, 10, LXRGBA32i(0xFFFFFFFF))),
             QString());
}

void TestTransform::theTargetMayBeTheSource()
{
    std::mt19937 random(5);
    const PlainImage source = TestImages::Random(140, 60, random);
    for (const QTransform& transform :
         {QTransform::fromTranslate(3, 2), QTransform().translate(140, 60).rotate(180),
          QTransform().rotate(10)}) {
        for (const Named& named : Functions) {
            LXImage32 image = TestImages::ToTiles(source);
            QVERIFY(named.function(image, transform, image, QRect()));
            const PlainImage expected = Result(named.function, source, transform, QSize(140, 60));
            QCOMPARE(TestImages::Difference(TestImages::ToPlain(image), expected), QString());
        }
    }
}

void TestTransform::impossibleTransformsAreRefused_data()
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    QTest::addColumn<QTransform>("transform");
    QTest::newRow("not a number") << QTransform(nan, 0, 0, 1, 0, 0);
    QTest::newRow("shift by not a number") << QTransform(1, 0, 0, 1, nan, 0);
    QTest::newRow("infinite") << QTransform(1, 0, 0, infinity, 0, 0);
    QTest::newRow("infinitely far") << QTransform(1, 0, 0, 1, 0, infinity);
    QTest::newRow("flat across") << QTransform::fromScale(0, 1);
    QTest::newRow("flat down") << QTransform::fromScale(1, 0);
    QTest::newRow("onto a line") << QTransform(1, 2, 2, 4, 0, 0);
    QTest::newRow("perspective onto a line") << QTransform(1, 1, 0.5, 2, 2, 1, 0, 0, 1);
}

void TestTransform::impossibleTransformsAreRefused()
{
    QFETCH(QTransform, transform);
    LXImage32 source(6, 6);
    source.Fill(LXRGBA32i(0xFFFFFFFF));
    LXImage32 target(6, 6);
    target.Fill(LXRGBA32i(0x12345678));
    LXImage32 null;
    for (const Named& named : Functions) {
        QVERIFY(!named.function(source, transform, target, QRect()));
        QVERIFY(!named.function(null, QTransform(), target, QRect()));
        QVERIFY(!named.function(source, QTransform(), null, QRect()));
    }
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(target), PlainImage(6, 6, LXRGBA32i(0x12345678))),
             QString());
}

ZK_REGISTER_TEST(tst_transform, TestTransform)
#include "tst_transform.moc"
