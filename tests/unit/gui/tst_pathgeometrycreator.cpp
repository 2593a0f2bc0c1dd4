#include "ViewFixture.h"

#include "geometryengine/ControlNode.h"
#include "gui/PathGeometryCreator.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QGraphicsSceneMouseEvent>
#include <QPointer>
#include <QTest>

using namespace ViewFixture;

namespace {
/// Uses the creator as a pen does: a press adds an anchor or, near the first one, closes the path; each move
/// with the button down copies the path.
class Pen : public QObject
{
public:
    explicit Pen(double scale = 1) : document(GuiFixture::MakeDocument({200, 150})), view(ShowView(document))
    {
        view->Zoom(scale, Middle(*view), false);
        view->scene()->installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::GraphicsSceneMousePress) {
            const auto* mouse = static_cast<const QGraphicsSceneMouseEvent*>(event);
            if (mouse->button() != Qt::LeftButton) return false;
            ++presses;
            OnPress(mouse->scenePos(), mouse->modifiers());
        } else if (event->type() == QEvent::GraphicsSceneMouseMove && creator) {
            if (static_cast<const QGraphicsSceneMouseEvent*>(event)->buttons())
                copies.append(creator->GetPath());
        } else if (event->type() == QEvent::GraphicsSceneMouseRelease && creator) {
            released = creator->GetPath();
        }
        return false;
    }

    void OnPress(QPointF scenePos, Qt::KeyboardModifiers modifiers)
    {
        if (!creator) {
            creator = new PathGeometryCreator;
            creator->setZValue(1);
            view->scene()->addItem(creator);
        }
        if (creator->GetPointCount() > 0) {
            const QPointF first = creator->GetPath().first().GetCenterPoint();
            if (QLineF(Pixel(first), Pixel(scenePos)).length() < 5) scenePos = first;
        }
        creator->AddPoint(scenePos);
        const int last = creator->GetPointCount() - 1;
        creator->SetCurrentEditNodeIndex(last);
        if (modifiers & Qt::AltModifier) {
            creator->RemoveInGuide(last);
            creator->RemoveOutGuide(last);
            if (last > 0) creator->RemoveOutGuide(last - 1);
            creator->InvalidatePath();
        }
        if (last > 0 && scenePos == creator->GetPath().first().GetCenterPoint())
            creator->SetCurrentEditNodeIndex(last);
    }

    QPointF Scene(const QPointF& pixel) const { return PointAt(*view, pixel); }

    QPointF Pixel(const QPointF& scene) const { return view->viewportTransform().map(scene); }

    void Click(const QPoint& pixel, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        input.Click(view->viewport(), pixel, Qt::LeftButton, modifiers);
    }

    void Drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        input.Drag(view->viewport(), {from, to}, Qt::LeftButton, modifiers);
    }

    QList<ControlNode*> Handles() const
    {
        QList<ControlNode*> handles;
        for (QGraphicsItem* item : creator->childItems()) {
            if (item->isVisible()) handles.append(static_cast<ControlNode*>(item));
        }
        return handles;
    }

    GuiFixture::OwnedDocument document;
    std::unique_ptr<ZKDocumentView> view;
    QPointer<PathGeometryCreator> creator;
    InputDriver input;
    int presses = 0;
    QList<LXPath> copies; ///< taken at each move
    LXPath released;
};

const QPoint First(100, 100);
const QPoint Second(250, 120);
const QPoint Third(180, 220);

bool AreSame(const QPointF& a, const QPointF& b)
{
    return a.x() == b.x() && a.y() == b.y();
}
} // namespace

#define COMPARE_PIXELS(pen, scene, pixel) COMPARE_POINTS((pen).Pixel(scene), QPointF(pixel), 0.01)

