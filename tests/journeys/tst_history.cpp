#include "app/DocumentFiles.h"
#include "app/MainWindow.h"
#include "document/LXDocumentInterface.h"
#include "gui/HistoryPanel.h"
#include "history/LexoUndoStack.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QDockWidget>
#include <QListView>
#include <QTabBar>
#include <QTest>

/// The history panel in the whole editor, with the fill can's steps.
class TestHistory : public QObject
{
    Q_OBJECT

private slots:
    void aClickOnAStateBringsItsPixelsBack();
    void theListFollowsTheActiveDocument();
    void savingMovesTheMark();
    void thePanelIsATabBesideTheLayers();
    void aPieceThatFloatsIsUndoneAsTheFirstChange();
};

namespace {
QListView* StateList(const EditorFixture& editor)
{
    return editor.Window()->findChild<HistoryPanel*>()->findChild<QListView*>("m_pList");
}

QTabBar* PanelTabs(const EditorFixture& editor)
{
    // There is one for each group of panels, and the window keeps bars for later that hold nothing.
    const auto bars = editor.Window()->findChildren<QTabBar*>(QString(), Qt::FindDirectChildrenOnly);
    const auto hasHistory = [](const QTabBar* bar) {
        for (int i = 0; i < bar->count(); ++i) {
            if (bar->tabText(i) == "History") return bar->isVisible();
        }
        return false;
    };
    const auto found = std::find_if(bars.begin(), bars.end(), hasHistory);
    return found == bars.end() ? nullptr : *found;
}

void ShowHistory(EditorFixture& editor)
{
    QTabBar* tabs = PanelTabs(editor);
    int history = 0;
    while (tabs->tabText(history) != "History" && history < tabs->count())
        ++history;
    editor.GetInput().Click(tabs, tabs->tabRect(history).center());
    QVERIFY(StateList(editor)->isVisible());
}

void ClickState(EditorFixture& editor, int row)
{
    QListView* list = StateList(editor);
    editor.GetInput().Click(list->viewport(), list->visualRect(list->model()->index(row, 0)).center());
    editor.Settle();
}

QStringList Texts(const EditorFixture& editor)
{
    QStringList texts;
    const QAbstractItemModel* model = StateList(editor)->model();
    for (int row = 0; row < model->rowCount(); ++row)
        texts << model->index(row, 0).data(Qt::AccessibleTextRole).toString();
    return texts;
}
} // namespace

void TestHistory::aClickOnAStateBringsItsPixelsBack()
{
    EditorFixture editor(40, 30);
    ShowHistory(editor);
    QList<QImage> states{editor.Pixels()};
    editor.Tool("Fillcan").Click(QPointF(5, 5));
    states << editor.Pixels();
    editor.GetInput().Key(Qt::Key_A, Qt::ControlModifier);
    states << editor.Pixels();
    QCOMPARE(Texts(editor), (QStringList{"Start: as it is on the disk", "Fill", "Select all"}));
    QVERIFY(states[0] != states[1]);

    for (const int row : {0, 2, 1, 0}) {
        ClickState(editor, row);
        QCOMPARE(editor.Pixels(), states[row]);
        QCOMPARE(editor.History()->index(), row);
        QCOMPARE(StateList(editor)->currentIndex().row(), row);
    }
}

void TestHistory::theListFollowsTheActiveDocument()
{
    EditorFixture editor(40, 30);
    editor.Tool("Fillcan").Click(QPointF(5, 5));
    const LXDocumentInterface* first = editor.Document();
    editor.Files()->New({20, 20}, Qt::white);
    QVERIFY(editor.Document() != first);
    QCOMPARE(Texts(editor).size(), 1);
    QVERIFY(editor.Files()->Close(editor.Document()));
    QCOMPARE(editor.Document(), first);
    QCOMPARE(Texts(editor).size(), 2);
}

void TestHistory::savingMovesTheMark()
{
    EditorFixture editor(40, 30);
    editor.Tool("Fillcan").Click(QPointF(5, 5));
    QVERIFY(editor.Files()->SaveTo(editor.Document(), editor.TempFile("a.png")));
    QCOMPARE(Texts(editor), (QStringList{"Start", "Fill: as it is on the disk"}));
    editor.GetInput().Key(Qt::Key_Z, Qt::ControlModifier);
    editor.Settle();
    QCOMPARE(Texts(editor), (QStringList{"Start", "Fill: as it is on the disk"}));
    QVERIFY(editor.Window()->isWindowModified());
    ShowHistory(editor);
    ClickState(editor, 1);
    editor.Settle();
    QVERIFY(!editor.Window()->isWindowModified());
}

void TestHistory::thePanelIsATabBesideTheLayers()
{
    EditorFixture editor(40, 30);
    const QTabBar* tabs = PanelTabs(editor);
    QVERIFY(tabs);
    QCOMPARE(tabs->tabText(0), QString("Layers"));
    QCOMPARE(tabs->tabText(1), QString("Paths"));
    QCOMPARE(tabs->tabText(2), QString("History"));
    QCOMPARE(tabs->currentIndex(), 0);
}

void TestHistory::aPieceThatFloatsIsUndoneAsTheFirstChange()
{
    EditorFixture editor(40, 30);
    LXImage32 mask(6, 6);
    mask.Fill(LXRGBA32i(0xFF000000));
    editor.Document()->SetSelectionMask(mask, {5, 5});
    const QImage before = editor.Pixels();
    const auto* undo = editor.Window()->findChild<QAction*>("undoAction");
    QVERIFY(!undo->isEnabled());

    ToolDriver move = editor.Tool("Move tool");
    move.Drag({7.5, 7.5}, {17.5, 12.5});
    QCOMPARE(editor.HistoryTexts(), QStringList());
    QVERIFY(editor.Pixels() != before);
    QVERIFY(undo->isEnabled());

    move.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.HistoryTexts(), QStringList("Cut"));
    QCOMPARE(editor.Pixels(), before);
    QVERIFY(!undo->isEnabled());
}

ZK_REGISTER_TEST(tst_history, TestHistory)
#include "tst_history.moc"
