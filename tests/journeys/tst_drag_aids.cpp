#include "app/DocumentFiles.h"
#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "gui/ZKDocumentView.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QImage>
#include <QTest>

/// The entries of the menu "View" that help with drags.
class TestDragAids : public QObject
{
    Q_OBJECT

private slots:
    void allAreOffAtFirst();
    void theGridIsShownInEveryPicture();
    void theStepIsAskedForAndKept();
    void cancelKeepsTheStep();
    void snapAndReadOutAreKept();
};

namespace {
QAction* Entry(const EditorFixture& editor, const char* name)
{
    return editor.Window()->findChild<QAction*>(name);
}

QImage Shown(const EditorFixture& editor)
{
    return editor.View()->viewport()->grab().toImage();
}

/// Answers the dialog "Grid step" with the keyboard alone.
void AskForStep(EditorFixture& editor, const QString& step, int lastKey)
{
    InputDriver& input = editor.GetInput();
    input.WhenModalShows([&input, step, lastKey](QWidget*) {
        input.Type(step);
        input.Key(lastKey);
    });
    Entry(editor, "gridStepAction")->trigger();
}

bool IsOn(const char* key)
{
    return ZKApplication::GetUserValue(key, false).toBool();
}
} // namespace

void TestDragAids::allAreOffAtFirst()
{
    const EditorFixture editor(60, 40);
    for (const char* name : {"showGridAction", "snapAction", "showDragOffsetAction"}) {
        QVERIFY(Entry(editor, name)->isCheckable());
        QVERIFY(!Entry(editor, name)->isChecked());
    }
}

void TestDragAids::theGridIsShownInEveryPicture()
{
    EditorFixture editor(600, 400);
    const QImage plain = Shown(editor);
    Entry(editor, "showGridAction")->trigger();
    const QImage withGrid = Shown(editor);
    QVERIFY(withGrid != plain);
    Entry(editor, "showGridAction")->trigger();
    QCOMPARE(Shown(editor), plain);

    editor.GetInput().Key(Qt::Key_Apostrophe, Qt::ControlModifier);
    QCOMPARE(Shown(editor), withGrid);
    QVERIFY(editor.Files()->New(QSize(600, 400), Qt::white));
    QCOMPARE(Shown(editor), withGrid);
}

void TestDragAids::theStepIsAskedForAndKept()
{
    EditorFixture editor(600, 400);
    const QImage plain = Shown(editor);
    AskForStep(editor, "50", Qt::Key_Return);
    QCOMPARE(ZKApplication::GetUserValue("Editor/GridStep", 0).toInt(), 50);
    // A grid that was asked for is to be seen.
    QVERIFY(Entry(editor, "showGridAction")->isChecked());
    const QImage wide = Shown(editor);
    QVERIFY(wide != plain);
    AskForStep(editor, "20", Qt::Key_Return);
    QVERIFY(Shown(editor) != wide);
}

void TestDragAids::cancelKeepsTheStep()
{
    EditorFixture editor(600, 400);
    const QImage plain = Shown(editor);
    AskForStep(editor, "50", Qt::Key_Escape);
    QCOMPARE(ZKApplication::GetUserValue("Editor/GridStep", 32).toInt(), 32);
    QCOMPARE(Shown(editor), plain);
}

void TestDragAids::snapAndReadOutAreKept()
{
    const EditorFixture editor(60, 40);
    QVERIFY(!IsOn("Editor/Snap"));
    QVERIFY(!IsOn("Editor/TellDragOffset"));
    Entry(editor, "snapAction")->trigger();
    Entry(editor, "showDragOffsetAction")->trigger();
    QVERIFY(IsOn("Editor/Snap"));
    QVERIFY(IsOn("Editor/TellDragOffset"));
    Entry(editor, "snapAction")->trigger();
    QVERIFY(!IsOn("Editor/Snap"));
}

ZK_REGISTER_TEST(tst_drag_aids, TestDragAids)
#include "tst_drag_aids.moc"
