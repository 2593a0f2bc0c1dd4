#include "RecordedCommand.h"

#include "history/LexoUndoStack.h"
#include "history/PushOrRun.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <functional>

namespace {
/// A stack whose signals and commands go into one log.
struct LoggedStack
{
    LoggedStack()
    {
        QObject::connect(&stack, &LexoUndoStack::aboutIndexChanged, [this] { log << "aboutIndexChanged"; });
        QObject::connect(&stack, &LexoUndoStack::aboutCommit, [this] { log << "aboutCommit"; });
        QObject::connect(&stack, &LexoUndoStack::indexChanged,
                         [this](int index) { log << QString("indexChanged %1").arg(index); });
    }

    RecordedCommand* Make(const QString& name, qint64 cost = 0)
    {
        return new RecordedCommand(name, log, cost);
    }

    QStringList TakeLog() { return std::exchange(log, QStringList()); }

    QStringList log;
    LexoUndoStack stack;
};
} // namespace

Q_DECLARE_METATYPE(std::function<void(LoggedStack&)>)

class TestLexoUndoStack : public QObject
{
    Q_OBJECT

private slots:
    void pushRunsTheCommandBetweenItsSignals();
    void pushDropsWhatWasUndone();
    void aCommandThatThrowsIsDroppedAndTheListStays();
    void pushDelayedHoldsTheCommandOutsideTheList();
    void commitClosesTheDelayedCommand();
    void commitWithNothingOpenOnlyAsks();
    void everyChangeClosesADelayedCommandFirst_data();
    void everyChangeClosesADelayedCommandFirst();
    void undoTakesBackADelayedCommand();
    void handlersOfAboutIndexChangedMayPush();
    void aMacroIsOneStepWithOneSignal();
    void macrosNest();
    void anEmptyMacroLeavesNoStep();
    void anOpenMacroRefusesUndo();
    void anAbortedMacroIsTakenBackAndLeavesNoStep();
    void anAbortThatFailsKeepsTheStep();
    void aDelayedCommandIsClosedIntoTheMacro();
    void aMacroThatFailsHalfwayIsTakenBack();
    void setIndexWalksBothWaysAndSendsOneSignal();
    void aWalkThatThrowsTellsHowFarItCame();
    void whatWasClosedBeforeAThrowIsTold_data();
    void whatWasClosedBeforeAThrowIsTold();
    void aStepWhoseCostCannotBeToldIsKept();
    void aDelayedCommandThatCannotBeClosedStaysOpen_data();
    void aDelayedCommandThatCannotBeClosedStaysOpen();
    void aMacroEndsThoughItsDelayedCommandStaysOpen_data();
    void aMacroEndsThoughItsDelayedCommandStaysOpen();
    void stepsPushedAsOneAreOne();
    void stepsPushedAsOneAreTakenBackWhenOneFails();
    void nothingToUndoOnlyAsks();
    void textsTellWhatUndoAndRedoWouldDo();
    void cleanStateFollowsTheIndex();
    void clearForgetsCommandsButNotThatTheDocumentChanged();
    void theStepLimitForgetsTheOldest();
    void theMemoryLimitForgetsTheOldest();
    void theMemoryLimitLeavesAnOpenStep();
    void theMemoryLimitLeavesAnOpenMacro();
    void theMemoryLimitLeavesWhatIsUndone();
    void dataIsRefusedWhenThereIsSomeAlready();
    void aCommandWithoutDataDoesNothing();
};

void TestLexoUndoStack::pushRunsTheCommandBetweenItsSignals()
{
    LoggedStack logged;
    logged.stack.push(logged.Make("a"));
    QCOMPARE(logged.TakeLog(),
             QStringList({"aboutIndexChanged", "a begin", "a redo", "a end", "indexChanged 1"}));
    logged.stack.undo();
    QCOMPARE(logged.TakeLog(),
             QStringList({"aboutIndexChanged", "a begin", "a undo", "a end", "indexChanged 0"}));
    logged.stack.redo();
    QCOMPARE(logged.TakeLog(),
             QStringList({"aboutIndexChanged", "a begin", "a redo", "a end", "indexChanged 1"}));
}

