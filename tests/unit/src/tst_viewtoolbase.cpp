#include "RecordingTool.h"

#include "core/ZKActivateAction.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LexoAppKeyHook.h"
#include "support/TestRegistry.h"
#include "support/ViewFixture.h"
#include "utils/FaultSeams.h"

#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QRegularExpression>
#include <QTest>

namespace {
const QStringList Nothing;

void ExpectReport(int line, const char* message)
{
    const QString pattern = QString("^Build date=.*, time=.*\\. Line=%1, file=\"src/LXViewToolBase\"\\. %2$")
                                .arg(line)
                                .arg(message);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(pattern));
}
} // namespace

class TestViewToolBase : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void initMakesTheActionAndThenTheWidgets();
    void activationWithoutAViewSetsTheFlag();
    void activationOfAnActiveToolSendsNothing();
    void deactivationOfAnInactiveToolSendsTheSignal();
    void aVetoKeepsTheToolActive();
    void theViewLockRefusesActivation();
    void theViewLockDoesNotDisturbAnActiveTool();
    void activationPutsTheToolsCursorOnTheView();
    void deactivationLeavesTheDefaultCursorOnTheView();
    void activationUnderTheMouseEnters();
    void activationAwayFromTheMouseDoesNotEnter();
    void theActionShowsTheInterfaceAndActivates();
    void implicitStateAloneStopsAndStartsTheTool();
    void aPressOnTheButtonChoosesTheTool();

    void theSameViewSendsNoSignal();
    void anActiveToolTakesTheNewViewOver();
    void anActiveToolGivesTheOldViewsCursorBack();
    void anInactiveToolFollowsInSilence();
    void aToolThatAlwaysFiltersHearsTheSceneWhileInactive();
    void accessorsWithoutAView();
    void accessorsWithAView();
    void layerIdsAreRowsPlusOne();

    void mouseEventsComeAsSignals();
    void aPressSendsAllButtonsAndThenTheChangedOne();
    void aDoubleClickIsNoSecondPress();
    void anInactiveToolHearsNothing();
    void panningKeepsTheMouseFromTheTool();
    void panningLetsADoubleClickThrough();
    void aToolMayAskForTheMouseDuringPanning();
    void theEndOfPanningBringsTheCursorBack();
    void theFilterNeverEatsAnEvent();
    void enterAndFocusOfTheSceneAreToldOn();

    void theDocumentLockIsTakenOnce();
    void theDocumentLockOfSomebodyElseIsRespected();
    void anExternallyUnlockedDocumentIsReported();
    void aFailedUnlockIsReportedAndKept();
    void theViewLockIsTakenOnce();
    void anExternallyUnlockedViewIsReported();
    void locksWithoutAViewAreRefused();
    void aToolThatDiesLeavesNoLock();
    void shortcutsAreSwitchedOffAndOn();

private:
    void SendDoubleClick();

    std::unique_ptr<ViewFixture> m_pFixture;
    std::unique_ptr<QObject> m_pAdapter;
    RecordingTool* m_pTool = nullptr;
};

void TestViewToolBase::init()
{
    m_pFixture = std::make_unique<ViewFixture>();
    m_pAdapter = std::make_unique<QObject>();
    m_pTool = new RecordingTool;
    m_pTool->Init(m_pAdapter.get());
    m_pTool->TakeNotes();
    // Outside the view, until a test says otherwise.
    QCursor::setPos(799, 599);
}

void TestViewToolBase::cleanup()
{
    m_pAdapter.reset();
    m_pFixture.reset();
    FaultSeams::Reset();
    QVERIFY(LexoAppKeyHook::instance()->AreShortcutsEnabled());
}

void TestViewToolBase::initMakesTheActionAndThenTheWidgets()
{
    RecordingTool tool;
    QVERIFY(!tool.GetActivateAction());
    QObject adapter;
    tool.Init(&adapter);
    QCOMPARE(tool.TakeNotes(), QStringList({"CreateToolWidget", "CreateToolBar", "CreateToolBoxButton"}));
    QCOMPARE(tool.parent(), &adapter);
    QVERIFY(tool.GetActivateAction());
    tool.setParent(nullptr);
}

void TestViewToolBase::activationWithoutAViewSetsTheFlag()
{
    QVERIFY(m_pTool->Activate(true));
    QVERIFY(m_pTool->IsActive());
    QCOMPARE(m_pTool->TakeNotes(), QStringList({"activated"}));

    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::CrossCursor);
}

void TestViewToolBase::activationOfAnActiveToolSendsNothing()
{
    m_pTool->Activate(true);
    m_pTool->TakeNotes();
    QVERIFY(m_pTool->Activate(true));
    QCOMPARE(m_pTool->TakeNotes(), Nothing);
}

