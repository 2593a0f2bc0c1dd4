#include "app/DocumentFiles.h"
#include "app/Editor.h"
#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LexoAppKeyHook.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QAction>
#include <QGuiApplication>
#include <QLabel>
#include <QSemaphore>
#include <QTabBar>
#include <QTest>

#include <thread>

/// A fill that takes its time, held still by a locker on the layer that its job wants to read.
class TestRunningJob : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void theDocumentIsLockedAndShortcutsAreOff();
    void undoDoesNothingWhileTheJobRuns();
    void savingDoesNothingWhileTheJobRuns();
    void closingIsRefusedWhileTheJobRuns();
    void theTabsCloseButtonIsRefusedWhileTheJobRuns();
    void anotherTabMayBeChosenWhileTheJobRuns();
    void shutdownDuringAJobLeavesNothing();
    void aFailedJobLeavesNothing();
    void thePointerDoesNotWaitForAWorker();
};

namespace {
const QPointF Inside(5, 5);
} // namespace

void TestRunningJob::theDocumentIsLockedAndShortcutsAreOff()
{
    EditorFixture editor(40, 30);
    editor.Tool("Fillcan");
    {
        const LXDocumentLayerLockerForWrite hold(editor.Document(), 1);
        editor.GetInput().ClickInScene(editor.View(), Inside);
        QVERIFY(editor.Document()->GetLockState());
        QVERIFY(!LexoAppKeyHook::instance()->AreShortcutsEnabled());
        QVERIFY(QGuiApplication::overrideCursor());
        QCOMPARE(editor.HistoryTexts(), QStringList());
    }
    editor.Settle();
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill"});
}

void TestRunningJob::undoDoesNothingWhileTheJobRuns()
{
    EditorFixture editor(40, 30);
    ZKApplication::SetForeground(Qt::red);
    ToolDriver can = editor.Tool("Fillcan");
    can.Click(Inside);
    QCOMPARE(editor.History()->index(), 1);

    ZKApplication::SetForeground(Qt::blue);
    {
        const LXDocumentLayerLockerForWrite hold(editor.Document(), 1);
        editor.GetInput().ClickInScene(editor.View(), Inside);
        editor.GetInput().Key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(editor.History()->index(), 1);
        editor.Window()->findChild<QAction*>("undoAction")->trigger();
        QCOMPARE(editor.History()->index(), 1);
    }
    editor.Settle();
    QCOMPARE(editor.HistoryTexts(), (QStringList{"Fill", "Fill"}));
    QCOMPARE(editor.History()->index(), 2);
    QCOMPARE(editor.Pixels().pixelColor(5, 5), QColor(Qt::blue));
}

void TestRunningJob::savingDoesNothingWhileTheJobRuns()
{
    EditorFixture editor(40, 30);
    const QString path = editor.TempFile("later.png");
    editor.Tool("Fillcan");
    {
        const LXDocumentLayerLockerForWrite hold(editor.Document(), 1);
        editor.GetInput().ClickInScene(editor.View(), Inside);
        QVERIFY(!editor.Files()->SaveTo(editor.Document(), path));
    }
    editor.Settle();
    QVERIFY(editor.Files()->SaveTo(editor.Document(), path));
}

void TestRunningJob::closingIsRefusedWhileTheJobRuns()
{
    EditorFixture editor(40, 30);
    editor.Tool("Fillcan");
    {
        const LXDocumentLayerLockerForWrite hold(editor.Document(), 1);
        editor.GetInput().ClickInScene(editor.View(), Inside);
        editor.Window()->close();
        QVERIFY(editor.Window()->isVisible());
        QCOMPARE(LXDocumentManager::Instance()->GetDocuments().size(), 1);
    }
    editor.Settle();
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill"});
}