void TestLexoUndoStack::pushDropsWhatWasUndone()
{
    LoggedStack logged;
    logged.stack.push(logged.Make("a"));
    logged.stack.push(logged.Make("b"));
    logged.stack.undo();
    logged.TakeLog();
    logged.stack.push(logged.Make("c"));
    QCOMPARE(logged.TakeLog(),
             QStringList({"aboutIndexChanged", "c begin", "c redo", "c end", "b deleted", "indexChanged 2"}));
    QCOMPARE(logged.stack.count(), 2);
    QCOMPARE(logged.stack.text(1), QString("c"));
}

void TestLexoUndoStack::aCommandThatThrowsIsDroppedAndTheListStays()
{
    LoggedStack logged;
    logged.stack.push(logged.Make("a"));
    logged.stack.push(logged.Make("b"));
    logged.stack.undo();
    RecordedCommand* failing = logged.Make("failing");
    failing->failsOnRedo = true;
    logged.TakeLog();
    QVERIFY_EXCEPTION_THROWN(logged.stack.push(failing), std::runtime_error);
    QCOMPARE(logged.TakeLog(), QStringList({"aboutIndexChanged", "failing begin", "failing deleted"}));
    QCOMPARE(logged.stack.count(), 2);
    QCOMPARE(logged.stack.redoText(), QString("b"));
}

void TestLexoUndoStack::pushDelayedHoldsTheCommandOutsideTheList()
{
    LoggedStack logged;
    logged.stack.pushDelayed(logged.Make("a"));
    QCOMPARE(logged.TakeLog(), QStringList({"aboutIndexChanged", "a begin"}));
    QCOMPARE(logged.stack.count(), 0);
    QVERIFY(logged.stack.canUndo());
    QCOMPARE(logged.stack.undoText(), QString("a"));
}

void TestLexoUndoStack::commitClosesTheDelayedCommand()
{
    LoggedStack logged;
    logged.stack.pushDelayed(logged.Make("a"));
    logged.TakeLog();
    logged.stack.commit();
    QCOMPARE(logged.TakeLog(), QStringList({"aboutCommit", "a close", "indexChanged 1"}));
    QCOMPARE(logged.stack.text(0), QString("a"));
}

void TestLexoUndoStack::commitWithNothingOpenOnlyAsks()
{
    LoggedStack logged;
    logged.stack.commit();
    QCOMPARE(logged.TakeLog(), QStringList({"aboutCommit"}));
}

void TestLexoUndoStack::everyChangeClosesADelayedCommandFirst_data()
{
    using Change = std::function<void(LoggedStack&)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("push") << Change([](LoggedStack& logged) {
        logged.stack.push(logged.Make("b"));
    }) << QStringList({"aboutIndexChanged", "a close", "b begin", "b redo", "b end", "indexChanged 2"});
    QTest::newRow("pushDelayed") << Change([](LoggedStack& logged) {
        logged.stack.pushDelayed(logged.Make("b"));
    }) << QStringList({"aboutIndexChanged", "a close", "b begin"});
    QTest::newRow("undo") << Change([](LoggedStack& logged) {
        logged.stack.undo();
    }) << QStringList({"aboutIndexChanged", "a close", "a begin", "a undo", "a end", "indexChanged 0"});
    QTest::newRow("redo") << Change([](LoggedStack& logged) { logged.stack.redo(); })
                          << QStringList({"aboutIndexChanged", "a close", "indexChanged 1"});
    QTest::newRow("setIndex") << Change([](LoggedStack& logged) {
        logged.stack.setIndex(0);
    }) << QStringList({"aboutIndexChanged", "a close", "a begin", "a undo", "a end", "indexChanged 0"});
    QTest::newRow("clear") << Change([](LoggedStack& logged) { logged.stack.clear(); })
                           << QStringList({"aboutIndexChanged", "a close", "a deleted", "indexChanged 0"});
    QTest::newRow("beginMacro") << Change([](LoggedStack& logged) { logged.stack.beginMacro("m"); })
                                << QStringList({"aboutIndexChanged", "a close"});
}

void TestLexoUndoStack::everyChangeClosesADelayedCommandFirst()
{
    using Change = std::function<void(LoggedStack&)>;
    QFETCH(Change, change);
    QFETCH(QStringList, expected);

    LoggedStack logged;
    logged.stack.pushDelayed(logged.Make("a"));
    logged.TakeLog();
    change(logged);
    QCOMPARE(logged.TakeLog(), expected);
}

