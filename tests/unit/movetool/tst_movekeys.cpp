#include "MoveToolFixture.h"

#include "core/ZKActivateAction.h"
#include "core/ZKToolGroupManager.h"
#include "document/LayerKind.h"
#include "document/LayerLocks.h"
#include "gui/LexoAppKeyHook.h"
#include "support/TestRegistry.h"

#include <QMetaMethod>
#include <QRegularExpression>

// Keys that nudge the selection and its pixels, and Ctrl, which calls the tool for a moment.
class TestMoveKeys : public QObject, private MoveToolFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everyKeyMovesItsWay_data();
    void everyKeyMovesItsWay();
    void stepsAreStepsOnTheScreen_data();
    void stepsAreStepsOnTheScreen();
    void withoutASelectionKeysDoNothing();
    void keyStepsOfOnePieceAreOneStepOfTheHistory();
    void aKeyGoesOnWithAPieceThatWasDragged();
    void aCopyAfterACutLandsTheCut();
    void keysMoveTheMaskThatIsSelected();
    void aLayerWithoutPixelsIsWarnedOf_data();
    void aLayerWithoutPixelsIsWarnedOf();
    void theSelectedMaskOfALayerWithoutPixelsMoves();
    void locksHoldAgainstKeysToo_data();
    void locksHoldAgainstKeysToo();
    void thePieceStaysAfterAKey();

    void withSeveralLayersOnlyTheSelectionMoves();
    void severalKeysAreOneMoveOfTheSelection();
    void withSeveralLayersNothingIsCopied();
    void aMoveOfTheSelectionLandsAPieceFirst();
    void aMoveOfTheSelectionByOthersClosesTheStep();
    void returnClosesTheStep();
    void aPressClosesTheStep_data();
    void aPressClosesTheStep();
    void withoutAHistoryTheSelectionMovesAllTheSame();

    void controlCallsTheToolForAMoment();
    void controlIsIgnoredWhileALockedDocumentIsInOtherHands();
    void controlIsIgnoredWhileTheViewIsInOtherHands();
    void aToolThatRefusesKeepsItsTurn();
    void aDragKeepsTheTurnUntilTheRelease();
    void aRefusedPressKeepsTheTurnUntilItIsTold();
    void aFailedStartGivesTheTurnBack();
    void theChosenToolIsLeftAloneByControl();

private:
    QRect Selected() const { return Document()->GetSelectionGeometry(); }
};

namespace {
/// Another tool of the group, which may refuse to lose its turn.
class OtherTool : public ZKActivateAction
{
public:
    explicit OtherTool(bool allows) : ZKActivateAction(nullptr), m_bAllows(allows)
    {
        ZKToolGroupManager::Add(this);
    }

    bool IsAllowChange() override { return m_bAllows; }

private:
    bool m_bAllows;
};

const QRect Start(5, 5, 2, 2);
} // namespace

void TestMoveKeys::init()
{
    MakeTool();
    Select(Start);
}

void TestMoveKeys::cleanup()
{
    m_pFixture->Input().HoldModifiers(Qt::NoModifier);
    m_pFixture->History().commit();
    VERIFY_NOTHING_IS_HELD();
    QVERIFY(!Record());
    QCOMPARE(Document()->GetDocumentState(), 0);
    DropTool();
}

// ---- pixels

void TestMoveKeys::everyKeyMovesItsWay_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<QPoint>("delta");
    QTest::addColumn<bool>("copies");

    const struct
    {
        const char* name;
        QPoint direction;
    } ways[] = {{"Left", {-1, 0}}, {"Right", {1, 0}}, {"Top", {0, -1}}, {"Bottom", {0, 1}}};

    for (const auto& way : ways) {
        for (const bool copies : {false, true}) {
            const QByteArray kind = copies ? "OnSelectionCopyMove" : "OnSelectionMove";
            const QByteArray small = kind + way.name;
            const QByteArray large = kind + "10" + way.name;
            QTest::newRow(small) << small << way.direction << copies;
            QTest::newRow(large) << large << way.direction * 10 << copies;
        }
    }
}

