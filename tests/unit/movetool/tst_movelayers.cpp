#include "MoveToolFixture.h"

#include "core/ZKActivateAction.h"
#include "document/LayerKind.h"
#include "document/LayerLocks.h"
#include "gui/LexoAppKeyHook.h"
#include "history/ChangeCommandHelper.h"
#include "support/TestRegistry.h"

#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QMatrix4x4>
#include <QSignalSpy>

// Drags that move whole layers and masks by their offsets, the selection with them.
class TestMoveLayers : public QObject, private MoveToolFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aDragMovesTheSelectedLayer();
    void aDragIsOneStepThatIsUndoneAndRedone();
    void theLayerFollowsThePointerBeforeTheRelease();
    void everyPositionCountsFromThePress();
    void aClickIsAStepWithoutADelta();
    void severalSelectedLayersMoveTogether();
    void aLinkedMaskMovesWithItsLayer();
    void anUnlinkedMaskStaysBehind();
    void aSelectedMaskMovesAlone();
    void aSelectedLinkedMaskTakesItsLayerAlong();
    void aTextIsMovedByItsTransformation_data();
    void aTextIsMovedByItsTransformation();
    void aDragIsNoPartOfAChangeThatStoodOpen();
    void withNothingSelectedNothingMoves();

    void besideTheSelectedPixelsLayersMoveWithTheSelection();
    void withSeveralLayersTheSelectionMovesWithThem();
    void aPixelOutsideTheMaskIsNotSelected();
    void onALayerWithoutPixelsTheSelectionMovesWithIt();

    void aLockedLayerIsToldAtTheRelease_data();
    void aLockedLayerIsToldAtTheRelease();
    void oneLockedLayerKeepsAllInTheirPlaces();
    void aLockThatWentBeforeTheReleaseIsNotTold();
    void lockedPixelsKeepALayerFromNothingButItsSelectedPixels();

    void aDragHoldsTheDocumentUntilTheRelease();
    void theUnlockComesBeforeTheStep();
    void aCapturedViewRefusesThePress();
    void aDocumentInOtherHandsRefusesThePress();
    void aPressAfterALostReleaseBeginsAnew();
    void aMoveWithoutTheButtonEndsTheDrag();
    void theSecondOfTwoQuickPressesDragsToo();
    void otherButtonsMoveNothing();
    void aPanningViewMovesNothing();
    void withoutAHistoryTheLayerMovesAllTheSame();
    void anotherToolIsRefusedDuringADrag();
    void aViewThatGoesAwayEndsTheDragWhereItIs();
    void aDeactivatedToolEndsTheDragWhereItIs();
    void aToolThatDiesInADragLeavesNothingBehind();
    void withoutAViewTheToolIsHarmless();

private:
    QPoint LayerAt(int row = 0) const { return Model()->GetLayerOffset(row); }

    QPoint MaskAt(int row = 0) const { return Model()->GetMaskOffset(row); }
};

void TestMoveLayers::init()
{
    MakeTool();
}

void TestMoveLayers::cleanup()
{
    if (!m_pFixture) return;
    VERIFY_NOTHING_IS_HELD();
    QCOMPARE(Document()->GetDocumentState(), 0);
    DropTool();
}

void TestMoveLayers::aDragMovesTheSelectedLayer()
{
    Drag({2.5, 2.5}, {5.5, 3.5});
    QCOMPARE(LayerAt(), QPoint(3, 1));
    QCOMPARE(Merged(3, 1), Source(0, 0));
    QCOMPARE(Merged(15, 11), Source(12, 10));
    QCOMPARE(Texts(), QStringList("Move"));
}

void TestMoveLayers::aDragIsOneStepThatIsUndoneAndRedone()
{
    Drag({2.5, 2.5}, {5.5, 3.5});
    m_pFixture->History().undo();
    QCOMPARE(LayerAt(), QPoint(0, 0));
    m_pFixture->History().redo();
    QCOMPARE(LayerAt(), QPoint(3, 1));
}

