#include "document/LXPathConvert.h"
#include "geometryengine/PathAnchors.h"
#include "support/PathFixture.h"
#include "support/TestRegistry.h"

#include <QPainterPath>
#include <QTest>

#include <cmath>
#include <random>

using PathFixture::Ellipse;
using PathFixture::Line;
using PathFixture::Rectangle;

namespace {
const QRectF Box(10, 20, 40, 30);

LXPathElement Starting(LXPathElement element)
{
    element.SetStartsContour(true);
    return element;
}

/// A square with a triangular hole, as one sub path.
LXPath SquareWithHole()
{
    LXPath path = Rectangle(QRectF(0, 0, 100, 100));
    path += Starting(LXPathElement({20, 20}));
    path += {LXPathElement({60, 20}), LXPathElement({20, 60}), LXPathElement({20, 20})};
    return path;
}

QPointF Evaluated(const LXPath& path, int element, double t)
{
    const QPointF a = path[element - 1].GetCenterPoint();
    const QPointF b = path[element - 1].GetOutGuide();
    const QPointF c = path[element].GetInGuide();
    const QPointF d = path[element].GetCenterPoint();
    const double s = 1 - t;
    return a * (s * s * s) + b * (3 * s * s * t) + c * (3 * s * t * t) + d * (t * t * t);
}

double Distance(const QPointF& a, const QPointF& b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

/// Whether the curve of `before` that ended at the element is the two curves round it in `after`.
bool IsSameCurve(const LXPath& before, const LXPath& after, int element)
{
    // The part of the whole that the first half takes: t grows by the same rate as the first guide.
    const double whole = Distance(before[element - 1].GetOutGuide(), before[element - 1].GetCenterPoint());
    const double half = Distance(after[element - 1].GetOutGuide(), after[element - 1].GetCenterPoint());
    const double at = half / whole;
    for (int i = 0; i <= 32; ++i) {
        const double t = i / 32.0;
        if (Distance(Evaluated(after, element, t), Evaluated(before, element, at * t)) > 1e-9) return false;
        if (Distance(Evaluated(after, element + 1, t), Evaluated(before, element, at + (1 - at) * t)) > 1e-9)
            return false;
    }
    return true;
}

class RandomPaths
{
public:
    QPointF Point() { return {m_Coordinate(m_Random), m_Coordinate(m_Random)}; }

    LXPath Path(int size)
    {
        LXPath path;
        for (int i = 0; i < size; ++i)
            path.append(LXPathElement(Point(), Point(), Point()));
        return path;
    }

private:
    std::mt19937 m_Random{5};
    std::uniform_real_distribution<double> m_Coordinate{-300, 300};
};

QList<QPointF> Centers(const LXPath& path)
{
    QList<QPointF> centers;
    for (const LXPathElement& element : path)
        centers.append(element.GetCenterPoint());
    return centers;
}

/// What is left when the anchor that the element belongs to is taken out.
LXPath Without(LXPath path, int element)
{
    const auto anchors = PathAnchors::Of(path);
    PathAnchors::Remove(path, anchors[std::size_t(PathAnchors::IndexOf(anchors, element))]);
    return path;
}
} // namespace

/// Anchors of paths as a person sees them, and their changes.
class TestPathAnchors : public QObject
{
    Q_OBJECT

private slots:
    void anOpenPathHasAnAnchorForEachElement();
    void theEndOfAClosedPathIsItsFirstAnchor();
    void aPathThatClosesButForRoundingIsClosed();
    void eachContourIsClosedByItself();
    void oneElementIsOneAnchor();
    void guidesOnTheirAnchorAreNone();
    void smoothnessIsReadFromTheGuides();
    void aMovedClosingAnchorTakesBothElementsAlong();
    void mirroredGuidesOfAClosingAnchor();
    void anAlignedGuideKeepsItsLength();
    void insertingLeavesTheShape();
    void insertingIntoALineMakesTwoLines();
    void insertingPicksTheNearestCurve();
    void insertingIntoTheClosingCurveKeepsThePathClosed();
    void insertingWhereAnAnchorIsNearestDoesNothing();
    void removingAnInnerAnchorJoinsItsNeighbours();
    void removingTheFirstAnchorOfAClosedPathKeepsItClosed();
    void removingTheOnlyAnchorOfALoopLeavesNothing();
    void removingTheFirstAnchorOfAContourStartsItAtTheNext();
    void removingAWholeContourLeavesTheOthers();
    void removingAnchorsOneByOneEndsWithNothing();
    void snappingPicksTheNearestOfEightDirections_data();
    void snappingPicksTheNearestOfEightDirections();
};

void TestPathAnchors::anOpenPathHasAnAnchorForEachElement()
{
    const auto anchors = PathAnchors::Of(Line({0, 0}, {10, 0}) + Line({20, 0}, {20, 5}));
    QCOMPARE(anchors.size(), std::size_t(4));
    for (int i = 0; i < 4; ++i) {
        const PathAnchor& anchor = anchors[std::size_t(i)];
        QCOMPARE(anchor.in, i);
        QCOMPARE(anchor.out, i);
    }
}

void TestPathAnchors::theEndOfAClosedPathIsItsFirstAnchor()
{
    const auto anchors = PathAnchors::Of(Rectangle(Box));
    QCOMPARE(anchors.size(), std::size_t(4));
    QCOMPARE(anchors[0].in, 4);
    QCOMPARE(anchors[0].out, 0);
    QCOMPARE(PathAnchors::IndexOf(anchors, 4), 0);
    QCOMPARE(PathAnchors::IndexOf(anchors, 3), 3);
    QCOMPARE(PathAnchors::IndexOf(anchors, 5), -1);
}

void TestPathAnchors::aPathThatClosesButForRoundingIsClosed()
{
    LXPath path = Rectangle(Box);
    path.last().SetCenterPoint(path.last().GetCenterPoint() + QPointF(1e-9, -1e-9));
    QCOMPARE(PathAnchors::Of(path).size(), std::size_t(4));
    path.last().SetCenterPoint(path.last().GetCenterPoint() + QPointF(0.001, 0));
    QCOMPARE(PathAnchors::Of(path).size(), std::size_t(5));
}

void TestPathAnchors::eachContourIsClosedByItself()
{
    const auto anchors = PathAnchors::Of(SquareWithHole());
    QCOMPARE(anchors.size(), std::size_t(7));
    QCOMPARE(anchors[0].in, 4);
    QCOMPARE(anchors[4].out, 5);
    QCOMPARE(anchors[4].in, 8);
}

void TestPathAnchors::oneElementIsOneAnchor()
{
    QVERIFY(PathAnchors::Of({}).empty());
    const auto anchors = PathAnchors::Of({LXPathElement({3, 4})});
    QCOMPARE(anchors.size(), std::size_t(1));
}

void TestPathAnchors::guidesOnTheirAnchorAreNone()
{
    const LXPath path = {LXPathElement({0, 0}, {-5, 0}, {5, 0}), LXPathElement({20, 0}, {15, 0}, {20, 0})};
    const auto anchors = PathAnchors::Of(path);
    QVERIFY(PathAnchors::HasGuide(path, anchors[0], GuideSide::In));
    QVERIFY(PathAnchors::HasGuide(path, anchors[0], GuideSide::Out));
    QVERIFY(PathAnchors::HasGuide(path, anchors[1], GuideSide::In));
    QVERIFY(!PathAnchors::HasGuide(path, anchors[1], GuideSide::Out));
}

void TestPathAnchors::smoothnessIsReadFromTheGuides()
{
    const auto isSmooth = [](const QPointF& in, const QPointF& out) {
        const LXPath path = {LXPathElement({10, 10}, QPointF(10, 10) + in, QPointF(10, 10) + out)};
        return PathAnchors::IsSmooth(path, PathAnchors::Of(path)[0]);
    };
    QVERIFY(isSmooth({-3, -4}, {6, 8}));
    QVERIFY(isSmooth({-3, -4}, {6, 8.05}));
    QVERIFY(!isSmooth({-3, -4}, {6, 9}));
    QVERIFY(!isSmooth({3, 4}, {6, 8})); // both on one side
    QVERIFY(!isSmooth({0, 0}, {6, 8}));
    for (const PathAnchor& anchor : PathAnchors::Of(Ellipse(Box)))
        QVERIFY(PathAnchors::IsSmooth(Ellipse(Box), anchor));
}

void TestPathAnchors::aMovedClosingAnchorTakesBothElementsAlong()
{
    LXPath path = Ellipse(Box);
    const LXPath before = path;
    PathAnchors::Move(path, PathAnchors::Of(path)[0], {7, -2});
    for (const int element : {0, path.size() - 1}) {
        LXPathElement expected = before[element];
        expected.Translate({7, -2});
        QVERIFY(path[element] == expected);
    }
    QVERIFY(path[1] == before[1]);
}

void TestPathAnchors::mirroredGuidesOfAClosingAnchor()
{
    LXPath path = Rectangle(Box);
    PathAnchors::SetMirroredGuides(path, PathAnchors::Of(path)[0], {15, 24});
    QCOMPARE(path.first().GetOutGuide(), QPointF(15, 24));
    QCOMPARE(path.last().GetInGuide(), QPointF(5, 16));
}

void TestPathAnchors::anAlignedGuideKeepsItsLength()
{
    LXPath path = {LXPathElement({0, 0}, {-5, 0}, {3, 4})};
    const PathAnchor anchor = PathAnchors::Of(path)[0];
    PathAnchors::AlignGuide(path, anchor, GuideSide::In);
    QCOMPARE(path[0].GetInGuide(), QPointF(-3, -4));
    QCOMPARE(path[0].GetOutGuide(), QPointF(3, 4));
    path[0].SetOutGuide({0, 0});
    PathAnchors::AlignGuide(path, anchor, GuideSide::In);
    QCOMPARE(path[0].GetInGuide(), QPointF(-3, -4));
}

void TestPathAnchors::insertingLeavesTheShape()
{
    RandomPaths random;
    int inserted = 0;
    for (int round = 0; round < 500; ++round) {
        const LXPath before = random.Path(2 + round % 5);
        LXPath after = before;
        const int element = PathAnchors::Insert(after, random.Point());
        if (element < 0) continue;
        ++inserted;
        QCOMPARE(after.size(), before.size() + 1);
        QVERIFY(IsSameCurve(before, after, element));
        for (int i = 0; i < before.size(); ++i) {
            const LXPathElement& now = after[i < element ? i : i + 1];
            QCOMPARE(now.GetCenterPoint(), before[i].GetCenterPoint());
            if (i != element) QCOMPARE(now.GetInGuide(), before[i].GetInGuide());
            if (i != element - 1) QCOMPARE(now.GetOutGuide(), before[i].GetOutGuide());
        }
    }
    QVERIFY(inserted > 300);
}

void TestPathAnchors::insertingIntoALineMakesTwoLines()
{
    LXPath path = Line({10, 10}, {50, 10});
    QCOMPARE(PathAnchors::Insert(path, {30, 14}), 1);
    QCOMPARE(path.size(), 3);
    QVERIFY(Distance(path[1].GetCenterPoint(), {30, 10}) < 1e-9);
    QVERIFY(path[1] == LXPathElement(path[1].GetCenterPoint()));
    QVERIFY(path[0] == LXPathElement({10, 10}) && path[2] == LXPathElement({50, 10}));
}

void TestPathAnchors::insertingPicksTheNearestCurve()
{
    LXPath path = SquareWithHole();
    // The slanted side of the hole is the seventh curve, after a jump that is none.
    QCOMPARE(PathAnchors::Insert(path, {42, 41}), 7);
    QVERIFY(Distance(path[7].GetCenterPoint(), {40.5, 39.5}) < 1e-9);
    // Near the jump between the contours the sides are nearest all the same.
    QVERIFY(PathAnchors::Insert(path, {10, 11}) != 5);
}

void TestPathAnchors::insertingIntoTheClosingCurveKeepsThePathClosed()
{
    LXPath path = Rectangle(Box);
    QCOMPARE(PathAnchors::Insert(path, {8, 35}), 4);
    QCOMPARE(PathAnchors::Of(path).size(), std::size_t(5));
    QCOMPARE(path.last().GetCenterPoint(), path.first().GetCenterPoint());
}

void TestPathAnchors::insertingWhereAnAnchorIsNearestDoesNothing()
{
    LXPath path = Line({10, 10}, {50, 10});
    QCOMPARE(PathAnchors::Insert(path, {5, 12}), -1);
    QCOMPARE(PathAnchors::Insert(path, {50, 10}), -1);
    QVERIFY(path == Line({10, 10}, {50, 10}));

    LXPath dot = {LXPathElement({3, 4})};
    QCOMPARE(PathAnchors::Insert(dot, {3, 4}), -1);
    LXPath nothing;
    QCOMPARE(PathAnchors::Insert(nothing, {3, 4}), -1);
    // Two anchors on one place have a curve that goes nowhere.
    LXPath twice = Line({3, 4}, {3, 4});
    QCOMPARE(PathAnchors::Insert(twice, {30, 4}), -1);
    QCOMPARE(twice.size(), 2);
}

void TestPathAnchors::removingAnInnerAnchorJoinsItsNeighbours()
{
    RandomPaths random;
    const LXPath path = random.Path(3);
    QVERIFY(Without(path, 1) == LXPath({path[0], path[2]}));
    QVERIFY(Without(path, 0) == LXPath({path[1], path[2]}));
    QVERIFY(Without(path, 2) == LXPath({path[0], path[1]}));
}

void TestPathAnchors::removingTheFirstAnchorOfAClosedPathKeepsItClosed()
{
    const LXPath path = Ellipse(Box);
    const LXPath left = Without(path, 0);
    QCOMPARE(left.size(), path.size() - 1);
    QVERIFY(left.first() == path[1] && left.last() == path[1]);
    QCOMPARE(PathAnchors::Of(left).size(), std::size_t(3));
}

void TestPathAnchors::removingTheOnlyAnchorOfALoopLeavesNothing()
{
    const LXPath loop = {LXPathElement({10, 10}, {0, 0}, {40, 0}), LXPathElement({10, 10}, {0, 40}, {0, 0})};
    QCOMPARE(PathAnchors::Of(loop).size(), std::size_t(1));
    QVERIFY(Without(loop, 0).isEmpty());
    QVERIFY(Without(loop, 1).isEmpty());
}

void TestPathAnchors::removingTheFirstAnchorOfAContourStartsItAtTheNext()
{
    const LXPath left = Without(SquareWithHole(), 5);
    QCOMPARE(Centers(left.mid(5)), QList<QPointF>({{60, 20}, {20, 60}, {60, 20}}));
    QVERIFY(left[5].StartsContour());
    QVERIFY(!left[6].StartsContour() && !left[7].StartsContour());
    QCOMPARE(PathAnchors::Of(left).size(), std::size_t(6));
}

void TestPathAnchors::removingAWholeContourLeavesTheOthers()
{
    // A dot, then a line: the line must not be joined to anything.
    const LXPath path = {LXPathElement({0, 0}), Starting(LXPathElement({5, 5})), LXPathElement({9, 5})};
    QVERIFY(Without(path, 0) == Line({5, 5}, {9, 5}));

    const LXPath behind = Line({5, 5}, {9, 5}) + LXPath({Starting(LXPathElement({0, 0}))});
    QVERIFY(Without(behind, 2) == Line({5, 5}, {9, 5}));

    const LXPath between =
        Line({5, 5}, {9, 5}) + LXPath({Starting(LXPathElement({0, 0})), Starting(LXPathElement({1, 1}))});
    QVERIFY(Without(between, 2) == Line({5, 5}, {9, 5}) + LXPath({Starting(LXPathElement({1, 1}))}));
}

void TestPathAnchors::removingAnchorsOneByOneEndsWithNothing()
{
    std::mt19937 random(3);
    for (int round = 0; round < 50; ++round) {
        LXPath path = SquareWithHole();
        for (std::size_t left = PathAnchors::Of(path).size(); left > 0; --left) {
            const auto anchors = PathAnchors::Of(path);
            QCOMPARE(anchors.size(), left);
            PathAnchors::Remove(path, anchors[random() % anchors.size()]);
            QVERIFY(path.isEmpty() || !path.first().StartsContour());
        }
        QVERIFY(path.isEmpty());
    }
}

void TestPathAnchors::snappingPicksTheNearestOfEightDirections_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QPointF>("snapped");
    QTest::newRow("to the right") << QPointF(20, 4) << QPointF(20, 0);
    QTest::newRow("to the left") << QPointF(-20, 4) << QPointF(-20, 0);
    QTest::newRow("down") << QPointF(-4, 20) << QPointF(0, 20);
    QTest::newRow("up") << QPointF(4, -20) << QPointF(0, -20);
    QTest::newRow("right below") << QPointF(20, 10) << QPointF(15, 15);
    QTest::newRow("left above") << QPointF(-10, -20) << QPointF(-15, -15);
    QTest::newRow("right above") << QPointF(20, -10) << QPointF(15, -15);
    QTest::newRow("nowhere") << QPointF(0, 0) << QPointF(0, 0);
}

void TestPathAnchors::snappingPicksTheNearestOfEightDirections()
{
    QFETCH(QPointF, point);
    QFETCH(QPointF, snapped);
    const QPointF origin(100, 50);
    QCOMPARE(PathAnchors::SnappedToDirections(origin, origin + point), origin + snapped);
}

ZK_REGISTER_TEST(tst_pathanchors, TestPathAnchors)
#include "tst_pathanchors.moc"
