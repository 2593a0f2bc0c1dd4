#include "image/LXBlend.h"
#include "image/LXImage.h"
#include "support/PathTwin.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"

#include <QBrush>
#include <QPainterPath>
#include <QPolygonF>
#include <QTest>

#include <random>

namespace {
PlainImage Filled(const QPainterPath& path, const QSize& size)
{
    LXImage32 image(size.width(), size.height());
    FillPath(image, BlendMode::Source, path, QBrush(Qt::white));
    return TestImages::ToPlain(image);
}

/// Where the antialiased path differs from the twin by more than half a level and a bit.
QString Difference(const QPainterPath& path, const QSize& size, double tolerance)
{
    const PlainImage actual = Filled(path, size);
    const std::vector<double> expected = PathTwin::Coverage(path, size);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const double level = 255 * expected[i];
        if (std::abs(actual.pixels[i].Alpha() - level) > 0.5 + tolerance) {
            return QStringLiteral("at %1, %2: %3 in place of %4")
                .arg(i % static_cast<std::size_t>(size.width()))
                .arg(i / static_cast<std::size_t>(size.width()))
                .arg(actual.pixels[i].Alpha())
                .arg(level);
        }
    }
    return QString();
}

QPainterPath Polygon(std::initializer_list<QPointF> points)
{
    QPolygonF polygon;
    for (const QPointF& point : points) {
        polygon << point;
    }
    QPainterPath path;
    path.addPolygon(polygon);
    return path;
}
} // namespace

Q_DECLARE_METATYPE(QPainterPath)

class TestPathCoverage : public QObject
{
    Q_OBJECT

private slots:
    void partsOfAPixelCountByTheirArea_data();
    void partsOfAPixelCountByTheirArea();
    void pathsWithACommonSideInsideOnePathLeaveNoSeam();
    void sidesThatCrossTilesKeepTheirArea();
    void randomPolygonsHaveTheirMeanWindingNumber();
    void curvesCoverTheirArea();
    void openPathsAreClosed();
    void whatLiesLeftOfTheImageStillCounts();
    void steepAndLevelSidesKeepTheirArea();
    void coverageOutsideIsExactlyNoneAfterThousandsOfSides();
    void wholeTilesShareOneTile();
    void solidNormalFillsShareTilesOnlyWhenOpaque();
};

void TestPathCoverage::partsOfAPixelCountByTheirArea_data()
{
    QTest::addColumn<QPainterPath>("path");
    QTest::addColumn<int>("alpha");
    // 255 times the area, to nearest.
    QTest::newRow("a quarter") << Polygon({{0.5, 0}, {0.75, 0}, {0.75, 1}, {0.5, 1}}) << 64;
    QTest::newRow("a half, by a diagonal") << Polygon({{0, 0}, {1, 0}, {0, 1}}) << 128;
    QTest::newRow("an eighth, by a small triangle")
        << Polygon({{0.25, 0.25}, {0.75, 0.25}, {0.25, 0.75}}) << 32;
    QTest::newRow("a rhomb") << Polygon({{0.5, 0}, {1, 0.5}, {0.5, 1}, {0, 0.5}}) << 128;
    QTest::newRow("the upper third") << Polygon({{-5, -5}, {9, -5}, {9, 1 / 3.0}, {-5, 1 / 3.0}}) << 85;
    QTest::newRow("a sliver") << Polygon({{0.5, 0}, {0.501, 0}, {0.501, 1}, {0.5, 1}}) << 0;
}

void TestPathCoverage::partsOfAPixelCountByTheirArea()
{
    QFETCH(QPainterPath, path);
    QFETCH(int, alpha);
    QCOMPARE(Filled(path, QSize(1, 1)).At(0, 0).Alpha(), alpha);
}

void TestPathCoverage::pathsWithACommonSideInsideOnePathLeaveNoSeam()
{
    QPainterPath path = Polygon({{10.3, 5}, {140.7, 5}, {130.2, 260}, {20.1, 260}});
    path.addPath(Polygon({{140.7, 5}, {280.9, 5}, {250.4, 260}, {130.2, 260}}));
    const PlainImage both = Filled(path, QSize(300, 270));
    const PlainImage one =
        Filled(Polygon({{10.3, 5}, {280.9, 5}, {250.4, 260}, {20.1, 260}}), QSize(300, 270));
    QCOMPARE(TestImages::Difference(both, one), QString());
}

void TestPathCoverage::sidesThatCrossTilesKeepTheirArea()
{
    QCOMPARE(Difference(Polygon({{3.3, 1.7}, {391.2, 140.9}, {17.5, 268.1}}), QSize(400, 270), 0.1),
             QString());
}

