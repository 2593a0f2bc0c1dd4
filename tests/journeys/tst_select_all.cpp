#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

/// "Select All" of the menu "Edit" and "Deselect" of the menu "Selection".
class TestSelectAll : public QObject
{
    Q_OBJECT

private slots:
    void theEntriesAreOnWhenTheyDoSomething();
    void bothAreUndone();
    void deselectingTwiceIsOneStep();
    void aPartOfTheCanvasBecomesAll();
    void aHalfSelectedCanvasBecomesAll();
    void theEdgeOfTheSelectionShows();
    void aFillStaysInsideTheSelection();
};

namespace {
bool CanSelectAll(const EditorFixture& editor)
{
    return editor.Window()->findChild<QAction*>("selectAllAction")->isEnabled();
}

/// The entry is the plug-in's.
bool CanDeselect(const EditorFixture& editor)
{
    const QList<QMenu*> menus = editor.Window()->menuBar()->findChildren<QMenu*>();
    for (const QMenu* menu : menus) {
        const QList<QAction*> actions = menu->actions();
        for (const QAction* action : actions) {
            if (action->text() == "Deselect") return action->isEnabled();
        }
    }
    qFatal("no entry to deselect with");
}

LXImage32 Coverage(int width, int height, int alpha)
{
    LXImage32 mask(width, height);
    mask.Fill(LXRGBA32i(qRgba(0, 0, 0, alpha)));
    return mask;
}

void SelectAll(EditorFixture& editor)
{
    editor.GetInput().Key(Qt::Key_A, Qt::ControlModifier);
    editor.Settle();
}
} // namespace

void TestSelectAll::theEntriesAreOnWhenTheyDoSomething()
{
    EditorFixture empty;
    QVERIFY(!CanSelectAll(empty));
    QVERIFY(!CanDeselect(empty));
    empty.GetInput().WhenModalShows([&](QWidget*) {
        empty.GetInput().HoldModifiers(Qt::NoModifier);
        empty.GetInput().Key(Qt::Key_Return);
    });
    empty.GetInput().Key(Qt::Key_N, Qt::ControlModifier);
    QVERIFY(empty.Document());
    QVERIFY(CanSelectAll(empty));
    QVERIFY(!CanDeselect(empty));
    SelectAll(empty);
    QVERIFY(!CanSelectAll(empty));
    QVERIFY(CanDeselect(empty));
    SelectAll(empty);
    QCOMPARE(empty.HistoryTexts(), QStringList{"Select all"});
}

void TestSelectAll::bothAreUndone()
{
    EditorFixture editor(40, 30);
    SelectAll(editor);
    QCOMPARE(editor.Document()->GetSelectionBoundingRect(), QRect(0, 0, 40, 30));
    editor.GetInput().Key(Qt::Key_D, Qt::ControlModifier);
    QVERIFY(!editor.Document()->HasSelection());
    QCOMPARE(editor.HistoryTexts(), (QStringList{"Select all", "Deselect"}));

    editor.GetInput().Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Document()->GetSelectionBoundingRect(), QRect(0, 0, 40, 30));
    editor.GetInput().Key(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(!editor.Document()->HasSelection());
    editor.GetInput().Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(editor.Document()->HasSelection());
}

void TestSelectAll::deselectingTwiceIsOneStep()
{
    EditorFixture editor(40, 30);
    SelectAll(editor);
    QVERIFY(editor.Document()->HasSelection());
    editor.GetInput().Key(Qt::Key_D, Qt::ControlModifier);
    QVERIFY(!editor.Document()->HasSelection());
    editor.GetInput().Key(Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(editor.HistoryTexts().size(), 2);
}

void TestSelectAll::aPartOfTheCanvasBecomesAll()
{
    EditorFixture editor(40, 30);
    editor.Document()->SetSelectionMask(Coverage(10, 10, 255), {4, 5});
    SelectAll(editor);
    QCOMPARE(editor.Document()->GetSelectionBoundingRect(), QRect(0, 0, 40, 30));
    editor.GetInput().Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Document()->GetSelectionBoundingRect(), QRect(4, 5, 10, 10));
}

void TestSelectAll::aHalfSelectedCanvasBecomesAll()
{
    EditorFixture editor(40, 30);
    editor.Document()->SetSelectionMask(Coverage(40, 30, 128), {});
    QVERIFY(!editor.Document()->HasAboveSelected(128));
    QVERIFY(CanSelectAll(editor));
    SelectAll(editor);
    QVERIFY(editor.Document()->HasAboveSelected(254));
}

void TestSelectAll::theEdgeOfTheSelectionShows()
{
    EditorFixture editor(40, 30);
    const QPoint corner = InputDriver::ViewPoint(editor.View(), {0, 0});
    const QRect edge(corner - QPoint(2, 2), QSize(20, 5));
    const QImage before = editor.View()->viewport()->grab(edge).toImage();
    SelectAll(editor);
    QVERIFY(editor.View()->viewport()->grab(edge).toImage() != before);
}

void TestSelectAll::aFillStaysInsideTheSelection()
{
    EditorFixture editor(40, 30);
    editor.Document()->SetSelectionMask(Coverage(10, 10, 255), {4, 5});
    ZKApplication::SetForeground(Qt::green);
    ToolDriver can = editor.Tool("Fillcan");
    can.Click({6, 7});
    QCOMPARE(editor.Pixels().pixelColor(13, 14), QColor(Qt::green));
    QCOMPARE(editor.Pixels().pixelColor(14, 14), QColor(Qt::white));

    SelectAll(editor);
    ZKApplication::SetForeground(Qt::blue);
    can.Click({30, 20});
    QCOMPARE(editor.Pixels().pixelColor(39, 29), QColor(Qt::blue));
    QCOMPARE(editor.Pixels().pixelColor(0, 0), QColor(Qt::blue));
    QCOMPARE(editor.Pixels().pixelColor(6, 7), QColor(Qt::green));
}

ZK_REGISTER_TEST(tst_select_all, TestSelectAll)
#include "tst_select_all.moc"