/// The item with which a path is drawn anchor by anchor.
class TestPathGeometryCreator : public QObject
{
    Q_OBJECT

private slots:
    void aPathComesBackToTheLastBit();
    void anAddedPointIsACorner();
    void theLastPointMovesExactly();
    void pointsOfNoPathAreHarmless();
    void removedGuidesComeBack();
    void aGuideFitsAnAnchorThatHasMovedInBetween();
    void guidesAreShownWhenThePathIsInvalidated();
    void clicksDrawCorners_data();
    void clicksDrawCorners();
    void aDragBendsTheNewAnchor_data();
    void aDragBendsTheNewAnchor();
    void aFilterOfTheSceneReadsTheBentPath();
    void theReleaseChangesNothing();
    void oneMoveOfAHandThatSlipsBendsNothing();
    void altKeepsTheInGuideOfABrokenAnchor();
    void shiftSnapsTheGuides();
    void anAltPressMakesACorner();
    void aMoveWithoutAButtonBendsNothing();
    void otherButtonsBendNothing();
    void anAnchorChosenWithoutAPressIsNotBent();
    void theClosingAnchorTakesTheFirstOnesGuide();
    void aClosingDragBendsBothSides();
    void anAltPressClosesWithACorner();
    void theNodeUnderThePointerIsTheLastOne();
    void theCurrentAnchorStaysThroughMakeFromPath();
    void aCreatorDroppedDuringAPressIsHarmless();
    void theFirstPressIsHeardOnce();
    void itTakesNoMouseEventsFromOthers();
};

void TestPathGeometryCreator::aPathComesBackToTheLastBit()
{
    PathGeometryCreator creator;
    LXPath path;
    for (int i = 0; i < 7; ++i) {
        creator.MakeFromPath(path);
        QVERIFY(creator.GetPath() == path);
        QCOMPARE(creator.GetPointCount(), i);
        path.append(LXPathElement({i / 3.0, i * 7.7}, {-i / 11.0, 1e9 / 3}, {i * 1e-9, i / 7.0}));
    }
}

void TestPathGeometryCreator::anAddedPointIsACorner()
{
    PathGeometryCreator creator;
    creator.AddPoint({3, 4});
    creator.AddPoint({5, 6});
    QVERIFY(creator.GetPath() == LXPath({LXPathElement({3, 4}), LXPathElement({5, 6})}));
    QVERIFY(creator.GetPointAt(1) == LXPathElement({5, 6}));
    creator.RemoveLastPoint();
    QVERIFY(creator.GetPath() == LXPath({LXPathElement({3, 4})}));
}

void TestPathGeometryCreator::theLastPointMovesExactly()
{
    PathGeometryCreator creator;
    creator.MakeFromPath({LXPathElement({0.1, 0.7}), LXPathElement({0.3, 0.9}, {0.3, 0.9}, {2.3, 3.9})});
    // Places that the sum of an old place and a way often misses by the last bit.
    for (int i = 1; i <= 100; ++i) {
        const QPointF place(i % 2 == 0 ? 1e6 / i : 1.0 / i, 7.7 / i);
        creator.MoveLastPoint(place);
        const LXPathElement last = creator.GetPointAt(1);
        QVERIFY(AreSame(last.GetCenterPoint(), place));
        QVERIFY(AreSame(last.GetInGuide(), place));
        COMPARE_POINTS(last.GetOutGuide(), place + QPointF(2, 3), 1e-6);
    }
    QVERIFY(creator.GetPointAt(0) == LXPathElement({0.1, 0.7}));
}

void TestPathGeometryCreator::pointsOfNoPathAreHarmless()
{
    PathGeometryCreator creator;
    creator.MoveLastPoint({1, 1});
    creator.RemoveLastPoint();
    creator.SetCurrentEditNodeIndex(0);
    creator.RestoreInGuide(0, {1, 1});
    creator.RestoreOutGuide(-1, {1, 1});
    QCOMPARE(creator.RemoveInGuide(0), QPointF());
    QCOMPARE(creator.RemoveOutGuide(-1), QPointF());
    QVERIFY(creator.GetPointAt(0) == LXPathElement());
    QCOMPARE(creator.GetPointCount(), 0);
}

void TestPathGeometryCreator::removedGuidesComeBack()
{
    PathGeometryCreator creator;
    const LXPath path = {LXPathElement({10, 10}, {4, 8}, {16, 12}),
                         LXPathElement({30, 10}, {22, 5}, {38, 15})};
    creator.MakeFromPath(path);
    QCOMPARE(creator.RemoveInGuide(1), QPointF(-8, -5));
    QCOMPARE(creator.RemoveOutGuide(1), QPointF(8, 5));
    QCOMPARE(creator.RemoveOutGuide(0), QPointF(6, 2));
    QVERIFY(creator.GetPath() ==
            LXPath({LXPathElement({10, 10}, {4, 8}, {10, 10}), LXPathElement({30, 10})}));
    QCOMPARE(creator.RemoveInGuide(1), QPointF());
    creator.RestoreInGuide(1, {-8, -5});
    creator.RestoreOutGuide(1, {8, 5});
    creator.RestoreOutGuide(0, {6, 2});
    QVERIFY(creator.GetPath() == path);
}

