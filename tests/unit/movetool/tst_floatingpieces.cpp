#include "MoveToolFixture.h"

#include "document/LayerKind.h"
#include "gui/LexoAppKeyHook.h"
#include "support/TestRegistry.h"

// Drags that lift the selected pixels, and what floats after them.
class TestFloatingPieces : public QObject, private MoveToolFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aDragFromASelectedPixelLiftsThePixels();
    void thePieceStaysFloatingAfterTheRelease();
    void landingIsOneStepThatIsUndoneAndRedone();
    void thePieceEndsUnderThePointer();
    void aClickLiftsThePixelsToo();
    void aPiecePutBackChangesNoPixel();
    void twoDragsOfOnePieceAreOneStep();
    void anAltDragLeavesACopy();
    void anAltDragAfterADragLandsTheFirstPiece();
    void aDragAfterAnAltDragLandsTheCopy();
    void undoWhileSomethingFloatsLandsItFirst();
    void redoWhileSomethingFloatsLandsIt();
    void aDragOfAMaskMovesItsPixels();
    void aCopyOfAMaskIsCalledCut();
    void theMaskOfALayerWithoutPixelsFloats();
    void aSwitchToTheMaskLandsTheLayersPiece();
    void aPieceOutsideTheCanvasIsCutToIt();
    void aSelectionBesideTheLayerFloatsWithoutPixels();
    void thumbnailsAreMadeAnewAtTheRelease_data();
    void thumbnailsAreMadeAnewAtTheRelease();
    void aDragHoldsTheDocumentUntilTheRelease();
    void aToolThatDiesLandsWhatFloats();

private:
    /// Pixels (2, 2) to (4, 4) carried by (5, 2).
    void Float(Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        Select({2, 2, 3, 3});
        Drag({3.5, 3.5}, {8.5, 5.5}, modifiers);
    }
};

void TestFloatingPieces::init()
{
    MakeTool();
}

void TestFloatingPieces::cleanup()
{
    if (!m_pFixture) return;
    m_pFixture->History().commit();
    VERIFY_NOTHING_IS_HELD();
    QVERIFY(!Record());
    QCOMPARE(Document()->GetDocumentState(), 0);
    DropTool();
}

void TestFloatingPieces::aDragFromASelectedPixelLiftsThePixels()
{
    Select({2, 2, 3, 3});
    Press({3.5, 3.5});
    QVERIFY(Record());
    QCOMPARE(Record()->m_LayerID, 1u);
    QVERIFY(!Record()->m_bCopy);
    QVERIFY(!Record()->m_bMask);
    QCOMPARE(Document()->GetDocumentState(), 1);
    Move({8.5, 5.5});
    Release({8.5, 5.5});
    // The layer never moves.
    QCOMPARE(Model()->GetLayerOffset(0), QPoint(0, 0));
    QCOMPARE(qAlpha(m_pFixture->Pixel(3, 3)), 0);
    QCOMPARE(m_pFixture->Pixel(7, 4), Source(7, 4));
    QCOMPARE(Merged(7, 4), Source(2, 2));
    QCOMPARE(Merged(9, 6), Source(4, 4));
    QCOMPARE(qAlpha(Merged(3, 3)), 0);
    QCOMPARE(Document()->GetSelectionGeometry(), QRect(7, 4, 3, 3));
}

void TestFloatingPieces::thePieceStaysFloatingAfterTheRelease()
{
    Float();
    // What the worker has told arrives now, and nobody takes it for a move of somebody else.
    QCoreApplication::processEvents();
    QVERIFY(Record());
    QVERIFY(!Record()->m_bOwnMove);
    QCOMPARE(Texts(), QStringList());
    QCOMPARE(Document()->GetDocumentState(), 1);
    QVERIFY(!Document()->GetAdditionalLayerGeometry(1).isEmpty());
}

