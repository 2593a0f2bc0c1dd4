#include "MoveToolFixture.h"
#include "movetoolprivate/CopyPasteThread.h"

#include "core/ZKToolGroupManager.h"
#include "document/LXDocumentInterface.h"
#include "gui/LexoAppKeyHook.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QPointer>
#include <QRegularExpression>

#include <atomic>
#include <stdexcept>
#include <utility>

// What happens when lifting, moving, landing or cancelling fails, and refused locks.
class TestMoveFailures : public QObject, private MoveToolFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aFailedLiftIsToldAndLeavesNothingBehind();
    void aFailedLiftByKeyIsTold();
    void aFailedMoveIsToldAndTakenBack();
    void aFailedMoveInADragGivesEverythingBack();
    void aFailedMoveOfAnUnknownWorkerEndsTheProgram();
    void aFailedMoveByKeyIsToldAndTakenBack();
    void aFailedMoveAtTheReleaseIsToldAndTakenBack();
    void anUnknownFailureEndsTheProgram();
    void aFailedLandingIsToldAndTakenBack();
    void aViewThatGoesWhileAPressTellsAFailureEndsThePress();
    void aViewThatGoesWhileAKeyTellsAFailureEndsTheKey();
    void aToolThatGoesWhileAPressTellsAFailureEndsThePress();
    void aToolThatGoesWhileItTellsAFailureIsLeftAlone();
    void aPictureThatGoesWhileAFailureIsToldGetsItsPixelsBack();
    void aFailureGivesATurnForAMomentBack();
    void aCancelThatFailsIsTold();
    void aCancelThatFailsStrangelyEndsTheProgram();
    void aFailureOfTheWorkerReachesThePerson();
    void aMoveOfTheWorkerThatFailsStrangelyEndsTheProgram_data();
    void aMoveOfTheWorkerThatFailsStrangelyEndsTheProgram();
    void aMoveAtOnceThatFailsStrangelyEndsTheProgram();
    void aRefusedLockDoesntEndTheDrag();
    void aRefusedUnlockIsReported();
    void aCapturedViewIsNotTakenByAnActiveTool();
    void aCapturedViewRefusesTheActivation();

private:
    void Float()
    {
        Select({2, 2, 3, 3});
        Drag({3.5, 3.5}, {8.5, 5.5});
        QVERIFY(Record());
    }

    /// The boxes of a move that fails and can't be taken back, because the seam fails then.
    QStringList BoxesOfFailedCancel(FaultSeams::Seam seam, const std::function<void()>& gesture)
    {
        // What isn't seen takes no tiles before the seam is reached.
        m_pFixture->Widget()->hide();
        FaultSeams::FailNth(seam, 1);
        return BoxesDuring(gesture, 2);
    }

    /// Lets the landing of what floats fail, and does something while its box shows.
    void FailLandingAndThen(const std::function<void()>& happening)
    {
        FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Unexpected exception: line=.*movetoolprivate"));
        m_pFixture->Input().WhenModalShows<LXMessageBox>([happening](LXMessageBox* box) {
            happening();
            box->close();
        });
    }

    /// What the box says that shows while each move of a cut piece fails, until it has been read.
    QString BoxOfFailingMoves(const std::function<void()>& gesture)
    {
        std::atomic<bool> fails{true};
        const auto failing = connect(Document(), &LXDocumentInterface::AboutSelectionMove, [&fails] {
            if (fails) throw std::runtime_error("no way");
        });
        QTest::ignoreMessage(
            QtDebugMsg,
            QRegularExpression("Unexpected exception: line=.*src/movetoolprivate/CutPasteObject"));
        QString text;
        m_pFixture->Input().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
            fails = false;
            text = box->windowTitle() + ": " + box->GetText();
            box->close();
        });
        gesture();
        disconnect(failing);
        return text;
    }

    void FailMove() { Private()->OnUnexpectedException(Record()->m_pThread.get()); }
};