void TestMoveKeys::everyKeyMovesItsWay()
{
    QFETCH(QByteArray, slot);
    QFETCH(QPoint, delta);
    QFETCH(bool, copies);
    QVERIFY(QMetaObject::invokeMethod(Private(), slot));
    QCOMPARE(Selected(), Start.translated(delta));
    QCOMPARE(Record()->m_bCopy, copies);
    QCOMPARE(Document()->GetAdditionalLayerGeometry(1), Start.translated(delta));
    QCOMPARE(qAlpha(m_pFixture->Pixel(5, 5)), copies ? 255 : 0);
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList(copies ? "Copy" : "Cut"));
}

void TestMoveKeys::stepsAreStepsOnTheScreen_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<int>("small");
    QTest::addColumn<int>("large");
    QTest::newRow("as it is") << 1.0 << 1 << 10;
    QTest::newRow("larger") << 4.0 << 1 << 10;
    QTest::newRow("smaller") << 0.3 << 3 << 33;
}

void TestMoveKeys::stepsAreStepsOnTheScreen()
{
    QFETCH(double, scale);
    QFETCH(int, small);
    QFETCH(int, large);
    ZKDocumentView* view = m_pFixture->View();
    view->Scale(scale / view->GetScale(), {});
    QCOMPARE(view->GetScale(), scale);
    Private()->OnSelectionMoveRight();
    QCOMPARE(Selected(), Start.translated(small, 0));
    Private()->OnSelectionMove10Bottom();
    QCOMPARE(Selected(), Start.translated(small, large));
}

void TestMoveKeys::withoutASelectionKeysDoNothing()
{
    Document()->SetSelectionMask({}, {});
    Private()->OnSelectionMoveRight();
    Private()->OnSelectionCopyMoveRight();
    QVERIFY(!Record());
    QVERIFY(!m_pFixture->History().isDelayedOpen());
    QCOMPARE(Model()->GetLayerOffset(0), QPoint(0, 0));
}

void TestMoveKeys::keyStepsOfOnePieceAreOneStepOfTheHistory()
{
    const QStringList before = Whole();
    Private()->OnSelectionMoveRight();
    const MoveViewState* record = Record();
    Private()->OnSelectionMoveRight();
    Private()->OnSelectionMoveTop();
    QCOMPARE(Record(), record);
    QCOMPARE(Selected(), Start.translated(2, -1));
    QCOMPARE(Merged(7, 4), Source(5, 5));
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList("Cut"));
    m_pFixture->History().undo();
    QCOMPARE(Whole(), before);
}

void TestMoveKeys::aKeyGoesOnWithAPieceThatWasDragged()
{
    Drag({5.5, 5.5}, {8.5, 5.5});
    const MoveViewState* record = Record();
    Private()->OnSelectionMoveRight();
    QCOMPARE(Record(), record);
    QCOMPARE(Selected(), Start.translated(4, 0));
    Drag({9.5, 5.5}, {9.5, 6.5});
    QCOMPARE(Record(), record);
    QCOMPARE(Selected(), Start.translated(4, 1));
}

void TestMoveKeys::aCopyAfterACutLandsTheCut()
{
    Private()->OnSelectionMoveRight();
    Private()->OnSelectionCopyMoveRight();
    QCOMPARE(Texts(), QStringList("Cut"));
    Private()->OnSelectionMoveRight();
    QCOMPARE(Texts(), QStringList({"Cut", "Copy"}));
}

void TestMoveKeys::keysMoveTheMaskThatIsSelected()
{
    AddMask(Start);
    Model()->SetMaskSelected(0, true);
    Private()->OnSelectionCopyMove10Left();
    QVERIFY(Record()->m_bMask);
    m_pFixture->History().commit();
    Select(Start);
    Private()->OnSelectionMoveRight();
    QVERIFY(Record()->m_bMask);
    m_pFixture->History().commit();
    QCOMPARE(Document()->GetMaskImage(1)->GetColor(7, 5).Alpha(), 0);
    QCOMPARE(m_pFixture->Pixel(7, 5), Source(7, 5));
}

void TestMoveKeys::aLayerWithoutPixelsIsWarnedOf_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("warning");
    QTest::newRow("text") << LayerKind::Text << "Zenkari: Unable to move selected text area.";
    QTest::newRow("adjustment") << LayerKind::Adjustment
                                << "Zenkari: Unable to move selected adjustment area.";
}

