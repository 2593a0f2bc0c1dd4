#include "SceneFixture.h"

#include "geometryengine/ControlNode.h"
#include "support/TestRegistry.h"

#include <QFont>
#include <QGraphicsSceneMouseEvent>
#include <QPainterPath>
#include <QSignalSpy>
#include <QTest>

#include <cmath>

class TestControlNode : public QObject
{
    Q_OBJECT

private slots:
    void aNewNodeIsMovableSelectableAndTellsOfChanges();
    void aNodeKeepsItsSizeAtAnyScale_data();
    void aNodeKeepsItsSizeAtAnyScale();
    void aPressWithinTwelvePixelsHits_data();
    void aPressWithinTwelvePixelsHits();
    void aDragMovesTheNodeByItself_data();
    void aDragMovesTheNodeByItself();
    void aNodeInAnItemMovesInTheItemsCoordinates();
    void aNodeThatIsNotMovableTellsOfPressAndRelease();
    void onlyAPersonsMovesAreTold();
    void aHandlerMayPutTheNodeElsewhere();
    void blockedSignalsStaySilent();
    void theButtonsAreThoseHeldOnTheNode();
    void aRightPressIsForWhatLiesBelow();
    void theNearestOfSeveralNodesIsHit();
    void aNodeThatTakesNoPressHidesNoOther();
    void selectionIsTold();
    void aDragLeavesOtherSelectedNodesAlone();
    void aNodeTakenOutOfTheSceneDuringADragLetsGo();
    void aHiddenNodeLetsGo();
    void aNodeDeletedDuringADragIsHarmless();
    void aDragWhoseReleaseIsLostEnds();
    void containsAsksInTheViewUnderThePointer();
    void aViewOfAnotherScaleShowsTheSameNode();
    void aShapeIsDrawnAndMayBoundTheHits();
    void aLabelStandsBesideTheNode();
    void aSunkenNodeLooksOtherwise();
    void aNodeIsSeenOnAnyGround_data();
    void aNodeIsSeenOnAnyGround();
    void aMoveRepaintsTheNodesPlacesOnly();
};

namespace {
const QPointF Middle = SceneFixture::Middle;

void AddScales()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("0.05") << 0.05;
    QTest::newRow("1") << 1.0;
    QTest::newRow("40") << 40.0;
}

ControlNode* AddNode(SceneFixture& fixture, const QPointF& pos = Middle)
{
    auto* node = new ControlNode;
    fixture.scene.addItem(node);
    node->setPos(pos);
    return node;
}

/// Of the pixels that are not the ground.
QRect Inked(const QImage& image, const QColor& ground)
{
    QRect inked;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != ground) inked |= QRect(x, y, 1, 1);
        }
    }
    return inked;
}

QPainterPath Cross(double arm)
{
    QPainterPath cross;
    cross.moveTo(-arm, 0);
    cross.lineTo(arm, 0);
    cross.moveTo(0, -arm);
    cross.lineTo(0, arm);
    return cross;
}

/// A node that keeps what moves of it were told.
struct Moves
{
    explicit Moves(ControlNode* node)
    {
        QObject::connect(node, &ControlNode::positionChanged, node,
                         [this](ControlNode*, const QPointF& pos) { positions << pos; });
    }

    QVector<QPointF> positions;
};
} // namespace

void TestControlNode::aNewNodeIsMovableSelectableAndTellsOfChanges()
{
    const ControlNode node;
    QCOMPARE(node.type(), 0x10001);
    QVERIFY(node.flags() & QGraphicsItem::ItemIsMovable);
    QVERIFY(node.flags() & QGraphicsItem::ItemIsSelectable);
    QVERIFY(node.flags() & QGraphicsItem::ItemSendsGeometryChanges);
    QCOMPARE(node.mouseButtonState(), Qt::MouseButtons());
    QVERIFY(!node.isSunken());
}

void TestControlNode::aNodeKeepsItsSizeAtAnyScale_data()
{
    AddScales();
}

