#include "MagicWandFixture.h"
#include "magicwand/MagicWand_p.h"

#include "core/ZKActivateAction.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxButton.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LexoAppKeyHook.h"
#include "history/LexoCommand.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

// Refused locks, failures, and what happens to a gesture when the tool or the view goes away.
class TestMagicWandFailures : public QObject, private MagicWandFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aRefusedLockDoesntEndTheClick();
    void aRefusedUnlockIsReportedAndTriedAgain();
    void aFailedFillIsToldAndLeavesNothingBehind();
    void somethingStrangeInTheFillIsToldAndGoesOn();
    void somethingStrangeAtTheReleaseIsToldAndGoesOn();
    void aViewThatGoesAwayEndsTheDrag();
    void deactivationEndsTheDrag();
    void aToolThatDiesInADragLeavesNothingBehind();
    void withoutAViewTheToolIsHarmless();
    void aCapturedViewRefusesTheActivation();
    void theButtonIsSilentInAGesture();
    void withoutAHistoryTheSelectionIsKept();

private:
    // The scene's own event, for what real input can't carry through a handler that throws.
    void SendToScene(QEvent::Type type, const QPointF& scenePos);
};

void TestMagicWandFailures::init()
{
    MakeTool();
}

void TestMagicWandFailures::cleanup()
{
    FaultSeams::Reset();
    VERIFY_NOTHING_IS_HELD();
    DropTool();
}

void TestMagicWandFailures::SendToScene(QEvent::Type type, const QPointF& scenePos)
{
    QGraphicsSceneMouseEvent event(type);
    event.setScenePos(scenePos);
    event.setButton(Qt::LeftButton);
    event.setButtons(type == QEvent::GraphicsSceneMouseRelease ? Qt::NoButton : Qt::LeftButton);
    QGraphicsScene* scene = m_pFixture->View()->scene();
    // Not through the application, which doesn't let exceptions pass.
    m_pTool->findChild<MagicWandPrivate*>()->eventFilter(scene, &event);
}

void TestMagicWandFailures::aRefusedLockDoesntEndTheClick()
{
    FaultSeams::FailNth(FaultSeams::Seam::DocumentLock, 1);
    Click({2.5, 2.5});
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(0, 0, 4, 6));

    // Somebody else's lock stays theirs.
    QVERIFY(m_pFixture->Document()->Lock());
    Click({6.5, 2.5});
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(5, 0, 3, 6));
    QVERIFY(m_pFixture->Document()->Unlock());
}

void TestMagicWandFailures::aRefusedUnlockIsReportedAndTriedAgain()
{
    FaultSeams::FailNth(FaultSeams::Seam::DocumentUnlock, 1);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Error to unlock the document\\.$"));
    Press({2.5, 2.5});
    QVERIFY(m_pFixture->Document()->GetLockState());
    QVERIFY(!LexoAppKeyHook::instance()->AreShortcutsEnabled());
    Release({2.5, 2.5});
    VERIFY_NOTHING_IS_HELD();
}

void TestMagicWandFailures::aFailedFillIsToldAndLeavesNothingBehind()
{
    FaultSeams::FailNth(FaultSeams::Seam::FloodFill, 1);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Unexpected exception: line=.*magicwand"));
    const QStringList boxes = BoxesDuring([&] {
        Press({2.5, 2.5});
        VERIFY_NOTHING_IS_HELD();
        Release({2.5, 2.5});
    });
    QCOMPARE(boxes, QStringList("Operation error: Cannot select pixels. Unexpected error occurred."));
    QVERIFY(!m_pFixture->Document()->HasSelection());
    QCOMPARE(m_pFixture->History().count(), 0);
}

void TestMagicWandFailures::somethingStrangeInTheFillIsToldAndGoesOn()
{
    const auto failing = connect(&m_pFixture->History(), &LexoUndoStack::aboutIndexChanged, this,
                                 [] { throw FaultSeams::StrangeFailure(); });
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Unexpected unknown exception: line=.*magicwand"));
    bool passedOn = false;
    const QStringList boxes = BoxesDuring([&] {
        try {
            SendToScene(QEvent::GraphicsSceneMousePress, {2.5, 2.5});
        } catch (const FaultSeams::StrangeFailure&) {
            passedOn = true;
        }
    });
    disconnect(failing);
    QVERIFY(passedOn);
    QCOMPARE(boxes, QStringList("Operation error: Cannot select pixels. Unexpected error occurred.\n"
                                "Application will stop!"));
}