void TestPathCoverage::randomPolygonsHaveTheirMeanWindingNumber()
{
    std::mt19937 random(11);
    const auto coordinate = [&] { return static_cast<double>(random() % 30000) / 100 - 80.005; };
    for (int turn = 0; turn < 40; ++turn) {
        QPolygonF polygon;
        for (unsigned int i = 0; i < 3 + random() % 12; ++i) {
            polygon << QPointF(coordinate(), coordinate());
        }
        QPainterPath path;
        path.addPolygon(polygon);
        path.setFillRule(turn % 2 == 0 ? Qt::OddEvenFill : Qt::WindingFill);
        const QString difference = Difference(path, QSize(150, 140), 0.1);
        QVERIFY2(difference.isEmpty(), qPrintable(QStringLiteral("%1: %2").arg(turn).arg(difference)));
    }
}

void TestPathCoverage::curvesCoverTheirArea()
{
    QPainterPath path;
    path.addEllipse(QPointF(70.2, 66.6), 60.1, 50.7);
    path.moveTo(20, 20);
    path.cubicTo(-60, 140, 200, 90, 130, 10);
    // A chord leaves the curve by a 256th of a pixel at most, which is a level.
    QCOMPARE(Difference(path, QSize(140, 130), 1.0), QString());
}

void TestPathCoverage::openPathsAreClosed()
{
    QPainterPath path;
    path.moveTo(0, 0);
    path.lineTo(8, 0);
    path.lineTo(8, 8);
    path.moveTo(10, 0);
    path.lineTo(18, 0);
    path.lineTo(18, 8);
    const PlainImage filled = Filled(path, QSize(20, 8));
    for (const int x : {0, 10}) {
        QCOMPARE(filled.At(x + 3, 3).Alpha(), 128);
        QCOMPARE(filled.At(x + 6, 3).Alpha(), 255);
        QCOMPARE(filled.At(x + 2, 3).Alpha(), 0);
    }
}

void TestPathCoverage::whatLiesLeftOfTheImageStillCounts()
{
    QPainterPath path = Polygon({{-900, -300}, {60, 65}, {-900, 400}});
    QPainterPath curve;
    curve.moveTo(-50, -10);
    curve.cubicTo(-900, 500, -20, -400, -60, 200);
    curve.lineTo(90, 60);
    path.addPath(curve);
    QCOMPARE(Difference(path, QSize(100, 130), 1.0), QString());
}

void TestPathCoverage::steepAndLevelSidesKeepTheirArea()
{
    QCOMPARE(Difference(Polygon({{10.999, 2}, {11.001, 128}, {60, 127.9}, {1, 127.99}}), QSize(80, 140), 0.1),
             QString());
    QCOMPARE(Difference(Polygon({{0, 3.25}, {130, 3.75}, {130, 3.5}, {0, 3.5}}), QSize(140, 8), 0.1),
             QString());
    QCOMPARE(Difference(Polygon({{1, 1}, {99, 1.0001}, {99, 1.0002}, {1, 5}}), QSize(100, 8), 0.1),
             QString());
}

void TestPathCoverage::coverageOutsideIsExactlyNoneAfterThousandsOfSides()
{
    std::mt19937 random(5);
    QPolygonF polygon;
    for (int i = 0; i < 20000; ++i) {
        polygon << QPointF(static_cast<double>(random() % 200000) / 1000,
                           static_cast<double>(random() % 260000) / 1000);
    }
    QPainterPath path;
    path.addPolygon(polygon);
    path.setFillRule(Qt::WindingFill);
    const PlainImage filled = Filled(path, QSize(400, 300));
    for (int y = 0; y < 300; ++y) {
        for (int x = 201; x < 400; ++x) {
            QCOMPARE(filled.At(x, y).value, 0U);
        }
    }
}

void TestPathCoverage::wholeTilesShareOneTile()
{
    LXImage32 image(700, 700);
    FillPath(image, BlendMode::Source, Polygon({{50, 50}, {650, 50}, {650, 650}, {50, 650}}),
             QBrush(QColor(1, 2, 3, 100)));
    QVERIFY(image.TileAt(1, 1) == image.TileAt(3, 2));
    QVERIFY(image.TileAt(1, 1) != image.TileAt(0, 1));
    QCOMPARE(image.GetColor(300, 300).value, 0x64010203U);
}

void TestPathCoverage::solidNormalFillsShareTilesOnlyWhenOpaque()
{
    const QPainterPath path = Polygon({{0, 0}, {512, 0}, {512, 512}, {0, 512}});
    LXImage32 image(512, 512);
    image.Fill(LXRGBA32i(0xFF000000));
    FillPath(image, BlendMode::Normal, path, QBrush(QColor(255, 255, 255, 128)));
    QCOMPARE(image.GetColor(300, 300).value, 0xFF808080U);
    FillPath(image, BlendMode::Normal, path, QBrush(Qt::red));
    QVERIFY(image.TileAt(1, 1) == image.TileAt(3, 2));
    QCOMPARE(image.GetColor(300, 300).value, 0xFFFF0000U);
}

ZK_REGISTER_TEST(tst_pathcoverage, TestPathCoverage)
#include "tst_pathcoverage.moc"