void TestControlNode::aNodeKeepsItsSizeAtAnyScale()
{
    QFETCH(double, scale);
    SceneFixture fixture(scale);
    fixture.view.setBackgroundBrush(Qt::white);
    AddNode(fixture);
    // On white the halo isn't seen: the square of 8 pixels is.
    const QRect inked = Inked(fixture.Shown(), Qt::white);
    QCOMPARE(inked.size(), QSize(8, 8));
    QCOMPARE(Inked(fixture.ShownAtRatio(2), Qt::white).size(), QSize(16, 16));
    QVERIFY(QRect(-1, -1, 2, 2).contains(inked.topLeft() + QPoint(4, 4) - fixture.view.mapFromScene(Middle)));
}

void TestControlNode::aPressWithinTwelvePixelsHits_data()
{
    AddScales();
}

void TestControlNode::aPressWithinTwelvePixelsHits()
{
    QFETCH(double, scale);
    SceneFixture fixture(scale);
    ControlNode* const node = AddNode(fixture);
    QSignalSpy presses(node, &ControlNode::mousePressed);
    for (const QPointF& direction : {QPointF(1, 0), QPointF(0, 1), QPointF(-1, 0), QPointF(0.6, -0.8)}) {
        fixture.input.ClickInScene(&fixture.view, fixture.Beside(Middle, direction * 11));
        QCOMPARE(presses.count(), 1);
        fixture.input.ClickInScene(&fixture.view, fixture.Beside(Middle, direction * 15));
        QCOMPARE(presses.count(), 1);
        presses.clear();
    }
}

void TestControlNode::aDragMovesTheNodeByItself_data()
{
    AddScales();
}

void TestControlNode::aDragMovesTheNodeByItself()
{
    QFETCH(double, scale);
    SceneFixture fixture(scale);
    ControlNode* const node = AddNode(fixture);
    const Moves moves(node);
    // Taken 5 pixels beside its middle, the node keeps this distance.
    const QPointF from = fixture.Beside(Middle, {5, 3});
    const QPointF to = fixture.Beside(Middle, {65, -37});
    fixture.input.DragInScene(&fixture.view, {from, to});
    const QPointF wanted = fixture.Beside(Middle, {60, -40});
    QVERIFY(QLineF(node->pos(), wanted).length() * scale < 1e-6 + 1.5);
    QCOMPARE(moves.positions.last(), node->pos());
    QVERIFY(moves.positions.size() >= 4);
}

void TestControlNode::aNodeInAnItemMovesInTheItemsCoordinates()
{
    SceneFixture fixture;
    auto* parent = new QGraphicsRectItem(0, 0, 10, 10);
    fixture.scene.addItem(parent);
    parent->setPos(Middle);
    parent->setScale(2);
    auto* node = new ControlNode(parent);
    node->setPos(10, 10);
    fixture.input.DragInScene(&fixture.view, {Middle + QPointF(20, 20), Middle + QPointF(60, 40)});
    QCOMPARE(node->pos(), QPointF(30, 20));
}

void TestControlNode::aNodeThatIsNotMovableTellsOfPressAndRelease()
{
    SceneFixture fixture;
    ControlNode* const node = AddNode(fixture);
    node->setFlag(QGraphicsItem::ItemIsMovable, false);
    node->setFlag(QGraphicsItem::ItemIsSelectable, false);
    QSignalSpy presses(node, &ControlNode::mousePressed);
    QSignalSpy releases(node, &ControlNode::mouseReleased);
    QSignalSpy moves(node, &ControlNode::positionChanged);
    fixture.input.PressInScene(&fixture.view, Middle);
    QCOMPARE(presses.count(), 1);
    QCOMPARE(presses.first().first().value<ControlNode*>(), node);
    QCOMPARE(node->mouseButtonState(), Qt::MouseButtons(Qt::LeftButton));
    fixture.input.MoveInScene(&fixture.view, Middle + QPointF(30, 30));
    QCOMPARE(releases.count(), 0);
    fixture.input.ReleaseInScene(&fixture.view, Middle + QPointF(30, 30));
    QCOMPARE(releases.count(), 1);
    QCOMPARE(moves.count(), 0);
    QCOMPARE(node->pos(), Middle);
}

