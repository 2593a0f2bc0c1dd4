#include "PathEditorFixture.h"

#include "document/LXPathConvert.h"
#include "support/TestRegistry.h"

#include <QSignalSpy>
#include <QTest>

#include <random>

using namespace PathCurve;
using namespace ViewFixture;
using Fixture = PathEditorFixture;

/// The item that edits a sub path, under the calls of a tool, also in the middle of a drag.
class TestPathEditorCalls : public QObject
{
    Q_OBJECT

private slots:
    void aPathComesBackToTheLastBit();
    void handlesAreKnownAsTheEditors();
    void anInsertedNodeLeavesTheShapeAndIsCurrent();
    void insertionAndRemovalAreGestures();
    void nothingIsInsertedWhereThereIsNoCurve();
    void removalKeepsTheCurrentAnchor();
    void removalOfTheLastAnchorIsSilent();
    void badNumbersAreHarmless();
    void theCurrentNodeMayBeDeletedDuringADrag();
    void anotherPathDuringADragEndsIt();
    void theEditorMayBeDeletedDuringADrag_data();
    void theEditorMayBeDeletedDuringADrag();
    void takenOutOfTheSceneDuringADragItLetsGo();
};

void TestPathEditorCalls::aPathComesBackToTheLastBit()
{
    PathGeometryEditor editor;
    std::mt19937 random(2);
    std::uniform_real_distribution<double> coordinate(-1e6, 1e6);
    for (int round = 0; round < 100; ++round) {
        LXPath path;
        for (int i = 0; i < round % 9; ++i) {
            const auto point = [&] { return QPointF(coordinate(random), coordinate(random)); };
            path.append(LXPathElement(point(), point(), point()));
            path.last().SetStartsContour(i > 0 && round % 3 == 0);
        }
        if (round % 2 == 0 && !path.isEmpty()) path.append(path.first());
        editor.MakeFromPath(path);
        QVERIFY(editor.GetPath() == path);
        QCOMPARE(editor.ElementCount(), path.size());
    }
}

void TestPathEditorCalls::handlesAreKnownAsTheEditors()
{
    const Fixture fixture;
    fixture.ShowCurve();
    PathGeometryEditor other;
    QCOMPARE(fixture.editor->CentralNodeOf(fixture.HandleAt(First)), 0);
    QCOMPARE(fixture.editor->CentralNodeOf(fixture.HandleAt(Smooth)), 1);
    QCOMPARE(fixture.editor->CentralNodeOf(fixture.HandleAt(InGuide)), -1);
    QCOMPARE(fixture.editor->CentralNodeOf(fixture.editor), -1);
    QCOMPARE(fixture.editor->CentralNodeOf(nullptr), -1);
    QCOMPARE(other.CentralNodeOf(fixture.HandleAt(First)), -1);
    QVERIFY(fixture.editor->IsEditorItem(fixture.HandleAt(InGuide)));
    QVERIFY(fixture.editor->IsEditorItem(fixture.editor));
    QVERIFY(!fixture.editor->IsEditorItem(nullptr));
    QVERIFY(!other.IsEditorItem(fixture.HandleAt(First)));
    QVERIFY(fixture.editor->IsEditorItem(fixture.view->itemAt(Smooth)));
}

void TestPathEditorCalls::anInsertedNodeLeavesTheShapeAndIsCurrent()
{
    const Fixture fixture;
    fixture.ShowCurve();
    const QPainterPath before = ConvertFrom(fixture.editor->GetPath());
    fixture.editor->InsertNode(fixture.Scene({240, 110}));
    QCOMPARE(fixture.editor->ElementCount(), 4);
    QCOMPARE(fixture.editor->GetCurrentEditNodeIndex(), 2);
    const QPainterPath after = ConvertFrom(fixture.editor->GetPath());
    QVERIFY(qAbs(after.length() - before.length()) < 0.01);
    COMPARE_POINTS(after.boundingRect().topLeft(), before.boundingRect().topLeft(), 1e-9);
    COMPARE_POINTS(after.boundingRect().bottomRight(), before.boundingRect().bottomRight(), 1e-9);
}

void TestPathEditorCalls::insertionAndRemovalAreGestures()
{
    const Fixture fixture;
    fixture.ShowCurve();
    QStringList told;
    QObject::connect(fixture.editor, &PathGeometryEditor::PathChanged,
                     [&] { told << QString("changed %1").arg(fixture.editor->ElementCount()); });
    QObject::connect(fixture.editor, &PathGeometryEditor::Released, [&] { told << "released"; });
    fixture.editor->InsertNode(fixture.Scene({240, 110}));
    fixture.editor->DeleteCurrentNode();
    fixture.editor->DeleteNode(0);
    QCOMPARE(told, QStringList({"changed 4", "released", "changed 3", "released", "changed 2", "released"}));
    fixture.editor->DeleteCurrentNode();
    QCOMPARE(told.size(), 6);
}

void TestPathEditorCalls::nothingIsInsertedWhereThereIsNoCurve()
{
    const Fixture fixture;
    QSignalSpy changed(fixture.editor, &PathGeometryEditor::PathChanged);
    fixture.editor->InsertNode({10, 10});
    fixture.editor->MakeFromPath({LXPathElement({10, 10})});
    fixture.editor->InsertNode({10, 10});
    QCOMPARE(fixture.editor->ElementCount(), 1);
    QCOMPARE(changed.count(), 0);
}

