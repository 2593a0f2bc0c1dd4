#include "LXDialogViewToolBase.h"

#include "core/ZKActivateAction.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxWidget.h"
#include "guicore/LXDialog.h"
#include "support/TestRegistry.h"
#include "support/ViewFixture.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLineEdit>
#include <QTest>

namespace {
/// A tool with a dialog, which writes down what happens to it.
class DialogTool : public LXDialogViewToolBase
{
public:
    DialogTool() : LXDialogViewToolBase(nullptr) {}

    using LXDialogViewToolBase::GetDialog;
    using LXDialogViewToolBase::GetToolBoxPosition;
    using LXDialogViewToolBase::StartDialog;

    QStringList TakeNotes() { return std::exchange(m_Notes, {}); }

    LXDialog dialog;

protected:
    QWidget* CreateDialog(ZKDocumentView* view) override
    {
        m_Notes.append(view == GetView() && !view->IsLayerOrderBlocked() ? "create" : "create too late");
        return &dialog;
    }

    void DialogStarted() override
    {
        const bool ready = dialog.isVisible() && GetDocument()->GetLockState() && IsBlocked();
        m_Notes.append(ready ? "started" : "started too early");
    }

    void DialogFinished() override
    {
        const bool stillLocked = !GetDocument() || GetDocument()->GetLockState();
        const bool held = !dialog.parent() && GetDialog() == &dialog && stillLocked;
        m_Notes.append(held ? "finished" : "finished too late");
    }

    void DialogAccepted() override { Ended("accepted"); }

    void DialogRejected() override { Ended("rejected"); }

    void CreateToolBar() override {}

    void CreateToolBoxButton() override {}

    void CreateToolWidget() override {}

    QCursor GetCursor() override { return Qt::CrossCursor; }

private:
    bool IsBlocked()
    {
        return GetView()->IsLayerOrderBlocked() && GetView()->IsPathOrderBlocked() &&
               GetView()->IsStylizationBlocked() && !LToolBoxWidget::GetInstance()->isEnabled();
    }

    void Ended(const char* how)
    {
        const bool free = !GetDocument() || (!GetDocument()->GetLockState() && !IsBlocked());
        m_Notes.append(free ? QString(how) : QString("%1 while blocked").arg(how));
    }

    QStringList m_Notes;
};

const QStringList Opened{"create", "started"};
} // namespace

class TestDialogViewTool : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void startingTakesTheGroupAndBlocksTheEditor();
    void theDialogComesToTheFrontWithTheFocus();
    void startingTwiceOpensOneDialog();
    void aRefusalOfTheOutgoingToolOpensNothing();
    void withoutAViewTheToolIsActiveButNoDialogStands();
    void acceptingGivesEverythingBackFirst();
    void rejectingGivesEverythingBackFirst();
    void closingByTheFrameEndsLikeARejection();
    void theToolFromBeforeComesBack();
    void withoutAToolFromBeforeTheDialogOpensAgain();
    void aRefusedReturnLeavesTheToolBoxDisabledAndTheDialog();
    void aDocumentLockOfSomebodyElseStaysTheirs();
    void theBlockGoesBackToTheViewThatItWasTakenFrom();
    void aToolThatDiesUnblocksTheEditor();
    void theToolHasNoPlaceInTheToolBox();

private:
    QStringList Start();

    std::unique_ptr<ViewFixture> m_pFixture;
    std::unique_ptr<LToolBoxWidget> m_pToolBox;
    std::unique_ptr<QObject> m_pAdapter;
    DialogTool* m_pTool = nullptr;
};

void TestDialogViewTool::init()
{
    m_pFixture = std::make_unique<ViewFixture>();
    m_pToolBox = std::make_unique<LToolBoxWidget>();
    m_pAdapter = std::make_unique<QObject>();
    m_pTool = new DialogTool;
    m_pTool->Init(m_pAdapter.get());
    m_pTool->SetToolBox(m_pToolBox.get());
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
}

