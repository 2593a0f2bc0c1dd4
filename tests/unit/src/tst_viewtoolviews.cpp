#include "RecordingTool.h"

#include "support/TestRegistry.h"
#include "support/ViewFixture.h"

#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QSignalSpy>
#include <QTest>

/// A view tool between two views and during panning.
class TestViewToolViews : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void bothSignalsNameTheOldAndTheNewView();
    void anActiveToolGoesStraightFromViewToView();
    void theLocksOfAnOldDocumentAreNotHeard();
    void panningIsHeardOnTheCurrentViewOfAnActiveTool();
    void activationDuringPanningLeavesThePanCursor();
    void deactivationDuringPanningLeavesThePanCursor();
    void aViewThatIsEnteredDuringPanningKeepsThePanCursor();
    void aViewThatIsLeftDuringPanningKeepsThePanCursor();
    void aPanelThatIsActiveGetsNoFilterFromANewView();
    void activationOfAPanelLeavesItsFilterAlone();
    void whatIsHeardDependsOnPanningAndTheTool_data();
    void whatIsHeardDependsOnPanningAndTheTool();

private:
    QStringList Hear(ViewFixture& fixture, QEvent::Type type);

    std::unique_ptr<ViewFixture> m_pFirst;
    std::unique_ptr<ViewFixture> m_pSecond;
    std::unique_ptr<RecordingTool> m_pTool;
};

void TestViewToolViews::init()
{
    m_pFirst = std::make_unique<ViewFixture>();
    m_pSecond = std::make_unique<ViewFixture>();
    m_pTool = std::make_unique<RecordingTool>();
    QCursor::setPos(799, 599);
}

void TestViewToolViews::cleanup()
{
    m_pTool.reset();
    m_pSecond.reset();
    m_pFirst.reset();
}

// A panning view takes the mouse for itself, so events are given to the scene.
QStringList TestViewToolViews::Hear(ViewFixture& fixture, QEvent::Type type)
{
    m_pTool->TakeNotes();
    QGraphicsSceneMouseEvent event(type);
    event.setButton(Qt::LeftButton);
    QCoreApplication::sendEvent(fixture.View()->scene(), &event);
    return m_pTool->TakeNotes();
}

void TestViewToolViews::bothSignalsNameTheOldAndTheNewView()
{
    IDocumentView* first = &m_pFirst->ToolView();
    IDocumentView* second = &m_pSecond->ToolView();
    m_pTool->SetDocumentView(first);
    QStringList told;
    const QObject listener;
    connect(m_pTool.get(), &LXViewToolBase::OnDocumentViewChange, &listener,
            [&](IDocumentView* oldView, IDocumentView* newView) {
                if (oldView == first && newView == second && m_pTool->GetDocumentView() == first) {
                    told.append("before");
                }
            });
    connect(m_pTool.get(), &LXViewToolBase::OnDocumentViewChanged, &listener,
            [&](IDocumentView* oldView, IDocumentView* newView) {
                if (oldView == first && newView == second && m_pTool->GetView() == m_pSecond->View()) {
                    told.append("after");
                }
            });
    m_pTool->SetDocumentView(second);
    QCOMPARE(told, QStringList({"before", "after"}));
}

void TestViewToolViews::anActiveToolGoesStraightFromViewToView()
{
    m_pFirst->View()->setCursor(Qt::IBeamCursor);
    m_pTool->SetDocumentView(&m_pFirst->ToolView());
    m_pTool->Activate(true);
    m_pTool->SetDocumentView(&m_pSecond->ToolView());

    QCOMPARE(m_pFirst->View()->cursor().shape(), Qt::IBeamCursor);
    m_pFirst->ToolView().RestoreCursor();
    QCOMPARE(m_pFirst->View()->cursor().shape(), Qt::IBeamCursor);
    QCOMPARE(m_pSecond->View()->cursor().shape(), Qt::CrossCursor);
    QCOMPARE(Hear(*m_pFirst, QEvent::GraphicsSceneMouseMove), QStringList());
    QCOMPARE(Hear(*m_pSecond, QEvent::GraphicsSceneMouseMove), QStringList({"move"}));
}

