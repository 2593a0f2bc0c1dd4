#include "LXMenuModalTool.h"
#include "LXMenuModalToolBase.h"

#include "support/TestRegistry.h"
#include "support/ViewFixture.h"
#include "utils/FaultSeams.h"

#include <QAction>
#include <QMenu>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

namespace {
class MenuTool : public LXMenuModalToolBase
{
public:
    QList<QAction*> GetMenuActions() override { return {&menuAction}; }

    QList<QAction*> GetToolBarActions() override { return {&barAction}; }

    MainMenuEntries GetMainMenuEntries() override
    {
        MainMenuEntries entries;
        entries.insert(MainMenuEntry({1, 2, 3}, &menuAction));
        return entries;
    }

    QAction menuAction{"menu"};
    QAction barAction{"bar"};
};

void ExpectReport(const char* message)
{
    const QString pattern =
        QString("^Build date=.*, time=.*\\. Line=\\d+, file=\"src/LXMenuModalToolBase\"\\. %1$").arg(message);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(pattern));
}
} // namespace

class TestMenuModalTool : public QObject
{
    Q_OBJECT

private slots:
    void theAdapterHandsEverythingOn();
    void anAdapterWithoutAToolIsHarmless();
    void theAdapterOffersTwoInterfaces();
    void theAdapterOwnsTheTool();
    void aNewViewIsToldBeforeAndAfter();
    void theSameViewSendsNoSignal();
    void accessorsFollowTheView();
    void theDocumentLockIsTakenOnce();
    void anExternallyUnlockedDocumentIsReported();
    void aFailedUnlockIsReportedAndKept();
    void theViewLockKeepsOthersOut();
    void anExternallyUnlockedViewIsReported();
    void locksWithoutAViewAreRefused();
    void aToolThatDiesLeavesNoLock();
};

void TestMenuModalTool::theAdapterHandsEverythingOn()
{
    ViewFixture fixture;
    auto* tool = new MenuTool;
    LXMenuModalTool adapter(tool);
    QVERIFY(adapter.SetDocumentView(&fixture.ToolView()));
    QCOMPARE(tool->GetDocumentView(), &fixture.ToolView());
    QCOMPARE(adapter.GetMenuActions(), QList<QAction*>{&tool->menuAction});
    QCOMPARE(adapter.GetToolBarActions(), QList<QAction*>{&tool->barAction});
    QCOMPARE(adapter.GetMainMenuEntries().size(), std::size_t(1));
    QCOMPARE(tool->parent(), &adapter);
}

void TestMenuModalTool::anAdapterWithoutAToolIsHarmless()
{
    LXMenuModalTool adapter(nullptr);
    QVERIFY(!adapter.SetDocumentView(nullptr));
    QVERIFY(adapter.GetMenuActions().isEmpty());
    QVERIFY(adapter.GetToolBarActions().isEmpty());
    QVERIFY(adapter.GetMainMenuEntries().empty());
}

void TestMenuModalTool::theAdapterOffersTwoInterfaces()
{
    LXMenuModalTool adapter(nullptr);
    for (const char* name : {"LXMenuModalTool", "IDocumentViewTool/1.0", "IMainMenuActionList/1.0"}) {
        QVERIFY2(adapter.qt_metacast(name), name);
    }
    for (const char* name : {"ITool/1.0", "IDocumentViewState/1.0", "IWidgetTool/1.0"}) {
        QVERIFY2(!adapter.qt_metacast(name), name);
    }
}

void TestMenuModalTool::theAdapterOwnsTheTool()
{
    auto* tool = new MenuTool;
    const QPointer<QObject> guard(tool);
    delete new LXMenuModalTool(tool);
    QVERIFY(!guard);
}

void TestMenuModalTool::aNewViewIsToldBeforeAndAfter()
{
    ViewFixture fixture;
    MenuTool tool;
    QStringList heard;
    const auto note = [&](const char* when, IDocumentView* old, IDocumentView* now) {
        heard.append(QString("%1 %2 %3 %4").arg(when).arg(!old).arg(!now).arg(tool.GetDocumentView() == now));
    };
    connect(&tool, &LXMenuModalToolBase::DocumentViewChange, this,
            [&](IDocumentView* old, IDocumentView* now) { note("change", old, now); });
    connect(&tool, &LXMenuModalToolBase::DocumentViewChanged, this,
            [&](IDocumentView* old, IDocumentView* now) { note("changed", old, now); });

    QVERIFY(tool.SetDocumentView(&fixture.ToolView()));
    QVERIFY(tool.SetDocumentView(nullptr));
    QCOMPARE(heard, QStringList({"change 1 0 0", "changed 1 0 1", "change 0 1 0", "changed 0 1 1"}));
}

