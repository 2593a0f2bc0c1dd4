#include "MoveToolFixture.h"
#include "movetoolprivate/CopyPasteThread.h"

#include "core/ZKActivateAction.h"
#include "core/ZKToolGroupManager.h"
#include "document/LXPathSelectionModel.h"
#include "document/LXPathsListModel.h"
#include "gui/LexoAppKeyHook.h"
#include "history/LexoCommand.h"
#include "history/SelectionMoveCommand.h"
#include "history/SelectionMoveCommandData.h"
#include "image/LXTileManager.h"
#include "support/PathFixture.h"
#include "support/TestRegistry.h"

// What lands a floating piece, what leaves it alone, and what goes with a view that is closed.
class TestMoveRecords : public QObject, private MoveToolFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aPushLandsThePieceBeforeIt();
    void aCommitOfTheHistoryLandsThePiece();
    void aStepOfTheHistoryLandsThePiece();
    void aRequestForTheLayerLandsItsPiece();
    void aRequestForTheMaskLandsThePieceOfTheLayer();
    void aRequestForAnotherLayerLeavesThePiece();
    void aMoveOfTheSelectionByOthersLandsThePiece();
    void returnLandsThePieceWhileAnotherToolIsActive();
    void returnLeavesThePieceWhileTheToolIsActive();
    void returnLeavesThePieceOfALockedDocument();
    void returnLeavesThePieceOfACapturedView();
    void aPressBesideTheSelectionLandsThePiece();
    void withoutAHistoryAPressLandsThePieceToo();
    void aPressOnAnotherLayerLandsThePiece();
    void aKeyThatDoesntFitLandsThePiece();
    void aClosedViewTakesItsPieceAlong();
    void aViewClosedInADragGivesEverythingBack();

    void pieceAndRecordOutliveTheDeactivation();
    void pieceAndRecordOutliveAChangeOfTheView();
    void twoViewsFloatEachByItself();
    void aLandingInADragEndsItsMoves();

    void aSubPathFollowsThePointer();
    void aPressOnAnotherPathLandsTheFirst();
    void halfAPathPairIsNone();

private:
    void Float(Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        Select({2, 2, 3, 3});
        Drag({3.5, 3.5}, {8.5, 5.5}, modifiers);
        QVERIFY(Record());
    }

    bool HasLanded()
    {
        return !Record() && Texts().contains("Cut") && m_pFixture->Pixel(7, 4) == Source(2, 2);
    }

    static LXSubPaths TwoBoxes()
    {
        return {{PathFixture::Rectangle({1, 1, 4, 4}), LXPathsListModel::Unite},
                {PathFixture::Rectangle({6, 6, 4, 4}), LXPathsListModel::Subtract}};
    }

    LXPathsListModel* Paths() const { return Document()->GetPathListModel(); }
};

void TestMoveRecords::init()
{
    MakeTool();
}

void TestMoveRecords::cleanup()
{
    if (!m_pFixture) return;
    m_pFixture->History().commit();
    VERIFY_NOTHING_IS_HELD();
    QVERIFY(!Record());
    QCOMPARE(Document()->GetDocumentState(), 0);
    DropTool();
}

// ---- the events

void TestMoveRecords::aPushLandsThePieceBeforeIt()
{
    Float();
    auto data = std::make_unique<SelectionMoveCommandData>();
    data->SetUndoPosition({7, 4});
    data->SetRedoPosition({0, 0});
    auto command = std::make_unique<SelectionMoveCommand>(Document());
    QVERIFY(command->SetCommandData(data.release()));
    m_pFixture->History().push(command.release());
    QVERIFY(HasLanded());
    QCOMPARE(Texts(), QStringList({"Cut", "Move selection"}));
}

void TestMoveRecords::aCommitOfTheHistoryLandsThePiece()
{
    Float();
    m_pFixture->History().commit();
    QVERIFY(HasLanded());
    // Nothing is left that could land again.
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList("Cut"));
}

