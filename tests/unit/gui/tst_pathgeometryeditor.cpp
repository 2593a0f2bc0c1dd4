#include "PathEditorFixture.h"

#include "support/PathFixture.h"
#include "support/TestRegistry.h"

#include <QGraphicsSceneMouseEvent>
#include <QSignalSpy>
#include <QTest>

using namespace PathCurve;
using namespace ViewFixture;
using Fixture = PathEditorFixture;

namespace {
/// Runs a function with each press that comes to a scene, before its items get it, as tools do.
class PressFilter : public QObject
{
public:
    PressFilter(QGraphicsScene* scene, const std::function<void(QPointF)>& onPress) : m_OnPress(onPress)
    {
        scene->installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::GraphicsSceneMousePress)
            m_OnPress(static_cast<QGraphicsSceneMouseEvent*>(event)->scenePos());
        return false;
    }

private:
    std::function<void(QPointF)> m_OnPress;
};

void AddScales()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("0.05") << 0.05;
    QTest::newRow("1") << 1.0;
    QTest::newRow("40") << 40.0;
}
} // namespace

/// The item that edits a sub path, under the hands of a person: real input in a view.
class TestPathGeometryEditor : public QObject
{
    Q_OBJECT

private slots:
    void anchorsAndGuidesHaveHandles();
    void aDraggedAnchorTakesItsGuidesAlong_data();
    void aDraggedAnchorTakesItsGuidesAlong();
    void aPressNearAHandleHitsItAtAnyScale_data();
    void aPressNearAHandleHitsItAtAnyScale();
    void eachStepOfADragIsToldAndOneRelease();
    void theReleaseFollowsTheLastStep();
    void aHandThatSlipsInAClickMovesNothing();
    void aGuideTurnsTheOtherOneOfASmoothAnchor();
    void altBreaksTheGuides();
    void shiftSnapsTheGuide();
    void keysMayComeAndGoDuringADrag();
    void altDragPullsGuidesOutOfACorner();
    void altClickTakesGuidesOff();
    void aGuideCanBeLaidOnItsAnchorAndStaysInHand();
    void aPressMakesItsAnchorTheCurrentOne();
    void aPressOfThePathBesideTheHandlesMakesNoneCurrent();
    void aPressOfTheEmptySceneIsNotTaken();
    void otherButtonsAreNotTaken();
    void aPathMadeDuringThePressIsDraggedByIt();
    void theClosingAnchorIsOneHandle();
    void aPathOfOneAnchorIsDragged();
    void anchorsOnOnePlaceComeApart();
    void noPathHasNoHandles();
    void guidesAreDrawnWithTheirLines();
    void ignoredSceneEventsGoBelow();
    void ignoringDuringADragEndsIt();
    void arrowKeysMoveTheCurrentAnchor();
    void aNudgeEndsWithTheFocus();
};

void TestPathGeometryEditor::anchorsAndGuidesHaveHandles()
{
    const Fixture fixture;
    fixture.ShowCurve();
    QCOMPARE(fixture.Handles().size(), 5);
    for (const QPoint& place : {First, Smooth, InGuide, OutGuide, Last})
        QVERIFY(fixture.HandleAt(place));
}

void TestPathGeometryEditor::aDraggedAnchorTakesItsGuidesAlong_data()
{
    AddScales();
}

void TestPathGeometryEditor::aDraggedAnchorTakesItsGuidesAlong()
{
    QFETCH(double, scale);
    Fixture fixture(scale);
    fixture.ShowCurve();
    const LXPath before = fixture.editor->GetPath();
    const QPoint way(37, -22);
    fixture.Drag(Smooth, Smooth + way);
    const LXPath after = fixture.editor->GetPath();
    COMPARE_PIXELS(fixture, after[1].GetCenterPoint(), Smooth + way);
    COMPARE_PIXELS(fixture, after[1].GetInGuide(), InGuide + way);
    COMPARE_PIXELS(fixture, after[1].GetOutGuide(), OutGuide + way);
    QVERIFY(after[0] == before[0] && after[2] == before[2]);
    QVERIFY(fixture.HandleAt(Smooth + way) && fixture.HandleAt(OutGuide + way));
}

void TestPathGeometryEditor::aPressNearAHandleHitsItAtAnyScale_data()
{
    AddScales();
}