void TestFloatingPieces::landingIsOneStepThatIsUndoneAndRedone()
{
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    Drag({3.5, 3.5}, {8.5, 5.5});
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList("Cut"));
    QVERIFY(!Record());
    QCOMPARE(Document()->GetAdditionalLayerGeometry(1), QRect());
    QCOMPARE(m_pFixture->Pixel(7, 4), Source(2, 2));
    QCOMPARE(qAlpha(m_pFixture->Pixel(3, 3)), 0);
    const QStringList after = Whole();
    m_pFixture->History().undo();
    QCOMPARE(Whole(), before);
    m_pFixture->History().redo();
    QCOMPARE(Whole(), after);
}

void TestFloatingPieces::thePieceEndsUnderThePointer()
{
    Select({2, 2, 3, 3});
    Press({3.5, 3.5});
    for (int i = 0; i < 40; ++i) {
        Move({3.5 + i % 9, 3.5 + i % 5});
    }
    Release({6.5, 7.5});
    QCOMPARE(Document()->GetSelectionGeometry().topLeft(), QPoint(5, 6));
    QCOMPARE(Document()->GetAdditionalLayerGeometry(1), QRect(5, 6, 3, 3));
    QCOMPARE(Merged(5, 6), Source(2, 2));
}

void TestFloatingPieces::aClickLiftsThePixelsToo()
{
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    Drag({3.5, 3.5}, {3.5, 3.5});
    QVERIFY(Record());
    QCOMPARE(qAlpha(m_pFixture->Pixel(3, 3)), 0);
    QCOMPARE(Merged(3, 3), Source(3, 3));
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList("Cut"));
    QCOMPARE(Whole(), before);
    m_pFixture->History().undo();
    QCOMPARE(Whole(), before);
}

void TestFloatingPieces::aPiecePutBackChangesNoPixel()
{
    LXImage32 mask(3, 1);
    for (int x = 0; x < 3; ++x) {
        mask.SetColor(x, 0, LXRGBA32i(quint32(60 + 70 * x) << 24));
    }
    Document()->SetSelectionMask(mask, {4, 4});
    const QStringList before = Whole();
    Drag({5.5, 4.5}, {9.5, 8.5});
    QVERIFY(Record());
    Drag({9.5, 8.5}, {5.5, 4.5});
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList("Cut"));
    QCOMPARE(Whole(), before);
}

void TestFloatingPieces::twoDragsOfOnePieceAreOneStep()
{
    Float();
    const MoveViewState* first = Record();
    Drag({8.5, 5.5}, {9.5, 5.5});
    QCOMPARE(Record(), first);
    QCOMPARE(Texts(), QStringList());
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList("Cut"));
    QCOMPARE(m_pFixture->Pixel(8, 4), Source(2, 2));
    QCOMPARE(m_pFixture->Pixel(7, 4), Source(7, 4));
    m_pFixture->History().undo();
    QCOMPARE(Document()->GetSelectionGeometry(), QRect(2, 2, 3, 3));
}

void TestFloatingPieces::anAltDragLeavesACopy()
{
    Float(Qt::AltModifier);
    QVERIFY(Record()->m_bCopy);
    QCOMPARE(Merged(3, 3), Source(3, 3));
    QCOMPARE(Merged(7, 4), Source(2, 2));
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList("Copy"));
    QCOMPARE(m_pFixture->Pixel(3, 3), Source(3, 3));
    QCOMPARE(m_pFixture->Pixel(7, 4), Source(2, 2));
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Pixel(7, 4), Source(7, 4));
    QCOMPARE(Document()->GetSelectionGeometry(), QRect(2, 2, 3, 3));
}

void TestFloatingPieces::anAltDragAfterADragLandsTheFirstPiece()
{
    Float();
    Drag({8.5, 5.5}, {10.5, 7.5}, Qt::AltModifier);
    QVERIFY(Record()->m_bCopy);
    QCOMPARE(Texts(), QStringList("Cut"));
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList({"Cut", "Copy"}));
    QCOMPARE(m_pFixture->Pixel(7, 4), Source(2, 2));
    QCOMPARE(m_pFixture->Pixel(9, 6), Source(2, 2));
}