void TestViewToolViews::theLocksOfAnOldDocumentAreNotHeard()
{
    m_pTool->SetDocumentView(&m_pFirst->ToolView());
    m_pTool->SetDocumentView(&m_pSecond->ToolView());
    m_pTool->TakeNotes();
    m_pFirst->Document()->Lock();
    m_pFirst->Document()->Unlock();
    QCOMPARE(m_pTool->TakeNotes(), QStringList());
    m_pSecond->Document()->Lock();
    m_pSecond->Document()->Unlock();
    QCOMPARE(m_pTool->TakeNotes(), QStringList({"document locked", "document unlocked"}));
}

void TestViewToolViews::panningIsHeardOnTheCurrentViewOfAnActiveTool()
{
    const auto pan = [this](ViewFixture& fixture) {
        m_pTool->TakeNotes();
        fixture.View()->EnablePanning(true);
        fixture.View()->EnablePanning(false);
        return m_pTool->TakeNotes();
    };
    const QStringList heard{"panning", "no panning"};
    m_pTool->SetDocumentView(&m_pFirst->ToolView());
    QCOMPARE(pan(*m_pFirst), QStringList());
    m_pTool->Activate(true);
    QCOMPARE(pan(*m_pFirst), heard);
    m_pTool->SetDocumentView(&m_pSecond->ToolView());
    QCOMPARE(pan(*m_pFirst), QStringList());
    QCOMPARE(pan(*m_pSecond), heard);
    m_pTool->Activate(false);
    QCOMPARE(pan(*m_pSecond), QStringList());
}

void TestViewToolViews::activationDuringPanningLeavesThePanCursor()
{
    m_pTool->SetDocumentView(&m_pFirst->ToolView());
    m_pFirst->View()->EnablePanning(true);
    const Qt::CursorShape panning = m_pFirst->View()->cursor().shape();
    QVERIFY(panning != Qt::CrossCursor);
    m_pTool->Activate(true);
    QCOMPARE(m_pFirst->View()->cursor().shape(), panning);
    m_pFirst->View()->EnablePanning(false);
    QCOMPARE(m_pFirst->View()->cursor().shape(), Qt::CrossCursor);
    // The hand was none to be brought back.
    m_pTool->SetDocumentView(nullptr);
    QCOMPARE(m_pFirst->View()->cursor().shape(), Qt::ArrowCursor);
}

void TestViewToolViews::deactivationDuringPanningLeavesThePanCursor()
{
    m_pTool->SetDocumentView(&m_pFirst->ToolView());
    m_pTool->Activate(true);
    m_pFirst->View()->EnablePanning(true);
    const Qt::CursorShape panning = m_pFirst->View()->cursor().shape();
    QVERIFY(panning != Qt::ArrowCursor);
    m_pTool->Activate(false);
    QCOMPARE(m_pFirst->View()->cursor().shape(), panning);
    // Nor does the cursor of the tool that is gone come back afterwards.
    m_pFirst->View()->EnablePanning(false);
    QCOMPARE(m_pFirst->View()->cursor().shape(), Qt::ArrowCursor);
}

void TestViewToolViews::aViewThatIsEnteredDuringPanningKeepsThePanCursor()
{
    m_pTool->SetDocumentView(&m_pFirst->ToolView());
    m_pTool->Activate(true);
    m_pSecond->View()->EnablePanning(true);
    const Qt::CursorShape panning = m_pSecond->View()->cursor().shape();
    m_pTool->SetDocumentView(&m_pSecond->ToolView());
    QCOMPARE(m_pSecond->View()->cursor().shape(), panning);
    m_pSecond->View()->EnablePanning(false);
    QCOMPARE(m_pSecond->View()->cursor().shape(), Qt::CrossCursor);
    m_pTool->SetDocumentView(nullptr);
    QCOMPARE(m_pSecond->View()->cursor().shape(), Qt::ArrowCursor);
}

