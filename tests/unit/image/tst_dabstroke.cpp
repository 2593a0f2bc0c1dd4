#include "image/DabKernels.h"
#include "image/DabStroke.h"
#include "image/TileThreads.h"
#include "support/StrokeTwin.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"

#include <QElapsedTimer>
#include <QPainterPath>
#include <QTest>

#include <hwy/targets.h>

#include <atomic>
#include <cmath>
#include <random>

namespace {
constexpr LXRGBA32i Ink(0xFF204060);
const QRect Everywhere(-400000, -400000, 800000, 800000);

QPainterPath Chain(const std::vector<QPointF>& points)
{
    QPainterPath path;
    path.moveTo(points.front());
    for (std::size_t i = 1; i < points.size(); ++i)
        path.lineTo(points[i]);
    return path;
}

LXImage32 Draw(const DabStroke& stroke)
{
    return stroke.Draw(Ink, [] {});
}

/// The strength at a pixel of the path's coordinates.
int StrengthAt(const DabStroke& stroke, const LXImage32& image, int x, int y)
{
    const QPoint pixel = QPoint(x, y) - stroke.Bounds().topLeft();
    return image.Rect().contains(pixel) ? image.GetColor(pixel.x(), pixel.y()).Alpha() : 0;
}

double Pick(std::mt19937& random, double least, double most)
{
    return std::uniform_real_distribution<double>(least, most)(random);
}
} // namespace

/// Strokes of round dabs, beside the definition and by numbers worked out by hand.
class TestDabStroke : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { hwy::SetSupportedTargetsForTest(0); }

    void aStrokeIsTheStrongestOfItsDabs_data();
    void aStrokeIsTheStrongestOfItsDabs();
    void everyInstructionSetAgrees();
    void curvesAreWalkedAlongTheirLength();
    void aHardDabFadesOverOnePixel();
    void aSoftDabFadesFromItsMiddle();
    void crossingItselfBuildsNothingUp();
    void eachSubPathBegins();
    void aPathWithoutALineHasNoStroke();
    void aLineWithoutLengthIsOneDab();
    void spacingGoesAroundCorners();
    void onlyTheLimitIsTouched();
    void tilesFarFromThePathStayShared();
    void whollyFilledTilesAreOne();
    void hugePathsCostOnlyWhatIsSeen();
    void everyPieceIsCounted();
    void drawingIsAbandonedWhenNobodyWantsIt();
    void soIsADenseTile();
};

void TestDabStroke::aStrokeIsTheStrongestOfItsDabs_data()
{
    QTest::addColumn<double>("diameter");
    QTest::addColumn<double>("hardness");
    QTest::addColumn<double>("spacing");
    QTest::newRow("smallest") << 1.0 << 1.0 << 0.25;
    QTest::newRow("hard") << 9.0 << 1.0 << 0.9;
    QTest::newRow("soft") << 20.0 << 0.0 << 2.0;
    QTest::newRow("between, apart") << 13.5 << 0.4 << 21.0;
    QTest::newRow("soft, wide") << 220.0 << 0.1 << 40.0;
    QTest::newRow("wide, tiles filled") << 700.0 << 0.9 << 70.0;
}

void TestDabStroke::aStrokeIsTheStrongestOfItsDabs()
{
    QFETCH(double, diameter);
    QFETCH(double, hardness);
    QFETCH(double, spacing);
    std::mt19937 random(11);
    for (int round = 0; round < 3; ++round) {
        std::vector<QPointF> points(4);
        for (QPointF& point : points)
            point = QPointF(Pick(random, -60, 350), Pick(random, -60, 300));
        const QRect limit(-20, -10, 300, 270);
        const DabStroke stroke(Chain(points), RoundDab(diameter, hardness), spacing, limit);
        const PlainImage expected = StrokeTwin::Picture(StrokeTwin::Middles(points, spacing),
                                                        {diameter, hardness, spacing}, stroke.Bounds(), Ink);
        QCOMPARE(TestImages::Difference(TestImages::ToPlain(Draw(stroke)), expected), QString());
    }
}