void TestControlNode::onlyAPersonsMovesAreTold()
{
    SceneFixture fixture;
    ControlNode* const node = AddNode(fixture);
    QSignalSpy moves(node, &ControlNode::positionChanged);
    node->setPos(Middle + QPointF(1, 1));
    node->moveBy(2, 2);
    QCOMPARE(moves.count(), 0);
    fixture.input.PressInScene(&fixture.view, node->pos());
    node->setPos(Middle);
    QCOMPARE(moves.count(), 0);
}

void TestControlNode::aHandlerMayPutTheNodeElsewhere()
{
    SceneFixture fixture;
    ControlNode* const node = AddNode(fixture);
    int told = 0;
    connect(node, &ControlNode::positionChanged, node, [&](ControlNode* moved, const QPointF& pos) {
        ++told;
        moved->setPos(pos.x(), Middle.y());
    });
    fixture.input.PressInScene(&fixture.view, Middle);
    fixture.input.MoveInScene(&fixture.view, Middle + QPointF(30, 20));
    QCOMPARE(told, 1);
    QCOMPARE(node->pos(), Middle + QPointF(30, 0));
    // The pointer's way counts from the press, not from where the handler put the node.
    fixture.input.MoveInScene(&fixture.view, Middle + QPointF(40, 0));
    QCOMPARE(node->pos(), Middle + QPointF(40, 0));
}

void TestControlNode::blockedSignalsStaySilent()
{
    SceneFixture fixture;
    ControlNode* const node = AddNode(fixture);
    const Moves moves(node);
    node->blockSignals(true);
    fixture.input.DragInScene(&fixture.view, {Middle, Middle + QPointF(30, 20)});
    QCOMPARE(node->pos(), Middle + QPointF(30, 20));
    QVERIFY(moves.positions.isEmpty());
}

void TestControlNode::theButtonsAreThoseHeldOnTheNode()
{
    SceneFixture fixture;
    ControlNode* const node = AddNode(fixture);
    fixture.input.PressInScene(&fixture.view, Middle);
    QCOMPARE(int(node->mouseButtonState()), 1);
    fixture.input.PressInScene(&fixture.view, Middle, Qt::RightButton);
    QCOMPARE(int(node->mouseButtonState()), 3);
    QSignalSpy releases(node, &ControlNode::mouseReleased);
    fixture.input.ReleaseInScene(&fixture.view, Middle, Qt::RightButton);
    QCOMPARE(int(node->mouseButtonState()), 1);
    QCOMPARE(releases.count(), 0);
    fixture.input.ReleaseInScene(&fixture.view, Middle);
    QCOMPARE(int(node->mouseButtonState()), 0);
    QCOMPARE(releases.count(), 1);
    // Held beside the node, a button is none of the node's.
    fixture.input.PressInScene(&fixture.view, Middle + QPointF(60, 0));
    fixture.input.MoveInScene(&fixture.view, Middle);
    QCOMPARE(int(node->mouseButtonState()), 0);
}

void TestControlNode::aRightPressIsForWhatLiesBelow()
{
    SceneFixture fixture;
    ControlNode* const node = AddNode(fixture);
    QSignalSpy presses(node, &ControlNode::mousePressed);
    fixture.input.PressInScene(&fixture.view, Middle, Qt::RightButton);
    QCOMPARE(presses.count(), 0);
    QVERIFY(!fixture.scene.mouseGrabberItem());
}

void TestControlNode::theNearestOfSeveralNodesIsHit()
{
    SceneFixture fixture(4);
    ControlNode* const left = AddNode(fixture);
    ControlNode* const right = AddNode(fixture, fixture.Beside(Middle, {9, 0}));
    QSignalSpy leftPresses(left, &ControlNode::mousePressed);
    QSignalSpy rightPresses(right, &ControlNode::mousePressed);
    // The right one is on top of all these points.
    fixture.input.ClickInScene(&fixture.view, fixture.Beside(Middle, {2, 1}));
    QCOMPARE(leftPresses.count(), 1);
    QCOMPARE(rightPresses.count(), 0);
    fixture.input.ClickInScene(&fixture.view, fixture.Beside(Middle, {7, 1}));
    QCOMPARE(leftPresses.count(), 1);
    QCOMPARE(rightPresses.count(), 1);
}

