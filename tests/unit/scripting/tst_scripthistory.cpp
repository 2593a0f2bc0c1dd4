#include "history/LexoUndoStack.h"
#include "support/EditorScriptFixture.h"
#include "support/TestRegistry.h"

/// `history`
class TestScriptHistory : public QObject
{
    Q_OBJECT

private slots:
    void stepsAreToldAndTakenBack();
    void settingTheIndexGoesThere();
    void aGroupOfStepsIsAMacro();
    void cleanIsTheSavedState();
};

void TestScriptHistory::stepsAreToldAndTakenBack()
{
    EditorScriptFixture editor(4, 3);
    editor.Check(R"(
        expect.equal([history.count, history.canUndo, history.canRedo, history.undoText], [0, false, false, ""])
        expect.throws(function() { history.undo() }, "There is nothing to undo.")
        layers.at(0).opacity = 0.5
        layers.at(0).visible = false
        expect.equal(history.texts, ["Layer opacity", "Hide layer"])
        history.undo()
        expect.equal([history.index, history.undoText, history.redoText], [1, "Layer opacity", "Hide layer"])
        expect.equal(layers.at(0).visible, true)
        history.redo()
        expect.equal([history.index, history.canRedo, layers.at(0).visible], [2, false, false])
        expect.throws(function() { history.redo() }, "There is nothing to redo.")
    )");
    QCOMPARE(editor.History()->index(), 2);
}

void TestScriptHistory::settingTheIndexGoesThere()
{
    EditorScriptFixture editor(4, 3);
    editor.Check(R"(
        for (const opacity of [0.1, 0.2, 0.3]) layers.at(0).opacity = opacity
        history.index = 1
        expect.equal(layers.at(0).opacity, 0.1)
        history.index = 3
        expect.equal(layers.at(0).opacity, 0.3)
        expect.throws(function() { history.index = 4 }, "The history has 3 steps.")
        expect.throws(function() { history.index = -1 }, "The history has 3 steps.")
    )");
}

void TestScriptHistory::aGroupOfStepsIsAMacro()
{
    EditorScriptFixture editor(4, 3);
    editor.Check(R"(
        const first = layers.add(), second = layers.add()
        layers.select([first, second])
        widgets.find("LayersWidget/m_pDeleteBtn").click()
        expect.equal(history.texts, ["New layer", "New layer", "Delete layers"])
        expect.equal([0, 1, 2].map(index => history.isMacro(index)), [false, false, true])
        expect.equal(history.macroOpen, false)
        expect.throws(function() { history.isMacro(3) }, "from 0 to 2")
    )");
    editor.History()->beginMacro("two");
    editor.Check("expect.equal(history.macroOpen, true)");
    editor.History()->endMacro();
}

void TestScriptHistory::cleanIsTheSavedState()
{
    EditorScriptFixture editor(4, 3);
    editor.Check(QString(R"(
        expect.equal(history.clean, true)
        layers.at(0).name = "Sky"
        expect.equal(history.clean, false)
        documents.active.save(%1)
        expect.equal(history.clean, true)
        history.undo()
        expect.equal(history.clean, false)
    )")
                     .arg(editor.Quoted("sky.png")));
}

#include "tst_scripthistory.moc"
ZK_REGISTER_TEST(tst_scripthistory, TestScriptHistory)
