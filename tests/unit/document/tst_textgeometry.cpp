#include "document/TextGeometry.h"
#include "support/TestRegistry.h"
#include "support/TextFixture.h"

#include <QFontMetricsF>
#include <QTest>

#include <cmath>

using namespace TextFixture;

namespace {
double Distance(const QPointF& a, const QPointF& b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

double DistanceToSide(const QPointF& point, const QPointF& from, const QPointF& to)
{
    const QPointF way = to - from;
    const double squared = QPointF::dotProduct(way, way);
    const double part = squared > 0 ? qBound(0.0, QPointF::dotProduct(point - from, way) / squared, 1.0) : 0;
    return Distance(point, from + part * way);
}

bool IsNear(double a, double b, double noise = 0.1)
{
    return std::abs(a - b) <= noise;
}

TextDeformation Flag(int orientation, double bend, double hDistortion, double vDistortion)
{
    TextDeformation deformation;
    deformation.style = TextDeformation::Flag;
    deformation.orientation = orientation;
    deformation.bend = bend;
    deformation.hDistortion = hDistortion;
    deformation.vDistortion = vDistortion;
    return deformation;
}
} // namespace

/// Where letters, lines and carets lie, and how a text is bent.
class TestTextGeometry : public QObject
{
    Q_OBJECT

private slots:
    void theFirstBaselineBeginsAtThePosition();
    void aLineThatReadsFromTheRightEndsThere();
    void linesStandBelowEachOther_data();
    void linesStandBelowEachOther();
    void anEmptyTextHasABoxAsHighAsALine();
    void caretsGoForwardAlongTheLine();
    void aPointBesideALetterFindsItsCaret();
    void aCaretNeverStandsInsideALetter();
    void everyTransformationMovesBoxAndCaret();
    void aFlagWavesOverTheBox();
    void distortionsMakeSidesLargerAndSmaller();
    void withoutAStyleNothingIsBent();
    void bentCurvesAreTheBentPoints_data();
    void bentCurvesAreTheBentPoints();
    void theUnderlineFollowsTheBend();
};

void TestTextGeometry::theFirstBaselineBeginsAtThePosition()
{
    // An "H" stands on its baseline and has the height that the font says.
    const TextGeometry geometry(Text("H", 100, QPointF(30, 150)));
    const QRectF letter = geometry.Letters().boundingRect();
    QVERIFY(IsNear(letter.bottom(), 150));
    QVERIFY(IsNear(letter.height(), QFontMetricsF(Font(1000)).capHeight() / 10, 0.2));
    QVERIFY(letter.left() >= 30 && letter.left() < 45);
    QCOMPARE(geometry.Origin(), QPointF(30, 150));
    QCOMPARE(geometry.CaretAt(0).x1(), 30.0);
}

void TestTextGeometry::aLineThatReadsFromTheRightEndsThere()
{
    const TextGeometry geometry(Text(Hebrew(), 40, QPointF(200, 50)));
    QVERIFY(!geometry.Letters().isEmpty());
    QVERIFY(geometry.Letters().boundingRect().right() < 201);
    QVERIFY(geometry.Letters().boundingRect().left() < 150);
    QVERIFY(IsNear(geometry.CaretAt(0).x1(), 200));
    for (int index = 1; index <= 4; ++index)
        QVERIFY(geometry.CaretAt(index).x1() < geometry.CaretAt(index - 1).x1());
}

void TestTextGeometry::linesStandBelowEachOther_data()
{
    QTest::addColumn<QString>("end");
    QTest::addColumn<int>("second");
    QTest::newRow("line feed") << "\n" << 2;
    QTest::newRow("carriage return and line feed") << "\r\n" << 3;
    QTest::newRow("line separator") << QString(QChar(QChar::LineSeparator)) << 2;
}

void TestTextGeometry::linesStandBelowEachOther()
{
    QFETCH(const QString, end);
    QFETCH(const int, second);
    const TextGeometry geometry(Text("A" + end + "B" + end, 50, QPointF(10, 60)));
    const double spacing = QFontMetricsF(Font(1000)).lineSpacing() / 20;
    const QLineF first = geometry.CaretAt(0);
    const QLineF secondLine = geometry.CaretAt(second);
    QCOMPARE(secondLine.x1(), 10.0);
    QVERIFY(IsNear(secondLine.y1() - first.y1(), spacing));
    // The last line is empty, and a caret can stand in it.
    const QLineF last = geometry.CaretAt(2 * second);
    QCOMPARE(last.x1(), 10.0);
    QVERIFY(IsNear(last.y1() - first.y1(), 2 * spacing));
    QVERIFY(geometry.Box().bottom() > last.y2() - 0.1);
}

void TestTextGeometry::anEmptyTextHasABoxAsHighAsALine()
{
    const QRectF box = TextGeometry(Text(QString(), 80, QPointF(5, 100))).Box();
    QVERIFY(!box.isEmpty());
    QVERIFY(IsNear(box.left(), 5));
    QVERIFY(box.top() < 40 && box.bottom() > 105);
}

void TestTextGeometry::caretsGoForwardAlongTheLine()
{
    const TextGeometry geometry(Text("mi x ", 40, QPointF(10, 60)));
    const double widths[] = {QFontMetricsF(Font(1000)).horizontalAdvance('m') / 25,
                             QFontMetricsF(Font(1000)).horizontalAdvance('i') / 25};
    QVERIFY(IsNear(geometry.CaretAt(1).x1() - geometry.CaretAt(0).x1(), widths[0], 0.5));
    QVERIFY(IsNear(geometry.CaretAt(2).x1() - geometry.CaretAt(1).x1(), widths[1], 0.5));
    // A blank at the end moves the caret too.
    QVERIFY(geometry.CaretAt(5).x1() > geometry.CaretAt(4).x1() + 5);
    QCOMPARE(geometry.CaretAt(99).x1(), geometry.CaretAt(5).x1());
    QCOMPARE(geometry.CaretAt(-1).x1(), geometry.CaretAt(0).x1());
}

void TestTextGeometry::aPointBesideALetterFindsItsCaret()
{
    TextContent content = Text("Some words\nand more", 30, QPointF(20, 40));
    content.deformation = Flag(TextDeformation::Horizontal, 40, 20, 0);
    content.transform = QTransform().rotate(25).scale(1.5, 2);
    const TextGeometry geometry(content);
    for (int index = 0; index <= content.text.size(); ++index) {
        const QLineF caret = geometry.CaretAt(index);
        QCOMPARE(geometry.IndexAt(caret.pointAt(0.5)), index);
        // Nearer to it than half of the narrowest letter.
        QCOMPARE(geometry.IndexAt(caret.pointAt(0.4) + QPointF(1, 0)), index);
    }
}

void TestTextGeometry::aCaretNeverStandsInsideALetter()
{
    const TextGeometry geometry(Text(WithPair(), 40, QPointF(0, 40)));
    const double inside = (geometry.CaretAt(1).x1() + geometry.CaretAt(3).x1()) / 2;
    QVERIFY(geometry.CaretAt(3).x1() > geometry.CaretAt(1).x1() + 5);
    for (int half = -10; half < 400; ++half) {
        QVERIFY(geometry.IndexAt(QPointF(half / 2.0, 30)) != 2);
    }
    QCOMPARE(geometry.IndexAt(QPointF(inside - 1, 30)), 1);
    QCOMPARE(geometry.IndexAt(QPointF(inside + 1, 30)), 3);
}

void TestTextGeometry::everyTransformationMovesBoxAndCaret()
{
    TextContent content = Text("Box", 40, QPointF(10, 50));
    const TextGeometry plain(content);
    content.transform = QTransform(0, 2, -3, 0, 400, 20);
    const TextGeometry turned(content);
    const QLineF before = plain.CaretAt(2);
    QVERIFY(Distance(turned.CaretAt(2).p1(), content.transform.map(before.p1())) < 1e-6);
    QVERIFY(Distance(turned.CaretAt(2).p2(), content.transform.map(before.p2())) < 1e-6);
    const QRectF expected = content.transform.mapRect(plain.Box());
    QVERIFY(Distance(turned.Box().topLeft(), expected.topLeft()) < 1e-6);
    QVERIFY(Distance(turned.Box().bottomRight(), expected.bottomRight()) < 1e-6);
}

/// A box of 200 x 100 round (100, 50): in the middle of the right half the wave is at its crest.
void TestTextGeometry::aFlagWavesOverTheBox()
{
    const QRectF box(0, 0, 200, 100);
    const TextWarp horizontal(Flag(TextDeformation::Horizontal, 50, 0, 0), box);
    QVERIFY(Distance(horizontal.Map(QPointF(150, 50)), QPointF(150, 75)) < 1e-9);
    QVERIFY(Distance(horizontal.Map(QPointF(50, 20)), QPointF(50, -5)) < 1e-9);
    QVERIFY(Distance(horizontal.Map(QPointF(100, 20)), QPointF(100, 20)) < 1e-9);
    QVERIFY(Distance(horizontal.Map(QPointF(0, 20)), QPointF(0, 20)) < 1e-9);
    const TextWarp vertical(Flag(TextDeformation::Vertical, -50, 0, 0), box);
    QVERIFY(Distance(vertical.Map(QPointF(100, 75)), QPointF(50, 75)) < 1e-9);
    QVERIFY(Distance(vertical.Map(QPointF(10, 50)), QPointF(10, 50)) < 1e-9);
}

void TestTextGeometry::distortionsMakeSidesLargerAndSmaller()
{
    const QRectF box(0, 0, 200, 100);
    const TextWarp horizontal(Flag(TextDeformation::Horizontal, 0, 50, 0), box);
    // The right side is half as high again, the left one half as high.
    QVERIFY(Distance(horizontal.Map(QPointF(200, 0)), QPointF(200, -25)) < 1e-9);
    QVERIFY(Distance(horizontal.Map(QPointF(0, 0)), QPointF(0, 25)) < 1e-9);
    const TextWarp vertical(Flag(TextDeformation::Horizontal, 0, 0, -100), box);
    QVERIFY(Distance(vertical.Map(QPointF(200, 100)), QPointF(100, 100)) < 1e-9);
    QVERIFY(Distance(vertical.Map(QPointF(200, 0)), QPointF(300, 0)) < 1e-9);
}

void TestTextGeometry::withoutAStyleNothingIsBent()
{
    TextDeformation deformation = Flag(TextDeformation::Horizontal, 70, 30, -20);
    deformation.style = TextDeformation::None;
    const TextWarp warp(deformation, QRectF(0, 0, 200, 100));
    QVERIFY(warp.IsIdle());
    QPainterPath path;
    path.addEllipse(10, 10, 50, 30);
    QCOMPARE(warp.Map(path), path);
    QVERIFY(TextWarp(Flag(TextDeformation::Vertical, 0, 0, 0), QRectF(0, 0, 9, 9)).IsIdle());
}

void TestTextGeometry::bentCurvesAreTheBentPoints_data()
{
    QTest::addColumn<int>("orientation");
    QTest::addColumn<double>("bend");
    QTest::newRow("horizontal") << int(TextDeformation::Horizontal) << 100.0;
    QTest::newRow("vertical") << int(TextDeformation::Vertical) << -60.0;
}

/// The shape of the bent path against its outline bent point by point.
void TestTextGeometry::bentCurvesAreTheBentPoints()
{
    QFETCH(const int, orientation);
    QFETCH(const double, bend);
    const QRectF box(0, 0, 200, 100);
    const TextWarp warp(Flag(orientation, bend, 40, -30), box);
    QPainterPath path;
    path.addEllipse(box);
    path.addRect(20, 30, 150, 40);
    const QPainterPath mapped = warp.Map(path);

    constexpr int points = 2000;
    const QList<QPolygonF> outlines = mapped.toSubpathPolygons(QTransform::fromScale(50, 50));
    QCOMPARE(outlines.size(), 2);
    for (int i = 0; i < points; ++i) {
        const QPointF point = warp.Map(path.pointAtPercent(static_cast<double>(i) / points)) * 50;
        double nearest = 1e9;
        for (const QPolygonF& outline : outlines) {
            for (int k = 0; k + 1 < outline.size(); ++k)
                nearest = qMin(nearest, DistanceToSide(point, outline[k], outline[k + 1]));
        }
        // Fiftieths of a pixel; the polygon itself may be half of one off.
        QVERIFY2(nearest < 2, qPrintable(QString("%1 at %2").arg(nearest).arg(i)));
    }
}

void TestTextGeometry::theUnderlineFollowsTheBend()
{
    TextContent content = Text("underline", 40, QPointF(10, 60));
    QCOMPARE(TextGeometry(content).UnderlineAt(3).size(), 2);
    const QPolygonF straight = TextGeometry(content).UnderlineAt(3);
    QVERIFY(IsNear(straight.first().y(), 60) && IsNear(straight.first().x(), 10));
    QVERIFY(IsNear(straight.last().x(), TextGeometry(content).CaretAt(9).x1()));
    content.deformation = Flag(TextDeformation::Horizontal, 80, 0, 0);
    const QRectF bent = TextGeometry(content).UnderlineAt(3).boundingRect();
    QVERIFY(bent.height() > 10);
}

ZK_REGISTER_TEST(tst_textgeometry, TestTextGeometry)
#include "tst_textgeometry.moc"