void TestControlNode::aNodeThatTakesNoPressHidesNoOther()
{
    SceneFixture fixture;
    ControlNode* const disabled = AddNode(fixture);
    ControlNode* const deaf = AddNode(fixture);
    ControlNode* const node = AddNode(fixture, Middle + QPointF(4, 0));
    disabled->setEnabled(false);
    deaf->setAcceptedMouseButtons(Qt::NoButton);
    QSignalSpy presses(node, &ControlNode::mousePressed);
    fixture.input.ClickInScene(&fixture.view, Middle);
    QCOMPARE(presses.count(), 1);
}

void TestControlNode::selectionIsTold()
{
    SceneFixture fixture;
    ControlNode* const node = AddNode(fixture);
    ControlNode* const other = AddNode(fixture, Middle + QPointF(60, 0));
    QSignalSpy changes(node, &ControlNode::itemSelectionChange);
    fixture.input.ClickInScene(&fixture.view, Middle);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.first().first().value<ControlNode*>(), node);
    QCOMPARE(changes.takeFirst().at(1).toBool(), true);
    fixture.input.ClickInScene(&fixture.view, other->pos());
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.takeFirst().at(1).toBool(), false);
    node->setSelected(true);
    QCOMPARE(changes.count(), 1);
}

void TestControlNode::aDragLeavesOtherSelectedNodesAlone()
{
    SceneFixture fixture;
    ControlNode* const node = AddNode(fixture);
    ControlNode* const other = AddNode(fixture, Middle + QPointF(60, 0));
    node->setSelected(true);
    other->setSelected(true);
    fixture.input.DragInScene(&fixture.view, {Middle, Middle + QPointF(0, 40)});
    QCOMPARE(node->pos(), Middle + QPointF(0, 40));
    QCOMPARE(other->pos(), Middle + QPointF(60, 0));
}

void TestControlNode::aNodeTakenOutOfTheSceneDuringADragLetsGo()
{
    SceneFixture fixture;
    const std::unique_ptr<ControlNode> node(AddNode(fixture));
    QSignalSpy releases(node.get(), &ControlNode::mouseReleased);
    fixture.input.PressInScene(&fixture.view, Middle);
    fixture.input.MoveInScene(&fixture.view, Middle + QPointF(10, 10));
    fixture.scene.removeItem(node.get());
    QCOMPARE(int(node->mouseButtonState()), 0);
    QCOMPARE(releases.count(), 1);
    const QPointF left = node->pos();
    fixture.input.MoveInScene(&fixture.view, Middle + QPointF(30, 30));
    fixture.input.ReleaseInScene(&fixture.view, Middle + QPointF(30, 30));
    QCOMPARE(node->pos(), left);
    QCOMPARE(releases.count(), 1);
}

void TestControlNode::aHiddenNodeLetsGo()
{
    SceneFixture fixture;
    ControlNode* const node = AddNode(fixture);
    QSignalSpy releases(node, &ControlNode::mouseReleased);
    connect(node, &ControlNode::positionChanged, node, [=] { node->setVisible(false); });
    fixture.input.DragInScene(&fixture.view, {Middle, Middle + QPointF(0, 40)});
    QCOMPARE(int(node->mouseButtonState()), 0);
    QCOMPARE(releases.count(), 1);
}

void TestControlNode::aNodeDeletedDuringADragIsHarmless()
{
    SceneFixture fixture;
    QPointer<ControlNode> node = AddNode(fixture);
    connect(node, &ControlNode::positionChanged, node, [&] { node->deleteLater(); });
    fixture.input.PressInScene(&fixture.view, Middle);
    fixture.input.MoveInScene(&fixture.view, Middle + QPointF(10, 10));
    QTRY_VERIFY(!node);
    fixture.input.MoveInScene(&fixture.view, Middle + QPointF(20, 20));
    fixture.input.ReleaseInScene(&fixture.view, Middle + QPointF(20, 20));
    QVERIFY(fixture.scene.items().isEmpty());
}