void TestLexoUndoStack::undoTakesBackADelayedCommand()
{
    LoggedStack logged;
    logged.stack.push(logged.Make("a"));
    logged.stack.pushDelayed(logged.Make("b"));
    logged.stack.undo();
    QCOMPARE(logged.stack.index(), 1);
    QCOMPARE(logged.stack.count(), 2);
    QCOMPARE(logged.stack.redoText(), QString("b"));
}

void TestLexoUndoStack::handlersOfAboutIndexChangedMayPush()
{
    LoggedStack logged;
    logged.stack.push(logged.Make("a"));
    bool isFloating = true;
    QObject::connect(&logged.stack, &LexoUndoStack::aboutIndexChanged, [&] {
        if (!std::exchange(isFloating, false)) return;
        logged.stack.beginMacro("Cut");
        logged.stack.push(logged.Make("erase"));
        logged.stack.push(logged.Make("paste"));
        logged.stack.endMacro();
    });
    logged.TakeLog();
    logged.stack.undo();
    QCOMPARE(
        logged.TakeLog(),
        QStringList({"aboutIndexChanged", "aboutIndexChanged", "erase begin", "erase redo", "erase end",
                     "paste begin", "paste redo", "paste end", "indexChanged 2", "paste begin", "paste undo",
                     "paste end", "erase begin", "erase undo", "erase end", "indexChanged 1"}));
    QCOMPARE(logged.stack.redoText(), QString("Cut"));
}

void TestLexoUndoStack::aMacroIsOneStepWithOneSignal()
{
    LoggedStack logged;
    logged.stack.beginMacro("both");
    logged.stack.push(logged.Make("a"));
    logged.stack.push(logged.Make("b"));
    logged.stack.endMacro();
    QCOMPARE(logged.TakeLog(), QStringList({"aboutIndexChanged", "a begin", "a redo", "a end", "b begin",
                                            "b redo", "b end", "indexChanged 1"}));
    QCOMPARE(logged.stack.text(0), QString("both"));
    logged.stack.undo();
    QCOMPARE(logged.TakeLog(), QStringList({"aboutIndexChanged", "b begin", "b undo", "b end", "a begin",
                                            "a undo", "a end", "indexChanged 0"}));
    logged.stack.redo();
    QCOMPARE(logged.TakeLog(), QStringList({"aboutIndexChanged", "a begin", "a redo", "a end", "b begin",
                                            "b redo", "b end", "indexChanged 1"}));
}

void TestLexoUndoStack::macrosNest()
{
    LoggedStack logged;
    logged.stack.beginMacro("outer");
    logged.stack.push(logged.Make("a"));
    logged.stack.beginMacro("inner");
    logged.stack.push(logged.Make("b"));
    logged.stack.endMacro();
    QCOMPARE(logged.stack.count(), 0);
    logged.stack.endMacro();
    QCOMPARE(logged.stack.count(), 1);
    QCOMPARE(logged.stack.undoText(), QString("outer"));
    logged.TakeLog();
    logged.stack.undo();
    QCOMPARE(logged.TakeLog().filter("undo"), QStringList({"b undo", "a undo"}));
}

void TestLexoUndoStack::anEmptyMacroLeavesNoStep()
{
    LoggedStack logged;
    logged.stack.beginMacro("nothing");
    logged.stack.endMacro();
    QCOMPARE(logged.stack.count(), 0);
    QVERIFY(logged.stack.isClean());
}

void TestLexoUndoStack::anOpenMacroRefusesUndo()
{
    LoggedStack logged;
    logged.stack.push(logged.Make("a"));
    logged.stack.beginMacro("open");
    logged.TakeLog();
    QVERIFY(!logged.stack.canUndo());
    logged.stack.undo();
    logged.stack.redo();
    logged.stack.setIndex(0);
    logged.stack.clear();
    QCOMPARE(logged.TakeLog(), QStringList());
    QCOMPARE(logged.stack.index(), 1);
    logged.stack.endMacro();
}

