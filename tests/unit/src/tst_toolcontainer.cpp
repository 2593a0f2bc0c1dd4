#include "IDocumentView.h"
#include "IDocumentViewState.h"
#include "IDocumentViewTool.h"
#include "LXViewTool.h"
#include "RecordingTool.h"
#include "ZKOldToolContainer.h"

#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiSubWindow.h"
#include "support/TestRegistry.h"
#include "support/ViewFixture.h"

#include <QMainWindow>
#include <QSignalSpy>
#include <QTest>

namespace {
class RecordingViewTool : public QObject, public IDocumentViewTool, public IDocumentViewState
{
    Q_OBJECT
    Q_INTERFACES(IDocumentViewTool IDocumentViewState)

public:
    bool SetDocumentView(IDocumentView* view) override
    {
        notes.append(view ? "view" : "no view");
        lastView = view;
        return true;
    }

    quint64 GetDocumentViewState() override { return 0; }

    void DocumentViewStateChanged(const quint64& oldState, const quint64& newState) override
    {
        notes.append(QString("state %1 to %2").arg(oldState).arg(newState));
    }

    QStringList notes;
    IDocumentView* lastView = nullptr;
};

class RecordingContainer : public ZKOldToolContainer
{
public:
    void UpdateTools() override { notes.append("update"); }

    void DocumentStateChanged(int state) override { notes.append(QString("state %1").arg(state)); }

    QStringList notes;
};

/// A window on a document of its own, outside any document area.
struct Window
{
    ViewFixture fixture;
    LXMdiSubWindow* window = new LXMdiSubWindow(new ZKDocumentWidget(fixture.Document(), &fixture.History()));

    ~Window() { delete window; }
};
} // namespace

class TestToolContainer : public QObject
{
    Q_OBJECT

private slots:
    void anActivatedDocumentIsHandedToTheTools();
    void activatingTheSameWindowTwiceRunsTheWholeSequence();
    void aNullWindowTakesTheViewAwayOnce();
    void aWindowWithoutADocumentLeavesTheToolsWithoutAView();
    void theLastDocumentsSignalsAreFollowed();
    void theClosedLastDocumentOfTheAreaTakesTheViewAwayOnce();
    void stateBitsAreToldToTheTools();
    void theViewLockOfAToolIsToldToAllTools();
    void theStateIsClearedWithTheWindow();
    void aDeletedToolLeavesTheList();
    void nullAndForeignObjectsAreSkipped();
    void aDeletedWindowIsForgotten();
};

void TestToolContainer::anActivatedDocumentIsHandedToTheTools()
{
    Window window;
    ZKOldToolContainer container;
    RecordingViewTool tool;
    container.AddTool(&tool);
    container.OnDocumentActivated(window.window);
    QCOMPARE(tool.notes, QStringList({"no view", "view"}));
    QCOMPARE(tool.lastView->GetDocument(), window.fixture.Document());
}

void TestToolContainer::activatingTheSameWindowTwiceRunsTheWholeSequence()
{
    Window window;
    ZKOldToolContainer container;
    RecordingViewTool tool;
    container.AddTool(&tool);
    container.OnDocumentActivated(window.window);
    IDocumentView* view = tool.lastView;
    tool.notes.clear();
    container.OnDocumentActivated(window.window);
    QCOMPARE(tool.notes, QStringList({"no view", "view"}));
    QCOMPARE(tool.lastView, view);
}

void TestToolContainer::aNullWindowTakesTheViewAwayOnce()
{
    Window window;
    ZKOldToolContainer container;
    RecordingViewTool tool;
    container.AddTool(&tool);
    container.OnDocumentActivated(window.window);
    tool.notes.clear();
    container.OnDocumentActivated(nullptr);
    QCOMPARE(tool.notes, QStringList({"no view"}));
}

void TestToolContainer::theClosedLastDocumentOfTheAreaTakesTheViewAwayOnce()
{
    QMainWindow mainWindow;
    LXMdiArea* area = LXDocumentManager::GetDocumentArea();
    mainWindow.setCentralWidget(area);
    mainWindow.show();
    QVERIFY(QTest::qWaitForWindowActive(&mainWindow));
    ZKOldToolContainer container;
    RecordingViewTool tool;
    container.AddTool(&tool);

    LXDocumentInterface* document = LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32);
    document->SetDocumentSize({8, 8});
    QVERIFY(LXDocumentManager::Instance()->AddDocument(document));
    QCOMPARE(tool.notes, QStringList({"no view", "view"}));
    tool.notes.clear();
    area->GetWindows().first()->close();
    QTRY_VERIFY(LXDocumentManager::Instance()->GetDocuments().isEmpty());
    QCOMPARE(tool.notes, QStringList({"no view"}));
}

