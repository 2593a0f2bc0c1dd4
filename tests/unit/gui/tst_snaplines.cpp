#include "gui/SnapLines.h"
#include "support/TestRegistry.h"

#include <QTest>

/// Where dragged boxes snap, in document pixels.
class TestSnapLines : public QObject
{
    Q_OBJECT

private slots:
    void edgesAndMiddleMeetALine_data();
    void edgesAndMiddleMeetALine();
    void reachIsExact();
    void theNearestLineWins();
    void edgesComeBeforeTheMiddle();
    void directionsSnapByThemselves();
    void aSnappedWayIsWholePixels();
    void theGridGoesOnInBothDirections();
    void guidesGoInTheirOwnDirection();
    void emptyBoxesMakeNoLinesAndSnapNowhere();
    void withoutLinesTheWayStays();
};

namespace {
constexpr double Reach = 8;

SnapLines Edges(const QRect& box)
{
    SnapLines lines;
    lines.AddEdges(box);
    return lines;
}
} // namespace

void TestSnapLines::edgesAndMiddleMeetALine_data()
{
    QTest::addColumn<QPointF>("way");
    QTest::addColumn<QPointF>("taken");
    // The box is 60 wide and 40 high, from (100, 100); the canvas is 1000 x 800. In the other direction
    // nothing is near: 233, 253 and 273 down, 131, 161 and 191 across.
    QTest::newRow("left edge to the left edge") << QPointF(-95, 133) << QPointF(-100, 133);
    QTest::newRow("right edge to the right edge") << QPointF(835, 133) << QPointF(840, 133);
    QTest::newRow("top edge to the top edge") << QPointF(31, -107.5) << QPointF(31, -100);
    QTest::newRow("bottom edge to the bottom edge") << QPointF(31, 664) << QPointF(31, 660);
    QTest::newRow("middle to the middle, across") << QPointF(367, 133) << QPointF(370, 133);
    QTest::newRow("middle to the middle, down") << QPointF(31, 283) << QPointF(31, 280);
    QTest::newRow("left edge to the right edge, from outside") << QPointF(903, 133) << QPointF(900, 133);
}

void TestSnapLines::edgesAndMiddleMeetALine()
{
    QFETCH(QPointF, way);
    QFETCH(QPointF, taken);
    const QRect canvas(0, 0, 1000, 800);
    SnapLines lines = Edges(canvas);
    lines.AddMiddles(canvas);
    QCOMPARE(lines.Snapped(QRect(100, 100, 60, 40), way, Reach), taken);
}

void TestSnapLines::reachIsExact()
{
    const SnapLines lines = Edges(QRect(0, 0, 1000, 1000));
    const QRect box(100, 100, 50, 50);
    QCOMPARE(lines.Snapped(box, QPointF(-92, 300), Reach), QPointF(-100, 300));
    QCOMPARE(lines.Snapped(box, QPointF(-91.5, 300), Reach), QPointF(-91.5, 300));
    QCOMPARE(lines.Snapped(box, QPointF(-108, 300), Reach), QPointF(-100, 300));
    QCOMPARE(lines.Snapped(box, QPointF(-108.5, 300), Reach), QPointF(-108.5, 300));
}

void TestSnapLines::theNearestLineWins()
{
    SnapLines lines;
    lines.AddGuides({{Qt::Vertical, 10}, {Qt::Vertical, 16}});
    const QRect box(0, 0, 100, 100);
    QCOMPARE(lines.Snapped(box, QPointF(12, 0), Reach), QPointF(10, 0));
    QCOMPARE(lines.Snapped(box, QPointF(14, 0), Reach), QPointF(16, 0));
}

void TestSnapLines::edgesComeBeforeTheMiddle()
{
    // The left edge is 2 to the right of one line, the middle 2 to the left of the other.
    SnapLines lines;
    lines.AddGuides({{Qt::Vertical, 54}, {Qt::Vertical, 0}});
    QCOMPARE(lines.Snapped(QRect(0, 0, 100, 100), QPointF(2, 0), Reach), QPointF(0, 0));
}

void TestSnapLines::directionsSnapByThemselves()
{
    const SnapLines lines = Edges(QRect(0, 0, 1000, 1000));
    const QRect box(100, 100, 50, 50);
    QCOMPARE(lines.Snapped(box, QPointF(-97, 300.25), Reach), QPointF(-100, 300.25));
    QCOMPARE(lines.Snapped(box, QPointF(300.25, -97), Reach), QPointF(300.25, -100));
    QCOMPARE(lines.Snapped(box, QPointF(-97, -97), Reach), QPointF(-100, -100));
}

void TestSnapLines::aSnappedWayIsWholePixels()
{
    // The middle of an odd width can't lie on a whole line; a guide may lie between two pixels.
    SnapLines lines;
    lines.AddGuides({{Qt::Vertical, 50.25}});
    const QPointF way = lines.Snapped(QRect(0, 0, 7, 7), QPointF(46, 0), 1);
    QCOMPARE(way, QPointF(47, 0));
}

void TestSnapLines::theGridGoesOnInBothDirections()
{
    SnapLines lines;
    lines.SetGrid(32);
    const QRect box(5, 5, 10, 10);
    // The left edge, at 5 + 90 = 95, goes to 96; the top edge, at 5 - 36 = -31, to -32.
    QCOMPARE(lines.Snapped(box, QPointF(90, -36), 3), QPointF(91, -37));
    QCOMPARE(lines.Snapped(box, QPointF(75, 75), 3), QPointF(75, 75));
}

void TestSnapLines::guidesGoInTheirOwnDirection()
{
    SnapLines lines;
    lines.AddGuides({{Qt::Vertical, 50}, {Qt::Horizontal, 80}});
    const QRect box(0, 0, 100, 100);
    QCOMPARE(lines.Snapped(box, QPointF(47, 83), Reach), QPointF(50, 80));
    QCOMPARE(lines.Snapped(box, QPointF(83, 20), Reach), QPointF(83, 20));
}

void TestSnapLines::emptyBoxesMakeNoLinesAndSnapNowhere()
{
    SnapLines lines;
    lines.AddEdges(QRect());
    lines.AddMiddles(QRect());
    QCOMPARE(lines.Snapped(QRect(2, 2, 10, 10), QPointF(1, 1), Reach), QPointF(1, 1));
    QCOMPARE(Edges(QRect(0, 0, 10, 10)).Snapped(QRect(), QPointF(1, 1), Reach), QPointF(1, 1));
}

void TestSnapLines::withoutLinesTheWayStays()
{
    QCOMPARE(SnapLines().Snapped(QRect(0, 0, 5, 5), QPointF(1.5, -2.5), Reach), QPointF(1.5, -2.5));
}

ZK_REGISTER_TEST(tst_snaplines, TestSnapLines)
#include "tst_snaplines.moc"