void TestLexoUndoStack::anAbortedMacroIsTakenBackAndLeavesNoStep()
{
    LoggedStack logged;
    logged.stack.abortMacro();
    QCOMPARE(logged.TakeLog(), QStringList());
    logged.stack.beginMacro("m");
    logged.stack.push(logged.Make("a"));
    logged.stack.push(logged.Make("b"));
    logged.TakeLog();
    logged.stack.abortMacro();
    QCOMPARE(logged.TakeLog().filter("undo"), QStringList({"b undo", "a undo"}));
    QVERIFY(!logged.stack.isMacroOpen());
    QCOMPARE(logged.stack.count(), 0);
    QVERIFY(logged.stack.isClean());
}

void TestLexoUndoStack::anAbortThatFailsKeepsTheStep()
{
    LoggedStack logged;
    RecordedCommand* stubborn = logged.Make("a");
    stubborn->failsOnUndo = true;
    logged.stack.beginMacro("m");
    logged.stack.push(stubborn);
    QVERIFY_EXCEPTION_THROWN(logged.stack.abortMacro(), std::runtime_error);
    QVERIFY(!logged.stack.isMacroOpen());
    QCOMPARE(logged.stack.undoText(), QString("m"));
}

void TestLexoUndoStack::aDelayedCommandIsClosedIntoTheMacro()
{
    LoggedStack logged;
    logged.stack.beginMacro("m");
    logged.stack.pushDelayed(logged.Make("a"));
    logged.stack.endMacro();
    QCOMPARE(logged.TakeLog(), QStringList({"aboutIndexChanged", "a begin", "a close", "indexChanged 1"}));
    logged.stack.undo();
    QVERIFY(logged.TakeLog().contains("a undo"));
}

void TestLexoUndoStack::aMacroThatFailsHalfwayIsTakenBack()
{
    LoggedStack logged;
    RecordedCommand* first = logged.Make("first");
    logged.stack.beginMacro("m");
    logged.stack.push(first);
    logged.stack.push(logged.Make("second"));
    logged.stack.endMacro();
    first->failsOnUndo = true;
    logged.TakeLog();
    QVERIFY_EXCEPTION_THROWN(logged.stack.undo(), std::runtime_error);
    QCOMPARE(logged.TakeLog(), QStringList({"aboutIndexChanged", "second begin", "second undo", "second end",
                                            "first begin", "second begin", "second redo", "second end"}));
    QCOMPARE(logged.stack.index(), 1);
}

void TestLexoUndoStack::setIndexWalksBothWaysAndSendsOneSignal()
{
    LoggedStack logged;
    for (const char* name : {"a", "b", "c"}) {
        logged.stack.push(logged.Make(name));
    }
    logged.TakeLog();
    logged.stack.setIndex(1);
    QCOMPARE(logged.TakeLog().filter(QRegExp("undo|Changed")),
             QStringList({"aboutIndexChanged", "c undo", "b undo", "indexChanged 1"}));
    logged.stack.setIndex(99);
    QCOMPARE(logged.TakeLog().filter(QRegExp("redo|Changed")),
             QStringList({"aboutIndexChanged", "b redo", "c redo", "indexChanged 3"}));
    logged.stack.setIndex(3);
    QCOMPARE(logged.TakeLog(), QStringList({"aboutIndexChanged"}));
}

void TestLexoUndoStack::aWalkThatThrowsTellsHowFarItCame()
{
    LoggedStack logged;
    RecordedCommand* failing = logged.Make("a");
    logged.stack.push(failing);
    logged.stack.push(logged.Make("b"));
    failing->failsOnUndo = true;
    logged.TakeLog();
    QVERIFY_EXCEPTION_THROWN(logged.stack.setIndex(0), std::runtime_error);
    QCOMPARE(logged.TakeLog().filter("ndexChanged"), QStringList({"aboutIndexChanged", "indexChanged 1"}));
    QCOMPARE(logged.stack.index(), 1);

    QVERIFY_EXCEPTION_THROWN(logged.stack.setIndex(0), std::runtime_error);
    QCOMPARE(logged.TakeLog().filter("ndexChanged"), QStringList({"aboutIndexChanged"}));
}

void TestLexoUndoStack::whatWasClosedBeforeAThrowIsTold_data()
{
    QTest::addColumn<bool>("isUndo");
    QTest::newRow("push") << false;
    QTest::newRow("undo") << true;
}