void TestPathGeometryCreator::aGuideFitsAnAnchorThatHasMovedInBetween()
{
    PathGeometryCreator creator;
    creator.MakeFromPath({LXPathElement({10, 10}), LXPathElement({30, 10}, {22, 5}, {30, 10})});
    const QPointF in = creator.RemoveInGuide(1);
    const QPointF out = creator.RemoveOutGuide(1);
    creator.MoveLastPoint({100, 40});
    creator.RestoreInGuide(1, in);
    creator.RestoreOutGuide(1, out);
    QVERIFY(creator.GetPointAt(1) == LXPathElement({100, 40}, {92, 35}, {100, 40}));
}

void TestPathGeometryCreator::guidesAreShownWhenThePathIsInvalidated()
{
    Pen pen;
    pen.Drag(First, First + QPoint(40, 0));
    QCOMPARE(pen.Handles().size(), 3);
    pen.creator->RemoveInGuide(0);
    pen.creator->RemoveOutGuide(0);
    pen.creator->InvalidatePath();
    QCOMPARE(pen.Handles().size(), 1);
    pen.creator->RestoreOutGuide(0, {5, 5});
    pen.creator->InvalidatePath();
    QCOMPARE(pen.Handles().size(), 2);
}

void TestPathGeometryCreator::clicksDrawCorners_data()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("0.05") << 0.05;
    QTest::newRow("1") << 1.0;
    QTest::newRow("40") << 40.0;
}

void TestPathGeometryCreator::clicksDrawCorners()
{
    QFETCH(double, scale);
    Pen pen(scale);
    pen.Click(First);
    pen.Click(Second);
    pen.Click(Third);
    const QList<QPoint> places = {First, Second, Third};
    for (int i = 0; i < 3; ++i) {
        const LXPathElement element = pen.creator->GetPointAt(i);
        COMPARE_PIXELS(pen, element.GetCenterPoint(), places[i]);
        QVERIFY(element == LXPathElement(element.GetCenterPoint()));
    }
    QCOMPARE(pen.Handles().size(), 3);
}

void TestPathGeometryCreator::aDragBendsTheNewAnchor_data()
{
    clicksDrawCorners_data();
}

void TestPathGeometryCreator::aDragBendsTheNewAnchor()
{
    QFETCH(double, scale);
    Pen pen(scale);
    pen.Drag(First, First + QPoint(30, -20));
    pen.Drag(Second, Second + QPoint(-10, 40));
    const LXPathElement first = pen.creator->GetPointAt(0);
    COMPARE_PIXELS(pen, first.GetCenterPoint(), First);
    COMPARE_PIXELS(pen, first.GetOutGuide(), First + QPoint(30, -20));
    COMPARE_PIXELS(pen, first.GetInGuide(), First - QPoint(30, -20));
    const LXPathElement second = pen.creator->GetPointAt(1);
    COMPARE_PIXELS(pen, second.GetOutGuide(), Second + QPoint(-10, 40));
    COMPARE_PIXELS(pen, second.GetInGuide(), Second - QPoint(-10, 40));
    QCOMPARE(pen.creator->GetPointCount(), 2);
}

void TestPathGeometryCreator::aFilterOfTheSceneReadsTheBentPath()
{
    Pen pen;
    pen.input.Press(pen.view->viewport(), First);
    for (const QPoint& way : {QPoint(10, 0), QPoint(20, 10), QPoint(-5, 30)}) {
        pen.input.Move(pen.view->viewport(), First + way);
        COMPARE_PIXELS(pen, pen.copies.last()[0].GetOutGuide(), First + way);
    }
    pen.input.Release(pen.view->viewport(), First + QPoint(-5, 30));
}

void TestPathGeometryCreator::theReleaseChangesNothing()
{
    Pen pen;
    pen.Drag(First, First + QPoint(30, -20));
    QVERIFY(pen.released == pen.creator->GetPath());
    QVERIFY(pen.released == pen.copies.last());
    const LXPath drawn = pen.creator->GetPath();
    pen.input.Move(pen.view->viewport(), Second);
    QVERIFY(pen.creator->GetPath() == drawn);
}