void TestViewToolBase::deactivationOfAnInactiveToolSendsTheSignal()
{
    QVERIFY(m_pTool->Activate(false));
    QCOMPARE(m_pTool->TakeNotes(), QStringList({"deactivated"}));
}

void TestViewToolBase::aVetoKeepsTheToolActive()
{
    m_pTool->Activate(true);
    m_pTool->TakeNotes();
    m_pTool->allowDeactivate = false;
    QVERIFY(!m_pTool->Activate(false));
    QVERIFY(m_pTool->IsActive());
    QCOMPARE(m_pTool->TakeNotes(), QStringList({"may deactivate?"}));
}

void TestViewToolBase::theViewLockRefusesActivation()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pFixture->ToolView().Lock(this);
    m_pTool->TakeNotes();

    QVERIFY(!m_pTool->Activate(true));
    QVERIFY(!m_pTool->IsActive());
    QCOMPARE(m_pTool->TakeNotes(), Nothing);
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::ArrowCursor);
}

void TestViewToolBase::theViewLockDoesNotDisturbAnActiveTool()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->Activate(true);
    m_pFixture->ToolView().Lock(this);
    QVERIFY(m_pTool->Activate(true));
    QVERIFY(m_pTool->Activate(false));
    QVERIFY(!m_pTool->IsActive());
}

void TestViewToolBase::activationPutsTheToolsCursorOnTheView()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->Activate(true);
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::CrossCursor);

    m_pTool->cursor = Qt::ForbiddenCursor;
    m_pTool->RefreshCursor();
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::ForbiddenCursor);
}

void TestViewToolBase::deactivationLeavesTheDefaultCursorOnTheView()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->Activate(true);
    m_pTool->Activate(false);
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::ArrowCursor);
    m_pFixture->ToolView().RestoreCursor();
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::ArrowCursor);
}

void TestViewToolBase::activationUnderTheMouseEnters()
{
    m_pFixture->Input().MoveInScene(m_pFixture->View(), {10, 10});
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->TakeNotes();
    m_pTool->Activate(true);
    QCOMPARE(m_pTool->TakeNotes(), QStringList({"OnEnter without an event", "activated"}));
    m_pTool->Activate(false);
    QCOMPARE(m_pTool->TakeNotes(),
             QStringList({"may deactivate?", "OnLeave without an event", "deactivated"}));
}

void TestViewToolBase::activationAwayFromTheMouseDoesNotEnter()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->TakeNotes();
    m_pTool->Activate(true);
    QCOMPARE(m_pTool->TakeNotes(), QStringList({"activated"}));
}

void TestViewToolBase::theActionShowsTheInterfaceAndActivates()
{
    QVERIFY(ZKToolGroupManager::Activate(m_pTool->GetActivateAction()));
    QVERIFY(m_pTool->IsActive());
    QCOMPARE(m_pTool->TakeNotes().mid(0, 2), QStringList({"show interface", "activated"}));

    QVERIFY(ZKToolGroupManager::Activate(nullptr));
    QVERIFY(!m_pTool->IsActive());
    QCOMPARE(m_pTool->TakeNotes().mid(0, 2), QStringList({"may deactivate?", "hide interface"}));
}

void TestViewToolBase::implicitStateAloneStopsAndStartsTheTool()
{
    ZKActivateAction* action = m_pTool->GetActivateAction();
    ZKToolGroupManager::Activate(action);
    action->SetImplicitChecked(false);
    QVERIFY(!m_pTool->IsActive());
    QVERIFY(action->IsChecked());
    action->SetImplicitChecked(true);
    QVERIFY(m_pTool->IsActive());
}

void TestViewToolBase::aPressOnTheButtonChoosesTheTool()
{
    m_pTool->ToolBoxButtonPressed(nullptr);
    QVERIFY(m_pTool->GetActivateAction()->IsChecked());
    m_pTool->TakeNotes();
    m_pTool->ToolBoxButtonPressed(nullptr);
    QCOMPARE(m_pTool->TakeNotes(), Nothing);
}

void TestViewToolBase::theSameViewSendsNoSignal()
{
    QVERIFY(m_pTool->SetDocumentView(&m_pFixture->ToolView()));
    m_pTool->TakeNotes();
    QVERIFY(m_pTool->SetDocumentView(&m_pFixture->ToolView()));
    QCOMPARE(m_pTool->TakeNotes(), Nothing);
}

