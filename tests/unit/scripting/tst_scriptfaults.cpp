#include "gui/ZKDocumentView.h"
#include "support/EditorScriptFixture.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QTest>
#include <QTimer>
#include <QVector>

using FaultSeams::Seam;

/// `faults`: what a script arms fails at the time it said, and nothing stays armed after the script.
class TestScriptFaults : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void theyAreOnlyThereWhenAllowed();
    void theNthTimeFails_data();
    void theNthTimeFails();
    void resetDisarms();
    void theEndOfTheScriptDisarms();
    void slowDownKnowsItsPlaces();
    void aTakenHistoryComesBackAtTheEnd();
    void aViewIsNeededToTakeItsHistory();
    void aDocumentIsClosedUnasked();
    void aForeignPictureNeedsSizeAndColor();
};

void TestScriptFaults::theyAreOnlyThereWhenAllowed()
{
    EditorScriptFixture editor;
    editor.Check("expect.equal(typeof faults, 'undefined')");
    editor.Check("expect.equal(typeof faults, 'object')", true);
}

void TestScriptFaults::theNthTimeFails_data()
{
    QTest::addColumn<QString>("arm");
    QTest::addColumn<int>("seam");
    QTest::newRow("lock") << "faults.refuseLock" << int(Seam::DocumentLock);
    QTest::newRow("unlock") << "faults.refuseUnlock" << int(Seam::DocumentUnlock);
    QTest::newRow("write") << "faults.failWrite" << int(Seam::FileWrite);
    QTest::newRow("fill") << "faults.failFill" << int(Seam::FloodFill);
    QTest::newRow("tile") << "faults.failTile" << int(Seam::TileAllocation);
}

void TestScriptFaults::theNthTimeFails()
{
    QFETCH(QString, arm);
    QFETCH(int, seam);
    EditorScriptFixture editor;
    // The script waits while the passes are counted: at its end everything is disarmed.
    QVector<bool> passes;
    QTimer::singleShot(0, this, [&] {
        for (int pass = 0; pass < 3; ++pass)
            passes << FaultSeams::Pass(Seam(seam));
    });
    editor.Check(arm + "(2); wait(50)", true);
    QCOMPARE(passes, (QVector<bool>{false, true, false}));
}

void TestScriptFaults::resetDisarms()
{
    EditorScriptFixture editor;
    bool hasFailed = true;
    QTimer::singleShot(0, this, [&] { hasFailed = FaultSeams::Pass(Seam::FloodFill); });
    editor.Check("faults.failFill(); faults.reset(); wait(50)", true);
    QVERIFY(!hasFailed);
}

void TestScriptFaults::theEndOfTheScriptDisarms()
{
    EditorScriptFixture editor;
    editor.Check("faults.failFill(); faults.slowDown('fill', 100000)", true);
    QVERIFY(!FaultSeams::Pass(Seam::FloodFill));
}

void TestScriptFaults::slowDownKnowsItsPlaces()
{
    EditorScriptFixture editor;
    editor.Check(
        "for (const place of ['lock', 'unlock', 'tile', 'write', 'fill']) faults.slowDown(place, 0)\n"
        "expect.throws(() => faults.slowDown('brush', 1), 'fill, lock, tile, unlock, write')",
        true);
}

void TestScriptFaults::aTakenHistoryComesBackAtTheEnd()
{
    EditorScriptFixture editor(20, 10);
    LexoUndoStack* history = editor.View()->GetHistory();
    QVERIFY(history);
    LexoUndoStack* during = history;
    QTimer::singleShot(0, this, [&] { during = editor.View()->GetHistory(); });
    editor.Check("faults.takeHistory(); wait(50); faults.giveHistory(); faults.takeHistory()", true);
    QVERIFY(!during);
    QCOMPARE(editor.View()->GetHistory(), history);
}

void TestScriptFaults::aViewIsNeededToTakeItsHistory()
{
    EditorScriptFixture editor;
    editor.Check("expect.throws(() => faults.takeHistory(), 'no view'); faults.giveHistory()\n"
                 "expect.throws(() => faults.closeDocument(), 'no document')",
                 true);
}

void TestScriptFaults::aDocumentIsClosedUnasked()
{
    EditorScriptFixture editor(20, 10);
    editor.Check("layers.at(0).fill('red'); expect.ok(documents.active.modified)\n"
                 "faults.closeDocument(); idle(); expect.equal(documents.count, 0)",
                 true);
}

void TestScriptFaults::aForeignPictureNeedsSizeAndColor()
{
    EditorScriptFixture editor;
    editor.Check("expect.throws(() => faults.putForeignImage(0, 5, 'red'), '0 x 5')\n"
                 "expect.throws(() => faults.putForeignImage(5, 5, 'nored'), 'nored')\n"
                 "faults.putForeignImage(5, 4, 'red'); expect.equal(application.clipboardImage.height, 4)",
                 true);
}

ZK_REGISTER_TEST(tst_scriptfaults, TestScriptFaults)
#include "tst_scriptfaults.moc"