void TestLexoUndoStack::whatWasClosedBeforeAThrowIsTold()
{
    QFETCH(bool, isUndo);
    LoggedStack logged;
    RecordedCommand* open = logged.Make("open");
    open->failsOnUndo = true;
    logged.stack.pushDelayed(open);
    logged.TakeLog();
    if (isUndo) {
        QVERIFY_EXCEPTION_THROWN(logged.stack.undo(), std::runtime_error);
    } else {
        RecordedCommand* failing = logged.Make("failing");
        failing->failsOnRedo = true;
        QVERIFY_EXCEPTION_THROWN(logged.stack.push(failing), std::runtime_error);
    }
    QCOMPARE(logged.TakeLog().filter(QRegExp("close|ndexChanged")),
             QStringList({"aboutIndexChanged", "open close", "indexChanged 1"}));
    QCOMPARE(logged.stack.undoText(), QString("open"));
}

void TestLexoUndoStack::aStepWhoseCostCannotBeToldIsKept()
{
    LoggedStack logged;
    logged.stack.push(logged.Make("a", 100));
    RecordedCommand* silent = logged.Make("b", 100);
    silent->failsOnCost = true;
    logged.stack.push(silent);
    QCOMPARE(logged.stack.index(), 2);
    QCOMPARE(logged.stack.memoryCost(), qint64(100));
    QVERIFY(logged.TakeLog().contains("indexChanged 2"));
    logged.stack.undo();
    QVERIFY(logged.TakeLog().contains("b undo"));
}

void TestLexoUndoStack::aDelayedCommandThatCannotBeClosedStaysOpen_data()
{
    QTest::addColumn<std::function<void(LoggedStack&)>>("change");
    const auto row = [](const char* name, const std::function<void(LoggedStack&)>& change) {
        QTest::newRow(name) << change;
    };
    row("commit", [](LoggedStack& logged) { logged.stack.commit(); });
    row("push", [](LoggedStack& logged) { logged.stack.push(logged.Make("late")); });
    row("pushDelayed", [](LoggedStack& logged) { logged.stack.pushDelayed(logged.Make("late")); });
    row("undo", [](LoggedStack& logged) { logged.stack.undo(); });
    row("redo", [](LoggedStack& logged) { logged.stack.redo(); });
    row("setIndex", [](LoggedStack& logged) { logged.stack.setIndex(0); });
    row("beginMacro", [](LoggedStack& logged) { logged.stack.beginMacro("m"); });
}

void TestLexoUndoStack::aDelayedCommandThatCannotBeClosedStaysOpen()
{
    QFETCH(std::function<void(LoggedStack&)>, change);
    LoggedStack logged;
    logged.stack.push(logged.Make("a"));
    RecordedCommand* open = logged.Make("b");
    logged.stack.pushDelayed(open);
    open->failsOnClose = true;
    QVERIFY_EXCEPTION_THROWN(change(logged), std::runtime_error);
    QVERIFY(logged.stack.isDelayedOpen());
    QVERIFY(!logged.stack.isMacroOpen());
    QCOMPARE(logged.stack.index(), 1);
    QCOMPARE(logged.stack.undoText(), QString("b"));
    QVERIFY(!logged.TakeLog().contains("b deleted"));

    open->failsOnClose = false;
    logged.stack.commit();
    QCOMPARE(logged.stack.index(), 2);
    logged.TakeLog();
    logged.stack.undo();
    QVERIFY(logged.TakeLog().contains("b undo"));
}

void TestLexoUndoStack::aMacroEndsThoughItsDelayedCommandStaysOpen_data()
{
    QTest::addColumn<std::function<void(LoggedStack&)>>("end");
    QTest::newRow("end") << std::function<void(LoggedStack&)>(
        [](LoggedStack& logged) { logged.stack.endMacro(); });
    QTest::newRow("abort") << std::function<void(LoggedStack&)>(
        [](LoggedStack& logged) { logged.stack.abortMacro(); });
}