void TestMoveKeys::aLayerWithoutPixelsIsWarnedOf()
{
    QFETCH(int, kind);
    QFETCH(QString, warning);
    AddLayerOfKind(kind);
    QCOMPARE(BoxesDuring([&] { Private()->OnSelectionMoveRight(); }), QStringList(warning));
    QCOMPARE(BoxesDuring([&] { Private()->OnSelectionCopyMoveRight(); }), QStringList(warning));
    QVERIFY(!Record());
    QCOMPARE(Selected(), Start);
}

void TestMoveKeys::theSelectedMaskOfALayerWithoutPixelsMoves()
{
    AddLayerOfKind(LayerKind::Text);
    AddMask(Start);
    Model()->SetMaskSelected(0, true);
    Private()->OnSelectionMoveRight();
    QVERIFY(Record()->m_bMask);
    QCOMPARE(Selected(), Start.translated(1, 0));
}

void TestMoveKeys::locksHoldAgainstKeysToo_data()
{
    QTest::addColumn<unsigned int>("locks");
    QTest::addColumn<QString>("message");
    QTest::newRow("position") << LayerLocks::Position << "Zenkari: Cannot move the image. Layer is locked.";
    QTest::newRow("everything") << LayerLocks::All << "Zenkari: Cannot move the image. Layer is locked.";
    QTest::newRow("pixels") << LayerLocks::Pixels << "Zenkari: Cannot move the selection. Layer is locked.";
}

void TestMoveKeys::locksHoldAgainstKeysToo()
{
    QFETCH(unsigned int, locks);
    QFETCH(QString, message);
    Model()->SetLockFlags(0, locks);
    QCOMPARE(BoxesDuring([&] { Private()->OnSelectionMoveRight(); }), QStringList(message));
    QVERIFY(!Record());
    QCOMPARE(Selected(), Start);
    QCOMPARE(m_pFixture->Pixel(5, 5), Source(5, 5));
}

void TestMoveKeys::thePieceStaysAfterAKey()
{
    Private()->OnSelectionMoveRight();
    QCoreApplication::processEvents();
    QVERIFY(Record());
    QVERIFY(!Record()->m_bOwnMove);
    // Somebody else's move is heard again.
    Document()->MoveToSelection({0, 0});
    QVERIFY(!Record());
}

// ---- the selection alone

void TestMoveKeys::withSeveralLayersOnlyTheSelectionMoves()
{
    AddLayer({1, 1, 2, 2}, Qt::blue);
    m_pFixture->SelectLayers({0, 1});
    Private()->OnSelectionMove10Right();
    QCOMPARE(Selected(), Start.translated(10, 0));
    QVERIFY(Record());
    QVERIFY(!Record()->m_pThread);
    QCOMPARE(Record()->m_LayerID, MoveViewState::NoLayer);
    QCOMPARE(Document()->GetDocumentState(), 1);
    QCOMPARE(Model()->GetLayerOffset(0), QPoint(1, 1));
    QCOMPARE(m_pFixture->Pixel(5, 5, 2), Source(5, 5));
    m_pFixture->History().undo();
    QCOMPARE(Selected(), Start);
    QCOMPARE(Texts(), QStringList("Move selection"));
    m_pFixture->History().redo();
    QCOMPARE(Selected(), Start.translated(10, 0));
}

void TestMoveKeys::severalKeysAreOneMoveOfTheSelection()
{
    m_pFixture->SelectLayers({});
    Private()->OnSelectionMoveRight();
    const MoveViewState* record = Record();
    Private()->OnSelectionMoveRight();
    Private()->OnSelectionMoveBottom();
    QCOMPARE(Record(), record);
    QCOMPARE(m_pFixture->History().count(), 0);
    QVERIFY(m_pFixture->History().isDelayedOpen());
    m_pFixture->History().commit();
    QVERIFY(!Record());
    QCOMPARE(Texts(), QStringList("Move selection"));
    m_pFixture->History().undo();
    QCOMPARE(Selected(), Start);
    m_pFixture->History().redo();
    QCOMPARE(Selected(), Start.translated(2, 1));
}