void TestViewToolBase::anActiveToolTakesTheNewViewOver()
{
    m_pFixture->Input().MoveInScene(m_pFixture->View(), {10, 10});
    m_pTool->Activate(true);
    m_pTool->TakeNotes();
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    QCOMPARE(m_pTool->TakeNotes(),
             QStringList({"view will change", "OnEnter without an event", "view changed"}));
    m_pFixture->Input().MoveInScene(m_pFixture->View(), {12, 10});
    QVERIFY(m_pTool->TakeNotes().contains("move"));
}

void TestViewToolBase::anActiveToolGivesTheOldViewsCursorBack()
{
    m_pFixture->View()->setCursor(Qt::IBeamCursor);
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->Activate(true);
    m_pTool->SetDocumentView(nullptr);
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::IBeamCursor);
    m_pTool->TakeNotes();
    m_pFixture->Input().MoveInScene(m_pFixture->View(), {10, 10});
    QCOMPARE(m_pTool->TakeNotes(), Nothing);
}

void TestViewToolBase::anInactiveToolFollowsInSilence()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    QCOMPARE(m_pTool->TakeNotes(), QStringList({"view will change", "view changed"}));
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::ArrowCursor);
}

void TestViewToolBase::aToolThatAlwaysFiltersHearsTheSceneWhileInactive()
{
    RecordingTool panel(true);
    panel.SetDocumentView(&m_pFixture->ToolView());
    m_pFixture->Input().MoveInScene(m_pFixture->View(), {10, 10});
    QVERIFY(panel.TakeNotes().contains("move"));

    panel.SetDocumentView(nullptr);
    panel.TakeNotes();
    m_pFixture->Input().MoveInScene(m_pFixture->View(), {12, 10});
    QCOMPARE(panel.TakeNotes(), Nothing);
}

void TestViewToolBase::accessorsWithoutAView()
{
    QVERIFY(!m_pTool->GetDocument());
    QVERIFY(!m_pTool->GetModel());
    QVERIFY(!m_pTool->GetHistory());
    QVERIFY(!m_pTool->GetScene());
    QCOMPARE(m_pTool->GetDocumentSize(), QSize());
    QCOMPARE(m_pTool->GetCurrentLayerId(), -1);
    QVERIFY(m_pTool->GetSelectedLayerIds().isEmpty());
}

void TestViewToolBase::accessorsWithAView()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    QCOMPARE(m_pTool->GetDocument(), m_pFixture->Document());
    QCOMPARE(m_pTool->GetModel(), m_pFixture->Document()->GetModel());
    QCOMPARE(m_pTool->GetHistory(), &m_pFixture->History());
    QCOMPARE(m_pTool->GetScene(), m_pFixture->View()->scene());
    QCOMPARE(m_pTool->GetDocumentSize(), QSize(64, 48));
}

void TestViewToolBase::layerIdsAreRowsPlusOne()
{
    m_pFixture->Document()->AddLayer("top", LXImage32(4, 4), {});
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pFixture->SelectLayers({1});
    QCOMPARE(m_pTool->GetCurrentLayerId(), 2);
    m_pFixture->SelectLayers({0, 1});
    QCOMPARE(m_pTool->GetCurrentLayerId(), -1);
    QCOMPARE(m_pTool->GetSelectedLayerIds(), QList<int>({1, 2}));
    m_pFixture->SelectLayers({});
    QCOMPARE(m_pTool->GetCurrentLayerId(), -1);
}

void TestViewToolBase::mouseEventsComeAsSignals()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->Activate(true);
    QPointF position;
    Qt::MouseButtons buttons = Qt::AllButtons;
    const QObject listener;
    connect(m_pTool, &LXViewToolBase::OnMouseMove, &listener, [&](QPointF scenePos, Qt::MouseButtons down) {
        position = scenePos;
        buttons = down;
    });
    m_pFixture->Input().MoveInScene(m_pFixture->View(), {10, 20});
    QCOMPARE(position, QPointF(10, 20));
    QCOMPARE(buttons, Qt::MouseButtons());
}

void TestViewToolBase::aPressSendsAllButtonsAndThenTheChangedOne()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->Activate(true);
    m_pFixture->Input().MoveInScene(m_pFixture->View(), {10, 10});
    m_pTool->TakeNotes();

    m_pFixture->Input().PressInScene(m_pFixture->View(), {10, 10}, Qt::LeftButton);
    m_pFixture->Input().PressInScene(m_pFixture->View(), {10, 10}, Qt::RightButton);
    QStringList notes = m_pTool->TakeNotes();
    notes.removeAll("move");
    QCOMPARE(notes, QStringList({"press of 1", "press, changed 1", "press of 3", "press, changed 2"}));

    m_pFixture->Input().ReleaseInScene(m_pFixture->View(), {10, 10}, Qt::RightButton);
    m_pFixture->Input().ReleaseInScene(m_pFixture->View(), {10, 10}, Qt::LeftButton);
    notes = m_pTool->TakeNotes();
    notes.removeAll("move");
    QCOMPARE(notes,
             QStringList({"release of 1", "release, changed 2", "release of 0", "release, changed 1"}));
}