void TestMoveRecords::aStepOfTheHistoryLandsThePiece()
{
    Drag({12.5, 9.5}, {12.5, 9.5});
    Float();
    m_pFixture->History().setIndex(0);
    QVERIFY(!Record());
    QCOMPARE(Texts(), QStringList({"Move", "Cut"}));
    QCOMPARE(m_pFixture->History().index(), 0);
}

void TestMoveRecords::aRequestForTheLayerLandsItsPiece()
{
    Float();
    emit Document()->AboutRequesAdditionalLayer(1);
    QVERIFY(HasLanded());
}

void TestMoveRecords::aRequestForTheMaskLandsThePieceOfTheLayer()
{
    Float();
    emit Document()->AboutRequesAdditionalMask(1);
    QVERIFY(HasLanded());
}

void TestMoveRecords::aRequestForAnotherLayerLeavesThePiece()
{
    Float();
    emit Document()->AboutRequesAdditionalLayer(2);
    emit Document()->AboutRequesAdditionalMask(2);
    QVERIFY(Record());
    QCOMPARE(Texts(), QStringList());
}

void TestMoveRecords::aMoveOfTheSelectionByOthersLandsThePiece()
{
    Float();
    Document()->MoveToSelection({0, 0});
    QVERIFY(HasLanded());
    // First the piece, then the move.
    QCOMPARE(Document()->GetSelectionGeometry(), QRect(0, 0, 3, 3));
}

void TestMoveRecords::returnLandsThePieceWhileAnotherToolIsActive()
{
    Float();
    ZKToolGroupManager::Activate(nullptr);
    SendKey(Qt::Key_Return, true);
    QVERIFY(HasLanded());
}

void TestMoveRecords::returnLeavesThePieceWhileTheToolIsActive()
{
    Float();
    SendKey(Qt::Key_Return, true);
    QVERIFY(Record());
}

void TestMoveRecords::returnLeavesThePieceOfALockedDocument()
{
    Float();
    ZKToolGroupManager::Activate(nullptr);
    QVERIFY(Document()->Lock());
    SendKey(Qt::Key_Return, true);
    QVERIFY(Record());
    QVERIFY(Document()->Unlock());
}

void TestMoveRecords::returnLeavesThePieceOfACapturedView()
{
    Float();
    ZKToolGroupManager::Activate(nullptr);
    QVERIFY(m_pFixture->ToolView().Lock(this));
    SendKey(Qt::Key_Return, true);
    QVERIFY(Record());
    m_pFixture->ToolView().Unlock(this);
}

void TestMoveRecords::aPressBesideTheSelectionLandsThePiece()
{
    Float();
    Press({14.5, 10.5});
    QVERIFY(HasLanded());
    Release({14.5, 10.5});
    QCOMPARE(Texts(), QStringList({"Cut", "Move"}));
}

void TestMoveRecords::withoutAHistoryAPressLandsThePieceToo()
{
    ZKDocumentWidget bare(Document(), nullptr);
    bare.resize(400, 300);
    bare.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bare));
    bare.GetView()->GetLayerSelection()->select(Model()->index(0),
                                                QItemSelectionModel::Select | QItemSelectionModel::Rows);
    IDocumentView view;
    view.SetDocumentWidget(&bare);
    m_pTool->SetDocumentView(&view);
    Select({2, 2, 3, 3});
    InputDriver& input = m_pFixture->Input();
    input.DragInScene(bare.GetView(), {{3.5, 3.5}, {8.5, 5.5}});
    QVERIFY(Private()->GetRecord(bare.GetView()));

    input.PressInScene(bare.GetView(), {14.5, 10.5});
    QVERIFY(!Private()->GetRecord(bare.GetView()));
    QCOMPARE(m_pFixture->Pixel(7, 4), Source(2, 2));
    QCOMPARE(qAlpha(m_pFixture->Pixel(2, 2)), 0);
    input.ReleaseInScene(bare.GetView(), {14.5, 10.5});
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
}