void TestPathGeometryEditor::aPressNearAHandleHitsItAtAnyScale()
{
    QFETCH(double, scale);
    Fixture fixture(scale);
    fixture.ShowCurve();
    // The handle keeps its distance from the pointer.
    fixture.Drag(Last + QPoint(7, 8), Last + QPoint(27, 8));
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[2].GetCenterPoint(), Last + QPoint(20, 0));
    fixture.Drag(First - QPoint(10, 10), First + QPoint(20, 0));
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[0].GetCenterPoint(), First);
}

void TestPathGeometryEditor::eachStepOfADragIsToldAndOneRelease()
{
    Fixture fixture;
    fixture.ShowCurve();
    QSignalSpy changed(fixture.editor, &PathGeometryEditor::PathChanged);
    QSignalSpy released(fixture.editor, &PathGeometryEditor::Released);
    QWidget* viewport = fixture.view->viewport();
    fixture.input.Press(viewport, Smooth);
    for (int step = 1; step <= 3; ++step) {
        fixture.input.Move(viewport, Smooth + QPoint(10 * step, 0));
        QCOMPARE(changed.count(), step);
        COMPARE_PIXELS(fixture, fixture.editor->GetPath()[1].GetCenterPoint(), Smooth + QPoint(10 * step, 0));
    }
    QCOMPARE(released.count(), 0);
    fixture.input.Release(viewport, Smooth + QPoint(30, 0));
    QCOMPARE(changed.count(), 3);
    QCOMPARE(released.count(), 1);
}

void TestPathGeometryEditor::theReleaseFollowsTheLastStep()
{
    Fixture fixture;
    fixture.ShowCurve();
    LXPath told;
    QObject::connect(fixture.editor, &PathGeometryEditor::PathChanged,
                     [&] { told = fixture.editor->GetPath(); });
    bool isSame = false;
    QObject::connect(fixture.editor, &PathGeometryEditor::Released,
                     [&] { isSame = told == fixture.editor->GetPath(); });
    fixture.Drag(Smooth, Smooth + QPoint(31, 7));
    QVERIFY(isSame);
}

void TestPathGeometryEditor::aHandThatSlipsInAClickMovesNothing()
{
    Fixture fixture;
    fixture.ShowCurve();
    const LXPath before = fixture.editor->GetPath();
    QSignalSpy changed(fixture.editor, &PathGeometryEditor::PathChanged);
    QSignalSpy released(fixture.editor, &PathGeometryEditor::Released);
    fixture.Drag(Smooth, Smooth + QPoint(1, 1));
    QVERIFY(fixture.editor->GetPath() == before);
    QVERIFY(fixture.HandleAt(Smooth));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(released.count(), 1);
    // Once it went on its way it may come back to any place.
    fixture.input.Drag(fixture.view->viewport(), {Smooth, Smooth + QPoint(20, 0), Smooth + QPoint(1, 0)});
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[1].GetCenterPoint(), Smooth + QPoint(1, 0));
}

void TestPathGeometryEditor::aGuideTurnsTheOtherOneOfASmoothAnchor()
{
    Fixture fixture;
    fixture.ShowCurve();
    fixture.Drag(OutGuide, Smooth + QPoint(0, 80));
    const LXPathElement after = fixture.editor->GetPath()[1];
    COMPARE_PIXELS(fixture, after.GetOutGuide(), Smooth + QPoint(0, 80));
    COMPARE_PIXELS(fixture, after.GetInGuide(), Smooth + QPoint(0, -50));
    COMPARE_PIXELS(fixture, after.GetCenterPoint(), Smooth);
}

void TestPathGeometryEditor::altBreaksTheGuides()
{
    Fixture fixture;
    fixture.ShowCurve();
    fixture.Drag(OutGuide, Smooth + QPoint(0, 80), Qt::AltModifier);
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[1].GetInGuide(), InGuide);
    // It is a corner from now on, also without the key.
    fixture.Drag(Smooth + QPoint(0, 80), Smooth + QPoint(40, 40));
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[1].GetInGuide(), InGuide);
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[1].GetOutGuide(), Smooth + QPoint(40, 40));
}

void TestPathGeometryEditor::shiftSnapsTheGuide()
{
    Fixture fixture;
    fixture.ShowCurve();
    fixture.Drag(OutGuide, Smooth + QPoint(70, 50), Qt::ShiftModifier);
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[1].GetOutGuide(), Smooth + QPoint(60, 60));
    QVERIFY(fixture.HandleAt(Smooth + QPoint(60, 60)));
}