void TestMoveLayers::theLayerFollowsThePointerBeforeTheRelease()
{
    Press({2.5, 2.5});
    Move({4.5, 2.5});
    QCOMPARE(LayerAt(), QPoint(2, 0));
    Move({1.5, 1.5});
    QCOMPARE(LayerAt(), QPoint(-1, -1));
    QCOMPARE(m_pFixture->History().count(), 0);
    Release({0.5, 4.5});
    QCOMPARE(LayerAt(), QPoint(-2, 2));
}

void TestMoveLayers::everyPositionCountsFromThePress()
{
    Document()->SetLayerOffset(1, {5, 5});
    Press({8.5, 8.5});
    for (int i = 0; i < 7; ++i) {
        Move({8.5 + i, 8.5});
    }
    Release({9.5, 8.5});
    QCOMPARE(LayerAt(), QPoint(6, 5));
    m_pFixture->History().undo();
    QCOMPARE(LayerAt(), QPoint(5, 5));
}

void TestMoveLayers::aClickIsAStepWithoutADelta()
{
    Drag({2.5, 2.5}, {2.5, 2.5});
    QCOMPARE(LayerAt(), QPoint(0, 0));
    QCOMPARE(Texts(), QStringList("Move"));
}

void TestMoveLayers::severalSelectedLayersMoveTogether()
{
    AddLayer({1, 1, 2, 2}, Qt::blue);
    AddLayer({8, 8, 2, 2}, Qt::green);
    m_pFixture->SelectLayers({0, 2});
    Drag({2.5, 2.5}, {4.5, 3.5});
    QCOMPARE(LayerAt(0), QPoint(10, 9));
    QCOMPARE(LayerAt(1), QPoint(1, 1));
    QCOMPARE(LayerAt(2), QPoint(2, 1));
    m_pFixture->History().undo();
    QCOMPARE(LayerAt(0), QPoint(8, 8));
    QCOMPARE(LayerAt(2), QPoint(0, 0));
}

void TestMoveLayers::aLinkedMaskMovesWithItsLayer()
{
    AddMask({0, 0, 4, 4});
    Drag({8.5, 8.5}, {10.5, 9.5});
    QCOMPARE(LayerAt(), QPoint(2, 1));
    QCOMPARE(MaskAt(), QPoint(2, 1));
    m_pFixture->History().undo();
    QCOMPARE(LayerAt(), QPoint(0, 0));
    QCOMPARE(MaskAt(), QPoint(0, 0));
    m_pFixture->History().redo();
    QCOMPARE(MaskAt(), QPoint(2, 1));
}

void TestMoveLayers::anUnlinkedMaskStaysBehind()
{
    AddMask({0, 0, 4, 4});
    Model()->SetMaskLinked(0, false);
    Drag({8.5, 8.5}, {10.5, 9.5});
    QCOMPARE(LayerAt(), QPoint(2, 1));
    QCOMPARE(MaskAt(), QPoint(0, 0));
}

void TestMoveLayers::aSelectedMaskMovesAlone()
{
    AddMask({0, 0, 4, 4});
    Model()->SetMaskLinked(0, false);
    Model()->SetMaskSelected(0, true);
    Drag({8.5, 8.5}, {10.5, 9.5});
    QCOMPARE(LayerAt(), QPoint(0, 0));
    QCOMPARE(MaskAt(), QPoint(2, 1));
    m_pFixture->History().undo();
    QCOMPARE(MaskAt(), QPoint(0, 0));
}

void TestMoveLayers::aSelectedLinkedMaskTakesItsLayerAlong()
{
    AddMask({0, 0, 4, 4});
    Model()->SetMaskSelected(0, true);
    QSignalSpy composed(Document(), &LXDocumentInterface::CompositionChanged);
    Press({8.5, 8.5});
    composed.clear();
    Move({10.5, 9.5});
    // Both in one call, seen as one change.
    QCOMPARE(composed.count(), 1);
    Release({10.5, 9.5});
    QCOMPARE(LayerAt(), QPoint(2, 1));
    QCOMPARE(MaskAt(), QPoint(2, 1));
}