void TestMagicWandFailures::somethingStrangeAtTheReleaseIsToldAndGoesOn()
{
    Select({"########"});
    const auto failing = connect(&m_pFixture->History(), &LexoUndoStack::aboutIndexChanged, this,
                                 [] { throw FaultSeams::StrangeFailure(); });
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Unexpected unknown exception: line=.*magicwand"));
    bool passedOn = false;
    SendToScene(QEvent::GraphicsSceneMousePress, {2.5, 0.5});
    const QStringList boxes = BoxesDuring([&] {
        try {
            SendToScene(QEvent::GraphicsSceneMouseRelease, {2.5, 0.5});
        } catch (const FaultSeams::StrangeFailure&) {
            passedOn = true;
        }
    });
    disconnect(failing);
    QVERIFY(passedOn);
    QCOMPARE(boxes, QStringList("Operation error: Cannot select pixels. Unexpected error occurred.\n"
                                "Application will stop!"));
}

void TestMagicWandFailures::aViewThatGoesAwayEndsTheDrag()
{
    Select({"##"}, {1, 1});
    Press({1.5, 1.5});
    Move({3.5, 2.5});
    m_pTool->SetDocumentView(nullptr);
    VERIFY_NOTHING_IS_HELD();
    QCOMPARE(m_pFixture->History().undoText(), QString("Move selection"));
    Release({3.5, 2.5});
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(1, 1, 2, 1));
}

void TestMagicWandFailures::deactivationEndsTheDrag()
{
    Select({"##"}, {1, 1});
    Press({1.5, 1.5});
    ZKToolGroupManager::Activate(nullptr);
    VERIFY_NOTHING_IS_HELD();
    Release({1.5, 1.5});
    QVERIFY(m_pFixture->Document()->HasSelection());
    QCOMPARE(m_pFixture->History().count(), 0);
}

void TestMagicWandFailures::aToolThatDiesInADragLeavesNothingBehind()
{
    Select({"##"}, {1, 1});
    Press({1.5, 1.5});
    m_pTool.reset();
    VERIFY_NOTHING_IS_HELD();
    Release({1.5, 1.5});
}

void TestMagicWandFailures::withoutAViewTheToolIsHarmless()
{
    m_pTool->SetDocumentView(nullptr);
    QVERIFY(m_pTool->IsActive());
    Click({2.5, 2.5});
    QCOMPARE(m_pFixture->History().count(), 0);
    ZKToolGroupManager::Activate(nullptr);
    ZKToolGroupManager::Activate(m_pTool->GetActivateAction());
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    Click({2.5, 2.5});
    QCOMPARE(m_pFixture->History().count(), 1);
}

void TestMagicWandFailures::aCapturedViewRefusesTheActivation()
{
    QVERIFY(m_pTool->Activate(false));
    m_pFixture->ToolView().Lock(this);
    QVERIFY(!m_pTool->Activate(true));
    QVERIFY(!m_pTool->IsActive());
    Click({2.5, 2.5});
    QCOMPARE(m_pFixture->History().count(), 0);
    m_pFixture->ToolView().Unlock(this);
    QVERIFY(m_pTool->Activate(true));
}

void TestMagicWandFailures::theButtonIsSilentInAGesture()
{
    auto* button = LToolBoxWidget::GetInstance()->findChild<LToolBoxButton*>();
    QVERIFY(button);
    Select({"##"}, {1, 1});
    Press({1.5, 1.5});
    QVERIFY(button->signalsBlocked());
    Release({1.5, 1.5});
    QVERIFY(!button->signalsBlocked());
}

void TestMagicWandFailures::withoutAHistoryTheSelectionIsKept()
{
    ZKDocumentWidget bare(m_pFixture->Document(), nullptr);
    bare.resize(200, 150);
    bare.show();
    IDocumentView view;
    view.SetDocumentWidget(&bare);
    m_pTool->SetDocumentView(&view);
    m_pFixture->Input().ClickInScene(bare.GetView(), {2.5, 2.5});
    QCOMPARE(m_pFixture->Document()->GetSelectionGeometry(), QRect(0, 0, 4, 6));
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
}

ZK_REGISTER_TEST(tst_magicwandfailures, TestMagicWandFailures)

#include "tst_magicwandfailures.moc"