void TestControlNode::aDragWhoseReleaseIsLostEnds()
{
    SceneFixture fixture;
    ControlNode* const node = AddNode(fixture);
    QSignalSpy releases(node, &ControlNode::mouseReleased);
    fixture.input.PressInScene(&fixture.view, Middle);
    QGraphicsSceneMouseEvent move(QEvent::GraphicsSceneMouseMove);
    move.setScenePos(Middle + QPointF(50, 0));
    move.setButtons(Qt::NoButton);
    fixture.scene.sendEvent(node, &move);
    QCOMPARE(releases.count(), 1);
    QCOMPARE(node->pos(), Middle);
}

void TestControlNode::containsAsksInTheViewUnderThePointer()
{
    SceneFixture fixture(40);
    ControlNode* const node = AddNode(fixture);
    const auto isHit = [&](const QPointF& pixels) {
        return node->contains(node->mapFromScene(fixture.Beside(Middle, pixels)));
    };
    QVERIFY(isHit({0, 0}));
    QVERIFY(isHit({0, 11}));
    QVERIFY(!isHit({0, 13}));
    QVERIFY(!isHit({-9, 9}));

    QGraphicsView far(&fixture.scene);
    far.scale(0.05, 0.05);
    far.setGeometry(420, 0, 200, 200);
    far.show();
    QVERIFY(QTest::qWaitForWindowExposed(&far));
    fixture.input.Move(far.viewport(), {100, 100});
    QVERIFY(isHit({0, 13}));
    QVERIFY(!node->contains(node->mapFromScene(Middle + QPointF(0, 13 / 0.05))));
}

void TestControlNode::aViewOfAnotherScaleShowsTheSameNode()
{
    SceneFixture fixture;
    ControlNode* const node = AddNode(fixture);
    QGraphicsView far(&fixture.scene);
    far.setBackgroundBrush(Qt::white);
    far.setFrameShape(QFrame::NoFrame);
    far.scale(0.1, 0.1);
    far.setGeometry(420, 0, 200, 200);
    far.centerOn(Middle);
    far.show();
    QVERIFY(QTest::qWaitForWindowExposed(&far));
    QCOMPARE(Inked(far.viewport()->grab().toImage(), Qt::white).size(), QSize(8, 8));
    fixture.input.DragInScene(&far, {Middle, Middle + QPointF(300, 0)});
    QVERIFY(QLineF(node->pos(), Middle + QPointF(300, 0)).length() <= 15);
}

void TestControlNode::aShapeIsDrawnAndMayBoundTheHits()
{
    SceneFixture fixture(0.5);
    fixture.view.setBackgroundBrush(Qt::white);
    ControlNode* const node = AddNode(fixture);
    node->setNodeShape(Cross(5));
    const QRect inked = Inked(fixture.Shown(), Qt::white);
    QVERIFY(inked.width() >= 10 && inked.width() <= 12);
    const auto isHit = [&](const QPointF& pixels) {
        return node->contains(node->mapFromScene(fixture.Beside(Middle, pixels)));
    };
    QVERIFY(isHit({0, 11}));
    node->useShapeAsBoundRect(true);
    QVERIFY(isHit({4, 4}));
    QVERIFY(!isHit({0, 7}));
    node->setNodeShape(QPainterPath());
    QCOMPARE(Inked(fixture.Shown(), Qt::white).size(), QSize(8, 8));
    QVERIFY(isHit({3, 3}));
    QVERIFY(!isHit({0, 6}));
}

