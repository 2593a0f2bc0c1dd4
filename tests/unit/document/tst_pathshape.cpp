#include "document/LXPathConvert.h"
#include "document/LXPathsListModel.h"
#include "document/PathShape.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QRegion>
#include <QTest>

#include <ctime>

using namespace DocumentFixture;
using Model = LXPathsListModel;

namespace {
const QSize Canvas(60, 40);

LXPath RectanglePath(const QRect& rect)
{
    QPainterPath path;
    path.addRect(QRectF(rect));
    return ConvertTo(path);
}

/// The folding, pixel by pixel: the rule itself, without a painter path.
bool IsInside(const QList<QPair<QRect, int>>& rects, const QPoint& pixel, const QSize& canvas = Canvas)
{
    const int first = rects.first().second;
    const bool startsOnCanvas = first == Model::Subtract || first == Model::Intersect;
    bool inside = startsOnCanvas && QRect(QPoint(0, 0), canvas).contains(pixel);
    for (const auto& [rect, operation] : rects) {
        const bool here = rect.contains(pixel);
        switch (operation) {
        case Model::Unite: inside = inside || here; break;
        case Model::Subtract: inside = inside && !here; break;
        case Model::Intersect: inside = inside && here; break;
        // Contours that are only laid together fill by the odd-even rule, as painter paths do.
        default: inside = inside != here; break;
        }
    }
    return inside;
}

/// Many of them overlap.
LXSubPaths ManyEllipses(int count)
{
    QPainterPath ellipse;
    ellipse.addEllipse(QRectF(0, 0, 90, 60));
    LXSubPaths path;
    for (int i = 0; i < count; ++i)
        path.append({ConvertTo(ellipse.translated(i * 37 % 900, i * 91 % 900)), Model::Unite});
    return path;
}

/// Of the processor, whoever else is at work.
double SecondsSince(std::clock_t start)
{
    return double(std::clock() - start) / CLOCKS_PER_SEC;
}
} // namespace

/// The area of a path: its sub paths folded by their operations.
class TestPathShape : public QObject
{
    Q_OBJECT

private slots:
    void twoSquares_data();
    void twoSquares();
    void foldsAnyRectanglesAsThePixelsDo();
    void foldsManySubPathsSoon();
    void pathWithoutSubPathsHasNoArea();
    void firstOneThatSubtractsCutsFromTheCanvas();
    void firstOneThatIntersectsIsCutByTheCanvas();
    void openSubPathIsFilledAsIfClosed();
    void outlineHasAllSubPathsAsTheyWereDrawn();
    void thumbnailShowsTheAreaInTheCanvasProportions();
    void thumbnailShowsAnyFoldedRectangles();
    void thumbnailOfManySubPathsIsMadeAtOnce();
};

void TestPathShape::twoSquares_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<bool>("onlyFirst");
    QTest::addColumn<bool>("both");
    QTest::addColumn<bool>("onlySecond");
    QTest::newRow("none") << int(Model::None) << true << false << true;
    QTest::newRow("unite") << int(Model::Unite) << true << true << true;
    QTest::newRow("subtract") << int(Model::Subtract) << true << false << false;
    QTest::newRow("intersect") << int(Model::Intersect) << false << true << false;
    QTest::newRow("exclude") << int(Model::Exclude) << true << false << true;
}

void TestPathShape::twoSquares()
{
    QFETCH(int, operation);
    const OwnedDocument document = Make(Canvas);
    const QPainterPath shape =
        document->GetPathListModel()->CalcShape({{RectanglePath(QRect(5, 5, 20, 20)), Model::Unite},
                                                 {RectanglePath(QRect(15, 5, 20, 20)), operation}});
    QTEST(shape.contains(QPointF(10, 15)), "onlyFirst");
    QTEST(shape.contains(QPointF(20, 15)), "both");
    QTEST(shape.contains(QPointF(30, 15)), "onlySecond");
    QVERIFY(!shape.contains(QPointF(50, 35)));
}

void TestPathShape::foldsAnyRectanglesAsThePixelsDo()
{
    Random random(21);
    for (int i = 0; i < 120; ++i) {
        LXSubPaths path;
        QList<QPair<QRect, int>> rects;
        for (int left = Pick(random, 1, 8); left > 0; --left) {
            const QRect rect = PickRect(random, QRect(QPoint(0, 0), Canvas), 5);
            const int operation = Pick(random, 0, 4);
            rects.append({rect, operation});
            path.append({RectanglePath(rect), operation});
        }
        const QPainterPath shape = PathShape::Fold(path, Canvas);
        for (int y = -6; y < Canvas.height() + 6; y += 3) {
            for (int x = -6; x < Canvas.width() + 6; ++x) {
                const bool inside = shape.contains(QPointF(x + 0.5, y + 0.5));
                QVERIFY2(inside == IsInside(rects, {x, y}),
                         qPrintable(QString("round %1, pixel %2, %3").arg(i).arg(x).arg(y)));
            }
        }
    }
}