void TestMoveLayers::aTextIsMovedByItsTransformation_data()
{
    QTest::addColumn<QTransform>("transform");
    QTest::newRow("as it was written") << QTransform();
    QTest::newRow("moved") << QTransform::fromTranslate(2, 1);
    QTest::newRow("turned") << QTransform(0, 1, -1, 0, 12, 2);
    QTest::newRow("slanted and moved") << QTransform(1, 0, 0.5, 1, 0.25, 1);
}

void TestMoveLayers::aTextIsMovedByItsTransformation()
{
    QFETCH(QTransform, transform);
    const unsigned int id = Document()->AddTextLayer("Text", {2, 8});
    Document()->SetText(id, "A");
    Document()->SetTextLayerTransformation(id, QMatrix4x4(transform));
    m_pFixture->SelectLayers({0});
    const QStringList before = Whole();
    const QPoint at = LayerAt();

    Press({2.5, 2.5});
    Move({9.5, 9.5});
    Release({5.5, 1.5});
    QCOMPARE(LayerAt(), at + QPoint(3, -1));
    // The letters go the same way, last of all.
    QCOMPARE(Model()->GetTextLayerTransformation(0), transform * QTransform::fromTranslate(3, -1));
    const QStringList after = Whole();
    m_pFixture->History().undo();
    QCOMPARE(Whole(), before);
    m_pFixture->History().redo();
    QCOMPARE(Whole(), after);
}

// A text was changed from an option bar, and its step stays open for the next change.
void TestMoveLayers::aDragIsNoPartOfAChangeThatStoodOpen()
{
    const unsigned int id = AddLayerOfKind(LayerKind::Text);
    const QString first = Document()->GetText(id);
    LexoUndoStack& history = m_pFixture->History();
    QVERIFY(ChangeCommandHelper::MakeChangeTextLayerCommand(&history, Document(), id, "Change text layer"));
    Document()->SetText(id, "AB");
    const QStringList changed = Whole();
    Drag({2.5, 2.5}, {7.5, 4.5});
    const QStringList moved = Whole();
    QCOMPARE(Texts(), QStringList({"Change text layer", "Move"}));

    history.undo();
    QCOMPARE(Whole(), changed);
    history.undo();
    QCOMPARE(Document()->GetText(id), first);
    history.redo();
    QCOMPARE(Whole(), changed);
    history.redo();
    QCOMPARE(Whole(), moved);
}

void TestMoveLayers::withNothingSelectedNothingMoves()
{
    m_pFixture->SelectLayers({});
    Drag({2.5, 2.5}, {4.5, 3.5});
    QCOMPARE(LayerAt(), QPoint(0, 0));
}

// ---- with a selection

void TestMoveLayers::besideTheSelectedPixelsLayersMoveWithTheSelection()
{
    Select({2, 2, 3, 3});
    Drag({9.5, 9.5}, {11.5, 10.5});
    QCOMPARE(LayerAt(), QPoint(2, 1));
    QCOMPARE(Document()->GetSelectionGeometry(), QRect(4, 3, 3, 3));
    QCOMPARE(Texts(), QStringList("Move"));
    m_pFixture->History().undo();
    QCOMPARE(LayerAt(), QPoint(0, 0));
    QCOMPARE(Document()->GetSelectionGeometry(), QRect(2, 2, 3, 3));
    m_pFixture->History().redo();
    QCOMPARE(Document()->GetSelectionGeometry(), QRect(4, 3, 3, 3));
}

void TestMoveLayers::withSeveralLayersTheSelectionMovesWithThem()
{
    AddLayer({1, 1, 2, 2}, Qt::blue);
    m_pFixture->SelectLayers({0, 1});
    Select({2, 2, 3, 3});
    // On a selected pixel, but of which layer?
    Drag({3.5, 3.5}, {5.5, 4.5});
    QCOMPARE(LayerAt(0), QPoint(3, 2));
    QCOMPARE(LayerAt(1), QPoint(2, 1));
    QCOMPARE(Document()->GetSelectionGeometry(), QRect(4, 3, 3, 3));
    QVERIFY(!Record());
}