void TestDabStroke::everyInstructionSetAgrees()
{
    const std::vector<int> start{5, 1000000, 3,       77777, 1000000, 0,   64,      1000000, 9,       400,
                                 1, 5000,    1000000, 123,   456,     789, 1000000, 2,       1000000, 31};
    std::vector<int> expected = start;
    for (int i = 0; i < int(start.size()); ++i) {
        const int along = -72 + 16 * i;
        expected[size_t(i)] = std::min(start[size_t(i)], along * along + 23 * 23);
    }
    const qint64 all = hwy::SupportedTargets();
    for (qint64 left = all; left != 0; left &= left - 1) {
        hwy::SetSupportedTargetsForTest(left & -left);
        std::vector<int> squares = start;
        DabKernels::Nearest(squares.data(), int(squares.size()), -72, 23);
        QCOMPARE(squares, expected);
    }
}

void TestDabStroke::curvesAreWalkedAlongTheirLength()
{
    QPainterPath circle;
    circle.addEllipse(QPointF(150, 150), 100, 100);
    // A hundred dabs a tenth as wide as the way between them, so each stands alone.
    const double spacing = 2 * M_PI * 100 / 100;
    const DabStroke stroke(circle, RoundDab(1, 1), spacing, Everywhere);
    const LXImage32 image = Draw(stroke);
    int found = 0;
    for (int i = 0; i < 100; ++i) {
        const double angle = 2 * M_PI * i / 100;
        const int x = int(std::floor(150 + 100 * std::cos(angle)));
        const int y = int(std::floor(150 + 100 * std::sin(angle)));
        int strongest = 0;
        for (int dy = -1; dy <= 1; ++dy) {
            for (int dx = -1; dx <= 1; ++dx)
                strongest = std::max(strongest, StrengthAt(stroke, image, x + dx, y + dy));
        }
        if (strongest > 40) ++found;
    }
    QCOMPARE(found, 100);
}

void TestDabStroke::aHardDabFadesOverOnePixel()
{
    // Radius 5 around the middle of pixel (10, 10): pixel n to the right is n away. Whole up to 4.5, nothing
    // from 5.5 on, and half at 5.
    const DabStroke stroke(Chain({{10.5, 10.5}, {10.5, 10.5 + 1e-9}}), RoundDab(10, 1), 1, Everywhere);
    const LXImage32 image = Draw(stroke);
    QCOMPARE(StrengthAt(stroke, image, 10, 10), 255);
    QCOMPARE(StrengthAt(stroke, image, 14, 10), 255);
    QCOMPARE(StrengthAt(stroke, image, 15, 10), 128);
    QCOMPARE(StrengthAt(stroke, image, 16, 10), 0);
    // (3, 4) is 5 away as well.
    QCOMPARE(StrengthAt(stroke, image, 13, 14), 128);
}

void TestDabStroke::aSoftDabFadesFromItsMiddle()
{
    // Radius 7.5: nothing from 8 on. At 2, part = 6 / 8: 255 x 0.5625 x 1.5 = 215.16; at 4 half of it; at 6,
    // part = 1 / 4: 255 x 0.0625 x 2.5 = 39.84.
    const DabStroke stroke(Chain({{10.5, 10.5}, {10.5, 10.5 + 1e-9}}), RoundDab(15, 0), 1, Everywhere);
    const LXImage32 image = Draw(stroke);
    QCOMPARE(StrengthAt(stroke, image, 10, 10), 255);
    QCOMPARE(StrengthAt(stroke, image, 12, 10), 215);
    QCOMPARE(StrengthAt(stroke, image, 10, 6), 128);
    QCOMPARE(StrengthAt(stroke, image, 16, 10), 40);
    QCOMPARE(StrengthAt(stroke, image, 18, 10), 0);
    QCOMPARE(image.GetColor(0, 0).value, 0u);
}