void TestViewToolViews::aViewThatIsLeftDuringPanningKeepsThePanCursor()
{
    m_pFirst->View()->setCursor(Qt::IBeamCursor);
    m_pTool->SetDocumentView(&m_pFirst->ToolView());
    m_pTool->Activate(true);
    m_pFirst->View()->EnablePanning(true);
    const Qt::CursorShape panning = m_pFirst->View()->cursor().shape();
    m_pTool->SetDocumentView(&m_pSecond->ToolView());
    QCOMPARE(m_pFirst->View()->cursor().shape(), panning);
    m_pFirst->View()->EnablePanning(false);
    QCOMPARE(m_pFirst->View()->cursor().shape(), Qt::IBeamCursor);
    // Back in the meantime, the tool has its cursor.
    m_pSecond->View()->EnablePanning(true);
    m_pTool->SetDocumentView(nullptr);
    m_pTool->SetDocumentView(&m_pSecond->ToolView());
    m_pSecond->View()->EnablePanning(false);
    QCOMPARE(m_pSecond->View()->cursor().shape(), Qt::CrossCursor);
}

void TestViewToolViews::aPanelThatIsActiveGetsNoFilterFromANewView()
{
    m_pTool = std::make_unique<RecordingTool>(true);
    m_pTool->Activate(true);
    m_pTool->SetDocumentView(&m_pFirst->ToolView());
    QCOMPARE(Hear(*m_pFirst, QEvent::GraphicsSceneMouseMove), QStringList());
}

void TestViewToolViews::activationOfAPanelLeavesItsFilterAlone()
{
    m_pTool = std::make_unique<RecordingTool>(true);
    m_pTool->SetDocumentView(&m_pFirst->ToolView());
    m_pTool->Activate(true);
    QCOMPARE(Hear(*m_pFirst, QEvent::GraphicsSceneMouseMove), QStringList({"move"}));
    m_pTool->Activate(false);
    QCOMPARE(Hear(*m_pFirst, QEvent::GraphicsSceneMouseMove), QStringList({"move"}));
}

void TestViewToolViews::whatIsHeardDependsOnPanningAndTheTool_data()
{
    QTest::addColumn<QEvent::Type>("type");
    QTest::addColumn<bool>("panning");
    QTest::addColumn<bool>("process");
    QTest::addColumn<bool>("heard");
    const std::pair<const char*, QEvent::Type> events[]{
        {"move", QEvent::GraphicsSceneMouseMove},
        {"press", QEvent::GraphicsSceneMousePress},
        {"release", QEvent::GraphicsSceneMouseRelease},
        {"double click", QEvent::GraphicsSceneMouseDoubleClick},
    };
    for (const auto& [name, type] : events) {
        const bool never = type == QEvent::GraphicsSceneMouseDoubleClick;
        QTest::addRow("%s", name) << type << false << false << true;
        QTest::addRow("%s, wanted while panning", name) << type << false << true << true;
        QTest::addRow("%s while panning", name) << type << true << false << never;
        QTest::addRow("%s while panning, wanted then", name) << type << true << true << true;
    }
}

void TestViewToolViews::whatIsHeardDependsOnPanningAndTheTool()
{
    QFETCH(QEvent::Type, type);
    QFETCH(bool, panning);
    QFETCH(bool, process);
    m_pTool->SetDocumentView(&m_pFirst->ToolView());
    m_pTool->Activate(true);
    m_pTool->SetSkipWhilePanning(process);
    m_pFirst->View()->EnablePanning(panning);
    QTEST(!Hear(*m_pFirst, type).isEmpty(), "heard");
}

ZK_REGISTER_TEST(tst_viewtoolviews, TestViewToolViews)

#include "tst_viewtoolviews.moc"