void TestPathEditorCalls::removalKeepsTheCurrentAnchor()
{
    Fixture fixture;
    fixture.ShowCurve();
    fixture.Click(Last);
    fixture.editor->DeleteNode(0);
    QCOMPARE(fixture.editor->GetCurrentEditNodeIndex(), 1);
    fixture.editor->DeleteNode(1);
    QCOMPARE(fixture.editor->GetCurrentEditNodeIndex(), -1);
}

void TestPathEditorCalls::removalOfTheLastAnchorIsSilent()
{
    Fixture fixture;
    fixture.editor->MakeFromPath({LXPathElement(fixture.Scene(First))});
    fixture.Click(First);
    QSignalSpy changed(fixture.editor, &PathGeometryEditor::PathChanged);
    QSignalSpy released(fixture.editor, &PathGeometryEditor::Released);
    fixture.editor->DeleteCurrentNode();
    QCOMPARE(fixture.editor->ElementCount(), 0);
    QCOMPARE(changed.count() + released.count(), 0);
    QVERIFY(fixture.Handles().isEmpty());
}

void TestPathEditorCalls::badNumbersAreHarmless()
{
    const Fixture fixture;
    fixture.ShowCurve();
    QSignalSpy changed(fixture.editor, &PathGeometryEditor::PathChanged);
    for (const int element : {-1, 3, 1000})
        fixture.editor->DeleteNode(element);
    QCOMPARE(fixture.editor->ElementCount(), 3);
    QCOMPARE(changed.count(), 0);
}

void TestPathEditorCalls::theCurrentNodeMayBeDeletedDuringADrag()
{
    Fixture fixture;
    fixture.ShowCurve();
    QWidget* viewport = fixture.view->viewport();
    for (const QPoint& grip : {OutGuide, Last}) {
        fixture.ShowCurve();
        QSignalSpy released(fixture.editor, &PathGeometryEditor::Released);
        fixture.input.Press(viewport, grip);
        fixture.input.Move(viewport, grip + QPoint(10, 10));
        fixture.editor->DeleteCurrentNode();
        QCOMPARE(released.count(), 1);
        const LXPath left = fixture.editor->GetPath();
        QCOMPARE(left.size(), 2);
        fixture.input.Move(viewport, grip + QPoint(30, 30));
        fixture.input.Release(viewport, grip + QPoint(30, 30));
        QVERIFY(fixture.editor->GetPath() == left);
        QCOMPARE(released.count(), 1);
        QCOMPARE(fixture.Handles().size(), grip == Last ? 4 : 2);
    }
    fixture.Drag(First, First + QPoint(0, 20));
    COMPARE_PIXELS(fixture, fixture.editor->GetPath()[0].GetCenterPoint(), First + QPoint(0, 20));
}

void TestPathEditorCalls::anotherPathDuringADragEndsIt()
{
    Fixture fixture;
    fixture.ShowCurve();
    QWidget* viewport = fixture.view->viewport();
    const LXPath path = fixture.editor->GetPath();
    fixture.input.Press(viewport, Smooth);
    fixture.input.Move(viewport, Smooth + QPoint(10, 10));
    fixture.editor->MakeFromPath(path);
    fixture.input.Move(viewport, Smooth + QPoint(30, 30));
    fixture.input.Release(viewport, Smooth + QPoint(30, 30));
    QVERIFY(fixture.editor->GetPath() == path);
    QVERIFY(fixture.HandleAt(Smooth));
}

void TestPathEditorCalls::theEditorMayBeDeletedDuringADrag_data()
{
    QTest::addColumn<bool>("byHandler");
    QTest::newRow("by the handler of a step") << true;
    QTest::newRow("between two steps") << false;
}

void TestPathEditorCalls::theEditorMayBeDeletedDuringADrag()
{
    QFETCH(bool, byHandler);
    Fixture fixture;
    fixture.ShowCurve();
    QWidget* viewport = fixture.view->viewport();
    if (byHandler) {
        QObject::connect(fixture.editor, &PathGeometryEditor::PathChanged, fixture.editor,
                         &QObject::deleteLater);
    }
    fixture.input.Press(viewport, Smooth);
    fixture.input.Move(viewport, Smooth + QPoint(10, 10));
    if (!byHandler) fixture.view->scene()->clear();
    QTRY_VERIFY(!fixture.editor);
    fixture.input.Move(viewport, Smooth + QPoint(30, 30));
    fixture.input.Release(viewport, Smooth + QPoint(30, 30));
    QVERIFY(!fixture.view->scene()->mouseGrabberItem());
}

void TestPathEditorCalls::takenOutOfTheSceneDuringADragItLetsGo()
{
    Fixture fixture;
    fixture.ShowCurve();
    QWidget* viewport = fixture.view->viewport();
    QSignalSpy released(fixture.editor, &PathGeometryEditor::Released);
    fixture.input.Press(viewport, Smooth);
    fixture.input.Move(viewport, Smooth + QPoint(10, 10));
    const LXPath path = fixture.editor->GetPath();
    fixture.view->scene()->removeItem(fixture.editor);
    const std::unique_ptr<PathGeometryEditor> owner(fixture.editor);
    fixture.input.Move(viewport, Smooth + QPoint(30, 30));
    fixture.input.Release(viewport, Smooth + QPoint(30, 30));
    QVERIFY(owner->GetPath() == path);
    QCOMPARE(released.count(), 1);
}

ZK_REGISTER_TEST(tst_patheditorcalls, TestPathEditorCalls)
#include "tst_patheditorcalls.moc"