void TestPathGeometryEditor::keysMayComeAndGoDuringADrag()
{
    Fixture fixture;
    fixture.ShowCurve();
    QWidget* viewport = fixture.view->viewport();
    fixture.input.Press(viewport, OutGuide);
    fixture.input.Move(viewport, Smooth + QPoint(0, 80));
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[1].GetInGuide(), Smooth + QPoint(0, -50));
    fixture.input.HoldModifiers(Qt::AltModifier);
    fixture.input.Move(viewport, Smooth + QPoint(0, 81));
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[1].GetInGuide(), InGuide);
    fixture.input.HoldModifiers(Qt::NoModifier);
    fixture.input.Move(viewport, Smooth + QPoint(0, 82));
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[1].GetInGuide(), Smooth + QPoint(0, -50));
    fixture.input.Release(viewport, Smooth + QPoint(0, 82));
}

void TestPathGeometryEditor::altDragPullsGuidesOutOfACorner()
{
    Fixture fixture;
    fixture.ShowCurve();
    fixture.Drag(Last, Last + QPoint(20, 30), Qt::AltModifier);
    const LXPathElement after = fixture.editor->GetPath()[2];
    COMPARE_PIXELS(fixture, after.GetCenterPoint(), Last);
    COMPARE_PIXELS(fixture, after.GetOutGuide(), Last + QPoint(20, 30));
    COMPARE_PIXELS(fixture, after.GetInGuide(), Last - QPoint(20, 30));
    QVERIFY(fixture.HandleAt(Last + QPoint(20, 30)) && fixture.HandleAt(Last - QPoint(20, 30)));
}

void TestPathGeometryEditor::altClickTakesGuidesOff()
{
    Fixture fixture;
    fixture.ShowCurve();
    QSignalSpy changed(fixture.editor, &PathGeometryEditor::PathChanged);
    QSignalSpy released(fixture.editor, &PathGeometryEditor::Released);
    fixture.Click(InGuide, Qt::AltModifier);
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[1].GetInGuide(), Smooth);
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[1].GetOutGuide(), OutGuide);
    QCOMPARE(fixture.Handles().size(), 4);
    fixture.Click(Smooth, Qt::AltModifier);
    QVERIFY(fixture.editor->GetPath()[1] == LXPathElement(fixture.editor->GetPath()[1].GetCenterPoint()));
    QCOMPARE(fixture.Handles().size(), 3);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(released.count(), 2);
}

void TestPathGeometryEditor::aGuideCanBeLaidOnItsAnchorAndStaysInHand()
{
    Fixture fixture;
    fixture.ShowCurve();
    QWidget* viewport = fixture.view->viewport();
    fixture.input.Press(viewport, OutGuide);
    fixture.input.Move(viewport, Smooth);
    QVERIFY(fixture.editor->GetPath()[1].GetOutGuide() == fixture.editor->GetPath()[1].GetCenterPoint());
    fixture.input.Move(viewport, Smooth + QPoint(30, 0));
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[1].GetOutGuide(), Smooth + QPoint(30, 0));
    fixture.input.Release(viewport, Smooth);
    QCOMPARE(fixture.Handles().size(), 4);
}

void TestPathGeometryEditor::aPressMakesItsAnchorTheCurrentOne()
{
    Fixture fixture;
    fixture.ShowCurve();
    QCOMPARE(fixture.editor->GetCurrentEditNodeIndex(), -1);
    fixture.Click(Last);
    QCOMPARE(fixture.editor->GetCurrentEditNodeIndex(), 2);
    QVERIFY(fixture.HandleAt(Last)->isSunken());
    fixture.Click(OutGuide);
    QCOMPARE(fixture.editor->GetCurrentEditNodeIndex(), 1);
    QVERIFY(fixture.HandleAt(Smooth)->isSunken());
    QVERIFY(!fixture.HandleAt(Last)->isSunken());
    fixture.ShowCurve();
    QCOMPARE(fixture.editor->GetCurrentEditNodeIndex(), -1);
}