void TestMoveKeys::withSeveralLayersNothingIsCopied()
{
    m_pFixture->SelectLayers({});
    Private()->OnSelectionCopyMoveRight();
    QCOMPARE(Selected(), Start);
    QVERIFY(!Record());
}

void TestMoveKeys::aMoveOfTheSelectionLandsAPieceFirst()
{
    Private()->OnSelectionMoveRight();
    m_pFixture->SelectLayers({});
    Private()->OnSelectionMoveRight();
    QCOMPARE(Texts(), QStringList("Cut"));
    QVERIFY(!Record()->m_pThread);
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList({"Cut", "Move selection"}));
    QCOMPARE(Selected(), Start.translated(2, 0));
    m_pFixture->History().undo();
    QCOMPARE(Selected(), Start.translated(1, 0));
}

void TestMoveKeys::aMoveOfTheSelectionByOthersClosesTheStep()
{
    m_pFixture->SelectLayers({});
    Private()->OnSelectionMoveRight();
    Document()->MoveToSelection({0, 0});
    QVERIFY(!Record());
    QCOMPARE(Texts(), QStringList("Move selection"));
    m_pFixture->History().undo();
    m_pFixture->History().redo();
    // Where the keys left it, not where the other one did.
    QCOMPARE(Selected(), Start.translated(1, 0));
}

void TestMoveKeys::returnClosesTheStep()
{
    m_pFixture->SelectLayers({});
    ZKToolGroupManager::Activate(nullptr);
    Private()->OnSelectionMoveRight();
    SendKey(Qt::Key_Return, true);
    QVERIFY(!Record());
    QCOMPARE(Texts(), QStringList("Move selection"));
}

void TestMoveKeys::aPressClosesTheStep_data()
{
    QTest::addColumn<QPointF>("at");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("beside the selection") << QPointF(14.5, 10.5) << QStringList({"Move selection", "Move"});
    QTest::newRow("on a selected pixel") << QPointF(6.5, 5.5) << QStringList({"Move selection", "Cut"});
}

void TestMoveKeys::aPressClosesTheStep()
{
    QFETCH(QPointF, at);
    QFETCH(QStringList, texts);
    m_pFixture->SelectLayers({});
    Private()->OnSelectionMoveRight();
    m_pFixture->SelectLayers({0});
    Drag(at, at + QPointF(1, 1));
    m_pFixture->History().commit();
    QCOMPARE(Texts(), texts);
    QCOMPARE(Selected(), Start.translated(2, 1));
    m_pFixture->History().undo();
    QCOMPARE(Selected(), Start.translated(1, 0));
    m_pFixture->History().undo();
    QCOMPARE(Selected(), Start);
}

void TestMoveKeys::withoutAHistoryTheSelectionMovesAllTheSame()
{
    ZKDocumentWidget bare(Document(), nullptr);
    IDocumentView view;
    view.SetDocumentWidget(&bare);
    bare.GetView()->GetLayerSelection()->clearSelection();
    m_pTool->SetDocumentView(&view);
    Private()->OnSelectionMoveRight();
    QCOMPARE(Selected(), Start.translated(1, 0));
    QCOMPARE(Document()->GetDocumentState(), 0);
    m_pTool->SetDocumentView(nullptr);
}

// ---- Ctrl

void TestMoveKeys::controlCallsTheToolForAMoment()
{
    OtherTool other(true);
    ZKToolGroupManager::Activate(&other);
    QVERIFY(!m_pTool->IsActive());
    SendKey(Qt::Key_Control, true);
    QVERIFY(m_pTool->IsActive());
    QVERIFY(!m_pTool->GetActivateAction()->IsChecked());
    QCOMPARE(ZKToolGroupManager::GetExplicitAction(), &other);
    QVERIFY(!other.IsImplicitlyChecked());
    SendKey(Qt::Key_Control, false);
    QVERIFY(!m_pTool->IsActive());
    QVERIFY(other.IsImplicitlyChecked());
}