namespace {
const QString Interrupted("Operation error: Unexpected error. Operation will be interrupted.");
const QString NoResources("Operation error: Cannot perform the operation. Insufficent system resources.");
} // namespace

void TestMoveFailures::init()
{
    MakeTool();
}

void TestMoveFailures::cleanup()
{
    FaultSeams::Reset();
    if (!m_pFixture) return;
    m_pFixture->History().commit();
    VERIFY_NOTHING_IS_HELD();
    QVERIFY(!m_pTool || !Record());
    QCOMPARE(Document()->GetDocumentState(), 0);
    DropTool();
}

void TestMoveFailures::aFailedLiftIsToldAndLeavesNothingBehind()
{
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    QTest::ignoreMessage(
        QtDebugMsg, QRegularExpression("Unexpected exception: line=.*src/movetoolprivate/CutPasteObject"));
    const QStringList boxes = BoxesDuring([&] {
        Press({3.5, 3.5});
        VERIFY_NOTHING_IS_HELD();
        Move({8.5, 5.5});
        Release({8.5, 5.5});
    });
    QCOMPARE(boxes, QStringList(NoResources));
    QVERIFY(!Record());
    QCOMPARE(Whole(), before);
    QCOMPARE(Texts(), QStringList());
}

void TestMoveFailures::aFailedLiftByKeyIsTold()
{
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    QTest::ignoreMessage(
        QtDebugMsg, QRegularExpression("Unexpected exception: line=.*src/movetoolprivate/CopyPasteObject"));
    QCOMPARE(BoxesDuring([&] { Private()->OnSelectionCopyMoveLeft(); }), QStringList(NoResources));
    QVERIFY(!Record());
    QCOMPARE(Whole(), before);
}

void TestMoveFailures::aFailedMoveIsToldAndTakenBack()
{
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    Float();
    const QPointer<CopyPasteThread> thread = Record()->m_pThread.get();
    QCOMPARE(BoxesDuring([&] { FailMove(); }), QStringList(Interrupted));
    QVERIFY(!Record());
    QCOMPARE(Whole(), before);
    QCOMPARE(Texts(), QStringList());
    // The worker goes, too.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!thread);
}

void TestMoveFailures::aFailedMoveInADragGivesEverythingBack()
{
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    Press({3.5, 3.5});
    Move({8.5, 5.5});
    QCOMPARE(BoxesDuring([&] { FailMove(); }), QStringList(Interrupted));
    VERIFY_NOTHING_IS_HELD();
    QCOMPARE(Whole(), before);
    Move({9.5, 5.5});
    Release({9.5, 5.5});
    QCOMPARE(Whole(), before);
}

void TestMoveFailures::aFailedMoveOfAnUnknownWorkerEndsTheProgram()
{
    CopyPasteThread stranger(nullptr);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Unexpected unknown exception: line=.*movetool"));
    const QStringList boxes = BoxesDuring(
        [&] { QVERIFY_EXCEPTION_THROWN(Private()->OnUnexpectedException(&stranger), std::exception); });
    QCOMPARE(boxes, QStringList("Operation error: Unexpected error. Application will stop!"));
}

void TestMoveFailures::aFailureOfTheWorkerReachesThePerson()
{
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    std::atomic<bool> fails{true};
    // Heard on the worker, in the middle of the move.
    connect(Document(), &LXDocumentInterface::AboutSelectionMove, [&fails] {
        if (fails.exchange(false)) throw std::runtime_error("no way");
    });
    QTest::ignoreMessage(
        QtDebugMsg, QRegularExpression("Unexpected exception: line=.*src/movetoolprivate/CutPasteObject"));
    Press({3.5, 3.5});
    QCOMPARE(BoxesDuring([&] {
                 Move({8.5, 5.5});
                 QTRY_VERIFY(!Record());
             }),
             QStringList(Interrupted));
    VERIFY_NOTHING_IS_HELD();
    Release({8.5, 5.5});
    QCOMPARE(Whole(), before);
    QCOMPARE(Texts(), QStringList());
}

