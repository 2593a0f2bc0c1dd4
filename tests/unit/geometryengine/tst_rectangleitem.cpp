#include "SceneFixture.h"

#include "geometryengine/ControlNode.h"
#include "geometryengine/RectangleGrip.h"
#include "geometryengine/RectangleItem.h"
#include "support/TestRegistry.h"

#include <QPainterPath>
#include <QSignalSpy>
#include <QTest>

Q_DECLARE_METATYPE(RectangleGrip)

class TestRectangleItem : public QObject
{
    Q_OBJECT

private slots:
    void theNodesStandOnTheCorners();
    void aNodeTakesItsNeighboursWithIt_data();
    void aNodeTakesItsNeighboursWithIt();
    void aNodeMayPassTheOppositeOne();
    void aRectangleThatIsNotMovableLetsPressesThrough();
    void aPersonDragsAnyPart_data();
    void aPersonDragsAnyPart();
    void onlyAPersonsDragsAreTold();
    void afterADragTheCornersHaveTheirNamesAgain();
    void aPressBesideItIsNone();
    void theCursorTellsWhatWouldBeDragged();
    void aRectangleTakenOutOfTheSceneDuringADragStays();
    void aRectangleThatMayMoveNoMoreEndsItsDrag();
    void theGripsOfThinRectangles_data();
    void theGripsOfThinRectangles();
};

namespace {
const QPointF Middle = SceneFixture::Middle;

QList<QPointF> Corners(const RectangleItem& item)
{
    QList<QPointF> corners;
    for (const ControlNode* node : item.nodes())
        corners << node->pos();
    return corners;
}

/// 200 x 100 pixels round the scene's middle, in the item's coordinates.
RectangleItem* AddRectangle(SceneFixture& fixture)
{
    auto* item = new RectangleItem;
    fixture.scene.addItem(item);
    item->setRect(QRectF(fixture.Beside(Middle, {-100, -50}), fixture.Beside(Middle, {100, 50})));
    item->setMovable(true);
    return item;
}
} // namespace

void TestRectangleItem::theNodesStandOnTheCorners()
{
    RectangleItem item;
    QCOMPARE(item.nodes().size(), 4);
    QCOMPARE(item.rect(), QRectF());
    item.setRect({10, 20, 30, 40});
    QCOMPARE(item.rect(), QRectF(10, 20, 30, 40));
    QCOMPARE(Corners(item), (QList<QPointF>{{10, 20}, {40, 20}, {40, 60}, {10, 60}}));
    QCOMPARE(item.path().boundingRect(), QRectF(10, 20, 30, 40));
    QVERIFY(!item.nodes().first()->isVisible());
    item.setMovable(true);
    QVERIFY(item.nodes().first()->isVisible());
}

void TestRectangleItem::aNodeTakesItsNeighboursWithIt_data()
{
    QTest::addColumn<int>("node");
    QTest::addColumn<QRectF>("expected");
    QTest::newRow("top left") << 0 << QRectF(QPointF(1, 2), QPointF(40, 60));
    QTest::newRow("top right") << 1 << QRectF(QPointF(10, 2), QPointF(11, 60));
    QTest::newRow("bottom right") << 2 << QRectF(QPointF(10, 20), QPointF(91, 92));
    QTest::newRow("bottom left") << 3 << QRectF(QPointF(1, 20), QPointF(40, 92));
}

void TestRectangleItem::aNodeTakesItsNeighboursWithIt()
{
    QFETCH(int, node);
    QFETCH(QRectF, expected);
    RectangleItem item;
    item.setRect({10, 20, 30, 40});
    const QList<QPointF> targets = {{1, 2}, {11, 2}, {91, 92}, {1, 92}};
    item.nodes().at(node)->setPos(targets.at(node));
    QCOMPARE(item.rect(), expected);
    QCOMPARE(Corners(item), (QList<QPointF>{expected.topLeft(), expected.topRight(), expected.bottomRight(),
                                            expected.bottomLeft()}));
    QCOMPARE(item.path().boundingRect(), expected);
}