void TestPathGeometryCreator::oneMoveOfAHandThatSlipsBendsNothing()
{
    Pen pen;
    pen.Drag(First, First + QPoint(1, -1));
    QVERIFY(pen.creator->GetPointAt(0) == LXPathElement(pen.creator->GetPointAt(0).GetCenterPoint()));
}

void TestPathGeometryCreator::altKeepsTheInGuideOfABrokenAnchor()
{
    Pen pen;
    QWidget* viewport = pen.view->viewport();
    pen.input.Press(viewport, First);
    pen.input.Move(viewport, First + QPoint(30, 0));
    pen.input.HoldModifiers(Qt::AltModifier);
    pen.input.Move(viewport, First + QPoint(0, 40));
    pen.input.Release(viewport, First + QPoint(0, 40));
    pen.input.HoldModifiers(Qt::NoModifier);
    COMPARE_PIXELS(pen, pen.creator->GetPointAt(0).GetInGuide(), First - QPoint(30, 0));
    COMPARE_PIXELS(pen, pen.creator->GetPointAt(0).GetOutGuide(), First + QPoint(0, 40));
}

void TestPathGeometryCreator::shiftSnapsTheGuides()
{
    Pen pen;
    pen.Drag(First, First + QPoint(40, 6), Qt::ShiftModifier);
    COMPARE_PIXELS(pen, pen.creator->GetPointAt(0).GetOutGuide(), First + QPoint(40, 0));
    COMPARE_PIXELS(pen, pen.creator->GetPointAt(0).GetInGuide(), First - QPoint(40, 0));
}

void TestPathGeometryCreator::anAltPressMakesACorner()
{
    Pen pen;
    pen.Drag(First, First + QPoint(30, -20));
    pen.Click(Second, Qt::AltModifier);
    COMPARE_PIXELS(pen, pen.creator->GetPointAt(0).GetOutGuide(), First);
    COMPARE_PIXELS(pen, pen.creator->GetPointAt(0).GetInGuide(), First - QPoint(30, -20));
    QVERIFY(pen.creator->GetPointAt(1) == LXPathElement(pen.creator->GetPointAt(1).GetCenterPoint()));
}

void TestPathGeometryCreator::aMoveWithoutAButtonBendsNothing()
{
    Pen pen;
    pen.Click(First);
    const LXPath drawn = pen.creator->GetPath();
    pen.input.Move(pen.view->viewport(), Second);
    pen.input.Move(pen.view->viewport(), Third);
    QVERIFY(pen.creator->GetPath() == drawn);
}

void TestPathGeometryCreator::otherButtonsBendNothing()
{
    Pen pen;
    pen.Click(First);
    const LXPath drawn = pen.creator->GetPath();
    pen.input.Drag(pen.view->viewport(), {Second, Third}, Qt::RightButton);
    QVERIFY(pen.creator->GetPath() == drawn);
    // Nor does the left one together with another.
    pen.input.Press(pen.view->viewport(), Second);
    const LXPath pressed = pen.creator->GetPath();
    pen.input.Press(pen.view->viewport(), Second, Qt::RightButton);
    pen.input.Move(pen.view->viewport(), Third);
    QVERIFY(pen.creator->GetPath() == pressed);
    pen.input.Release(pen.view->viewport(), Third, Qt::RightButton);
    pen.input.Release(pen.view->viewport(), Third);
}

void TestPathGeometryCreator::anAnchorChosenWithoutAPressIsNotBent()
{
    Pen pen;
    pen.Click(First);
    pen.Click(Second);
    pen.creator->SetCurrentEditNodeIndex(0);
    pen.view->scene()->removeEventFilter(&pen);
    const LXPath drawn = pen.creator->GetPath();
    pen.Drag(Third, First);
    QVERIFY(pen.creator->GetPath() == drawn);
}

void TestPathGeometryCreator::theClosingAnchorTakesTheFirstOnesGuide()
{
    Pen pen;
    pen.Drag(First, First + QPoint(30, -20));
    pen.Click(Second);
    pen.Click(Third);
    const LXPathElement first = pen.creator->GetPointAt(0);
    pen.Click(First + QPoint(2, -2));
    QCOMPARE(pen.creator->GetPointCount(), 4);
    const LXPathElement last = pen.creator->GetPointAt(3);
    QVERIFY(AreSame(last.GetCenterPoint(), first.GetCenterPoint()));
    QVERIFY(AreSame(last.GetInGuide(), first.GetInGuide()));
    QVERIFY(pen.creator->GetPointAt(0) == first);
    // One handle stands for both ends.
    QCOMPARE(pen.Handles().size(), 3 + 2);
}