void TestMoveFailures::aMoveOfTheWorkerThatFailsStrangelyEndsTheProgram_data()
{
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("piece");
    QTest::newRow("cut") << int(Qt::NoModifier) << "CutPasteObject";
    QTest::newRow("copy") << int(Qt::AltModifier) << "CopyPasteObject";
}

void TestMoveFailures::aMoveOfTheWorkerThatFailsStrangelyEndsTheProgram()
{
    QFETCH(int, modifiers);
    QFETCH(QString, piece);
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    std::atomic<bool> fails{true};
    // Heard on the worker, in the middle of the move.
    connect(Document(), &LXDocumentInterface::AboutSelectionMove, [&fails] {
        if (fails.exchange(false)) throw 5;
    });
    for (const QString& file : {piece, QString("CopyPasteBase"), QString("MoveTool")}) {
        QTest::ignoreMessage(
            QtDebugMsg, QRegularExpression(QString("Unexpected unknown exception: line=.*%1").arg(file)));
    }
    Press({3.5, 3.5}, static_cast<Qt::KeyboardModifier>(modifiers));
    constexpr int limit = 10000; // ms
    const QStringList boxes = BoxesDuring([&] {
        Move({8.5, 5.5});
        QVERIFY_EXCEPTION_THROWN(QTest::qWait(limit), std::runtime_error);
    });
    QCOMPARE(boxes, QStringList("Operation error: Unexpected error. Application will stop!"));
    QVERIFY(!Record());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(Private()->findChildren<CopyPasteThread*>().isEmpty());
    // What the program still has time for gives everything back.
    Release({8.5, 5.5});
    VERIFY_NOTHING_IS_HELD();
    QCOMPARE(Whole(), before);
    QCOMPARE(Document()->GetDocumentState(), 0);
}