void TestFloatingPieces::aDragAfterAnAltDragLandsTheCopy()
{
    Float(Qt::AltModifier);
    Drag({8.5, 5.5}, {10.5, 7.5});
    QVERIFY(!Record()->m_bCopy);
    QCOMPARE(Texts(), QStringList("Copy"));
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList({"Copy", "Cut"}));
}

void TestFloatingPieces::undoWhileSomethingFloatsLandsItFirst()
{
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    Drag({3.5, 3.5}, {8.5, 5.5});
    m_pFixture->History().undo();
    QVERIFY(!Record());
    QCOMPARE(Texts(), QStringList("Cut"));
    QCOMPARE(m_pFixture->History().index(), 0);
    QCOMPARE(Whole(), before);
    m_pFixture->History().redo();
    QCOMPARE(m_pFixture->Pixel(7, 4), Source(2, 2));
}

void TestFloatingPieces::redoWhileSomethingFloatsLandsIt()
{
    Drag({12.5, 9.5}, {13.5, 9.5});
    m_pFixture->History().undo();
    Float();
    m_pFixture->History().redo();
    // What was undone is gone, as after any step.
    QCOMPARE(Texts(), QStringList("Cut"));
    QCOMPARE(m_pFixture->History().index(), 1);
    QCOMPARE(Model()->GetLayerOffset(0), QPoint(0, 0));
}

// ---- masks

void TestFloatingPieces::aDragOfAMaskMovesItsPixels()
{
    AddMask({2, 2, 3, 3});
    Model()->SetMaskSelected(0, true);
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    Drag({3.5, 3.5}, {8.5, 5.5});
    QVERIFY(Record()->m_bMask);
    QVERIFY(!Document()->GetAdditionalMaskGeometry(1).isEmpty());
    // The hole moves; it leaves what the mask background says, black, which hides too.
    QCOMPARE(qAlpha(Merged(7, 4)), 0);
    QCOMPARE(Merged(6, 4), Source(6, 4));
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList("Cut"));
    QCOMPARE(Document()->GetMaskImage(1)->GetColor(7, 4).Alpha(), 0);
    QCOMPARE(m_pFixture->Pixel(3, 3), Source(3, 3));
    m_pFixture->History().undo();
    QCOMPARE(Whole(), before);
}

void TestFloatingPieces::aCopyOfAMaskIsCalledCut()
{
    AddMask({2, 2, 3, 3});
    Model()->SetMaskSelected(0, true);
    Select({2, 2, 3, 3});
    Drag({3.5, 3.5}, {8.5, 5.5}, Qt::AltModifier);
    QVERIFY(Record()->m_bCopy);
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList("Cut"));
    QCOMPARE(Document()->GetMaskImage(1)->GetColor(3, 3).Alpha(), 0);
    QCOMPARE(Document()->GetMaskImage(1)->GetColor(8, 5).Alpha(), 0);
    QCOMPARE(Document()->GetMaskImage(1)->GetColor(6, 4).Alpha(), 255);
}

void TestFloatingPieces::theMaskOfALayerWithoutPixelsFloats()
{
    AddLayerOfKind(LayerKind::Adjustment);
    AddMask({2, 2, 3, 3});
    Model()->SetMaskSelected(0, true);
    Float();
    QVERIFY(Record());
    QVERIFY(Record()->m_bMask);
}

void TestFloatingPieces::aSwitchToTheMaskLandsTheLayersPiece()
{
    AddMask({12, 8, 2, 2});
    Float();
    Model()->SetMaskSelected(0, true);
    Drag({8.5, 5.5}, {9.5, 5.5});
    QCOMPARE(Texts(), QStringList("Cut"));
    QVERIFY(Record()->m_bMask);
}

// ---- edges

