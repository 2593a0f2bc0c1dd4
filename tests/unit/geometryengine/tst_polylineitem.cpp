#include "SceneFixture.h"

#include "geometryengine/ControlNode.h"
#include "geometryengine/PolylineItem.h"
#include "support/TestRegistry.h"

#include <QPainterPath>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

class TestPolylineItem : public QObject
{
    Q_OBJECT

private slots:
    void pointsMakeALineWithANodeOnEach();
    void nodesShowWhileTheyAreEdited();
    void theLineFollowsANodeThatIsSet();
    void theLineFollowsANodeThatIsDragged_data();
    void theLineFollowsANodeThatIsDragged();
    void aRemovedPointLeavesTheLine();
    void onlyOwnNodesAreRemoved();
    void aNodeMayBeRemovedByItsOwnSignal();
    void aDeletedNodeLeavesTheLine();
    void nodesAreSortedFromLeftToRight();
    void theItemTakesItsNodesWithIt();
    void anItemRemovedDuringADragIsHarmless();
};

namespace {
const QPointF Middle = SceneFixture::Middle;

/// The points of a path of straight lines.
QVector<QPointF> Points(const PolylineItem& item)
{
    QVector<QPointF> points;
    const QPainterPath path = item.path();
    for (int i = 0; i < path.elementCount(); ++i)
        points << path.elementAt(i);
    return points;
}
} // namespace

void TestPolylineItem::pointsMakeALineWithANodeOnEach()
{
    PolylineItem item;
    QVERIFY(item.nodes().isEmpty());
    const ControlNode* const first = item.addPoint({1, 2});
    const ControlNode* const second = item.addPoint({3, 4});
    const ControlNode* const third = item.addPoint({0, 9});
    QCOMPARE(item.nodes().size(), 3);
    QCOMPARE(item.nodes().at(0), first);
    QCOMPARE(item.nodes().at(1), second);
    QCOMPARE(item.nodes().at(2), third);
    QCOMPARE(Points(item), (QVector<QPointF>{{1, 2}, {3, 4}, {0, 9}}));
    QCOMPARE(first->pos(), QPointF(1, 2));
    QCOMPARE(first->parentItem(), &item);
}

void TestPolylineItem::nodesShowWhileTheyAreEdited()
{
    PolylineItem item;
    const ControlNode* const before = item.addPoint({1, 2});
    QVERIFY(!before->isVisible());
    item.editActivate(true);
    const ControlNode* const after = item.addPoint({3, 4});
    QVERIFY(before->isVisible() && after->isVisible());
    item.editActivate(false);
    QVERIFY(!before->isVisible() && !after->isVisible());
}

void TestPolylineItem::theLineFollowsANodeThatIsSet()
{
    PolylineItem item;
    ControlNode* const first = item.addPoint({1, 2});
    item.addPoint({1, 2});
    QSignalSpy moves(first, &ControlNode::positionChanged);
    first->setPos(7, 8);
    QCOMPARE(Points(item), (QVector<QPointF>{{7, 8}, {1, 2}}));
    QCOMPARE(moves.count(), 0);
    // Also while nobody is told.
    first->blockSignals(true);
    first->setPos(9, 9);
    QCOMPARE(Points(item), (QVector<QPointF>{{9, 9}, {1, 2}}));
}

void TestPolylineItem::theLineFollowsANodeThatIsDragged_data()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("0.05") << 0.05;
    QTest::newRow("1") << 1.0;
    QTest::newRow("40") << 40.0;
}

void TestPolylineItem::theLineFollowsANodeThatIsDragged()
{
    QFETCH(double, scale);
    SceneFixture fixture(scale);
    auto* const item = new PolylineItem;
    fixture.scene.addItem(item);
    item->setPos(Middle);
    item->editActivate(true);
    item->addPoint({0, 0});
    ControlNode* const end = item->addPoint(QPointF(100, 0) / scale);
    // The line stands already when the move is told.
    QPointF told;
    connect(end, &ControlNode::positionChanged, item, [&] { told = Points(*item).last(); });
    fixture.input.DragInScene(&fixture.view,
                              {fixture.Beside(Middle, {100, 0}), fixture.Beside(Middle, {60, -80})});
    QCOMPARE(Points(*item).first(), QPointF(0, 0));
    QCOMPARE(Points(*item).last(), end->pos());
    QCOMPARE(told, end->pos());
    QVERIFY(QLineF(end->pos() * scale, QPointF(60, -80)).length() <= 1.5);
}