void TestMoveFailures::aMoveAtOnceThatFailsStrangelyEndsTheProgram()
{
    Select({2, 2, 3, 3});
    bool fails = true;
    connect(Document(), &LXDocumentInterface::AboutSelectionMove, [&fails] {
        if (std::exchange(fails, false)) throw 5;
    });
    for (const char* file : {"CutPasteObject", "CopyPasteBase", "MoveTool"}) {
        QTest::ignoreMessage(
            QtDebugMsg, QRegularExpression(QString("Unexpected unknown exception: line=.*%1").arg(file)));
    }
    const QStringList boxes =
        BoxesDuring([&] { QVERIFY_EXCEPTION_THROWN(Private()->OnSelectionMoveLeft(), std::runtime_error); });
    QCOMPARE(boxes, QStringList("Operation error: Unexpected error. Application will stop!"));
    QVERIFY(!Record());
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void TestMoveFailures::aFailedMoveByKeyIsToldAndTakenBack()
{
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    QCOMPARE(BoxOfFailingMoves([&] { Private()->OnSelectionMoveLeft(); }), QString(Interrupted));
    QVERIFY(!Record());
    QCOMPARE(Whole(), before);
    QCOMPARE(Texts(), QStringList());
}

void TestMoveFailures::aFailedMoveAtTheReleaseIsToldAndTakenBack()
{
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    Press({3.5, 3.5});
    Move({8.5, 5.5});
    Record()->m_pThread->Flush();
    QCOMPARE(BoxOfFailingMoves([&] { Release({8.5, 5.5}); }), QString(Interrupted));
    VERIFY_NOTHING_IS_HELD();
    QVERIFY(!Record());
    QCOMPARE(Whole(), before);
    QCOMPARE(Texts(), QStringList());
}

void TestMoveFailures::anUnknownFailureEndsTheProgram()
{
    Float();
    CopyPasteThread* thread = Record()->m_pThread.get();
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Unexpected unknown exception: line=.*movetool"));
    const QStringList boxes =
        BoxesDuring([&] { QVERIFY_EXCEPTION_THROWN(Private()->OnUnexpectedError(thread), std::exception); });
    QCOMPARE(boxes, QStringList("Operation error: Unexpected error. Application will stop!"));
    QVERIFY(!Record());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(Private()->findChildren<CopyPasteThread*>().isEmpty());
}

void TestMoveFailures::aFailedLandingIsToldAndTakenBack()
{
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    Float();
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Unexpected exception: line=.*movetoolprivate"));
    QCOMPARE(BoxesDuring([&] { m_pFixture->History().commit(); }), QStringList(Interrupted));
    QVERIFY(!Record());
    QCOMPARE(Whole(), before);
    QCOMPARE(Texts(), QStringList());
    QVERIFY(!m_pFixture->History().isMacroOpen());
}

void TestMoveFailures::aViewThatGoesWhileAPressTellsAFailureEndsThePress()
{
    const QList<QPointF> presses{{14.5, 10.5}, {8.5, 5.5}};
    for (const QPointF& press : presses) {
        Select({2, 2, 3, 3});
        Drag({3.5, 3.5}, {8.5, 5.5}, Qt::AltModifier);
        QVERIFY(Record());
        FailLandingAndThen([&] { m_pTool->SetDocumentView(nullptr); });
        Press(press);
        VERIFY_NOTHING_IS_HELD();
        QVERIFY(!Record());
        QCOMPARE(Texts(), QStringList());
        Release(press);
        QCOMPARE(m_pFixture->Input().CountWaitingActions(), 0);
        m_pTool->SetDocumentView(&m_pFixture->ToolView());
    }
}

void TestMoveFailures::aViewThatGoesWhileAKeyTellsAFailureEndsTheKey()
{
    Float();
    FailLandingAndThen([&] { m_pTool->SetDocumentView(nullptr); });
    Private()->OnSelectionCopyMoveLeft();
    QVERIFY(!Record());
    m_pTool->SetDocumentView(&m_pFixture->ToolView());

    Float();
    m_pFixture->SelectLayers({});
    FailLandingAndThen([&] { m_pTool->SetDocumentView(nullptr); });
    const QRect selected = Document()->GetSelectionGeometry();
    Private()->OnSelectionMoveLeft();
    QVERIFY(!Record());
    QCOMPARE(selected, QRect(7, 4, 3, 3));
    QCOMPARE(Document()->GetSelectionGeometry(), QRect(2, 2, 3, 3));
}

void TestMoveFailures::aToolThatGoesWhileAPressTellsAFailureEndsThePress()
{
    Float();
    FailLandingAndThen([&] { m_pTool.reset(); });
    Press({14.5, 10.5});
    VERIFY_NOTHING_IS_HELD();
    QCOMPARE(Document()->GetDocumentState(), 0);
    QCOMPARE(Texts(), QStringList());
    Release({14.5, 10.5});
}

void TestMoveFailures::aToolThatGoesWhileItTellsAFailureIsLeftAlone()
{
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    Float();
    const QPointer<CopyPasteThread> thread = Record()->m_pThread.get();
    m_pFixture->Input().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        m_pTool.reset();
        box->close();
    });
    FailMove();
    QVERIFY(!m_pTool);
    QCOMPARE(Whole(), before);
    QCOMPARE(Document()->GetDocumentState(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!thread);
}

void TestMoveFailures::aPictureThatGoesWhileAFailureIsToldGetsItsPixelsBack()
{
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    Float();
    QStringList atTheEnd;
    m_pFixture->Input().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        emit m_pFixture->View()->AboutDestroy(m_pFixture->View());
        atTheEnd = Whole();
        box->close();
    });
    FailMove();
    QCOMPARE(atTheEnd, before);
    QCOMPARE(Whole(), before);
}