void TestDialogViewTool::cleanup()
{
    ZKToolGroupManager::Activate(nullptr);
    m_pAdapter.reset();
    m_pToolBox.reset();
    m_pFixture.reset();
}

QStringList TestDialogViewTool::Start()
{
    m_pTool->StartDialog();
    return m_pTool->TakeNotes();
}

void TestDialogViewTool::startingTakesTheGroupAndBlocksTheEditor()
{
    QCOMPARE(Start(), Opened);
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), m_pTool->GetActivateAction());
    QVERIFY(m_pTool->IsActive());
    QCOMPARE(m_pTool->GetDialog(), static_cast<QWidget*>(&m_pTool->dialog));
    QVERIFY(m_pTool->dialog.isVisible());
    QVERIFY(m_pFixture->Document()->GetLockState());
    QVERIFY(m_pFixture->View()->IsLayerOrderBlocked());
    QVERIFY(m_pFixture->View()->IsPathOrderBlocked());
    QVERIFY(m_pFixture->View()->IsStylizationBlocked());
    QVERIFY(!m_pToolBox->isEnabled());
}

void TestDialogViewTool::theDialogComesToTheFrontWithTheFocus()
{
    struct Listener : QObject
    {
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            const auto* dialog = static_cast<const QWidget*>(watched);
            if (event->type() == QEvent::ZOrderChange && dialog->isVisible()) hasBeenRaised = true;
            return false;
        }

        bool hasBeenRaised = false;
    };

    // It would get the focus of a dialog that is only shown.
    auto* field = new QLineEdit(&m_pTool->dialog);
    Listener listener;
    m_pTool->dialog.installEventFilter(&listener);
    Start();
    QVERIFY(listener.hasBeenRaised);
    QVERIFY(!field->hasFocus());
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(&m_pTool->dialog));
}

void TestDialogViewTool::startingTwiceOpensOneDialog()
{
    Start();
    QCOMPARE(Start(), QStringList());
}

void TestDialogViewTool::aRefusalOfTheOutgoingToolOpensNothing()
{
    struct Stubborn : ZKActivateAction
    {
        using ZKActivateAction::ZKActivateAction;

        bool IsAllowChange() override { return false; }
    };

    auto outgoing = std::make_unique<Stubborn>(nullptr);
    ZKToolGroupManager::Add(outgoing.get());
    QVERIFY(ZKToolGroupManager::Activate(outgoing.get()));

    QCOMPARE(Start(), QStringList());
    QVERIFY(!m_pTool->GetDialog());
    QVERIFY(!m_pFixture->Document()->GetLockState());
    QVERIFY(m_pToolBox->isEnabled());
    outgoing.reset();
}

void TestDialogViewTool::withoutAViewTheToolIsActiveButNoDialogStands()
{
    m_pTool->SetDocumentView(nullptr);
    QCOMPARE(Start(), QStringList());
    QVERIFY(m_pTool->IsActive());
    QVERIFY(!m_pTool->GetDialog());
    QVERIFY(m_pToolBox->isEnabled());
}

void TestDialogViewTool::acceptingGivesEverythingBackFirst()
{
    Start();
    m_pTool->dialog.Accept();
    QCOMPARE(m_pTool->TakeNotes(), QStringList({"finished", "accepted"}));
    QVERIFY(!m_pTool->GetDialog());
    QVERIFY(!m_pFixture->Document()->GetLockState());
    QVERIFY(m_pToolBox->isEnabled());
}

void TestDialogViewTool::rejectingGivesEverythingBackFirst()
{
    Start();
    m_pTool->dialog.Reject();
    QCOMPARE(m_pTool->TakeNotes(), QStringList({"finished", "rejected"}));
    QVERIFY(!m_pTool->GetDialog());
    QVERIFY(!m_pFixture->Document()->GetLockState());
    QVERIFY(m_pToolBox->isEnabled());
}