void TestDabStroke::crossingItselfBuildsNothingUp()
{
    const std::vector<QPointF> line{{10, 20}, {60, 20}};
    std::vector<QPointF> thrice = line;
    thrice.insert(thrice.end(), {{10, 20}, {60, 20}});
    const DabStroke once(Chain(line), RoundDab(12, 0), 1, Everywhere);
    const DabStroke more(Chain(thrice), RoundDab(12, 0), 1, Everywhere);
    QCOMPARE(more.Bounds(), once.Bounds());
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(Draw(more)), TestImages::ToPlain(Draw(once))),
             QString());
}

void TestDabStroke::eachSubPathBegins()
{
    QPainterPath path;
    path.moveTo(10.5, 10.5);
    path.lineTo(14.5, 10.5);
    path.moveTo(10.5, 30.5);
    path.lineTo(14.5, 30.5);
    // The second one has its first dab at its start, not where the first one's spacing would put it.
    const DabStroke stroke(path, RoundDab(1, 1), 100, Everywhere);
    const LXImage32 image = Draw(stroke);
    QCOMPARE(StrengthAt(stroke, image, 10, 10), 255);
    QCOMPARE(StrengthAt(stroke, image, 10, 30), 255);
    QCOMPARE(StrengthAt(stroke, image, 14, 10), 0);
    QCOMPARE(StrengthAt(stroke, image, 12, 20), 0);
}

void TestDabStroke::aPathWithoutALineHasNoStroke()
{
    QPainterPath path;
    QVERIFY(DabStroke(path, RoundDab(10, 1), 1, Everywhere).Bounds().isEmpty());
    path.moveTo(10, 10);
    path.moveTo(20, 20);
    const DabStroke stroke(path, RoundDab(10, 1), 1, Everywhere);
    QVERIFY(stroke.Bounds().isEmpty());
    QCOMPARE(stroke.CountTiles(), 0);
    QVERIFY(Draw(stroke).IsNull());
}

void TestDabStroke::aLineWithoutLengthIsOneDab()
{
    QPainterPath path;
    path.moveTo(20.5, 20.5);
    path.lineTo(30, 30);
    path.setElementPositionAt(1, 20.5, 20.5);
    const DabStroke stroke(path, RoundDab(3, 1), 1, Everywhere);
    const LXImage32 image = Draw(stroke);
    QCOMPARE(StrengthAt(stroke, image, 20, 20), 255);
    QCOMPARE(StrengthAt(stroke, image, 23, 20), 0);
}

void TestDabStroke::spacingGoesAroundCorners()
{
    // Ten to the right, then down: dabs after 6, 12 and 18, so two and eight below the corner.
    const DabStroke stroke(Chain({{10.5, 10.5}, {20.5, 10.5}, {20.5, 30.5}}), RoundDab(1, 1), 6, Everywhere);
    const LXImage32 image = Draw(stroke);
    QCOMPARE(StrengthAt(stroke, image, 10, 10), 255);
    QCOMPARE(StrengthAt(stroke, image, 16, 10), 255);
    QCOMPARE(StrengthAt(stroke, image, 20, 10), 0);
    QCOMPARE(StrengthAt(stroke, image, 20, 12), 255);
    QCOMPARE(StrengthAt(stroke, image, 20, 18), 255);
    QCOMPARE(StrengthAt(stroke, image, 20, 24), 255);
    QCOMPARE(StrengthAt(stroke, image, 20, 30), 255);
    QCOMPARE(StrengthAt(stroke, image, 20, 27), 0);
}

void TestDabStroke::onlyTheLimitIsTouched()
{
    const QRect limit(0, 0, 100, 80);
    const DabStroke crossing(Chain({{-500, 40}, {500, 40}}), RoundDab(10, 1), 1, limit);
    QCOMPARE(crossing.Bounds() & limit, crossing.Bounds());
    QCOMPARE(crossing.Bounds().left(), 0);
    QCOMPARE(crossing.Bounds().right(), 99);
    const DabStroke beside(Chain({{-500, 140}, {500, 140}}), RoundDab(10, 1), 1, limit);
    QVERIFY(beside.Bounds().isEmpty());
    // Its middles lie outside, its edge doesn't.
    const DabStroke near(Chain({{20.5, 82.5}, {60.5, 82.5}}), RoundDab(10, 1), 1, limit);
    const LXImage32 image = Draw(near);
    QCOMPARE(StrengthAt(near, image, 40, 79), 255);
    QCOMPARE(StrengthAt(near, image, 40, 77), 128);
    QVERIFY(DabStroke(Chain({{20, 3}, {60, 3}}), RoundDab(10, 1), 1, QRect()).Bounds().isEmpty());
}

