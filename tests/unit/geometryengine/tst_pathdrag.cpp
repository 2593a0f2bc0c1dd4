#include "geometryengine/PathDrag.h"
#include "support/PathFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

using PathFixture::Ellipse;
using PathFixture::Line;
using PathFixture::Rectangle;

namespace {
const QPointF Center(100, 50);

/// One anchor with these guides, given from the anchor.
LXPath Anchor(const QPointF& in, const QPointF& out)
{
    return {LXPathElement(Center, Center + in, Center + out)};
}

LXPath Dragged(const LXPath& path, PathGrip grip, const QPointF& way,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier, int element = 0)
{
    const auto anchors = PathAnchors::Of(path);
    const int index = PathAnchors::IndexOf(anchors, element);
    return PathDrag::Dragged(path, anchors[std::size_t(index)], grip, way, modifiers);
}

LXPath Clicked(const LXPath& path, PathGrip grip, Qt::KeyboardModifiers modifiers)
{
    return PathDrag::Clicked(path, PathAnchors::Of(path)[0], grip, modifiers);
}
} // namespace

#define COMPARE_ANCHOR(path, in, out)                                                                        \
    do {                                                                                                     \
        QCOMPARE((path)[0].GetCenterPoint(), Center);                                                        \
        QCOMPARE((path)[0].GetInGuide() - Center, QPointF in);                                               \
        QCOMPARE((path)[0].GetOutGuide() - Center, QPointF out);                                             \
    } while (false)

/// What drags and clicks make of anchors and guides.
class TestPathDrag : public QObject
{
    Q_OBJECT

private slots:
    void anAnchorTakesItsGuidesAlong();
    void shiftKeepsAnAnchorOnADirection();
    void altPullsMirroredGuidesOutOfAnAnchor();
    void aGuideTurnsTheOtherOfASmoothAnchor();
    void aGuideOfACornerMovesAlone();
    void altBreaksASmoothAnchor();
    void shiftKeepsAGuideOnADirection();
    void aGuideLaidOnItsAnchorLeavesTheOther();
    void theClosingAnchorOfAPathIsDraggedAsOne();
    void altClickTakesGuidesOff();
    void aPlainClickChangesNothing();
    void aNewAnchorIsBentOnBothSides();
    void altBendsTheOutGuideOfANewAnchorAlone();
    void shiftSnapsTheGuidesOfANewAnchor();
    void aClosingAnchorStaysSmooth();
    void altBendsTheClosingCurveAlone();
    void bendingAnAnchorThatIsNotThereDoesNothing();
};

void TestPathDrag::anAnchorTakesItsGuidesAlong()
{
    const LXPath moved = Dragged(Anchor({-3, 1}, {7, 2}), PathGrip::Anchor, {10, -4});
    LXPathElement expected = Anchor({-3, 1}, {7, 2})[0];
    expected.Translate({10, -4});
    QVERIFY(moved[0] == expected);
}

void TestPathDrag::shiftKeepsAnAnchorOnADirection()
{
    const LXPath moved = Dragged(Anchor({-3, 1}, {7, 2}), PathGrip::Anchor, {10, -4}, Qt::ShiftModifier);
    QCOMPARE(moved[0].GetCenterPoint(), Center + QPointF(10, 0));
    QCOMPARE(moved[0].GetOutGuide(), Center + QPointF(17, 2));
}

void TestPathDrag::altPullsMirroredGuidesOutOfAnAnchor()
{
    COMPARE_ANCHOR(Dragged(Anchor({0, 0}, {7, 2}), PathGrip::Anchor, {10, -4}, Qt::AltModifier), (-10, 4),
                   (10, -4));
    COMPARE_ANCHOR(
        Dragged(Anchor({0, 0}, {0, 0}), PathGrip::Anchor, {10, -4}, Qt::AltModifier | Qt::ShiftModifier),
        (-10, 0), (10, 0));
}

void TestPathDrag::aGuideTurnsTheOtherOfASmoothAnchor()
{
    COMPARE_ANCHOR(Dragged(Anchor({-5, 0}, {10, 0}), PathGrip::OutGuide, {-7, 4}), (-3, -4), (3, 4));
    COMPARE_ANCHOR(Dragged(Anchor({-5, 0}, {10, 0}), PathGrip::InGuide, {5, -2}), (0, -2), (0, 10));
}

void TestPathDrag::aGuideOfACornerMovesAlone()
{
    COMPARE_ANCHOR(Dragged(Anchor({-5, 3}, {10, 0}), PathGrip::OutGuide, {-7, 4}), (-5, 3), (3, 4));
    COMPARE_ANCHOR(Dragged(Anchor({-5, 3}, {0, 0}), PathGrip::InGuide, {1, 1}), (-4, 4), (0, 0));
}