void TestPathGeometryEditor::aPressOfThePathBesideTheHandlesMakesNoneCurrent()
{
    for (const double scale : {0.05, 1.0, 40.0}) {
        Fixture fixture(scale);
        const QPoint end(300, 150);
        fixture.editor->MakeFromPath(PathFixture::Line(fixture.Scene(First), fixture.Scene(end)));
        fixture.Click(First);
        QCOMPARE(fixture.editor->GetCurrentEditNodeIndex(), 0);
        fixture.Click({180, 158});
        QCOMPARE(fixture.editor->GetCurrentEditNodeIndex(), 0);
        fixture.Click({180, 151});
        QCOMPARE(fixture.editor->GetCurrentEditNodeIndex(), -1);
    }
}

void TestPathGeometryEditor::aPressOfTheEmptySceneIsNotTaken()
{
    Fixture fixture;
    fixture.ShowCurve();
    fixture.input.Press(fixture.view->viewport(), {200, 200});
    QVERIFY(!fixture.view->scene()->mouseGrabberItem());
    QVERIFY(!fixture.editor->IsEditorItem(fixture.view->itemAt(200, 200)));
    fixture.input.Release(fixture.view->viewport(), {200, 200});
}

void TestPathGeometryEditor::otherButtonsAreNotTaken()
{
    Fixture fixture;
    fixture.ShowCurve();
    const LXPath before = fixture.editor->GetPath();
    QSignalSpy released(fixture.editor, &PathGeometryEditor::Released);
    fixture.input.Drag(fixture.view->viewport(), {Smooth, Smooth + QPoint(30, 30)}, Qt::RightButton);
    QVERIFY(fixture.editor->GetPath() == before);
    QCOMPARE(fixture.editor->GetCurrentEditNodeIndex(), -1);
    QCOMPARE(released.count(), 0);
}

void TestPathGeometryEditor::aPathMadeDuringThePressIsDraggedByIt()
{
    Fixture fixture;
    const PressFilter filter(fixture.view->scene(), [&](const QPointF&) { fixture.ShowCurve(); });
    fixture.Drag(Last, Last + QPoint(0, 30));
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[2].GetCenterPoint(), Last + QPoint(0, 30));
}

void TestPathGeometryEditor::theClosingAnchorIsOneHandle()
{
    Fixture fixture;
    const QRectF box(fixture.Scene({100, 80}), fixture.Scene({250, 200}));
    fixture.editor->MakeFromPath(PathFixture::Rectangle(box));
    QCOMPARE(fixture.Handles().size(), 4);
    fixture.Drag({100, 80}, {130, 60});
    const LXPath after = fixture.editor->GetPath();
    QCOMPARE(after.size(), 5);
    QVERIFY(after.first() == after.last());
    COMPARE_PIXELS(fixture, after.first().GetCenterPoint(), QPointF(130, 60));
    QCOMPARE(fixture.editor->GetCurrentEditNodeIndex(), 0);
    fixture.editor->DeleteNode(4);
    QCOMPARE(fixture.editor->ElementCount(), 4);
    QCOMPARE(fixture.Handles().size(), 3);
}

void TestPathGeometryEditor::aPathOfOneAnchorIsDragged()
{
    Fixture fixture;
    fixture.editor->MakeFromPath({LXPathElement(fixture.Scene(First))});
    fixture.Drag(First, First + QPoint(40, 0));
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[0].GetCenterPoint(), First + QPoint(40, 0));
    fixture.Drag(First + QPoint(40, 0), First + QPoint(60, 20), Qt::AltModifier);
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[0].GetOutGuide(), First + QPoint(60, 20));
}

void TestPathGeometryEditor::anchorsOnOnePlaceComeApart()
{
    Fixture fixture;
    const LXPathElement twin(fixture.Scene(Smooth));
    fixture.editor->MakeFromPath(
        {LXPathElement(fixture.Scene(First)), twin, twin, LXPathElement(fixture.Scene(Last))});
    QCOMPARE(fixture.Handles().size(), 4);
    fixture.Drag(Smooth, Smooth + QPoint(0, -40));
    fixture.Drag(Smooth, Smooth + QPoint(0, 20));
    QSet<int> heights;
    for (const LXPathElement& element : fixture.editor->GetPath().mid(1, 2))
        heights.insert(qRound(fixture.Pixel(element.GetCenterPoint()).y()));
    QCOMPARE(heights, QSet<int>({Smooth.y() - 40, Smooth.y() + 20}));
}

