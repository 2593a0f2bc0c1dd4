#include "document/LXPathConvert.h"
#include "support/TestRegistry.h"

#include <QPainterPath>
#include <QTest>
#include <QTransform>

#include <cmath>
#include <random>

namespace {
using Random = std::mt19937;

double PickCoordinate(Random& random)
{
    return std::uniform_real_distribution<double>(-500, 500)(random);
}

QPointF PickPoint(Random& random)
{
    const double x = PickCoordinate(random);
    return {x, PickCoordinate(random)};
}

/// Corners and bends, some with one guide only.
LXPathElement PickElement(Random& random)
{
    const QPointF anchor = PickPoint(random);
    const QPointF in = random() % 2 == 0 ? anchor : PickPoint(random);
    return LXPathElement(anchor, in, random() % 2 == 0 ? anchor : PickPoint(random));
}

LXPath PickPath(Random& random)
{
    LXPath path;
    for (unsigned int left = 1 + random() % 12; left > 0; --left)
        path << PickElement(random);
    // A contour of one anchor before another can't be kept.
    if (path.size() > 4) path[path.size() / 2].SetStartsContour(true);
    return path;
}

QList<QPointF> Anchors(const LXPath& path)
{
    QList<QPointF> anchors;
    for (const LXPathElement& element : path)
        anchors << element.GetCenterPoint();
    return anchors;
}
} // namespace

/// Anchors with guides to painter paths and back.
class TestPathConvert : public QObject
{
    Q_OBJECT

private slots:
    void anchorsComeBackFromAPainterPath();
    void guidesThatBendComeBack();
    void cornersAreJoinedByLines();
    void oneGuideIsEnoughForACurve();
    void rectangleIsClosedByAnAnchorOnItsFirst();
    void ellipseKeepsItsCurves();
    void contoursStayApart();
    void anchorsThatDrawNothingAreDropped();
    void emptyPathsStayEmpty();
    void transformMapsAnchorsAndGuides();
    void transformedPathIsTheTransformedPainterPath();
    void elementsAreEqualToTheLastBit();
    void translationMovesAnchorAndGuides();
};

void TestPathConvert::anchorsComeBackFromAPainterPath()
{
    Random random(11);
    for (int i = 0; i < 500; ++i) {
        const LXPath path = PickPath(random);
        const LXPath back = ConvertTo(ConvertFrom(path));
        QCOMPARE(Anchors(back), Anchors(path));
        for (int k = 0; k < path.size(); ++k)
            QCOMPARE(back[k].StartsContour(), path[k].StartsContour());
    }
}

void TestPathConvert::guidesThatBendComeBack()
{
    Random random(12);
    LXPath path;
    for (int i = 0; i < 20; ++i)
        path << LXPathElement(PickPoint(random), PickPoint(random), PickPoint(random));
    LXPath expected = path;
    // No curve comes into the first anchor and none leaves the last.
    expected.first().SetInGuide(expected.first().GetCenterPoint());
    expected.last().SetOutGuide(expected.last().GetCenterPoint());
    QCOMPARE(ConvertTo(ConvertFrom(path)), expected);
}

void TestPathConvert::cornersAreJoinedByLines()
{
    const QPainterPath path = ConvertFrom({LXPathElement({1, 2}), LXPathElement({3, 4})});
    QCOMPARE(path.elementCount(), 2);
    QCOMPARE(path.elementAt(0).type, QPainterPath::MoveToElement);
    QCOMPARE(path.elementAt(1).type, QPainterPath::LineToElement);
    QCOMPARE(QPointF(path.elementAt(1)), QPointF(3, 4));
}

void TestPathConvert::oneGuideIsEnoughForACurve()
{
    const QPainterPath path =
        ConvertFrom({LXPathElement({0, 0}, {0, 0}, {0, 10}), LXPathElement({20, 0}, {20, 0}, {20, 0})});
    QPainterPath expected;
    expected.cubicTo({0, 10}, {20, 0}, {20, 0});
    QCOMPARE(path, expected);
}

void TestPathConvert::rectangleIsClosedByAnAnchorOnItsFirst()
{
    QPainterPath rectangle;
    rectangle.addRect(QRectF(10, 20, 30, 40));
    const LXPath path = ConvertTo(rectangle);
    QCOMPARE(Anchors(path), (QList<QPointF>{{10, 20}, {40, 20}, {40, 60}, {10, 60}, {10, 20}}));
    QCOMPARE(ConvertFrom(path), rectangle);
}