void TestLexoUndoStack::aMacroEndsThoughItsDelayedCommandStaysOpen()
{
    QFETCH(std::function<void(LoggedStack&)>, end);
    LoggedStack logged;
    logged.stack.beginMacro("m");
    logged.stack.push(logged.Make("a"));
    RecordedCommand* open = logged.Make("b");
    logged.stack.pushDelayed(open);
    open->failsOnClose = true;
    QVERIFY_EXCEPTION_THROWN(end(logged), std::runtime_error);
    QVERIFY(!logged.stack.isMacroOpen());
    QVERIFY(logged.stack.isDelayedOpen());
    QCOMPARE(logged.stack.count(), 1);
    QVERIFY(logged.TakeLog().contains("indexChanged 1"));

    open->failsOnClose = false;
    logged.stack.undo();
    QVERIFY(logged.TakeLog().contains("b undo"));
    logged.stack.undo();
    QVERIFY(logged.TakeLog().contains("a undo"));
    QCOMPARE(logged.stack.index(), 0);
}

void TestLexoUndoStack::stepsPushedAsOneAreOne()
{
    LoggedStack logged;
    PushAsOneStep(&logged.stack, "both", [&] {
        logged.stack.push(logged.Make("a"));
        logged.stack.push(logged.Make("b"));
    });
    QCOMPARE(logged.stack.count(), 1);
    QCOMPARE(logged.stack.undoText(), QString("both"));
    int runs = 0;
    PushAsOneStep(nullptr, "both", [&] { ++runs; });
    QCOMPARE(runs, 1);
}

void TestLexoUndoStack::stepsPushedAsOneAreTakenBackWhenOneFails()
{
    LoggedStack logged;
    RecordedCommand* failing = logged.Make("b");
    failing->failsOnRedo = true;
    const auto pushBoth = [&] {
        logged.stack.push(logged.Make("a"));
        logged.stack.push(failing);
    };
    QVERIFY_EXCEPTION_THROWN(PushAsOneStep(&logged.stack, "both", pushBoth), std::runtime_error);
    QVERIFY(logged.TakeLog().contains("a undo"));
    QVERIFY(!logged.stack.isMacroOpen());
    QCOMPARE(logged.stack.count(), 0);
}

void TestLexoUndoStack::nothingToUndoOnlyAsks()
{
    LoggedStack logged;
    logged.stack.undo();
    logged.stack.redo();
    QCOMPARE(logged.TakeLog(), QStringList({"aboutIndexChanged", "aboutIndexChanged"}));
}

void TestLexoUndoStack::textsTellWhatUndoAndRedoWouldDo()
{
    LoggedStack logged;
    QCOMPARE(logged.stack.undoText(), QString());
    logged.stack.push(logged.Make("a"));
    logged.stack.push(logged.Make("b"));
    logged.stack.undo();
    QCOMPARE(logged.stack.undoText(), QString("a"));
    QCOMPARE(logged.stack.redoText(), QString("b"));
    QVERIFY(logged.stack.canUndo());
    QVERIFY(logged.stack.canRedo());
    QCOMPARE(logged.stack.text(-1), QString());
    QCOMPARE(logged.stack.text(2), QString());
}

void TestLexoUndoStack::cleanStateFollowsTheIndex()
{
    LoggedStack logged;
    QList<bool> told;
    connect(&logged.stack, &LexoUndoStack::cleanChanged, this, [&told](bool clean) { told << clean; });
    logged.stack.push(logged.Make("a"));
    logged.stack.setClean();
    logged.stack.push(logged.Make("b"));
    logged.stack.undo();
    QCOMPARE(told, QList<bool>({false, true, false, true}));

    logged.stack.undo();
    logged.stack.push(logged.Make("c"));
    logged.stack.undo();
    logged.stack.redo();
    QVERIFY2(!logged.stack.isClean(), "the clean state was among the commands that were dropped");

    logged.stack.setClean();
    logged.stack.pushDelayed(logged.Make("d"));
    QVERIFY(!logged.stack.isClean());
    logged.stack.undo();
    QVERIFY(logged.stack.isClean());
    logged.stack.resetClean();
    QVERIFY(!logged.stack.isClean());
}

void TestLexoUndoStack::clearForgetsCommandsButNotThatTheDocumentChanged()
{
    LoggedStack logged;
    logged.stack.push(logged.Make("a"));
    logged.stack.clear();
    QCOMPARE(logged.stack.count(), 0);
    QVERIFY(!logged.stack.isClean());
    logged.stack.setClean();
    logged.stack.clear();
    QVERIFY(logged.stack.isClean());
}