void TestPathGeometryCreator::aClosingDragBendsBothSides()
{
    Pen pen;
    pen.Click(First);
    pen.Click(Second);
    pen.Click(Third);
    pen.Drag(First, First + QPoint(20, -30));
    COMPARE_PIXELS(pen, pen.creator->GetPointAt(0).GetOutGuide(), First + QPoint(20, -30));
    COMPARE_PIXELS(pen, pen.creator->GetPointAt(3).GetInGuide(), First - QPoint(20, -30));
}

void TestPathGeometryCreator::anAltPressClosesWithACorner()
{
    Pen pen;
    pen.Drag(First, First + QPoint(30, -20));
    pen.Click(Second);
    pen.Click(Third);
    const LXPathElement first = pen.creator->GetPointAt(0);
    pen.Click(First, Qt::AltModifier);
    QVERIFY(pen.creator->GetPointAt(3) == LXPathElement(first.GetCenterPoint()));
    QVERIFY(pen.creator->GetPointAt(0) == first);
}

void TestPathGeometryCreator::theNodeUnderThePointerIsTheLastOne()
{
    // With a rubber band the last anchor follows the pointer until a press fixes it.
    Pen pen;
    pen.Click(First);
    pen.creator->AddPoint(pen.Scene(Second));
    pen.creator->MoveLastPoint(pen.Scene(Third));
    pen.creator->SetCurrentEditNodeIndex(0);
    COMPARE_PIXELS(pen, pen.creator->GetPointAt(1).GetCenterPoint(), Third);
    COMPARE_PIXELS(pen, pen.Handles().last()->scenePos(), Third);
    QVERIFY(pen.Handles().first()->isSunken() && !pen.Handles().last()->isSunken());
    pen.creator->RemoveLastPoint();
    QCOMPARE(pen.Handles().size(), 1);
}

void TestPathGeometryCreator::theCurrentAnchorStaysThroughMakeFromPath()
{
    Pen pen;
    pen.Click(First);
    pen.Click(Second);
    pen.Click(Third);
    pen.creator->SetCurrentEditNodeIndex(1);
    LXPath path = pen.creator->GetPath();
    pen.creator->MakeFromPath(path);
    QVERIFY(pen.Handles()[1]->isSunken());
    pen.creator->MakeFromPath(path.mid(0, 1));
    QVERIFY(pen.Handles()[0]->isSunken());
    pen.creator->SetCurrentEditNodeIndex(-1);
    QVERIFY(!pen.Handles()[0]->isSunken());
}

void TestPathGeometryCreator::aCreatorDroppedDuringAPressIsHarmless()
{
    Pen pen;
    pen.input.Press(pen.view->viewport(), First);
    pen.input.Move(pen.view->viewport(), First + QPoint(30, 0));
    delete pen.creator;
    pen.input.Move(pen.view->viewport(), First + QPoint(60, 0));
    pen.input.Release(pen.view->viewport(), First + QPoint(60, 0));
    pen.Click(Second);
    QCOMPARE(pen.creator->GetPointCount(), 1);
}

void TestPathGeometryCreator::theFirstPressIsHeardOnce()
{
    Pen pen;
    pen.Click(First);
    QCOMPARE(pen.presses, 1);
    QCOMPARE(pen.creator->GetPointCount(), 1);
}

void TestPathGeometryCreator::itTakesNoMouseEventsFromOthers()
{
    Pen pen;
    auto* below = new ControlNode;
    pen.view->scene()->addItem(below);
    below->setPos(pen.Scene(First));
    pen.Drag(First, First + QPoint(30, 0));
    COMPARE_PIXELS(pen, below->scenePos(), First + QPoint(30, 0));
    QVERIFY(!pen.view->items(First + QPoint(15, 0)).contains(pen.creator));
}

ZK_REGISTER_TEST(tst_pathgeometrycreator, TestPathGeometryCreator)
#include "tst_pathgeometrycreator.moc"