void TestFloatingPieces::aPieceOutsideTheCanvasIsCutToIt()
{
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    Drag({3.5, 3.5}, {1.5, 2.5});
    QCOMPARE(Document()->GetSelectionGeometry(), QRect(0, 1, 3, 3));
    Drag({1.5, 2.5}, {-0.5, 2.5});
    QCOMPARE(Document()->GetSelectionGeometry(), QRect(-2, 1, 3, 3));
    m_pFixture->History().commit();
    QCOMPARE(Document()->GetSelectionGeometry(), QRect(-2, 1, 3, 3));
    QCOMPARE(Document()->GetLayerGeometry(1), QRect(0, 0, 16, 12));
    QCOMPARE(m_pFixture->Pixel(0, 1), Source(4, 2));
    m_pFixture->History().undo();
    QCOMPARE(Whole(), before);
}

void TestFloatingPieces::aSelectionBesideTheLayerFloatsWithoutPixels()
{
    const unsigned int id = AddLayer({12, 8, 2, 2}, Qt::blue);
    m_pFixture->SelectLayers({0});
    Select({2, 2, 3, 3});
    const QStringList before = Whole();
    Drag({3.5, 3.5}, {8.5, 5.5});
    QVERIFY(Record());
    QCOMPARE(Document()->GetSelectionGeometry(), QRect(7, 4, 3, 3));
    m_pFixture->History().commit();
    QCOMPARE(Texts(), QStringList("Cut"));
    QCOMPARE(m_pFixture->Pixel(12, 8, id), QColor(Qt::blue).rgba());
    m_pFixture->History().undo();
    QCOMPARE(Whole(), before);
}

void TestFloatingPieces::thumbnailsAreMadeAnewAtTheRelease_data()
{
    QTest::addColumn<bool>("linked");
    QTest::addColumn<bool>("mask");
    QTest::addColumn<QVector<int>>("roles");
    const int layer = Qt::DecorationRole;
    const int maskRole = LXDocumentModel::MaskThumbnailRole;
    QTest::newRow("layer") << false << false << QVector<int>{layer};
    QTest::newRow("mask") << false << true << QVector<int>{maskRole};
    QTest::newRow("both are linked") << true << false << QVector<int>{layer, maskRole};
    QTest::newRow("both are linked, the mask is chosen") << true << true << QVector<int>{layer, maskRole};
}

void TestFloatingPieces::thumbnailsAreMadeAnewAtTheRelease()
{
    QFETCH(bool, linked);
    QFETCH(bool, mask);
    QFETCH(QVector<int>, roles);
    AddMask({12, 8, 2, 2});
    Model()->SetMaskLinked(0, linked);
    Model()->SetMaskSelected(0, mask);
    Select({2, 2, 3, 3});
    Press({3.5, 3.5});
    QVector<int> renewed;
    bool isLocked = false;
    const auto listening = connect(Model(), &QAbstractItemModel::dataChanged, this,
                                   [&](const QModelIndex&, const QModelIndex&, const QVector<int>& changed) {
                                       for (const int role : changed) {
                                           if (!renewed.contains(role)) renewed.append(role);
                                       }
                                       isLocked = isLocked || Document()->GetLockState();
                                   });
    Release({5.5, 3.5});
    disconnect(listening);
    QCOMPARE(renewed, roles);
    // The unlock comes before what others hear of.
    QVERIFY(!isLocked);
}

void TestFloatingPieces::aDragHoldsTheDocumentUntilTheRelease()
{
    Select({2, 2, 3, 3});
    Press({3.5, 3.5});
    QVERIFY(Document()->GetLockState());
    QVERIFY(!LexoAppKeyHook::instance()->AreShortcutsEnabled());
    Release({5.5, 3.5});
    // What floats holds nothing.
    VERIFY_NOTHING_IS_HELD();
}

void TestFloatingPieces::aToolThatDiesLandsWhatFloats()
{
    Float();
    m_pTool.reset();
    QCOMPARE(Texts(), QStringList("Cut"));
    QCOMPARE(m_pFixture->Pixel(7, 4), Source(2, 2));
    QCOMPARE(Document()->GetDocumentState(), 0);
    m_pFixture.reset();
}

ZK_REGISTER_TEST(tst_floatingpieces, TestFloatingPieces)

#include "tst_floatingpieces.moc"