void TestDialogViewTool::closingByTheFrameEndsLikeARejection()
{
    Start();
    m_pTool->dialog.close();
    QCOMPARE(m_pTool->TakeNotes(), QStringList({"finished", "rejected"}));
    QVERIFY(!m_pTool->GetDialog());
    QVERIFY(!m_pFixture->Document()->GetLockState());
    QVERIFY(m_pToolBox->isEnabled());
}

void TestDialogViewTool::theToolFromBeforeComesBack()
{
    ZKActivateAction before(nullptr);
    ZKToolGroupManager::Add(&before);
    ZKToolGroupManager::Activate(&before);

    Start();
    QVERIFY(!before.IsChecked());
    m_pTool->dialog.Accept();
    QVERIFY(before.IsChecked());
    QVERIFY(before.IsImplicitlyChecked());
    QVERIFY(!m_pTool->IsActive());
    QCOMPARE(Start(), QStringList() << "finished"
                                    << "accepted" << Opened);
}

void TestDialogViewTool::withoutAToolFromBeforeTheDialogOpensAgain()
{
    Start();
    m_pTool->dialog.Reject();
    m_pTool->TakeNotes();
    QVERIFY(!ZKToolGroupManager::GetExplicitAction());
    QCOMPARE(Start(), Opened);
}

void TestDialogViewTool::aRefusedReturnLeavesTheToolBoxDisabledAndTheDialog()
{
    struct Vetoing : DialogTool
    {
        bool veto = false;

        bool AllowDeactivate() override { return !veto; }
    };

    auto* tool = new Vetoing;
    tool->Init(m_pAdapter.get());
    tool->SetToolBox(m_pToolBox.get());
    tool->SetDocumentView(&m_pFixture->ToolView());
    ZKActivateAction before(nullptr);
    ZKToolGroupManager::Add(&before);
    ZKToolGroupManager::Activate(&before);

    tool->StartDialog();
    tool->veto = true;
    tool->dialog.Accept();
    QVERIFY(!m_pToolBox->isEnabled());
    QCOMPARE(tool->GetDialog(), static_cast<QWidget*>(&tool->dialog));
    QVERIFY(tool->GetActivateAction()->IsChecked());
    QVERIFY(!m_pFixture->Document()->GetLockState());
    QVERIFY(!m_pFixture->View()->IsLayerOrderBlocked());
    tool->veto = false;
}

void TestDialogViewTool::aDocumentLockOfSomebodyElseStaysTheirs()
{
    QVERIFY(m_pFixture->Document()->Lock());
    Start();
    m_pTool->dialog.Reject();
    QVERIFY(m_pFixture->Document()->GetLockState());
    m_pFixture->Document()->Unlock();
}

void TestDialogViewTool::theBlockGoesBackToTheViewThatItWasTakenFrom()
{
    Start();
    m_pTool->SetDocumentView(nullptr);
    m_pTool->dialog.Reject();
    QVERIFY(!m_pFixture->Document()->GetLockState());
    QVERIFY(!m_pFixture->View()->IsLayerOrderBlocked());
    QVERIFY(!m_pFixture->View()->IsPathOrderBlocked());
    QVERIFY(!m_pFixture->View()->IsStylizationBlocked());
}

void TestDialogViewTool::aToolThatDiesUnblocksTheEditor()
{
    Start();
    m_pAdapter.reset();
    QVERIFY(!m_pFixture->Document()->GetLockState());
    QVERIFY(!m_pFixture->View()->IsLayerOrderBlocked());
    QVERIFY(m_pToolBox->isEnabled());
}

void TestDialogViewTool::theToolHasNoPlaceInTheToolBox()
{
    QCOMPARE(m_pTool->GetToolBoxPosition(), -1);
}

ZK_REGISTER_TEST(tst_dialogviewtool, TestDialogViewTool)
#include "tst_dialogviewtool.moc"