void TestMoveFailures::aFailureGivesATurnForAMomentBack()
{
    Select({2, 2, 3, 3});
    ZKToolGroupManager::Activate(nullptr);
    SendKey(Qt::Key_Control, true);
    Press({3.5, 3.5});
    QVERIFY(Record());
    QVERIFY(m_pTool->IsActive());
    QCOMPARE(BoxesDuring([&] { FailMove(); }), QStringList(Interrupted));
    QVERIFY(!m_pTool->IsActive());
    VERIFY_NOTHING_IS_HELD();
    Release({3.5, 3.5});
}

void TestMoveFailures::aCancelThatFailsIsTold()
{
    Float();
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Unexpected exception: line=.*movetoolprivate"));
    const QStringList boxes = BoxesOfFailedCancel(FaultSeams::Seam::TileAllocation, [&] { FailMove(); });
    QCOMPARE(boxes,
             QStringList({Interrupted, "Operation error: Cannot roll back. Insufficent system resources."}));
    QVERIFY(!Record());
}

void TestMoveFailures::aCancelThatFailsStrangelyEndsTheProgram()
{
    Float();
    QTest::ignoreMessage(QtDebugMsg,
                         QRegularExpression("Unexpected unknown exception: line=.*movetoolprivate/CutPaste"));
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Unexpected unknown exception: line=.*MoveTool_p"));
    const QStringList boxes = BoxesOfFailedCancel(FaultSeams::Seam::StrangeTileAllocation, [&] {
        QVERIFY_EXCEPTION_THROWN(FailMove(), FaultSeams::StrangeFailure);
    });
    QCOMPARE(boxes, QStringList({Interrupted, "Operation error: Cannot roll back. Unexpected error.\n"
                                              "Application will stop!"}));
}

void TestMoveFailures::aRefusedLockDoesntEndTheDrag()
{
    FaultSeams::FailNth(FaultSeams::Seam::DocumentLock, 1);
    Press({2.5, 2.5});
    QVERIFY(!Document()->GetLockState());
    QVERIFY(LexoAppKeyHook::instance()->AreShortcutsEnabled());
    Release({5.5, 2.5});
    QCOMPARE(Model()->GetLayerOffset(0), QPoint(3, 0));
}

void TestMoveFailures::aRefusedUnlockIsReported()
{
    FaultSeams::FailNth(FaultSeams::Seam::DocumentUnlock, 1);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Error to unlock the document\\.$"));
    Press({2.5, 2.5});
    Release({5.5, 2.5});
    QCOMPARE(Model()->GetLayerOffset(0), QPoint(3, 0));
    QVERIFY(Document()->GetLockState());
    // The next release tries again.
    Press({2.5, 2.5});
    Release({2.5, 2.5});
    VERIFY_NOTHING_IS_HELD();
}

void TestMoveFailures::aCapturedViewIsNotTakenByAnActiveTool()
{
    ViewFixture other(8, 8);
    QVERIFY(other.ToolView().Lock(this));
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Internal error: set locked document\\.$"));
    QVERIFY(!m_pTool->SetDocumentView(&other.ToolView()));
    QVERIFY(other.ToolView().Unlock(this));
    other.Input().DragInScene(other.View(), {{2.5, 2.5}, {5.5, 2.5}});
    QCOMPARE(other.Document()->GetModel()->GetLayerOffset(0), QPoint(0, 0));
}

void TestMoveFailures::aCapturedViewRefusesTheActivation()
{
    QVERIFY(m_pTool->Activate(false));
    QVERIFY(m_pFixture->ToolView().Lock(this));
    QVERIFY(!m_pTool->Activate(true));
    QVERIFY(!m_pTool->IsActive());
    m_pFixture->ToolView().Unlock(this);
    QVERIFY(m_pTool->Activate(true));
}

ZK_REGISTER_TEST(tst_movefailures, TestMoveFailures)

#include "tst_movefailures.moc"