void TestPolylineItem::aRemovedPointLeavesTheLine()
{
    SceneFixture fixture;
    auto* const item = new PolylineItem;
    fixture.scene.addItem(item);
    item->addPoint({1, 2});
    const QPointer<ControlNode> middle = item->addPoint({3, 4});
    item->addPoint({5, 6});
    QVERIFY(item->removePoint(middle));
    QCOMPARE(item->nodes().size(), 2);
    QCOMPARE(Points(*item), (QVector<QPointF>{{1, 2}, {5, 6}}));
    QVERIFY(!fixture.scene.items().contains(middle));
    QTRY_VERIFY(!middle);
    QCOMPARE(item->nodes().size(), 2);

    PolylineItem alone;
    QVERIFY(alone.removePoint(alone.addPoint({1, 2})));
    QVERIFY(alone.childItems().isEmpty());
}

void TestPolylineItem::onlyOwnNodesAreRemoved()
{
    PolylineItem item;
    PolylineItem other;
    item.addPoint({1, 2});
    ControlNode* const foreign = other.addPoint({1, 2});
    QVERIFY(!item.removePoint(foreign));
    QVERIFY(!item.removePoint(nullptr));
    QCOMPARE(item.nodes().size(), 1);
    QCOMPARE(other.nodes().size(), 1);
}

void TestPolylineItem::aNodeMayBeRemovedByItsOwnSignal()
{
    SceneFixture fixture;
    auto* const item = new PolylineItem;
    fixture.scene.addItem(item);
    item->editActivate(true);
    item->addPoint(Middle);
    ControlNode* const end = item->addPoint(Middle + QPointF(50, 0));
    connect(end, &ControlNode::positionChanged, item, [=](ControlNode* node) { item->removePoint(node); });
    fixture.input.DragInScene(&fixture.view, {Middle + QPointF(50, 0), Middle + QPointF(90, 0)});
    QCOMPARE(item->nodes().size(), 1);
}

void TestPolylineItem::aDeletedNodeLeavesTheLine()
{
    PolylineItem item;
    item.addPoint({1, 2});
    delete item.addPoint({3, 4});
    item.addPoint({5, 6});
    QCOMPARE(item.nodes().size(), 2);
    QCOMPARE(Points(item), (QVector<QPointF>{{1, 2}, {5, 6}}));
}

void TestPolylineItem::nodesAreSortedFromLeftToRight()
{
    PolylineItem item;
    ControlNode* const right = item.addPoint({9, 1});
    QList<ControlNode*> sorted;
    QVector<QPointF> points;
    // So many of one x that only a sort that keeps their order keeps it.
    for (int i = 0; i < 40; ++i) {
        points << QPointF(5, i * 7 % 40);
        sorted << item.addPoint(points.last());
    }
    sorted.prepend(item.addPoint({-1, 5}));
    sorted.append(right);
    points.prepend({-1, 5});
    points.append({9, 1});
    item.sortNodes();
    QCOMPARE(item.nodes(), sorted);
    QCOMPARE(Points(item), points);
}

void TestPolylineItem::theItemTakesItsNodesWithIt()
{
    auto item = std::make_unique<PolylineItem>();
    const QPointer<ControlNode> first = item->addPoint({1, 2});
    const QPointer<ControlNode> second = item->addPoint({3, 4});
    item.reset();
    QVERIFY(!first && !second);
}

void TestPolylineItem::anItemRemovedDuringADragIsHarmless()
{
    SceneFixture fixture;
    const QPointer<PolylineItem> item = new PolylineItem;
    fixture.scene.addItem(item);
    item->editActivate(true);
    item->addPoint(Middle);
    item->addPoint(Middle + QPointF(50, 0));
    fixture.input.PressInScene(&fixture.view, Middle);
    fixture.input.MoveInScene(&fixture.view, Middle + QPointF(10, 10));
    item->deleteLater();
    QTRY_VERIFY(!item);
    fixture.input.MoveInScene(&fixture.view, Middle + QPointF(20, 20));
    fixture.input.ReleaseInScene(&fixture.view, Middle + QPointF(20, 20));
    QVERIFY(fixture.scene.items().isEmpty());
    QVERIFY(!fixture.scene.mouseGrabberItem());
}

ZK_REGISTER_TEST(tst_polylineitem, TestPolylineItem)

#include "tst_polylineitem.moc"
