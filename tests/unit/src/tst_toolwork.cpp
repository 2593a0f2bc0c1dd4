#include "RecordingTool.h"
#include "ToolWork.h"

#include "gui/LexoAppKeyHook.h"
#include "support/TestRegistry.h"
#include "support/ViewFixture.h"
#include "utils/FaultSeams.h"

#include <QGuiApplication>
#include <QTest>

class TestToolWork : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void workHoldsTheDocumentTheCursorAndTheShortcuts();
    void theEndGivesEverythingBackOnce();
    void theCursorCanGoFirst();
    void aRefusedLockLeavesNothing();
    void beginningTwiceHoldsOnce();
    void theDestructorIsTheLastNet();

private:
    bool IsHeld(const ToolWork& work);

    std::unique_ptr<ViewFixture> m_pFixture;
    std::unique_ptr<RecordingTool> m_pTool;
};

void TestToolWork::init()
{
    m_pFixture = std::make_unique<ViewFixture>();
    m_pTool = std::make_unique<RecordingTool>();
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
}

void TestToolWork::cleanup()
{
    FaultSeams::Reset();
    QVERIFY(!m_pFixture->Document()->GetLockState());
    QVERIFY(!QGuiApplication::overrideCursor());
    QVERIFY(LexoAppKeyHook::instance()->AreShortcutsEnabled());
    m_pTool.reset();
    m_pFixture.reset();
}

// All of it or nothing of it.
bool TestToolWork::IsHeld(const ToolWork& work)
{
    const bool held = work.IsWorking();
    [&] {
        QCOMPARE(m_pFixture->Document()->GetLockState(), held);
        QCOMPARE(QGuiApplication::overrideCursor() != nullptr, held);
        QCOMPARE(LexoAppKeyHook::instance()->AreShortcutsEnabled(), !held);
    }();
    return held;
}

void TestToolWork::workHoldsTheDocumentTheCursorAndTheShortcuts()
{
    ToolWork work(*m_pTool);
    QVERIFY(!IsHeld(work));
    QVERIFY(work.BeginWork());
    QVERIFY(IsHeld(work));
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
}

void TestToolWork::theEndGivesEverythingBackOnce()
{
    ToolWork work(*m_pTool);
    work.BeginWork();
    work.EndWork();
    QVERIFY(!IsHeld(work));

    // What somebody else holds now is not given back by a second end.
    m_pFixture->Document()->Lock();
    QGuiApplication::setOverrideCursor(Qt::CrossCursor);
    work.EndWork();
    QVERIFY(m_pFixture->Document()->GetLockState());
    QVERIFY(QGuiApplication::overrideCursor());
    QGuiApplication::restoreOverrideCursor();
    m_pFixture->Document()->Unlock();
}

void TestToolWork::theCursorCanGoFirst()
{
    ToolWork work(*m_pTool);
    work.BeginWork();
    work.RestoreCursor();
    QVERIFY(!QGuiApplication::overrideCursor());
    QVERIFY(m_pFixture->Document()->GetLockState());
    work.EndWork();
    QVERIFY(!IsHeld(work));
}

void TestToolWork::aRefusedLockLeavesNothing()
{
    FaultSeams::FailNth(FaultSeams::Seam::DocumentLock, 1);
    ToolWork work(*m_pTool);
    QVERIFY(!work.BeginWork());
    QVERIFY(!IsHeld(work));
}

void TestToolWork::beginningTwiceHoldsOnce()
{
    ToolWork work(*m_pTool);
    QVERIFY(work.BeginWork());
    QVERIFY(work.BeginWork());
    work.EndWork();
    QVERIFY(!IsHeld(work));
}

void TestToolWork::theDestructorIsTheLastNet()
{
    ToolWork(*m_pTool).BeginWork();
}

ZK_REGISTER_TEST(tst_toolwork, TestToolWork)

#include "tst_toolwork.moc"