void TestDabStroke::tilesFarFromThePathStayShared()
{
    const DabStroke stroke(Chain({{10, 10}, {900, 10}, {900, 900}}), RoundDab(8, 1), 1, Everywhere);
    const LXImage32 image = Draw(stroke);
    QVERIFY(image.m_TilesX > 6);
    QCOMPARE(image.TileAt(1, 4).data(), image.TileAt(2, 5).data());
    QVERIFY(image.TileAt(1, 0).data() != image.TileAt(1, 4).data());
}

void TestDabStroke::whollyFilledTilesAreOne()
{
    const DabStroke stroke(Chain({{500, 500}, {501, 500}}), RoundDab(1000, 1), 1, QRect(0, 0, 1000, 1000));
    const LXImage32 image = Draw(stroke);
    QCOMPARE(image.TileAt(3, 3).data(), image.TileAt(4, 4).data());
    QCOMPARE(image.GetColor(500, 500).value, Ink.value);
}

void TestDabStroke::hugePathsCostOnlyWhatIsSeen()
{
    QElapsedTimer timer;
    timer.start();
    // Seven billion dabs, were all of them made.
    const DabStroke stroke(Chain({{-9e8, 50.5}, {9e8, 50.5}, {9e8, -9e8}}), RoundDab(3, 1), 0.25,
                           QRect(0, 0, 200, 100));
    const LXImage32 image = Draw(stroke);
    QVERIFY(timer.elapsed() < 2000);
    QCOMPARE(StrengthAt(stroke, image, 100, 50), 255);
    QCOMPARE(StrengthAt(stroke, image, 100, 53), 0);
    // Coordinates beyond all bounds.
    QPainterPath far;
    far.moveTo(-1e300, 0);
    far.cubicTo(0, 1e300, 0, -1e300, 1e300, 0);
    Draw(DabStroke(far, RoundDab(3, 1), 0.25, QRect(0, 0, 200, 100)));
    QVERIFY(timer.elapsed() < 4000);
}

void TestDabStroke::everyPieceIsCounted()
{
    const DabStroke stroke(Chain({{0, 0}, {1000, 600}}), RoundDab(30, 1), 3, QRect(0, 0, 1000, 600));
    std::atomic<int> done{0};
    stroke.Draw(Ink, [&] { ++done; });
    QCOMPARE(done.load(), stroke.CountTiles());
    QCOMPARE(stroke.CountTiles(), 8 * 5);
}

void TestDabStroke::drawingIsAbandonedWhenNobodyWantsIt()
{
    const DabStroke stroke(Chain({{0, 0}, {1000, 600}}), RoundDab(30, 1), 3, QRect(0, 0, 1000, 600));
    std::atomic<int> done{0};
    const TileThreads::CancelScope scope([&] { return done < 3; });
    QVERIFY_EXCEPTION_THROWN(stroke.Draw(Ink, [&] { ++done; }), TileThreads::Cancelled);
    QVERIFY(done < stroke.CountTiles());
}

void TestDabStroke::soIsADenseTile()
{
    QPainterPath scribble(QPointF(0, 0));
    for (int i = 0; i < 10000; ++i)
        scribble.lineTo((i * 37) % 101, (i * 53) % 103);
    const DabStroke stroke(scribble, RoundDab(3, 1), 1, QRect(0, 0, 100, 100));
    QCOMPARE(stroke.CountTiles(), 1);
    int asked = 0;
    const TileThreads::CancelScope scope([&] { return ++asked < 4; });
    QVERIFY_EXCEPTION_THROWN(stroke.Draw(Ink, [] {}), TileThreads::Cancelled);
    QCOMPARE(asked, 4);
}

ZK_REGISTER_TEST(tst_dabstroke, TestDabStroke)
#include "tst_dabstroke.moc"