/// Cutting each with all before it takes several times as long.
void TestPathShape::foldsManySubPathsSoon()
{
    const LXSubPaths path = ManyEllipses(500);
    const std::clock_t startOfTwin = std::clock();
    QPainterPath twin;
    for (const auto& subPath : path)
        twin = twin.united(ConvertFrom(subPath.first));
    const double secondsOfTwin = SecondsSince(startOfTwin);

    const std::clock_t start = std::clock();
    const QPainterPath shape = PathShape::Fold(path, QSize(1000, 1000));
    const double seconds = SecondsSince(start);
    QVERIFY2(2 * seconds < secondsOfTwin, qPrintable(QString("%1, %2").arg(seconds).arg(secondsOfTwin)));
    for (int i = 0; i < path.size(); i += 50)
        QVERIFY(shape.contains(ConvertFrom(path[i].first).boundingRect().center()));
}

void TestPathShape::pathWithoutSubPathsHasNoArea()
{
    QVERIFY(PathShape::Fold({}, Canvas).isEmpty());
    QVERIFY(PathShape::Fold({{LXPath(), Model::Unite}}, Canvas).isEmpty());
}

void TestPathShape::firstOneThatSubtractsCutsFromTheCanvas()
{
    const QPainterPath shape =
        PathShape::Fold({{RectanglePath(QRect(10, 10, 10, 10)), Model::Subtract}}, Canvas);
    QVERIFY(shape.contains(QPointF(1, 1)));
    QVERIFY(!shape.contains(QPointF(15, 15)));
    QVERIFY(!shape.contains(QPointF(61, 15)));
}

void TestPathShape::firstOneThatIntersectsIsCutByTheCanvas()
{
    const QPainterPath shape =
        PathShape::Fold({{RectanglePath(QRect(50, 10, 30, 10)), Model::Intersect}}, Canvas);
    QCOMPARE(shape.boundingRect(), QRectF(50, 10, 10, 10));
}

void TestPathShape::openSubPathIsFilledAsIfClosed()
{
    const LXPath corner{LXPathElement({0, 0}), LXPathElement({20, 0}), LXPathElement({20, 20})};
    const QPainterPath shape = PathShape::Fold({{corner, Model::Unite}}, Canvas);
    QVERIFY(shape.contains(QPointF(15, 5)));
    QVERIFY(!shape.contains(QPointF(5, 15)));
}

void TestPathShape::outlineHasAllSubPathsAsTheyWereDrawn()
{
    const LXPath line{LXPathElement({0, 0}), LXPathElement({20, 0})};
    const QPainterPath outline = PathShape::Outline(
        {{RectanglePath(QRect(10, 10, 10, 10)), Model::Subtract}, {line, Model::Intersect}});
    QCOMPARE(outline.elementCount(), 5 + 2);
}

void TestPathShape::thumbnailShowsTheAreaInTheCanvasProportions()
{
    const QImage image =
        PathShape::MakeThumbnail({{RectanglePath(QRect(0, 0, 30, 40)), Model::Unite}}, Canvas);
    QCOMPARE(image.size(), QSize(64, 42));
    QCOMPARE(image.pixelColor(16, 21), QColor(Qt::white));
    QCOMPARE(image.pixelColor(48, 21), QColor(0x80, 0x80, 0x80));
    QVERIFY(PathShape::MakeThumbnail({}, QSize()).isNull());
    QVERIFY(!PathShape::MakeThumbnail({}, QSize(10000, 1)).isNull());
}

/// On a canvas of the thumbnail's own size, beside the outlines.
void TestPathShape::thumbnailShowsAnyFoldedRectangles()
{
    const QSize canvas(64, 48);
    Random random(22);
    for (int i = 0; i < 120; ++i) {
        LXSubPaths path;
        QList<QPair<QRect, int>> rects;
        QRegion lines;
        for (int left = Pick(random, 1, 5); left > 0; --left) {
            const QRect rect = PickRect(random, QRect(QPoint(0, 0), canvas), 5);
            rects.append({rect, Pick(random, 0, 4)});
            path.append({RectanglePath(rect), rects.last().second});
            lines += QRegion(rect.adjusted(-1, -1, 1, 1)) - QRegion(rect.adjusted(1, 1, -1, -1));
        }
        const QImage image = PathShape::MakeThumbnail(path, canvas);
        QCOMPARE(image.size(), canvas);
        for (int y = 0; y < canvas.height(); ++y) {
            for (int x = 0; x < canvas.width(); ++x) {
                if (lines.contains(QPoint(x, y))) continue;
                const QColor expected =
                    IsInside(rects, {x, y}, canvas) ? QColor(Qt::white) : QColor(0x80, 0x80, 0x80);
                QVERIFY2(image.pixelColor(x, y) == expected,
                         qPrintable(QString("round %1, pixel %2, %3").arg(i).arg(x).arg(y)));
            }
        }
    }
}

/// Each step of a drag makes it anew. Folding so many outlines takes fifty times as long.
void TestPathShape::thumbnailOfManySubPathsIsMadeAtOnce()
{
    const LXSubPaths path = ManyEllipses(3000);
    const std::clock_t start = std::clock();
    QVERIFY(!PathShape::MakeThumbnail(path, QSize(1000, 1000)).isNull());
    QVERIFY2(SecondsSince(start) < 0.5, qPrintable(QString::number(SecondsSince(start))));
}

ZK_REGISTER_TEST(tst_pathshape, TestPathShape)
#include "tst_pathshape.moc"
