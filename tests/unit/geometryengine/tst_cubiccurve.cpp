#include "geometryengine/CubicCurve.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <cmath>
#include <random>

namespace {
double Distance(const QPointF& a, const QPointF& b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

/// By the powers of t, not by halving lines.
QPointF Evaluated(const CubicCurve& curve, double t)
{
    const double s = 1 - t;
    return curve.from * (s * s * s) + curve.fromGuide * (3 * s * s * t) + curve.toGuide * (3 * s * t * t) +
           curve.to * (t * t * t);
}

/// The smallest distance over very many places, slow and obvious.
double SampledDistance(const CubicCurve& curve, const QPointF& point)
{
    constexpr int steps = 20000;
    double smallest = Distance(curve.from, point);
    for (int i = 1; i <= steps; ++i)
        smallest = qMin(smallest, Distance(Evaluated(curve, double(i) / steps), point));
    return smallest;
}

double DistanceTo(const CubicCurve& curve, const QPointF& point)
{
    return Distance(curve.PointAt(curve.NearestParameter(point)), point);
}

class RandomCurves
{
public:
    QPointF Point() { return {m_Coordinate(m_Random), m_Coordinate(m_Random)}; }

    CubicCurve Curve() { return {Point(), Point(), Point(), Point()}; }

    double Parameter() { return m_Parameter(m_Random); }

private:
    std::mt19937 m_Random{11};
    std::uniform_real_distribution<double> m_Coordinate{-500, 500};
    std::uniform_real_distribution<double> m_Parameter{0, 1};
};
} // namespace

/// Cubic curves as values: points, parts, and the nearest place.
class TestCubicCurve : public QObject
{
    Q_OBJECT

private slots:
    void splitPartsAreTheSameCurve();
    void splitPartsMeetAndKeepTheEnds();
    void nearestPlaceIsTheOneOfAnExhaustiveSearch();
    void aPointOfTheCurveIsFoundAgain();
    void placesBeyondTheEndsAreTheEnds();
    void nearestPlaceOfALine();
    void aCurveOfOnePointIsItsStart();
    void aPlaceThatIsNearestManyTimesOverIsFound();
};

void TestCubicCurve::splitPartsAreTheSameCurve()
{
    RandomCurves random;
    for (int round = 0; round < 1000; ++round) {
        const CubicCurve curve = random.Curve();
        const double at = random.Parameter();
        const auto [first, second] = curve.SplitAt(at);
        for (int i = 0; i <= 16; ++i) {
            const double t = i / 16.0;
            QVERIFY(Distance(Evaluated(first, t), Evaluated(curve, at * t)) < 1e-9);
            QVERIFY(Distance(Evaluated(second, t), Evaluated(curve, at + (1 - at) * t)) < 1e-9);
        }
    }
}

void TestCubicCurve::splitPartsMeetAndKeepTheEnds()
{
    const CubicCurve curve = {{0.1, 0.2}, {10.3, 0.7}, {20.9, 30.1}, {3.3, 40.7}};
    const auto [first, second] = curve.SplitAt(1.0 / 3);
    QVERIFY(first.from.x() == 0.1 && first.from.y() == 0.2);
    QVERIFY(second.to.x() == 3.3 && second.to.y() == 40.7);
    QVERIFY(first.to.x() == second.from.x() && first.to.y() == second.from.y());
}

void TestCubicCurve::nearestPlaceIsTheOneOfAnExhaustiveSearch()
{
    RandomCurves random;
    for (int round = 0; round < 150; ++round) {
        const CubicCurve curve = random.Curve();
        const QPointF point = random.Point();
        const double sampled = SampledDistance(curve, point);
        const double found = DistanceTo(curve, point);
        QVERIFY2(found <= sampled + 1e-9, qPrintable(QString::number(found - sampled)));
        QVERIFY2(found > sampled - 0.2, qPrintable(QString::number(found - sampled)));
    }
}

void TestCubicCurve::aPointOfTheCurveIsFoundAgain()
{
    RandomCurves random;
    for (int round = 0; round < 1000; ++round) {
        const CubicCurve curve = random.Curve();
        const QPointF point = curve.PointAt(random.Parameter());
        QVERIFY(DistanceTo(curve, point) < 1e-9);
    }
}

void TestCubicCurve::placesBeyondTheEndsAreTheEnds()
{
    const CubicCurve curve = {{0, 0}, {10, 0}, {20, 0}, {30, 0}};
    QCOMPARE(curve.NearestParameter({-5, 3}), 0.0);
    QCOMPARE(curve.NearestParameter({35, 3}), 1.0);
}

void TestCubicCurve::nearestPlaceOfALine()
{
    // As anchors without guides join: the places crowd at the ends.
    const CubicCurve line = {{10, 10}, {10, 10}, {50, 10}, {50, 10}};
    for (const double x : {10.0, 11.0, 23.5, 30.0, 49.0, 50.0}) {
        const QPointF found = line.PointAt(line.NearestParameter({x, -7}));
        QVERIFY(Distance(found, {x, 10}) < 1e-9);
    }
}

void TestCubicCurve::aCurveOfOnePointIsItsStart()
{
    const CubicCurve dot = {{3, 4}, {3, 4}, {3, 4}, {3, 4}};
    QCOMPARE(dot.NearestParameter({3, 4}), 0.0);
    QCOMPARE(dot.NearestParameter({30, 40}), 0.0);
    QCOMPARE(dot.PointAt(0.7), QPointF(3, 4));
}

void TestCubicCurve::aPlaceThatIsNearestManyTimesOverIsFound()
{
    // (t - a) three times over, along a line: the slope of the distance is zero five times at a.
    for (const double a : {0.5, 1.0 / 3, 0.7}) {
        const double from = -a * a * a;
        const double fromGuide = from + a * a;
        const double toGuide = 2 * fromGuide - from - a;
        const double to = (1 - a) * (1 - a) * (1 - a);
        const CubicCurve curve = {{from, 0}, {fromGuide, 0}, {toGuide, 0}, {to, 0}};
        QVERIFY(DistanceTo(curve, {0, 0}) < 1e-9);
    }
}

ZK_REGISTER_TEST(tst_cubiccurve, TestCubicCurve)
#include "tst_cubiccurve.moc"