void TestLexoUndoStack::theStepLimitForgetsTheOldest()
{
    LoggedStack logged;
    logged.stack.setStepLimit(2);
    for (const char* name : {"a", "b", "c"}) {
        logged.stack.push(logged.Make(name));
    }
    QCOMPARE(logged.stack.count(), 2);
    QCOMPARE(logged.stack.index(), 2);
    QCOMPARE(logged.stack.text(0), QString("b"));
    logged.stack.setIndex(0);
    QVERIFY2(!logged.stack.isClean(), "the state on disk can't be reached any more");
}

void TestLexoUndoStack::theMemoryLimitForgetsTheOldest()
{
    LoggedStack logged;
    logged.stack.setMemoryLimit(100);
    logged.stack.push(logged.Make("a", 60));
    logged.stack.push(logged.Make("b", 60));
    QCOMPARE(logged.stack.count(), 1);
    QCOMPARE(logged.stack.text(0), QString("b"));

    logged.stack.beginMacro("m");
    logged.stack.push(logged.Make("c", 70));
    logged.stack.push(logged.Make("d", 70));
    logged.stack.endMacro();
    QCOMPARE(logged.stack.count(), 1);
    QCOMPARE(logged.stack.text(0), QString("m"));
}

void TestLexoUndoStack::theMemoryLimitLeavesAnOpenStep()
{
    LoggedStack logged;
    logged.stack.push(logged.Make("a", 100));
    logged.stack.pushDelayed(logged.Make("b", 100));
    logged.stack.setMemoryLimit(1);
    QVERIFY(logged.stack.isDelayedOpen());
    logged.stack.commit();
    QCOMPARE(logged.stack.count(), 1);
    QCOMPARE(logged.stack.undoText(), QString("b"));
    logged.TakeLog();
    logged.stack.undo();
    QVERIFY(logged.TakeLog().contains("b undo"));
    QCOMPARE(logged.stack.redoText(), QString("b"));
}

void TestLexoUndoStack::theMemoryLimitLeavesAnOpenMacro()
{
    LoggedStack logged;
    logged.stack.push(logged.Make("a", 100));
    logged.stack.beginMacro("m");
    logged.stack.push(logged.Make("b", 100));
    logged.stack.push(logged.Make("c", 100));
    logged.stack.setMemoryLimit(1);
    QVERIFY(logged.stack.isMacroOpen());
    logged.stack.push(logged.Make("d", 100));
    logged.stack.endMacro();
    QCOMPARE(logged.stack.count(), 1);
    logged.TakeLog();
    logged.stack.undo();
    QCOMPARE(logged.TakeLog().filter("undo"), QStringList({"d undo", "c undo", "b undo"}));
}

/// What can still be done again is worth as much as what can be undone, and nothing older is left to drop.
void TestLexoUndoStack::theMemoryLimitLeavesWhatIsUndone()
{
    LoggedStack logged;
    for (const char* name : {"a", "b", "c"})
        logged.stack.push(logged.Make(name, 100));
    logged.stack.setIndex(0);
    logged.stack.setMemoryLimit(1);
    QCOMPARE(logged.stack.count(), 3);
    logged.TakeLog();
    logged.stack.redo();
    QVERIFY(logged.TakeLog().contains("a redo"));
    QCOMPARE(logged.stack.index(), 1);
}

void TestLexoUndoStack::dataIsRefusedWhenThereIsSomeAlready()
{
    QStringList log;
    RecordedCommand command("a", log);
    QVERIFY(!command.SetCommandData(nullptr));
    RecordedData second;
    QVERIFY2(!command.SetCommandData(&second), "a command keeps its first data");
}

void TestLexoUndoStack::aCommandWithoutDataDoesNothing()
{
    class Bare : public LexoCommand
    {
    public:
        void RedoExecute(LexoCommandData*) override { QFAIL("no data to redo with"); }

        void UndoExecute(LexoCommandData*) override { QFAIL("no data to undo with"); }

    protected:
        bool AcceptsData(const LexoCommandData*) const override { return false; }
    };

    Bare command;
    RecordedData refused;
    QVERIFY(!command.SetCommandData(&refused));
    command.redo();
    command.undo();
    QCOMPARE(command.GetMemoryCost(), qint64(0));
}

ZK_REGISTER_TEST(tst_lexoundostack, TestLexoUndoStack)
#include "tst_lexoundostack.moc"