void TestMoveLayers::aPixelOutsideTheMaskIsNotSelected()
{
    LXImage32 mask(3, 1);
    mask.SetColor(0, 0, LXRGBA32i(0xFF000000));
    mask.SetColor(2, 0, LXRGBA32i(0x01000000));
    Document()->SetSelectionMask(mask, {4, 4});

    // Inside the rectangle, between the two selected pixels.
    Drag({5.5, 4.5}, {6.5, 4.5});
    QVERIFY(!Record());
    QCOMPARE(LayerAt(), QPoint(1, 0));

    // The weakest coverage counts.
    Press({7.5, 4.5});
    QVERIFY(Record());
    Release({7.5, 4.5});
    m_pFixture->History().commit();
}

void TestMoveLayers::onALayerWithoutPixelsTheSelectionMovesWithIt()
{
    for (const int kind : {LayerKind::Text, LayerKind::Adjustment}) {
        AddLayerOfKind(kind);
        const QPoint at = LayerAt();
        Select({2, 2, 3, 3});
        Drag({3.5, 3.5}, {5.5, 4.5});
        QVERIFY(!Record());
        if (kind == LayerKind::Text) QCOMPARE(LayerAt(), at + QPoint(2, 1));
        QCOMPARE(Document()->GetSelectionGeometry(), QRect(4, 3, 3, 3));
    }
}

// ---- locks of layers

void TestMoveLayers::aLockedLayerIsToldAtTheRelease_data()
{
    QTest::addColumn<unsigned int>("locks");
    QTest::newRow("position") << LayerLocks::Position;
    QTest::newRow("everything") << LayerLocks::All;
}

void TestMoveLayers::aLockedLayerIsToldAtTheRelease()
{
    QFETCH(unsigned int, locks);
    Model()->SetLockFlags(0, locks);
    const QStringList boxes = BoxesDuring([&] {
        Press({2.5, 2.5});
        Move({5.5, 2.5});
        VERIFY_NOTHING_IS_HELD();
        // No box has come yet.
        QCOMPARE(m_pFixture->Input().CountWaitingActions(), 1);
        Release({5.5, 2.5});
    });
    QCOMPARE(boxes, QStringList("Zenkari: Cannot move the image. Layer is locked."));
    QCOMPARE(LayerAt(), QPoint(0, 0));
    QCOMPARE(Texts(), QStringList());

    // It is told once.
    Model()->SetLockFlags(0, 0);
    Drag({2.5, 2.5}, {3.5, 2.5});
    QCOMPARE(LayerAt(), QPoint(1, 0));
}

void TestMoveLayers::oneLockedLayerKeepsAllInTheirPlaces()
{
    AddLayer({1, 1, 2, 2}, Qt::blue);
    m_pFixture->SelectLayers({0, 1});
    Model()->SetLockFlags(1, LayerLocks::Position);
    const QStringList boxes = BoxesDuring([&] { Drag({2.5, 2.5}, {5.5, 2.5}); });
    QCOMPARE(boxes, QStringList("Zenkari: Cannot move the image. Layer is locked."));
    QCOMPARE(LayerAt(0), QPoint(1, 1));
    QCOMPARE(LayerAt(1), QPoint(0, 0));
}

void TestMoveLayers::aLockThatWentBeforeTheReleaseIsNotTold()
{
    Model()->SetLockFlags(0, LayerLocks::Position);
    Press({2.5, 2.5});
    Model()->SetLockFlags(0, 0);
    Release({5.5, 2.5});
    QCOMPARE(LayerAt(), QPoint(0, 0));
    QCOMPARE(Texts(), QStringList());
}