void TestPathDrag::altBreaksASmoothAnchor()
{
    COMPARE_ANCHOR(Dragged(Anchor({-5, 0}, {10, 0}), PathGrip::OutGuide, {-7, 4}, Qt::AltModifier), (-5, 0),
                   (3, 4));
}

void TestPathDrag::shiftKeepsAGuideOnADirection()
{
    COMPARE_ANCHOR(Dragged(Anchor({-5, 0}, {10, 0}), PathGrip::OutGuide, {-8, 20}, Qt::ShiftModifier),
                   (0, -5), (0, 20));
}

void TestPathDrag::aGuideLaidOnItsAnchorLeavesTheOther()
{
    COMPARE_ANCHOR(Dragged(Anchor({-5, 0}, {10, 0}), PathGrip::OutGuide, {-10, 0}), (-5, 0), (0, 0));
}

void TestPathDrag::theClosingAnchorOfAPathIsDraggedAsOne()
{
    const LXPath path = Ellipse(QRectF(0, 0, 40, 20));
    const LXPath moved = Dragged(path, PathGrip::Anchor, {3, 5});
    QCOMPARE(moved.first().GetCenterPoint(), path.first().GetCenterPoint() + QPointF(3, 5));
    QCOMPARE(moved.last().GetCenterPoint(), path.first().GetCenterPoint() + QPointF(3, 5));

    // The end's in guide stands on the other side of the start's out guide.
    const QPointF start = path.first().GetCenterPoint();
    const QPointF out = path.first().GetOutGuide();
    const LXPath turned = Dragged(path, PathGrip::InGuide, start - path.last().GetInGuide() + QPointF(9, 0));
    QCOMPARE(turned.last().GetInGuide(), start + QPointF(9, 0));
    QCOMPARE(turned.first().GetOutGuide(), start - QPointF(QLineF(start, out).length(), 0));
}

void TestPathDrag::altClickTakesGuidesOff()
{
    const LXPath path = Anchor({-5, 0}, {10, 0});
    COMPARE_ANCHOR(Clicked(path, PathGrip::Anchor, Qt::AltModifier), (0, 0), (0, 0));
    COMPARE_ANCHOR(Clicked(path, PathGrip::InGuide, Qt::AltModifier), (0, 0), (10, 0));
    COMPARE_ANCHOR(Clicked(path, PathGrip::OutGuide, Qt::AltModifier), (-5, 0), (0, 0));
}

void TestPathDrag::aPlainClickChangesNothing()
{
    const LXPath path = Anchor({-5, 0}, {10, 0});
    for (const PathGrip grip : {PathGrip::Anchor, PathGrip::InGuide, PathGrip::OutGuide})
        QVERIFY(Clicked(path, grip, Qt::ShiftModifier) == path);
}

void TestPathDrag::aNewAnchorIsBentOnBothSides()
{
    COMPARE_ANCHOR(PathDrag::Bent(Anchor({0, 0}, {0, 0}), 0, Center + QPointF(10, -4), Qt::NoModifier),
                   (-10, 4), (10, -4));
}

void TestPathDrag::altBendsTheOutGuideOfANewAnchorAlone()
{
    COMPARE_ANCHOR(PathDrag::Bent(Anchor({-6, 1}, {6, -1}), 0, Center + QPointF(10, -4), Qt::AltModifier),
                   (-6, 1), (10, -4));
}

void TestPathDrag::shiftSnapsTheGuidesOfANewAnchor()
{
    COMPARE_ANCHOR(PathDrag::Bent(Anchor({0, 0}, {0, 0}), 0, Center + QPointF(10, -4), Qt::ShiftModifier),
                   (-10, 0), (10, 0));
}

void TestPathDrag::aClosingAnchorStaysSmooth()
{
    const LXPath path = Rectangle(QRectF(0, 0, 40, 20));
    const LXPath bent = PathDrag::Bent(path, 4, {6, -8}, Qt::NoModifier);
    QCOMPARE(bent.first().GetOutGuide(), QPointF(6, -8));
    QCOMPARE(bent.last().GetInGuide(), QPointF(-6, 8));
}

void TestPathDrag::altBendsTheClosingCurveAlone()
{
    const LXPath path = Rectangle(QRectF(0, 0, 40, 20));
    const LXPath bent = PathDrag::Bent(path, 4, {6, -8}, Qt::AltModifier);
    QVERIFY(bent.first() == path.first());
    QCOMPARE(bent.last().GetInGuide(), QPointF(-6, 8));
}

void TestPathDrag::bendingAnAnchorThatIsNotThereDoesNothing()
{
    const LXPath path = Line({0, 0}, {40, 20});
    QVERIFY(PathDrag::Bent(path, 2, {6, -8}, Qt::NoModifier) == path);
    QVERIFY(PathDrag::Bent(path, -1, {6, -8}, Qt::NoModifier) == path);
}

ZK_REGISTER_TEST(tst_pathdrag, TestPathDrag)
#include "tst_pathdrag.moc"