void TestControlNode::aLabelStandsBesideTheNode()
{
    SceneFixture fixture;
    fixture.view.setBackgroundBrush(Qt::white);
    ControlNode* const node = AddNode(fixture);
    const QRect bare = Inked(fixture.Shown(), Qt::white);
    QFont font;
    font.setPointSize(8);
    node->setLabel("12", font);
    QCOMPARE(node->label(), QString("12"));
    const QRect labelled = Inked(fixture.Shown(), Qt::white);
    QCOMPARE(labelled.topLeft(), bare.topLeft());
    QVERIFY(labelled.right() >= bare.right() + 8);
    QVERIFY(labelled.bottom() > bare.bottom());
    QVERIFY(node->boundingRect().contains(QRectF(labelled.translated(-fixture.view.mapFromScene(Middle)))));
    QVERIFY(!node->contains(QPointF(labelled.right(), labelled.bottom()) - QPointF(200, 150)));
    node->setLabel(QString(), font);
    QCOMPARE(Inked(fixture.Shown(), Qt::white), bare);
}

void TestControlNode::aSunkenNodeLooksOtherwise()
{
    for (const bool inverse : {false, true}) {
        SceneFixture fixture;
        fixture.view.setBackgroundBrush(Qt::white);
        ControlNode* const node = AddNode(fixture);
        node->useInverseColor(inverse);
        const QPoint middle = fixture.view.mapFromScene(Middle);
        QCOMPARE(fixture.Shown().pixelColor(middle), QColor(Qt::white));
        node->setSunken(true);
        QVERIFY(node->isSunken());
        QVERIFY(fixture.Shown().pixelColor(middle).lightness() < 40);
    }
}

void TestControlNode::aNodeIsSeenOnAnyGround_data()
{
    QTest::addColumn<QColor>("ground");
    QTest::addColumn<bool>("inverse");
    for (const bool inverse : {false, true}) {
        const char* kind = inverse ? "inverse" : "plain";
        QTest::addRow("%s on white", kind) << QColor(Qt::white) << inverse;
        QTest::addRow("%s on black", kind) << QColor(Qt::black) << inverse;
        QTest::addRow("%s on middle gray", kind) << QColor(128, 128, 128) << inverse;
        QTest::addRow("%s on the sky", kind) << QColor(120, 150, 235) << inverse;
    }
}

void TestControlNode::aNodeIsSeenOnAnyGround()
{
    QFETCH(QColor, ground);
    QFETCH(bool, inverse);
    SceneFixture fixture;
    fixture.view.setBackgroundBrush(ground);
    ControlNode* const node = AddNode(fixture);
    node->useInverseColor(inverse);
    const QImage shown = fixture.Shown();
    const QRect inked = Inked(shown, ground);
    QVERIFY(inked.width() >= 6 && inked.width() <= 10);
    // Somewhere on a row through the middle the node is far from the ground.
    int difference = 0;
    const QPoint middle = fixture.view.mapFromScene(Middle);
    for (int x = middle.x() - 6; x < middle.x() + 6; ++x)
        difference = qMax(difference, qAbs(qGray(shown.pixel(x, middle.y())) - qGray(ground.rgb())));
    QVERIFY2(difference >= 94, qPrintable(QString::number(difference)));
}

void TestControlNode::aMoveRepaintsTheNodesPlacesOnly()
{
    SceneFixture fixture(2);
    fixture.view.setViewportUpdateMode(QGraphicsView::MinimalViewportUpdate);
    ControlNode* const node = AddNode(fixture);
    QCoreApplication::processEvents();
    PaintedRegion painted(fixture.view.viewport());
    const QPointF to = fixture.Beside(Middle, {100, 100});
    node->setPos(to);
    QTRY_VERIFY(!painted.region.isEmpty());
    const QRect reach(-16, -16, 32, 32);
    const QPoint before = fixture.view.mapFromScene(Middle);
    const QPoint after = fixture.view.mapFromScene(to);
    const QRegion places = QRegion(reach.translated(before)) + reach.translated(after);
    QVERIFY((painted.region - places).isEmpty());
    QVERIFY(painted.region.contains(before) && painted.region.contains(after));
}

ZK_REGISTER_TEST(tst_controlnode, TestControlNode)

#include "tst_controlnode.moc"