void TestMoveLayers::lockedPixelsKeepALayerFromNothingButItsSelectedPixels()
{
    Model()->SetLockFlags(0, LayerLocks::Pixels);
    Drag({2.5, 2.5}, {5.5, 2.5});
    QCOMPARE(LayerAt(), QPoint(3, 0));

    Select({4, 2, 3, 3});
    const QStringList boxes = BoxesDuring([&] {
        Press({5.5, 3.5});
        VERIFY_NOTHING_IS_HELD();
        Move({8.5, 3.5});
        Release({8.5, 3.5});
    });
    QCOMPARE(boxes, QStringList("Zenkari: Cannot move the selection. Layer is locked."));
    QVERIFY(!Record());
    QCOMPARE(LayerAt(), QPoint(3, 0));
    QCOMPARE(Document()->GetSelectionGeometry(), QRect(4, 2, 3, 3));
    QCOMPARE(Texts(), QStringList("Move"));
}

// ---- what a drag holds

void TestMoveLayers::aDragHoldsTheDocumentUntilTheRelease()
{
    Press({2.5, 2.5});
    QVERIFY(Document()->GetLockState());
    QCOMPARE(m_pFixture->ToolView().GetState(), quint64(1));
    QVERIFY(!LexoAppKeyHook::instance()->AreShortcutsEnabled());
    Release({2.5, 2.5});
    VERIFY_NOTHING_IS_HELD();
}

void TestMoveLayers::theUnlockComesBeforeTheStep()
{
    bool isLocked = true;
    connect(&m_pFixture->History(), &LexoUndoStack::aboutIndexChanged, this,
            [&] { isLocked = Document()->GetLockState(); });
    Drag({2.5, 2.5}, {3.5, 2.5});
    QVERIFY(!isLocked);
}

void TestMoveLayers::aCapturedViewRefusesThePress()
{
    QVERIFY(m_pFixture->ToolView().Lock(this));
    Drag({2.5, 2.5}, {5.5, 2.5});
    QCOMPARE(LayerAt(), QPoint(0, 0));
    QVERIFY(!Document()->GetLockState());
    m_pFixture->ToolView().Unlock(this);
}

void TestMoveLayers::aDocumentInOtherHandsRefusesThePress()
{
    QVERIFY(Document()->Lock());
    Drag({2.5, 2.5}, {5.5, 2.5});
    QCOMPARE(LayerAt(), QPoint(0, 0));
    QCOMPARE(m_pFixture->ToolView().GetState(), quint64(0));
    Select({2, 2, 3, 3});
    Drag({3.5, 3.5}, {5.5, 3.5});
    QVERIFY(!Record());
    QCOMPARE(Texts(), QStringList());
    // Somebody else's lock stays theirs.
    QVERIFY(Document()->GetLockState());
    QVERIFY(Document()->Unlock());
}

void TestMoveLayers::aPressAfterALostReleaseBeginsAnew()
{
    Press({2.5, 2.5});
    Move({5.5, 2.5});
    // As when a box takes the release.
    QGraphicsSceneMouseEvent press(QEvent::GraphicsSceneMousePress);
    press.setButton(Qt::LeftButton);
    press.setButtons(Qt::LeftButton);
    press.setScenePos({8.5, 8.5});
    Private()->eventFilter(m_pFixture->ToolView().Scene(), &press);
    QCOMPARE(Texts(), QStringList("Move"));
    QCOMPARE(LayerAt(), QPoint(3, 0));
    QVERIFY(Document()->GetLockState());
    Release({8.5, 9.5});
    VERIFY_NOTHING_IS_HELD();
    QCOMPARE(LayerAt(), QPoint(3, 1));
    QCOMPARE(Texts(), QStringList({"Move", "Move"}));
    m_pFixture->History().undo();
    QCOMPARE(LayerAt(), QPoint(3, 0));
}

void TestMoveLayers::aMoveWithoutTheButtonEndsTheDrag()
{
    Press({2.5, 2.5});
    Move({5.5, 2.5});
    QGraphicsSceneMouseEvent move(QEvent::GraphicsSceneMouseMove);
    move.setScenePos({9.5, 9.5});
    Private()->eventFilter(m_pFixture->ToolView().Scene(), &move);
    VERIFY_NOTHING_IS_HELD();
    QCOMPARE(LayerAt(), QPoint(3, 0));
    QCOMPARE(Texts(), QStringList("Move"));
    Release({9.5, 9.5});
    QCOMPARE(LayerAt(), QPoint(3, 0));
}