void TestMoveRecords::aPressOnAnotherLayerLandsThePiece()
{
    AddLayer({6, 3, 6, 6}, Qt::blue);
    m_pFixture->SelectLayers({1});
    Select({2, 2, 3, 3});
    Drag({3.5, 3.5}, {8.5, 5.5});
    QCOMPARE(Record()->m_LayerID, 2u);
    m_pFixture->SelectLayers({0});
    Press({8.5, 5.5});
    QCOMPARE(Texts(), QStringList("Cut"));
    QCOMPARE(m_pFixture->Pixel(7, 4, 2), Source(2, 2));
    QCOMPARE(Record()->m_LayerID, 1u);
    Release({8.5, 5.5});
}

void TestMoveRecords::aKeyThatDoesntFitLandsThePiece()
{
    Float();
    Private()->OnSelectionCopyMoveRight();
    QCOMPARE(Texts(), QStringList("Cut"));
    QVERIFY(Record()->m_bCopy);
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList({"Cut", "Copy"}));
}

void TestMoveRecords::aClosedViewTakesItsPieceAlong()
{
    // The first lift, so that what is made once is there.
    Float();
    m_pFixture->History().commit();
    m_pFixture->History().clear();
    const auto tiles = LXTileManager::Instance().LiveTileCount();
    Float();
    const QPointer<CopyPasteThread> thread = Record()->m_pThread.get();
    emit m_pFixture->View()->AboutDestroy(m_pFixture->View());
    QVERIFY(!Record());
    QVERIFY(!thread);
    QCOMPARE(Texts(), QStringList());
    QCOMPARE(Document()->GetDocumentState(), 0);
    QCOMPARE(Document()->GetAdditionalLayerGeometry(1), QRect());
    QVERIFY(LXTileManager::Instance().LiveTileCount() <= tiles);
}

void TestMoveRecords::aViewClosedInADragGivesEverythingBack()
{
    Select({2, 2, 3, 3});
    Press({3.5, 3.5});
    Move({8.5, 5.5});
    emit m_pFixture->View()->AboutDestroy(m_pFixture->View());
    QVERIFY(!Record());
    m_pTool->SetDocumentView(nullptr);
    VERIFY_NOTHING_IS_HELD();
    QCOMPARE(Document()->GetDocumentState(), 0);
    Release({8.5, 5.5});
}

// ---- how long a record lives

void TestMoveRecords::pieceAndRecordOutliveTheDeactivation()
{
    Float();
    const MoveViewState* record = Record();
    ZKToolGroupManager::Activate(nullptr);
    QCOMPARE(Record(), record);
    ZKToolGroupManager::Activate(m_pTool->GetActivateAction());
    Drag({8.5, 5.5}, {9.5, 5.5});
    QCOMPARE(Record(), record);
    QCOMPARE(Texts(), QStringList());
}

void TestMoveRecords::pieceAndRecordOutliveAChangeOfTheView()
{
    Float();
    const MoveViewState* record = Record();
    ViewFixture other(8, 8);
    m_pTool->SetDocumentView(&other.ToolView());
    QCOMPARE(Record(), record);
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    m_pFixture->Widget()->activateWindow();
    Drag({8.5, 5.5}, {9.5, 5.5});
    QCOMPARE(Record(), record);
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList("Cut"));
}

void TestMoveRecords::twoViewsFloatEachByItself()
{
    Float();
    {
        ViewFixture other(8, 8, Qt::red);
        m_pTool->SetDocumentView(&other.ToolView());
        LXImage32 mask(2, 2);
        mask.Fill(LXRGBA32i(0xFF000000));
        other.Document()->SetSelectionMask(mask, {1, 1});
        other.Input().DragInScene(other.View(), {{1.5, 1.5}, {4.5, 4.5}});
        QVERIFY(Private()->GetRecord(other.View()));
        QVERIFY(Record());
        QCOMPARE(other.Document()->GetDocumentState(), 1);

        // The same id is another layer there.
        emit other.Document()->AboutRequesAdditionalLayer(1);
        QVERIFY(!Private()->GetRecord(other.View()));
        QVERIFY(Record());
        other.Input().DragInScene(other.View(), {{4.5, 4.5}, {5.5, 4.5}});
        QVERIFY(Private()->GetRecord(other.View()));
        emit Document()->AboutRequesAdditionalLayer(2);
        emit other.Document()->AboutSelectionMove();
        QVERIFY(!Private()->GetRecord(other.View()));
        QVERIFY(Record());
        other.Input().DragInScene(other.View(), {{5.5, 4.5}, {4.5, 4.5}});
        other.History().commit();
        QVERIFY(!Private()->GetRecord(other.View()));
        QVERIFY(Record());
        m_pTool->SetDocumentView(&m_pFixture->ToolView());
    }
    m_pFixture->History().commit();
    QVERIFY(HasLanded());
}

