#include "app/MainWindow.h"
#include "document/LXDocumentInterface.h"
#include "gui/ZKDocumentView.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QTest>

namespace {
QAction* Entry(const EditorFixture& editor, const char* name)
{
    return editor.Window()->findChild<QAction*>(name);
}

/// Answers the dialog "Add guide" with the keyboard alone.
void AddGuide(EditorFixture& editor, bool isVertical, const QString& position)
{
    InputDriver& input = editor.GetInput();
    input.WhenModalShows([&](QWidget*) {
        if (isVertical) input.Key(Qt::Key_Down);
        input.Key(Qt::Key_Tab);
        input.Type(position);
        input.Key(Qt::Key_Return);
    });
    Entry(editor, "addGuideAction")->trigger();
}
} // namespace

/// The guides of the menu "View".
class TestGuides : public QObject
{
    Q_OBJECT

private slots:
    void aGuideIsAddedAndTakenBack();
    void theMiddleIsOfferedFirst();
    void cancelAddsNothing();
    void clearingTakesAllInOneStep();
    void hidingLastsUntilOneIsAdded();
    void withoutADocumentNothingCanBeAdded();
    void aBusyDocumentKeepsItsGuides();
};

void TestGuides::aGuideIsAddedAndTakenBack()
{
    EditorFixture editor(60, 40);
    AddGuide(editor, true, "15");
    QVERIFY(editor.Document()->GetGuides() == (LXGuides{{Qt::Vertical, 15}}));
    QCOMPARE(editor.HistoryTexts(), QStringList{"Add guide"});
    editor.GetInput().Key(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(editor.Document()->GetGuides().isEmpty());
    editor.GetInput().Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(editor.Document()->GetGuides() == (LXGuides{{Qt::Vertical, 15}}));
    editor.Settle();
}

void TestGuides::theMiddleIsOfferedFirst()
{
    EditorFixture editor(60, 40);
    InputDriver& input = editor.GetInput();
    double horizontal = 0;
    double vertical = 0;
    input.WhenModalShows([&](QWidget* dialog) {
        const auto* position = dialog->findChild<QDoubleSpinBox*>();
        horizontal = position->value();
        input.Key(Qt::Key_Down);
        vertical = position->value();
        input.Key(Qt::Key_Return);
    });
    Entry(editor, "addGuideAction")->trigger();
    QCOMPARE(horizontal, 20.0);
    QCOMPARE(vertical, 30.0);
    QVERIFY(editor.Document()->GetGuides() == (LXGuides{{Qt::Vertical, 30}}));
}

void TestGuides::cancelAddsNothing()
{
    EditorFixture editor(60, 40);
    editor.GetInput().WhenModalShows([&](QWidget*) { editor.GetInput().Key(Qt::Key_Escape); });
    Entry(editor, "addGuideAction")->trigger();
    QVERIFY(editor.Document()->GetGuides().isEmpty());
    QCOMPARE(editor.HistoryTexts(), QStringList());
}

void TestGuides::clearingTakesAllInOneStep()
{
    EditorFixture editor(60, 40);
    QVERIFY(!Entry(editor, "clearGuidesAction")->isEnabled());
    AddGuide(editor, true, "15");
    AddGuide(editor, false, "7.5");
    QVERIFY(editor.Document()->GetGuides() == (LXGuides{{Qt::Vertical, 15}, {Qt::Horizontal, 7.5}}));
    QVERIFY(Entry(editor, "clearGuidesAction")->isEnabled());
    Entry(editor, "clearGuidesAction")->trigger();
    QVERIFY(editor.Document()->GetGuides().isEmpty());
    QVERIFY(!Entry(editor, "clearGuidesAction")->isEnabled());
    editor.GetInput().Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Document()->GetGuides().size(), 2);
    editor.Settle();
}

void TestGuides::hidingLastsUntilOneIsAdded()
{
    EditorFixture editor(60, 40);
    QVERIFY(editor.View()->AreGuidesShown());
    editor.GetInput().Key(Qt::Key_Semicolon, Qt::ControlModifier);
    QVERIFY(!editor.View()->AreGuidesShown());
    QVERIFY(!Entry(editor, "showGuidesAction")->isChecked());
    // Whoever adds one wants to see it.
    AddGuide(editor, true, "15");
    QVERIFY(editor.View()->AreGuidesShown());
    QVERIFY(Entry(editor, "showGuidesAction")->isChecked());
}

void TestGuides::withoutADocumentNothingCanBeAdded()
{
    EditorFixture editor;
    QVERIFY(!Entry(editor, "addGuideAction")->isEnabled());
    QVERIFY(!Entry(editor, "clearGuidesAction")->isEnabled());
    QVERIFY(Entry(editor, "showGuidesAction")->isEnabled());
}

void TestGuides::aBusyDocumentKeepsItsGuides()
{
    EditorFixture editor(60, 40);
    AddGuide(editor, true, "15");
    editor.Document()->Lock();
    QVERIFY(!Entry(editor, "addGuideAction")->isEnabled());
    QVERIFY(!Entry(editor, "clearGuidesAction")->isEnabled());
    editor.Document()->Unlock();
    QVERIFY(Entry(editor, "addGuideAction")->isEnabled());
    QVERIFY(Entry(editor, "clearGuidesAction")->isEnabled());
}

ZK_REGISTER_TEST(tst_guides, TestGuides)
#include "tst_guides.moc"