void TestMoveLayers::theSecondOfTwoQuickPressesDragsToo()
{
    m_pFixture->Input().DoubleClickInScene(m_pFixture->View(), {2.5, 2.5});
    QCOMPARE(Texts(), QStringList({"Move", "Move"}));
}

void TestMoveLayers::otherButtonsMoveNothing()
{
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        m_pFixture->Input().DragInScene(m_pFixture->View(), {{2.5, 2.5}, {5.5, 2.5}}, button);
    }
    QCOMPARE(LayerAt(), QPoint(0, 0));
    QCOMPARE(Texts(), QStringList());
}

void TestMoveLayers::aPanningViewMovesNothing()
{
    m_pFixture->View()->EnablePanning(true);
    Drag({2.5, 2.5}, {5.5, 2.5});
    QCOMPARE(LayerAt(), QPoint(0, 0));
    QCOMPARE(Texts(), QStringList());
}

void TestMoveLayers::withoutAHistoryTheLayerMovesAllTheSame()
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
    m_pFixture->Input().DragInScene(bare.GetView(), {{2.5, 2.5}, {5.5, 2.5}});
    QCOMPARE(LayerAt(), QPoint(3, 0));
    QCOMPARE(Texts(), QStringList());
    m_pTool->SetDocumentView(nullptr);
}

void TestMoveLayers::anotherToolIsRefusedDuringADrag()
{
    Press({2.5, 2.5});
    QVERIFY(!m_pTool->GetActivateAction()->IsAllowChange());
    Release({2.5, 2.5});
    QVERIFY(m_pTool->GetActivateAction()->IsAllowChange());
}

void TestMoveLayers::aViewThatGoesAwayEndsTheDragWhereItIs()
{
    Select({2, 2, 3, 3});
    Press({9.5, 9.5});
    Move({12.5, 9.5});
    m_pTool->SetDocumentView(nullptr);
    VERIFY_NOTHING_IS_HELD();
    QCOMPARE(Texts(), QStringList("Move"));
    QCOMPARE(LayerAt(), QPoint(3, 0));
    m_pFixture->History().undo();
    QCOMPARE(LayerAt(), QPoint(0, 0));
    QCOMPARE(Document()->GetSelectionGeometry(), QRect(2, 2, 3, 3));
    Release({12.5, 9.5});
    QCOMPARE(LayerAt(), QPoint(0, 0));
}

void TestMoveLayers::aDeactivatedToolEndsTheDragWhereItIs()
{
    Press({2.5, 2.5});
    Move({5.5, 2.5});
    QVERIFY(m_pTool->Activate(false));
    VERIFY_NOTHING_IS_HELD();
    QCOMPARE(Texts(), QStringList("Move"));
    Release({9.5, 2.5});
    QCOMPARE(LayerAt(), QPoint(3, 0));
}

void TestMoveLayers::aToolThatDiesInADragLeavesNothingBehind()
{
    Press({2.5, 2.5});
    Move({5.5, 2.5});
    m_pTool.reset();
    VERIFY_NOTHING_IS_HELD();
    QCOMPARE(Texts(), QStringList("Move"));
    m_pFixture->Input().ReleaseInScene(m_pFixture->View(), {5.5, 2.5});
}

void TestMoveLayers::withoutAViewTheToolIsHarmless()
{
    m_pTool->SetDocumentView(nullptr);
    Drag({2.5, 2.5}, {5.5, 2.5});
    QCOMPARE(LayerAt(), QPoint(0, 0));
    MoveToolPrivate* tool = Private();
    tool->OnSelectionMoveLeft();
    tool->OnSelectionCopyMoveLeft();
    tool->KeyPressEvent(Qt::Key_Return);
    QVERIFY(m_pTool->Activate(false));
    QVERIFY(m_pTool->Activate(true));
    QVERIFY(m_pTool->IsActive());
}

ZK_REGISTER_TEST(tst_movelayers, TestMoveLayers)

#include "tst_movelayers.moc"