void TestPathGeometryEditor::noPathHasNoHandles()
{
    const Fixture fixture;
    fixture.ShowCurve();
    fixture.editor->MakeFromPath({});
    QVERIFY(fixture.Handles().isEmpty());
    QCOMPARE(fixture.editor->ElementCount(), 0);
    QVERIFY(!Shown(*fixture.view).isNull());
}

void TestPathGeometryEditor::guidesAreDrawnWithTheirLines()
{
    Fixture fixture;
    fixture.ShowCurve();
    const QPoint onLine((Smooth + OutGuide) / 2);
    const QColor dim = Shown(*fixture.view).pixelColor(onLine);
    QVERIFY(dim.lightness() < 240);
    fixture.Click(Smooth);
    QVERIFY(Shown(*fixture.view).pixelColor(onLine).lightness() < dim.lightness() - 20);
    fixture.Click(Smooth, Qt::AltModifier);
    QCOMPARE(Shown(*fixture.view).pixelColor(onLine), QColor(Qt::white));
}

void TestPathGeometryEditor::ignoredSceneEventsGoBelow()
{
    Fixture fixture;
    fixture.editor->IgnoreSceneEvents(true);
    fixture.ShowCurve();
    const LXPath before = fixture.editor->GetPath();
    fixture.Drag(Smooth, Smooth + QPoint(30, 30));
    fixture.Click(First);
    QVERIFY(fixture.editor->GetPath() == before);
    QCOMPARE(fixture.editor->GetCurrentEditNodeIndex(), -1);
    fixture.editor->IgnoreSceneEvents(false);
    fixture.Drag(Smooth, Smooth + QPoint(30, 30));
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[1].GetCenterPoint(), Smooth + QPoint(30, 30));
}

void TestPathGeometryEditor::ignoringDuringADragEndsIt()
{
    Fixture fixture;
    fixture.ShowCurve();
    QWidget* viewport = fixture.view->viewport();
    QSignalSpy released(fixture.editor, &PathGeometryEditor::Released);
    fixture.input.Press(viewport, Smooth);
    fixture.input.Move(viewport, Smooth + QPoint(10, 10));
    fixture.editor->IgnoreSceneEvents(true);
    QCOMPARE(released.count(), 1);
    fixture.input.Move(viewport, Smooth + QPoint(30, 30));
    fixture.input.Release(viewport, Smooth + QPoint(30, 30));
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[1].GetCenterPoint(), Smooth + QPoint(10, 10));
    QCOMPARE(released.count(), 1);
}

void TestPathGeometryEditor::arrowKeysMoveTheCurrentAnchor()
{
    Fixture fixture;
    fixture.ShowCurve();
    const QPointF place = fixture.editor->GetPath()[1].GetCenterPoint();
    fixture.Click(Smooth);
    QSignalSpy changed(fixture.editor, &PathGeometryEditor::PathChanged);
    QSignalSpy released(fixture.editor, &PathGeometryEditor::Released);
    fixture.input.KeyDown(Qt::Key_Left);
    fixture.input.RepeatKey(Qt::Key_Left);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(released.count(), 0);
    fixture.input.KeyUp(Qt::Key_Left);
    QCOMPARE(released.count(), 1);
    fixture.input.Key(Qt::Key_Down, Qt::ShiftModifier);
    COMPARE_POINTS(fixture.editor->GetPath()[1].GetCenterPoint(), place + QPointF(-2, 10), 1e-9);
    QCOMPARE(released.count(), 2);
    fixture.input.Key(Qt::Key_Down, Qt::ControlModifier);
    fixture.input.Key(Qt::Key_A);
    QCOMPARE(changed.count(), 3);
    QCOMPARE(released.count(), 2);
}

void TestPathGeometryEditor::aNudgeEndsWithTheFocus()
{
    Fixture fixture;
    fixture.ShowCurve();
    fixture.Click(Smooth);
    QSignalSpy released(fixture.editor, &PathGeometryEditor::Released);
    fixture.input.KeyDown(Qt::Key_Left);
    fixture.editor->clearFocus();
    QCOMPARE(released.count(), 1);
    fixture.input.KeyUp(Qt::Key_Left);
    QCOMPARE(released.count(), 1);
}

ZK_REGISTER_TEST(tst_pathgeometryeditor, TestPathGeometryEditor)
#include "tst_pathgeometryeditor.moc"