void TestRunningJob::theTabsCloseButtonIsRefusedWhileTheJobRuns()
{
    EditorFixture editor(40, 30);
    editor.Tool("Fillcan");
    auto* tabs = editor.Window()->GetDocumentArea()->findChild<QTabBar*>();
    {
        const LXDocumentLayerLockerForWrite hold(editor.Document(), 1);
        editor.GetInput().ClickInScene(editor.View(), Inside);
        editor.GetInput().Click(tabs->tabButton(0, QTabBar::RightSide));
        QVERIFY(editor.Document());
        QVERIFY(editor.Document()->GetLockState());
    }
    editor.Settle();
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill"});
}

void TestRunningJob::anotherTabMayBeChosenWhileTheJobRuns()
{
    EditorFixture editor(40, 30);
    LXDocumentInterface* first = editor.Document();
    LexoUndoStack* firstHistory = editor.History();
    LXDocumentInterface* second = editor.Files()->New(QSize(50, 20), Qt::white);
    auto* tabs = editor.Window()->GetDocumentArea()->findChild<QTabBar*>();
    editor.GetInput().Click(tabs, tabs->tabRect(0).center());
    QCOMPARE(editor.Document(), first);

    editor.Tool("Fillcan");
    FaultSeams::SlowDown(FaultSeams::Seam::FloodFill, 200);
    editor.GetInput().ClickInScene(editor.View(), Inside);
    QVERIFY(first->GetLockState());
    editor.GetInput().Click(tabs, tabs->tabRect(1).center());
    editor.Settle();
    QCOMPARE(editor.Document(), second);
    QCOMPARE(editor.HistoryTexts(), QStringList());
    // The fill landed where it was wanted before the tool left.
    QVERIFY(!first->GetLockState());
    QCOMPARE(firstHistory->count(), 1);
}

void TestRunningJob::shutdownDuringAJobLeavesNothing()
{
    EditorFixture editor(40, 30);
    editor.Tool("Fillcan");
    FaultSeams::SlowDown(FaultSeams::Seam::FloodFill, 200);
    editor.GetInput().ClickInScene(editor.View(), Inside);
    QVERIFY(editor.Document()->GetLockState());

    editor.GetEditor().Shutdown();
    QVERIFY(LexoAppKeyHook::instance()->AreShortcutsEnabled());
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestRunningJob::aFailedJobLeavesNothing()
{
    EditorFixture editor(40, 30);
    const QImage before = editor.Pixels();
    ToolDriver can = editor.Tool("Fillcan");
    FaultSeams::FailNth(FaultSeams::Seam::FloodFill, 1);

    QString title;
    editor.GetInput().WhenModalShows([&](QWidget* box) {
        title = box->windowTitle();
        editor.GetInput().Key(Qt::Key_Escape);
    });
    can.Click(Inside);
    QVERIFY2(title.contains("Operation error"), qPrintable(title));
    QCOMPARE(editor.HistoryTexts(), QStringList());
    QCOMPARE(editor.Pixels(), before);

    can.Click(Inside);
    QCOMPARE(editor.HistoryTexts(), QStringList{"Fill"});
}

void TestRunningJob::thePointerDoesNotWaitForAWorker()
{
    EditorFixture editor(40, 30);
    // What is painted already needs no locker any more.
    editor.View()->viewport()->repaint();
    QVERIFY(editor.Document()->Lock());
    QSemaphore isHeld;
    QSemaphore mayEnd;
    bool wasLetGo = false;
    std::thread worker([&] {
        const LXDocumentLayerLockerForWrite hold(editor.Document(), 1);
        isHeld.release();
        wasLetGo = mayEnd.tryAcquire(1, 5000);
    });
    isHeld.acquire();

    const auto* position = editor.Window()->findChild<QLabel*>("positionReadout");
    editor.GetInput().MoveInScene(editor.View(), QPointF(12.5, 7.5));
    QTRY_COMPARE(position->text().simplified(), QString("12, 7"));
    mayEnd.release();
    worker.join();
    QVERIFY(wasLetGo);
    QVERIFY(editor.Document()->Unlock());
}

ZK_REGISTER_TEST(tst_running_job, TestRunningJob)
#include "tst_running_job.moc"