void TestMoveRecords::aLandingInADragEndsItsMoves()
{
    Select({2, 2, 3, 3});
    Press({3.5, 3.5});
    Move({8.5, 5.5});
    m_pFixture->History().commit();
    QVERIFY(!Record());
    QCOMPARE(Texts(), QStringList("Cut"));
    const QStringList landed = Whole();
    Move({10.5, 5.5});
    Release({10.5, 5.5});
    QCOMPARE(Whole(), landed);
    QVERIFY(!Record());
}

// ---- paths

void TestMoveRecords::aSubPathFollowsThePointer()
{
    const LXSubPaths path = TwoBoxes();
    Paths()->InsertPath(0, "Path", path);
    auto* selection = static_cast<LXPathSelectionModel*>(m_pFixture->View()->GetPathSelection());
    selection->setCurrentIndex(Paths()->index(0, 0), QItemSelectionModel::ClearAndSelect);
    selection->SelectSubpath(1);
    Private()->SetPathPair(0, 1);

    Press({3.5, 3.5});
    QVERIFY(Record()->m_bPath);
    QCOMPARE(Record()->m_LayerID, MoveViewState::NoLayer);
    Move({9.5, 9.5});
    Release({5.5, 4.5});
    LXSubPaths expected = path;
    for (LXPathElement& element : expected[1].first) {
        element.Translate({2, 1});
    }
    QCOMPARE(Paths()->GetPath(0), expected);
    QCOMPARE(Texts(), QStringList());
    QCOMPARE(Model()->GetLayerOffset(0), QPoint(0, 0));

    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList("Move path"));
    m_pFixture->History().undo();
    QCOMPARE(Paths()->GetPath(0), path);
    m_pFixture->History().redo();
    QCOMPARE(Paths()->GetPath(0), expected);
}

void TestMoveRecords::aPressOnAnotherPathLandsTheFirst()
{
    Paths()->InsertPath(0, "Path", TwoBoxes());
    auto* selection = static_cast<LXPathSelectionModel*>(m_pFixture->View()->GetPathSelection());
    selection->setCurrentIndex(Paths()->index(0, 0), QItemSelectionModel::ClearAndSelect);
    selection->SelectSubpath(1);
    Private()->SetPathPair(0, 1);
    Drag({3.5, 3.5}, {5.5, 4.5});
    const MoveViewState* record = Record();
    Drag({5.5, 4.5}, {6.5, 4.5});
    QCOMPARE(Record(), record);

    selection->SelectSubpath(0);
    Private()->SetPathPair(0, 0);
    Drag({3.5, 3.5}, {5.5, 4.5});
    QCOMPARE(Texts(), QStringList("Move path"));
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList({"Move path", "Move path"}));
}

void TestMoveRecords::halfAPathPairIsNone()
{
    Private()->SetPathPair(0, -1);
    Drag({3.5, 3.5}, {5.5, 4.5});
    QVERIFY(!Record());
    QCOMPARE(Model()->GetLayerOffset(0), QPoint(2, 1));
    // And the deactivation forgets a whole one.
    Private()->SetPathPair(0, 1);
    ZKToolGroupManager::Activate(nullptr);
    ZKToolGroupManager::Activate(m_pTool->GetActivateAction());
    Drag({3.5, 3.5}, {5.5, 4.5});
    QVERIFY(!Record());
}

ZK_REGISTER_TEST(tst_moverecords, TestMoveRecords)

#include "tst_moverecords.moc"
