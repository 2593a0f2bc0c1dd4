#include "LXViewTool.h"
#include "RecordingTool.h"

#include "support/TestRegistry.h"
#include "support/ViewFixture.h"

#include <QSignalSpy>
#include <QTest>

class TestViewTool : public QObject
{
    Q_OBJECT

private slots:
    void everyCallOnAnEmptyAdapterIsHarmless();
    void theAdapterBuildsAndOwnsItsTool();
    void callsGoToTheTool();
    void viewStateChangesComeAsTheToolsSignal();
    void interfacesAreFoundByNameAndIdentifier_data();
    void interfacesAreFoundByNameAndIdentifier();
    void otherNamesAreNotAnswered();
    void theDeathOfAToolWithTheViewLockReachesNobody();
};

void TestViewTool::everyCallOnAnEmptyAdapterIsHarmless()
{
    LXViewTool adapter(nullptr);
    QVERIFY(!adapter.Activate(true));
    QVERIFY(!adapter.Activate(false));
    QVERIFY(!adapter.IsActive());
    QVERIFY(!adapter.GetActivateAction());
    adapter.SetToolBox(nullptr);
    adapter.SetToolBarManager(nullptr);
    adapter.SetToolWidgetManager(nullptr);
    adapter.SetLayersWidget(nullptr);
    adapter.SaveSettings();
    adapter.LoadSettings();
    QVERIFY(!adapter.SetDocumentView(nullptr));
    QCOMPARE(adapter.GetDocumentViewState(), quint64(0));
    adapter.DocumentViewStateChanged(0, 1);
    QVERIFY(adapter.GetMenuActions().isEmpty());
    QVERIFY(adapter.GetToolBarActions().isEmpty());
    QVERIFY(adapter.GetMainMenuEntries().empty());
    adapter.SetMainWidget(nullptr);
}

void TestViewTool::theAdapterBuildsAndOwnsItsTool()
{
    auto* tool = new RecordingTool;
    QPointer<QObject> alive(tool);
    {
        LXViewTool adapter(tool);
        QCOMPARE(tool->parent(), &adapter);
        QVERIFY(adapter.GetActivateAction());
    }
    QVERIFY(!alive);
}

void TestViewTool::callsGoToTheTool()
{
    ViewFixture fixture;
    auto* tool = new RecordingTool;
    LXViewTool adapter(tool);
    QVERIFY(adapter.SetDocumentView(&fixture.ToolView()));
    QCOMPARE(tool->GetDocument(), fixture.Document());
    QVERIFY(adapter.Activate(true));
    QVERIFY(adapter.IsActive());
    QCOMPARE(adapter.GetActivateAction(), tool->GetActivateAction());
    QCOMPARE(adapter.GetDocumentViewState(), quint64(1));

    QSignalSpy mainWidgetSet(tool, &LXViewToolBase::OnSetMainWidget);
    adapter.SetMainWidget(fixture.Widget());
    QCOMPARE(tool->GetMainWidget(), fixture.Widget());
    QCOMPARE(mainWidgetSet.count(), 1);

    tool->TakeNotes();
    adapter.SaveSettings();
    adapter.LoadSettings();
    QCOMPARE(tool->TakeNotes(), QStringList({"SaveSettings", "LoadSettings"}));
}

void TestViewTool::viewStateChangesComeAsTheToolsSignal()
{
    auto* tool = new RecordingTool;
    LXViewTool adapter(tool);
    QSignalSpy changes(tool, &LXViewToolBase::OnDocumentStateChanged);
    adapter.DocumentViewStateChanged(4, 5);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes[0][0].toULongLong(), 4ULL);
    QCOMPARE(changes[0][1].toULongLong(), 5ULL);
}

void TestViewTool::interfacesAreFoundByNameAndIdentifier_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char* name :
         {"LXViewTool", "QObject", "ITool", "ITool/1.0", "IDocumentViewTool", "IDocumentViewTool/1.0",
          "IDocumentViewState", "IDocumentViewState/1.0", "IMainMenuActionList", "IMainMenuActionList/1.0",
          "IWidgetTool", "IWidgetTool/1.0"}) {
        QTest::newRow(name) << QByteArray(name);
    }
}

void TestViewTool::interfacesAreFoundByNameAndIdentifier()
{
    QFETCH(QByteArray, name);
    LXViewTool adapter(nullptr);
    QVERIFY(adapter.qt_metacast(name));
}

void TestViewTool::otherNamesAreNotAnswered()
{
    LXViewTool adapter(nullptr);
    QVERIFY(!adapter.qt_metacast("IClipboardInterface/1.0"));
    QVERIFY(!adapter.qt_metacast("ITool/2.0"));
}

void TestViewTool::theDeathOfAToolWithTheViewLockReachesNobody()
{
    ViewFixture fixture;
    auto* tool = new RecordingTool;
    auto adapter = std::make_unique<LXViewTool>(tool);
    connect(fixture.ToolView().GetNotifier(), &DocumentViewNotifier::StateChanged, adapter.get(),
            [&adapter](quint64 oldState, quint64 newState) {
                adapter->DocumentViewStateChanged(oldState, newState);
            });
    adapter->SetDocumentView(&fixture.ToolView());
    QVERIFY(tool->LockView());
    // The pointer is kept until the adapter is gone, for the handler above.
    delete adapter.get();
    static_cast<void>(adapter.release());
    QCOMPARE(fixture.ToolView().GetState(), quint64(0));
}

ZK_REGISTER_TEST(tst_viewtool, TestViewTool)

#include "tst_viewtool.moc"