void TestViewToolBase::aDoubleClickIsNoSecondPress()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->Activate(true);
    m_pTool->TakeNotes();
    m_pFixture->Input().DoubleClickInScene(m_pFixture->View(), {10, 10});
    const QStringList notes = m_pTool->TakeNotes();
    QCOMPARE(notes.count("press of 1"), 1);
    QCOMPARE(notes.count("double click"), 1);
}

void TestViewToolBase::anInactiveToolHearsNothing()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->Activate(true);
    m_pTool->Activate(false);
    m_pTool->TakeNotes();
    m_pFixture->Input().ClickInScene(m_pFixture->View(), {10, 10});
    QCOMPARE(m_pTool->TakeNotes(), Nothing);
}

void TestViewToolBase::panningKeepsTheMouseFromTheTool()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->Activate(true);
    m_pFixture->View()->EnablePanning(true);
    m_pTool->TakeNotes();
    QVERIFY(m_pTool->IsSkippingWhilePanning());
    m_pFixture->Input().MoveInScene(m_pFixture->View(), {20, 20});
    m_pFixture->Input().ClickInScene(m_pFixture->View(), {10, 10});
    QStringList notes = m_pTool->TakeNotes();
    QVERIFY(notes.filter(QRegularExpression("^(press|release|move)")).isEmpty());
}

// A panning view takes the mouse for itself, so the event is given to the scene.
void TestViewToolBase::SendDoubleClick()
{
    QGraphicsSceneMouseEvent event(QEvent::GraphicsSceneMouseDoubleClick);
    event.setButton(Qt::LeftButton);
    QCoreApplication::sendEvent(m_pFixture->View()->scene(), &event);
}

void TestViewToolBase::panningLetsADoubleClickThrough()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->Activate(true);
    m_pFixture->View()->EnablePanning(true);
    m_pTool->TakeNotes();
    SendDoubleClick();
    QCOMPARE(m_pTool->TakeNotes(), QStringList({"double click"}));
}

void TestViewToolBase::aToolMayAskForTheMouseDuringPanning()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->Activate(true);
    m_pFixture->View()->EnablePanning(true);
    m_pTool->SetSkipWhilePanning(true);
    QVERIFY(!m_pTool->IsSkippingWhilePanning());
    m_pTool->TakeNotes();
    QGraphicsSceneMouseEvent event(QEvent::GraphicsSceneMouseMove);
    QCoreApplication::sendEvent(m_pFixture->View()->scene(), &event);
    QCOMPARE(m_pTool->TakeNotes(), QStringList({"move"}));
}

void TestViewToolBase::theEndOfPanningBringsTheCursorBack()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->Activate(true);
    m_pTool->TakeNotes();
    m_pFixture->View()->EnablePanning(true);
    QVERIFY(m_pFixture->View()->cursor().shape() != Qt::CrossCursor);
    m_pFixture->View()->EnablePanning(false);
    QCOMPARE(m_pFixture->View()->cursor().shape(), Qt::CrossCursor);
    QCOMPARE(m_pTool->TakeNotes(), QStringList({"panning", "no panning"}));
}

void TestViewToolBase::theFilterNeverEatsAnEvent()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->Activate(true);
    for (const QEvent::Type type : {QEvent::GraphicsSceneMousePress, QEvent::GraphicsSceneMouseRelease,
                                    QEvent::GraphicsSceneMouseMove, QEvent::GraphicsSceneMouseDoubleClick}) {
        QGraphicsSceneMouseEvent event(type);
        QVERIFY(!m_pTool->eventFilter(m_pFixture->View()->scene(), &event));
    }
    QEvent other(QEvent::FocusIn);
    QVERIFY(!m_pTool->eventFilter(this, &other));
}

void TestViewToolBase::enterAndFocusOfTheSceneAreToldOn()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->Activate(true);
    m_pTool->TakeNotes();
    for (const QEvent::Type type : {QEvent::Enter, QEvent::Leave, QEvent::FocusIn, QEvent::FocusOut}) {
        QEvent event(type);
        m_pTool->eventFilter(m_pFixture->View()->scene(), &event);
        m_pTool->eventFilter(this, &event);
    }
    QCOMPARE(m_pTool->TakeNotes(),
             QStringList({"OnEnter", "Enter", "OnLeave", "Leave", "FocusIn", "FocusOut"}));
}