void TestRectangleItem::aNodeMayPassTheOppositeOne()
{
    RectangleItem item;
    item.setRect({10, 10, 0, 0});
    item.nodes().at(2)->setPos(4, 30);
    QCOMPARE(item.rect(), QRectF(4, 10, 6, 20));
    // The fixed corner stays the one it was: coming back opens the rectangle to the other side.
    item.nodes().at(2)->setPos(14, 6);
    QCOMPARE(item.rect(), QRectF(10, 6, 4, 4));
    QCOMPARE(item.nodes().at(0)->pos(), QPointF(10, 10));
}

void TestRectangleItem::aRectangleThatIsNotMovableLetsPressesThrough()
{
    SceneFixture fixture;
    auto* const below = new QGraphicsRectItem(QRectF(-150, -90, 300, 180));
    below->setPos(Middle);
    below->setFlag(QGraphicsItem::ItemIsSelectable);
    fixture.scene.addItem(below);
    RectangleItem* const item = AddRectangle(fixture);
    item->setMovable(false);
    const QRectF before = item->rect();
    fixture.input.DragInScene(&fixture.view, {Middle, Middle + QPointF(20, 20)});
    QCOMPARE(item->rect(), before);
    QVERIFY(below->isSelected());
}

void TestRectangleItem::aPersonDragsAnyPart_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QRectF>("expected"); // pixels beside the middle, after a drag by (30, 20)
    for (const double scale : {0.05, 1.0, 40.0}) {
        const auto row = [&](const char* part) -> QTestData& {
            return QTest::addRow("%s at %g", part, scale);
        };
        row("inside") << scale << QPointF(20, 10) << QRectF(-70, -30, 200, 100);
        row("left") << scale << QPointF(-103, 10) << QRectF(-70, -50, 170, 100);
        row("top") << scale << QPointF(20, -47) << QRectF(-100, -30, 200, 80);
        row("right") << scale << QPointF(97, 10) << QRectF(-100, -50, 230, 100);
        row("bottom") << scale << QPointF(20, 54) << QRectF(-100, -50, 200, 120);
        row("top left") << scale << QPointF(-98, -52) << QRectF(-70, -30, 170, 80);
        row("bottom right") << scale << QPointF(104, 46) << QRectF(-100, -50, 230, 120);
    }
}

void TestRectangleItem::aPersonDragsAnyPart()
{
    QFETCH(double, scale);
    QFETCH(QPointF, from);
    QFETCH(QRectF, expected);
    SceneFixture fixture(scale);
    RectangleItem* const item = AddRectangle(fixture);
    QSignalSpy changes(item, &RectangleItem::rectChanged);
    fixture.input.DragInScene(&fixture.view,
                              {fixture.Beside(Middle, from), fixture.Beside(Middle, from + QPointF(30, 20))});
    const QPointF topLeft = fixture.Beside(Middle, expected.topLeft());
    const QPointF bottomRight = fixture.Beside(Middle, expected.bottomRight());
    QVERIFY(QLineF(item->rect().topLeft(), topLeft).length() * scale <= 1.5);
    QVERIFY(QLineF(item->rect().bottomRight(), bottomRight).length() * scale <= 1.5);
    QVERIFY(changes.count() >= 4);
    QCOMPARE(changes.last().first().toRectF(), item->rect());
}

void TestRectangleItem::onlyAPersonsDragsAreTold()
{
    RectangleItem item;
    QSignalSpy changes(&item, &RectangleItem::rectChanged);
    item.setRect({10, 20, 30, 40});
    item.nodes().at(2)->setPos(4, 30);
    item.setMovable(true);
    QCOMPARE(changes.count(), 0);
}

void TestRectangleItem::afterADragTheCornersHaveTheirNamesAgain()
{
    SceneFixture fixture;
    RectangleItem* const item = AddRectangle(fixture);
    const QPointF corner = Middle + QPointF(100, 50);
    fixture.input.DragInScene(&fixture.view, {corner, Middle + QPointF(-150, -80)});
    QCOMPARE(item->rect(), QRectF(Middle + QPointF(-150, -80), Middle + QPointF(-100, -50)));
    QCOMPARE(item->nodes().at(2)->pos(), item->rect().bottomRight());
    QCOMPARE(item->nodes().at(0)->pos(), item->rect().topLeft());
}

void TestRectangleItem::aPressBesideItIsNone()
{
    SceneFixture fixture;
    RectangleItem* const item = AddRectangle(fixture);
    const QRectF before = item->rect();
    fixture.input.DragInScene(&fixture.view, {Middle + QPointF(0, -60), Middle + QPointF(0, -90)});
    QCOMPARE(item->rect(), before);
    QVERIFY(!fixture.scene.mouseGrabberItem());
}

