#include "app/MainWindow.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

/// Zoom and panning, which every tool leaves to the view.
class TestLookAround : public QObject
{
    Q_OBJECT

private slots:
    void theWheelZoomsAtThePointer();
    void theZoomKeysStepAndFit();
    void panWithSpaceAndTheLeftButton();
    void panWithTheMiddleButton();
    void theStatusBarFollowsThePointer();
};

namespace {
constexpr int Side = 2000;

/// Large enough at 100 % for the view to scroll both ways.
void ShowAtFullSize(EditorFixture& editor)
{
    editor.GetInput().Key(Qt::Key_1, Qt::ControlModifier);
    QCOMPARE(editor.View()->GetScale(), 1.0);
    editor.View()->centerOn(Side * 0.5, Side * 0.5);
}

QPointF SceneMiddle(const ZKDocumentView* view)
{
    return view->mapToScene(view->viewport()->rect().center());
}
} // namespace

void TestLookAround::theWheelZoomsAtThePointer()
{
    EditorFixture editor(Side, Side);
    ShowAtFullSize(editor);
    const QPoint pointer(200, 150);
    const QPointF under = editor.View()->mapToScene(pointer);

    editor.GetInput().Wheel(editor.View()->viewport(), pointer, 120);
    QVERIFY(editor.View()->GetScale() > 1.0);
    const QPointF offset = editor.View()->mapToScene(pointer) - under;
    QVERIFY2(offset.manhattanLength() <= 2.0, qPrintable(QString::number(offset.manhattanLength())));
}

void TestLookAround::theZoomKeysStepAndFit()
{
    EditorFixture editor(Side, Side);
    ShowAtFullSize(editor);
    editor.GetInput().Key(Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(editor.View()->GetScale(), 1.5);
    editor.GetInput().Key(Qt::Key_Minus, Qt::ControlModifier);
    editor.GetInput().Key(Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(editor.View()->GetScale(), 0.67);

    editor.GetInput().Key(Qt::Key_0, Qt::ControlModifier);
    const QSize viewport = editor.View()->viewport()->size();
    QVERIFY(editor.View()->GetScale() * Side <= qMin(viewport.width(), viewport.height()));
    QVERIFY(editor.View()->GetScale() * Side > qMin(viewport.width(), viewport.height()) * 0.8);
}

void TestLookAround::panWithSpaceAndTheLeftButton()
{
    EditorFixture editor(Side, Side);
    ShowAtFullSize(editor);
    editor.Tool("Fillcan");
    const QPointF before = SceneMiddle(editor.View());

    editor.GetInput().Move(editor.View()->viewport(), QPoint(300, 200));
    editor.GetInput().KeyDown(Qt::Key_Space);
    editor.GetInput().Drag(editor.View()->viewport(), {QPoint(300, 200), QPoint(240, 170)});
    editor.GetInput().KeyUp(Qt::Key_Space);

    QCOMPARE(SceneMiddle(editor.View()) - before, QPointF(60, 30));
    QVERIFY(!editor.View()->IsPanningEnabled());
    editor.Settle();
    QCOMPARE(editor.HistoryTexts(), QStringList());
}

void TestLookAround::panWithTheMiddleButton()
{
    EditorFixture editor(Side, Side);
    ShowAtFullSize(editor);
    editor.Tool("Fillcan");
    const QPointF before = SceneMiddle(editor.View());

    editor.GetInput().Drag(editor.View()->viewport(), {QPoint(300, 200), QPoint(350, 280)}, Qt::MiddleButton);
    QCOMPARE(SceneMiddle(editor.View()) - before, QPointF(-50, -80));
    editor.Settle();
    QCOMPARE(editor.HistoryTexts(), QStringList());
}

void TestLookAround::theStatusBarFollowsThePointer()
{
    EditorFixture editor(64, 48, QColor(10, 200, 30));
    const auto text = [&editor](const char* name) {
        return editor.Window()->findChild<QWidget*>(name)->property("text").toString().simplified();
    };
    QCOMPARE(text("sizeReadout"), QString("64 × 48"));

    editor.GetInput().MoveInScene(editor.View(), QPointF(12.5, 7.5));
    QTRY_COMPARE(text("positionReadout"), QString("12, 7"));
    QTRY_COMPARE(text("colorReadout"), QString("10 200 30 255"));

    // Twice as large, so that the pointer can stand inside of a pixel's left half.
    editor.GetInput().Key(Qt::Key_Plus, Qt::ControlModifier);
    editor.GetInput().Key(Qt::Key_Plus, Qt::ControlModifier);
    QTRY_COMPARE(text("zoomReadout"), QString("200 %"));
    editor.GetInput().MoveInScene(editor.View(), QPointF(-3.25, 7.5));
    QTRY_COMPARE(text("positionReadout"), QString("-4, 7"));
    QTRY_COMPARE(text("colorReadout"), QString());
}

ZK_REGISTER_TEST(tst_look_around, TestLookAround)
#include "tst_look_around.moc"