void TestViewToolBase::theDocumentLockIsTakenOnce()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->TakeNotes();
    QVERIFY(m_pTool->LockDocument());
    QVERIFY(m_pTool->LockDocument());
    QVERIFY(m_pFixture->Document()->GetLockState());
    QVERIFY(m_pTool->UnlockDocument());
    QVERIFY(m_pTool->UnlockDocument());
    QVERIFY(!m_pFixture->Document()->GetLockState());
    QCOMPARE(m_pTool->TakeNotes(), QStringList({"document locked", "document unlocked"}));
}

void TestViewToolBase::theDocumentLockOfSomebodyElseIsRespected()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    QVERIFY(m_pFixture->Document()->Lock());
    QVERIFY(!m_pTool->LockDocument());
    QVERIFY(m_pTool->UnlockDocument());
    QVERIFY(m_pFixture->Document()->GetLockState());
    m_pFixture->Document()->Unlock();

    FaultSeams::FailNth(FaultSeams::Seam::DocumentLock, 1);
    QVERIFY(!m_pTool->LockDocument());
}

void TestViewToolBase::anExternallyUnlockedDocumentIsReported()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->LockDocument();
    m_pFixture->Document()->Unlock();
    ExpectReport(684, "Document externally unlocked\\.");
    QVERIFY(m_pTool->UnlockDocument());
    QVERIFY(m_pTool->LockDocument());
    QVERIFY(m_pFixture->Document()->GetLockState());
}

void TestViewToolBase::aFailedUnlockIsReportedAndKept()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->LockDocument();
    FaultSeams::FailNth(FaultSeams::Seam::DocumentUnlock, 1);
    ExpectReport(690, "Document unlock failed\\.");
    QVERIFY(!m_pTool->UnlockDocument());
    QVERIFY(m_pFixture->Document()->GetLockState());
    QVERIFY(m_pTool->UnlockDocument());
    QVERIFY(!m_pFixture->Document()->GetLockState());
}

void TestViewToolBase::theViewLockIsTakenOnce()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    QVERIFY(m_pTool->LockView());
    QVERIFY(m_pTool->LockView());
    QCOMPARE(m_pFixture->ToolView().GetState(), IDocumentView::LockBit);

    RecordingTool other;
    other.SetDocumentView(&m_pFixture->ToolView());
    QVERIFY(!other.LockView());

    QVERIFY(m_pTool->UnlockView());
    QVERIFY(m_pTool->UnlockView());
    QCOMPARE(m_pFixture->ToolView().GetState(), quint64(0));
}

void TestViewToolBase::anExternallyUnlockedViewIsReported()
{
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->LockView();
    m_pFixture->ToolView().Unlock(this);
    ExpectReport(730, "View externally unlocked\\.");
    QVERIFY(m_pTool->UnlockView());
    QVERIFY(m_pTool->LockView());
}

void TestViewToolBase::locksWithoutAViewAreRefused()
{
    QVERIFY(!m_pTool->LockDocument());
    QVERIFY(!m_pTool->LockView());
    QVERIFY(m_pTool->UnlockDocument());
    QVERIFY(m_pTool->UnlockView());

    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pTool->LockDocument();
    m_pTool->LockView();
    m_pTool->SetDocumentView(nullptr);
    QVERIFY(!m_pTool->UnlockDocument());
    QVERIFY(!m_pTool->UnlockView());
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    QVERIFY(m_pTool->UnlockDocument());
    QVERIFY(m_pTool->UnlockView());
}

void TestViewToolBase::aToolThatDiesLeavesNoLock()
{
    auto tool = std::make_unique<RecordingTool>();
    tool->SetDocumentView(&m_pFixture->ToolView());
    tool->LockDocument();
    tool->LockView();
    tool.reset();
    QVERIFY(!m_pFixture->Document()->GetLockState());
    QCOMPARE(m_pFixture->ToolView().GetState(), quint64(0));
}

void TestViewToolBase::shortcutsAreSwitchedOffAndOn()
{
    QVERIFY(m_pTool->DisableShortcuts());
    QVERIFY(!LexoAppKeyHook::instance()->AreShortcutsEnabled());
    QVERIFY(m_pTool->EnableShortcuts());
    QVERIFY(LexoAppKeyHook::instance()->AreShortcutsEnabled());
}

ZK_REGISTER_TEST(tst_viewtoolbase, TestViewToolBase)

#include "tst_viewtoolbase.moc"