void TestMoveKeys::controlIsIgnoredWhileALockedDocumentIsInOtherHands()
{
    OtherTool other(true);
    ZKToolGroupManager::Activate(&other);
    QVERIFY(Document()->Lock());
    SendKey(Qt::Key_Control, true);
    QVERIFY(!m_pTool->IsActive());
    QVERIFY(other.IsImplicitlyChecked());
    QVERIFY(Document()->Unlock());
}

void TestMoveKeys::controlIsIgnoredWhileTheViewIsInOtherHands()
{
    OtherTool other(true);
    ZKToolGroupManager::Activate(&other);
    QVERIFY(m_pFixture->ToolView().Lock(this));
    SendKey(Qt::Key_Control, true);
    QVERIFY(!m_pTool->IsActive());
    QVERIFY(other.IsImplicitlyChecked());
    QVERIFY(!m_pTool->GetActivateAction()->IsImplicitlyChecked());
    SendKey(Qt::Key_Control, false);
    QVERIFY(other.IsImplicitlyChecked());
    m_pFixture->ToolView().Unlock(this);
}

void TestMoveKeys::aToolThatRefusesKeepsItsTurn()
{
    OtherTool other(false);
    ZKToolGroupManager::Activate(&other);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Error to activate\\.$"));
    SendKey(Qt::Key_Control, true);
    QVERIFY(!m_pTool->IsActive());
    QVERIFY(other.IsImplicitlyChecked());
}

void TestMoveKeys::aDragKeepsTheTurnUntilTheRelease()
{
    OtherTool other(true);
    ZKToolGroupManager::Activate(&other);
    Document()->SetSelectionMask({}, {});
    m_pFixture->Input().HoldModifiers(Qt::ControlModifier);
    QVERIFY(m_pTool->IsActive());
    Press({2.5, 2.5});
    m_pFixture->Input().HoldModifiers(Qt::NoModifier);
    Move({4.5, 2.5});
    QVERIFY(m_pTool->IsActive());
    QVERIFY(Document()->GetLockState());
    Release({4.5, 2.5});
    QCOMPARE(Model()->GetLayerOffset(0), QPoint(2, 0));
    QVERIFY(!m_pTool->IsActive());
    QVERIFY(other.IsImplicitlyChecked());
    VERIFY_NOTHING_IS_HELD();
}

void TestMoveKeys::aRefusedPressKeepsTheTurnUntilItIsTold()
{
    OtherTool other(true);
    ZKToolGroupManager::Activate(&other);
    Model()->SetLockFlags(0, LayerLocks::Position);
    m_pFixture->Input().HoldModifiers(Qt::ControlModifier);
    Press({2.5, 2.5});
    m_pFixture->Input().HoldModifiers(Qt::NoModifier);
    QCOMPARE(BoxesDuring([&] {
                 Release({2.5, 2.5});
             }),
             QStringList("Zenkari: Cannot move the image. Layer is locked."));
    QVERIFY(!m_pTool->IsActive());
}

void TestMoveKeys::aFailedStartGivesTheTurnBack()
{
    OtherTool other(true);
    ZKToolGroupManager::Activate(&other);
    Model()->SetLockFlags(0, LayerLocks::Pixels);
    // The key is up again by the time of the press, without a word.
    SendKey(Qt::Key_Control, true);
    QVERIFY(m_pTool->IsActive());
    QCOMPARE(BoxesDuring([&] {
                 Press({5.5, 5.5});
             }),
             QStringList("Zenkari: Cannot move the selection. Layer is locked."));
    VERIFY_NOTHING_IS_HELD();
    QVERIFY(!m_pTool->IsActive());
    QVERIFY(other.IsImplicitlyChecked());
    Release({5.5, 5.5});
}

void TestMoveKeys::theChosenToolIsLeftAloneByControl()
{
    m_pFixture->Input().HoldModifiers(Qt::ControlModifier);
    QVERIFY(m_pTool->IsActive());
    m_pFixture->Input().HoldModifiers(Qt::NoModifier);
    QVERIFY(m_pTool->IsActive());
    QVERIFY(m_pTool->GetActivateAction()->IsChecked());
}

ZK_REGISTER_TEST(tst_movekeys, TestMoveKeys)

#include "tst_movekeys.moc"