void TestToolContainer::aWindowWithoutADocumentLeavesTheToolsWithoutAView()
{
    LXMdiSubWindow window(new QWidget);
    ZKOldToolContainer container;
    RecordingViewTool tool;
    container.AddTool(&tool);
    container.OnDocumentActivated(&window);
    QCOMPARE(tool.notes, QStringList({"no view", "no view"}));
}

void TestToolContainer::theLastDocumentsSignalsAreFollowed()
{
    Window first;
    Window second;
    RecordingContainer container;
    container.OnDocumentActivated(first.window);
    container.OnDocumentActivated(second.window);
    container.notes.clear();

    first.fixture.Document()->Lock();
    first.fixture.Document()->SetDocumentState(3);
    QCOMPARE(container.notes, QStringList());
    first.fixture.Document()->Unlock();

    second.fixture.Document()->Lock();
    second.fixture.Document()->Unlock();
    second.fixture.Document()->SetDocumentState(3);
    QCOMPARE(container.notes, QStringList({"update", "update", "state 3"}));
}

void TestToolContainer::stateBitsAreToldToTheTools()
{
    Window window;
    ZKOldToolContainer container;
    RecordingViewTool tool;
    container.AddTool(&tool);
    container.OnDocumentActivated(window.window);
    tool.notes.clear();
    tool.lastView->Lock(this);
    tool.lastView->Unlock(this);
    QCOMPARE(tool.notes, QStringList({"state 0 to 1", "state 1 to 0"}));
}

void TestToolContainer::theViewLockOfAToolIsToldToAllTools()
{
    Window window;
    ZKOldToolContainer container;
    auto* locking = new RecordingTool;
    auto* other = new RecordingTool;
    LXViewTool lockingAdapter(locking);
    LXViewTool otherAdapter(other);
    container.AddTool(&lockingAdapter);
    container.AddTool(&otherAdapter);
    container.OnDocumentActivated(window.window);
    const QSignalSpy toItself(locking, &LXViewToolBase::OnDocumentStateChanged);
    const QSignalSpy toTheOther(other, &LXViewToolBase::OnDocumentStateChanged);

    QVERIFY(locking->LockView());
    QVERIFY(!other->LockView());
    QVERIFY(locking->UnlockView());
    const QList<QVariantList> changes{{0ULL, 1ULL}, {1ULL, 0ULL}};
    QCOMPARE(toItself.mid(0), changes);
    QCOMPARE(toTheOther.mid(0), changes);
    container.OnDocumentActivated(nullptr);
}

void TestToolContainer::theStateIsClearedWithTheWindow()
{
    Window window;
    ZKOldToolContainer container;
    RecordingViewTool tool;
    container.AddTool(&tool);
    container.OnDocumentActivated(window.window);
    tool.lastView->Lock(this);
    tool.notes.clear();
    container.OnDocumentActivated(window.window);
    QCOMPARE(tool.notes, QStringList({"no view", "state 1 to 0", "view"}));
    QCOMPARE(tool.lastView->GetState(), quint64(0));
}

void TestToolContainer::aDeletedToolLeavesTheList()
{
    Window window;
    ZKOldToolContainer container;
    auto tool = std::make_unique<RecordingViewTool>();
    RecordingViewTool other;
    container.AddTool(tool.get());
    container.AddTool(&other);
    tool.reset();
    QCOMPARE(container.GetTools(), QList<QObject*>({&other}));
    container.OnDocumentActivated(window.window);
    QCOMPARE(other.notes.size(), 2);
}

void TestToolContainer::nullAndForeignObjectsAreSkipped()
{
    Window window;
    ZKOldToolContainer container;
    QObject foreign;
    container.AddTool(nullptr);
    container.AddTool(&foreign);
    QCOMPARE(container.GetTools().size(), 1);
    container.OnDocumentActivated(window.window);
    container.OnDocumentActivated(nullptr);
}

void TestToolContainer::aDeletedWindowIsForgotten()
{
    ZKOldToolContainer container;
    auto window = std::make_unique<LXMdiSubWindow>(new QWidget);
    container.OnDocumentActivated(window.get());
    window.reset();
    container.OnDocumentActivated(nullptr);
}

ZK_REGISTER_TEST(tst_toolcontainer, TestToolContainer)

#include "tst_toolcontainer.moc"
