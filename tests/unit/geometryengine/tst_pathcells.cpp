#include "geometryengine/PathCells.h"
#include "support/TestRegistry.h"

#include <QLineF>
#include <QPainterPath>
#include <QTest>

#include <cmath>

class TestPathCells : public QObject
{
    Q_OBJECT

private slots:
    void allThatIsNearALineIsIn_data();
    void allThatIsNearALineIsIn();
    void aCurveIsFollowed();
    void theInsideOfAShapeIsOut();
    void cellsEndAtTheClip();
    void aLongLineCostsAsMuchAsIsSeenOfIt();
};

namespace {
constexpr QRect Clip(-40, -20, 400, 300);

QPainterPath Line(const QPointF& from, const QPointF& to)
{
    QPainterPath path(from);
    path.lineTo(to);
    return path;
}

double Distance(const QPointF& point, const QLineF& line)
{
    const QPointF along = line.p2() - line.p1();
    const double t = QPointF::dotProduct(point - line.p1(), along) / QPointF::dotProduct(along, along);
    return QLineF(point, line.pointAt(qBound(0.0, t, 1.0))).length();
}
} // namespace

void TestPathCells::allThatIsNearALineIsIn_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<double>("reach");
    QTest::newRow("level") << QPointF(0, 30) << QPointF(250, 30) << 2.0;
    QTest::newRow("upright") << QPointF(31.9, 0) << QPointF(31.9, 200) << 2.0;
    QTest::newRow("slanting") << QPointF(300, 7) << QPointF(-30, 250) << 3.0;
    QTest::newRow("nearly level") << QPointF(-30, 63) << QPointF(330, 65) << 1.0;
    QTest::newRow("wide") << QPointF(10, 10) << QPointF(200, 120) << 40.0;
    QTest::newRow("from far away") << QPointF(-2e6, -1e6) << QPointF(1e6, 5e5) << 2.0;
}

void TestPathCells::allThatIsNearALineIsIn()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QFETCH(double, reach);
    const QRegion cells = CellsAlong(Line(from, to), reach, Clip);
    const double cellReach = reach + 8 + 32 * std::sqrt(2.0) + 24;
    for (int y = Clip.top(); y <= Clip.bottom(); ++y) {
        for (int x = Clip.left(); x <= Clip.right(); ++x) {
            const double distance = Distance(QPointF(x + 0.5, y + 0.5), QLineF(from, to));
            if (distance < reach)
                QVERIFY2(cells.contains(QPoint(x, y)), qPrintable(QString("%1 %2").arg(x).arg(y)));
            if (distance > cellReach)
                QVERIFY2(!cells.contains(QPoint(x, y)), qPrintable(QString("%1 %2").arg(x).arg(y)));
        }
    }
}

void TestPathCells::aCurveIsFollowed()
{
    QPainterPath curve(QPointF(0, 100));
    curve.cubicTo(60, -80, 180, 280, 300, 100);
    const QRegion cells = CellsAlong(curve, 2, Clip);
    for (int percent = 0; percent <= 100; ++percent)
        QVERIFY(cells.contains(curve.pointAtPercent(percent / 100.0).toPoint()));
    QVERIFY(!cells.contains(QPoint(0, 0)));
    QVERIFY(!cells.contains(QPoint(290, 10)));
}

void TestPathCells::theInsideOfAShapeIsOut()
{
    QPainterPath shape;
    shape.addRect(0, 0, 300, 250);
    const QRegion cells = CellsAlong(shape, 2, Clip);
    QVERIFY(cells.contains(QPoint(0, 125)) && cells.contains(QPoint(299, 125)));
    QVERIFY(cells.contains(QPoint(150, 0)) && cells.contains(QPoint(150, 249)));
    QVERIFY(!cells.contains(QPoint(150, 125)));
}

void TestPathCells::cellsEndAtTheClip()
{
    QCOMPARE(CellsAlong(Line({-1000, 0}, {1000, 0}), 2, QRect(3, -5, 10, 10)), QRegion(3, -5, 10, 10));
    QVERIFY(CellsAlong(Line({-1000, 500}, {1000, 500}), 2, Clip).isEmpty());
    QVERIFY(CellsAlong(Line({-1000, 0}, {1000, 0}), 2, QRect()).isEmpty());
    QVERIFY(CellsAlong(QPainterPath(), 2, Clip).isEmpty());
}

void TestPathCells::aLongLineCostsAsMuchAsIsSeenOfIt()
{
    // Walked from end to end, the line would take hours.
    const QRegion cells = CellsAlong(Line({-1e12, 10}, {1e12, 10}), 2, Clip);
    QCOMPARE(cells.boundingRect().width(), Clip.width());
}

ZK_REGISTER_TEST(tst_pathcells, TestPathCells)

#include "tst_pathcells.moc"