void TestMenuModalTool::theSameViewSendsNoSignal()
{
    ViewFixture fixture;
    MenuTool tool;
    tool.SetDocumentView(&fixture.ToolView());
    QSignalSpy before(&tool, &LXMenuModalToolBase::DocumentViewChange);
    QSignalSpy after(&tool, &LXMenuModalToolBase::DocumentViewChanged);
    QVERIFY(tool.SetDocumentView(&fixture.ToolView()));
    QCOMPARE(before.count() + after.count(), 0);
}

void TestMenuModalTool::accessorsFollowTheView()
{
    ViewFixture fixture;
    MenuTool tool;
    QVERIFY(!tool.GetDocument());
    QVERIFY(!tool.GetView());
    tool.SetDocumentView(&fixture.ToolView());
    QCOMPARE(tool.GetDocument(), fixture.Document());
    QCOMPARE(tool.GetView(), fixture.View());
}

void TestMenuModalTool::theDocumentLockIsTakenOnce()
{
    ViewFixture fixture;
    MenuTool tool;
    tool.SetDocumentView(&fixture.ToolView());
    QVERIFY(tool.LockDocument());
    QVERIFY(tool.LockDocument());
    QVERIFY(fixture.Document()->GetLockState());

    MenuTool other;
    other.SetDocumentView(&fixture.ToolView());
    QVERIFY(!other.LockDocument());

    QVERIFY(tool.UnlockDocument());
    QVERIFY(!fixture.Document()->GetLockState());
}

void TestMenuModalTool::anExternallyUnlockedDocumentIsReported()
{
    ViewFixture fixture;
    MenuTool tool;
    tool.SetDocumentView(&fixture.ToolView());
    tool.LockDocument();
    fixture.Document()->Unlock();
    ExpectReport("Document externally unlocked\\.");
    QVERIFY(tool.UnlockDocument());
}

void TestMenuModalTool::aFailedUnlockIsReportedAndKept()
{
    ViewFixture fixture;
    MenuTool tool;
    tool.SetDocumentView(&fixture.ToolView());
    QVERIFY(tool.LockDocument());
    FaultSeams::FailNth(FaultSeams::Seam::DocumentUnlock, 1);
    ExpectReport("Document unlock failed\\.");
    QVERIFY(!tool.UnlockDocument());
    QVERIFY(fixture.Document()->GetLockState());
    QVERIFY(tool.UnlockDocument());
    QVERIFY(!fixture.Document()->GetLockState());
}

void TestMenuModalTool::theViewLockKeepsOthersOut()
{
    ViewFixture fixture;
    MenuTool tool;
    tool.SetDocumentView(&fixture.ToolView());
    QVERIFY(tool.LockView());
    QVERIFY(tool.LockView());
    QCOMPARE(fixture.ToolView().GetState(), IDocumentView::LockBit);
    MenuTool other;
    other.SetDocumentView(&fixture.ToolView());
    QVERIFY(!other.LockView());
    QVERIFY(tool.UnlockView());
    QCOMPARE(fixture.ToolView().GetState(), quint64(0));
}

void TestMenuModalTool::anExternallyUnlockedViewIsReported()
{
    ViewFixture fixture;
    MenuTool tool;
    tool.SetDocumentView(&fixture.ToolView());
    tool.LockView();
    fixture.ToolView().Unlock(nullptr);
    ExpectReport("View externally unlocked\\.");
    QVERIFY(tool.UnlockView());
}

void TestMenuModalTool::locksWithoutAViewAreRefused()
{
    MenuTool tool;
    QVERIFY(!tool.LockDocument());
    QVERIFY(!tool.LockView());
    QVERIFY(tool.UnlockDocument());
    QVERIFY(tool.UnlockView());
}

void TestMenuModalTool::aToolThatDiesLeavesNoLock()
{
    ViewFixture fixture;
    auto tool = std::make_unique<MenuTool>();
    tool->SetDocumentView(&fixture.ToolView());
    tool->LockDocument();
    tool->LockView();
    tool.reset();
    QVERIFY(!fixture.Document()->GetLockState());
    QCOMPARE(fixture.ToolView().GetState(), quint64(0));
}

ZK_REGISTER_TEST(tst_menumodaltool, TestMenuModalTool)
#include "tst_menumodaltool.moc"