void TestRectangleItem::theCursorTellsWhatWouldBeDragged()
{
    SceneFixture fixture(2);
    RectangleItem* const item = AddRectangle(fixture);
    const auto cursorAt = [&](const QPointF& pixels) {
        fixture.input.MoveInScene(&fixture.view, fixture.Beside(Middle, pixels));
        return fixture.view.viewport()->cursor().shape();
    };
    QCOMPARE(cursorAt({0, 0}), Qt::SizeAllCursor);
    QCOMPARE(cursorAt({-100, 0}), Qt::SizeHorCursor);
    QCOMPARE(cursorAt({0, 52}), Qt::SizeVerCursor);
    QCOMPARE(cursorAt({100, 50}), Qt::SizeFDiagCursor);
    QCOMPARE(cursorAt({-100, 50}), Qt::SizeBDiagCursor);
    item->setMovable(false);
    QVERIFY(!item->hasCursor());
}

void TestRectangleItem::aRectangleTakenOutOfTheSceneDuringADragStays()
{
    SceneFixture fixture;
    const std::unique_ptr<RectangleItem> item(AddRectangle(fixture));
    fixture.input.PressInScene(&fixture.view, Middle);
    fixture.input.MoveInScene(&fixture.view, Middle + QPointF(10, 10));
    fixture.scene.removeItem(item.get());
    const QRectF left = item->rect();
    fixture.input.MoveInScene(&fixture.view, Middle + QPointF(40, 40));
    fixture.input.ReleaseInScene(&fixture.view, Middle + QPointF(40, 40));
    QCOMPARE(item->rect(), left);
}

void TestRectangleItem::aRectangleThatMayMoveNoMoreEndsItsDrag()
{
    SceneFixture fixture;
    RectangleItem* const item = AddRectangle(fixture);
    fixture.input.PressInScene(&fixture.view, Middle);
    fixture.input.MoveInScene(&fixture.view, Middle + QPointF(10, 10));
    item->setMovable(false);
    const QRectF left = item->rect();
    fixture.input.MoveInScene(&fixture.view, Middle + QPointF(40, 40));
    fixture.input.ReleaseInScene(&fixture.view, Middle + QPointF(40, 40));
    QCOMPARE(item->rect(), left);
}

void TestRectangleItem::theGripsOfThinRectangles_data()
{
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QSizeF>("pixel");
    QTest::addColumn<RectangleGrip>("expected");
    const QSizeF one(1, 1);
    QTest::newRow("the middle of 8 pixels")
        << QRectF(0, 0, 8, 100) << QPointF(4, 50) << one << RectangleGrip::Inside;
    QTest::newRow("the side of 8 pixels")
        << QRectF(0, 0, 8, 100) << QPointF(1, 50) << one << RectangleGrip::Left;
    QTest::newRow("outside 8 pixels")
        << QRectF(0, 0, 8, 100) << QPointF(12, 50) << one << RectangleGrip::Right;
    QTest::newRow("no width") << QRectF(5, 0, 0, 100) << QPointF(4, 50) << one << RectangleGrip::Left;
    QTest::newRow("no width, other side")
        << QRectF(5, 0, 0, 100) << QPointF(6, 50) << one << RectangleGrip::Right;
    QTest::newRow("pixels of 20 units")
        << QRectF(0, 0, 4000, 2000) << QPointF(-100, 1000) << QSizeF(20, 20) << RectangleGrip::Left;
    QTest::newRow("pixels that are no squares")
        << QRectF(0, 0, 400, 200) << QPointF(4, 3) << QSizeF(2, 0.6) << RectangleGrip::Left;
    QTest::newRow("far outside") << QRectF(0, 0, 80, 100) << QPointF(88, 50) << one << RectangleGrip::None;
}

void TestRectangleItem::theGripsOfThinRectangles()
{
    QFETCH(QRectF, rect);
    QFETCH(QPointF, point);
    QFETCH(QSizeF, pixel);
    QFETCH(RectangleGrip, expected);
    QCOMPARE(int(GripAt(rect, point, pixel)), int(expected));
}

ZK_REGISTER_TEST(tst_rectangleitem, TestRectangleItem)

#include "tst_rectangleitem.moc"