void TestPathConvert::ellipseKeepsItsCurves()
{
    QPainterPath ellipse;
    ellipse.addEllipse(QRectF(0, 0, 100, 60));
    const LXPath path = ConvertTo(ellipse);
    QCOMPARE(path.size(), 5);
    QCOMPARE(ConvertFrom(path), ellipse);
    QVERIFY(path[1].GetInGuide() != path[1].GetCenterPoint());
    QVERIFY(path[1].GetOutGuide() != path[1].GetCenterPoint());
}

void TestPathConvert::contoursStayApart()
{
    QPainterPath ring;
    ring.addRect(QRectF(0, 0, 30, 30));
    ring.addRect(QRectF(10, 10, 10, 10));
    const LXPath path = ConvertTo(ring);
    QCOMPARE(path.size(), 10);
    QVERIFY(!path.first().StartsContour());
    QVERIFY(path[5].StartsContour());
    QCOMPARE(ConvertFrom(path), ring);
    QVERIFY(!ConvertFrom(path).contains(QPointF(15, 15)));
}

void TestPathConvert::anchorsThatDrawNothingAreDropped()
{
    const LXPath path{LXPathElement({1, 1}), LXPathElement({1, 1}), LXPathElement({5, 5})};
    QCOMPARE(Anchors(ConvertTo(ConvertFrom(path))), (QList<QPointF>{{1, 1}, {5, 5}}));
    // A guide that leaves the anchor makes a loop, which stays.
    const LXPath loop{LXPathElement({1, 1}, {1, 1}, {9, 9}), LXPathElement({1, 1})};
    QCOMPARE(Anchors(ConvertTo(ConvertFrom(loop))), (QList<QPointF>{{1, 1}, {1, 1}}));
}

void TestPathConvert::emptyPathsStayEmpty()
{
    QVERIFY(ConvertTo(QPainterPath()).isEmpty());
    QCOMPARE(ConvertFrom(LXPath()).elementCount(), 0);
    QCOMPARE(Anchors(ConvertTo(ConvertFrom({LXPathElement({7, 8})}))), (QList<QPointF>{{7, 8}}));
}

void TestPathConvert::transformMapsAnchorsAndGuides()
{
    LXPath path{LXPathElement({1, 2}, {3, 4}, {5, 6})};
    TransformPath(path, QTransform(2, 0, 0, 3, 10, 20));
    QCOMPARE(path.first(), LXPathElement({12, 26}, {16, 32}, {20, 38}));
}

void TestPathConvert::transformedPathIsTheTransformedPainterPath()
{
    Random random(13);
    const QTransform transform = QTransform().translate(30, -7).rotate(33).shear(0.2, 0).scale(1.5, 0.4);
    for (int i = 0; i < 50; ++i) {
        LXPath path = PickPath(random);
        const QPainterPath expected = transform.map(ConvertFrom(path));
        TransformPath(path, transform);
        const QPainterPath mapped = ConvertFrom(path);
        QCOMPARE(mapped.elementCount(), expected.elementCount());
        for (int k = 0; k < mapped.elementCount(); ++k) {
            const QPointF miss = QPointF(mapped.elementAt(k)) - QPointF(expected.elementAt(k));
            QVERIFY(miss.manhattanLength() < 1e-9);
        }
    }
}

void TestPathConvert::elementsAreEqualToTheLastBit()
{
    const LXPathElement element({1, 2}, {3, 4}, {5, 6});
    LXPathElement other = element;
    QVERIFY(element == other);
    other.SetInGuide({std::nextafter(3.0, 4.0), 4});
    QVERIFY(element != other);
    // QPointF's own comparison doesn't tell them apart.
    QVERIFY(element.GetInGuide() == other.GetInGuide());

    LXPathElement start = element;
    start.SetStartsContour(true);
    QVERIFY(element != start);
}

void TestPathConvert::translationMovesAnchorAndGuides()
{
    LXPathElement element({1, 2}, {3, 4}, {5, 6});
    element.Translate({10, -1});
    QCOMPARE(element, LXPathElement({11, 1}, {13, 3}, {15, 5}));
}

ZK_REGISTER_TEST(tst_pathconvert, TestPathConvert)
#include "tst_pathconvert.moc"
