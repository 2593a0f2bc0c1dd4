#include "ClipboardFixture.h"

#include "core/ZKApplication.h"
#include "document/LayerLocks.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QRegularExpression>
#include <QTest>

/// Cutting from layers and masks.
class TestCut : public QObject, private ClipboardFixture
{
    Q_OBJECT

private slots:

    void init() { MakeTool(); }

    void cleanup()
    {
        FaultSeams::Reset();
        DropTool();
    }

    void aCutCopiesAndErases();
    void aCutIsUndoneAndRedone();
    void aSoftSelectionTakesAndLeavesParts();
    void aSelectionOverTheEdgeEnlargesNothing();
    void aSelectionBesideTheLayerIsAStepWithoutAChange();
    void aSelectionOf5000PixelsIsCut();
    void aWiderSelectionIsCopiedButErasesNothing();
    void aHigherSelectionIsCopiedButErasesNothing();
    void aLockedLayerIsCopiedAndTold_data();
    void aLockedLayerIsCopiedAndTold();
    void aMaskIsCutAndNotTheLayer();
    void aLockedMaskIsCopiedAndTold();
    void aCutAndAPasteBringTheMaskBack();
    void withoutAHistoryTheCutIsDone();
    void aLockedDocumentIsNotCut();
    void aFailureIsToldAndErasesNothing();
    void withoutASelectionNothingHappens();
    void aFloatingPieceLandsBeforeItIsRead();

private:
    void MakeWide(const QSize& size);
};

void TestCut::MakeWide(const QSize& size)
{
    LXImage32 image(size.width(), size.height());
    image.Fill(LXRGBA32i(0xFF00FF00u));
    Document()->SetDocumentSize(size);
    Document()->SetLayerImage(1, image, {});
    Select(QRect(QPoint(), size));
}

void TestCut::aCutCopiesAndErases()
{
    Select({10, 5, 8, 6});
    m_pTool->Cut();
    QCOMPARE(HistoryTexts(), QStringList({"Cut"}));
    QCOMPARE(Cell(0, 3), QString("ARGB32\nCut"));
    QCOMPARE(ItemImage(0).GetColor(0, 0).value, Begun(10, 5).value);
    QCOMPARE(qAlpha(m_pFixture->Pixel(10, 5)), 0);
    QCOMPARE(qAlpha(m_pFixture->Pixel(17, 10)), 0);
    QCOMPARE(m_pFixture->Pixel(9, 5), Begun(9, 5).value);
    QCOMPARE(m_pFixture->Pixel(18, 10), Begun(18, 10).value);
    QCOMPARE(m_pFixture->Pixel(17, 11), Begun(17, 11).value);
}

void TestCut::aCutIsUndoneAndRedone()
{
    Select({10, 5, 8, 6});
    m_pTool->Cut();
    m_pFixture->History().undo();
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 40; ++x)
            QCOMPARE(m_pFixture->Pixel(x, y), Begun(x, y).value);
    }
    m_pFixture->History().redo();
    QCOMPARE(qAlpha(m_pFixture->Pixel(12, 8)), 0);
    QCOMPARE(Document()->GetLayerGeometry(1), QRect(0, 0, 40, 30));
}

void TestCut::aSoftSelectionTakesAndLeavesParts()
{
    Select({0, 0, 8, 6}, 100);
    m_pTool->Cut();
    // 255 x 100 / 255 are taken.
    QCOMPARE(ItemImage(0).GetColor(0, 0).Alpha(), 100);
    QCOMPARE(qAlpha(m_pFixture->Pixel(0, 0)), 155);
    // 250 x 100 / 255 = 98.04 of the column 5.
    QCOMPARE(ItemImage(0).GetColor(5, 0).Alpha(), 98);
    QCOMPARE(qAlpha(m_pFixture->Pixel(5, 0)), 152);
    QCOMPARE(m_pFixture->Pixel(5, 0) & 0xFFFFFFu, Begun(5, 0).value & 0xFFFFFFu);
}

void TestCut::aSelectionOverTheEdgeEnlargesNothing()
{
    Select({-5, -5, 20, 10});
    m_pTool->Cut();
    QCOMPARE(Document()->GetLayerGeometry(1), QRect(0, 0, 40, 30));
    QCOMPARE(ItemImage(0).Rect().size(), QSize(15, 5));
    QCOMPARE(qAlpha(m_pFixture->Pixel(14, 4)), 0);
    QCOMPARE(m_pFixture->Pixel(15, 4), Begun(15, 4).value);
    QCOMPARE(m_pFixture->Pixel(14, 5), Begun(14, 5).value);
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Pixel(0, 0), Begun(0, 0).value);
}

void TestCut::aSelectionBesideTheLayerIsAStepWithoutAChange()
{
    Document()->SetLayerOffset(1, {20, 0});
    Select({0, 0, 10, 10});
    m_pTool->Cut();
    QCOMPARE(HistoryTexts(), QStringList({"Cut"}));
    QCOMPARE(List()->rowCount(), 0);
    QCOMPARE(m_pFixture->Pixel(20, 0), Begun(0, 0).value);
    QCOMPARE(Document()->GetLayerGeometry(1), QRect(20, 0, 40, 30));
}

void TestCut::aSelectionOf5000PixelsIsCut()
{
    MakeWide({5000, 2});
    m_pTool->Cut();
    QCOMPARE(HistoryTexts(), QStringList({"Cut"}));
    QCOMPARE(qAlpha(m_pFixture->Pixel(4999, 1)), 0);
}

void TestCut::aWiderSelectionIsCopiedButErasesNothing()
{
    MakeWide({5001, 2});
    m_pTool->Cut();
    QCOMPARE(HistoryTexts(), QStringList());
    QCOMPARE(List()->rowCount(), 1);
    QCOMPARE(Cell(0, 3), QString("ARGB32\nCut"));
    QCOMPARE(ItemImage(0).Rect().size(), QSize(5001, 2));
    QCOMPARE(m_pFixture->Pixel(2500, 1), 0xFF00FF00u);
}

void TestCut::aHigherSelectionIsCopiedButErasesNothing()
{
    MakeWide({2, 5001});
    m_pTool->Cut();
    QCOMPARE(HistoryTexts(), QStringList());
    QCOMPARE(List()->rowCount(), 1);
    QCOMPARE(m_pFixture->Pixel(1, 2500), 0xFF00FF00u);
}

void TestCut::aLockedLayerIsCopiedAndTold_data()
{
    QTest::addColumn<unsigned int>("locks");
    QTest::addColumn<QStringList>("boxes");

    const QString whole = "Zenkari: Warning. Layer is locked!";
    const QString pixels = "Zenkari: Warning. Image pixels are locked!";
    QTest::newRow("everything") << LayerLocks::All << QStringList(whole);
    QTest::newRow("everything and the pixels")
        << (LayerLocks::All | LayerLocks::Pixels) << QStringList(whole);
    QTest::newRow("the pixels") << LayerLocks::Pixels << QStringList(pixels);
    QTest::newRow("pixels and position")
        << (LayerLocks::Pixels | LayerLocks::Position) << QStringList(pixels);
}

void TestCut::aLockedLayerIsCopiedAndTold()
{
    QFETCH(unsigned int, locks);
    Layers()->SetLockFlags(0, locks);
    Select({10, 5, 8, 6});
    QTEST(BoxesDuring([this] { m_pTool->Cut(); }), "boxes");
    QCOMPARE(HistoryTexts(), QStringList());
    QCOMPARE(List()->rowCount(), 1);
    QCOMPARE(m_pFixture->Pixel(10, 5), Begun(10, 5).value);
}

void TestCut::aMaskIsCutAndNotTheLayer()
{
    // A black background, which hides.
    ZKApplication::SetBackground(Qt::black);
    GiveMask(200, true);
    Select({10, 5, 8, 6}, 100);
    m_pTool->Cut();
    QCOMPARE(HistoryTexts(), QStringList({"Cut"}));
    // The mask's value as gray, covered as it was selected.
    QCOMPARE(ItemImage(0).GetColor(0, 0).value, qRgba(200, 200, 200, 100));
    // (0 x 100 + 155 x 200) / 255 = 121.57, truncated.
    QCOMPARE(MaskValue(10, 5), 121);
    QCOMPARE(MaskValue(9, 5), 200);
    QCOMPARE(m_pFixture->Pixel(10, 5), Begun(10, 5).value);
    m_pFixture->History().undo();
    QCOMPARE(MaskValue(10, 5), 200);
}

void TestCut::aLockedMaskIsCopiedAndTold()
{
    GiveMask(200, true);
    Layers()->SetLockFlags(0, LayerLocks::All);
    Select({10, 5, 8, 6});
    QCOMPARE(BoxesDuring([this] { m_pTool->Cut(); }), QStringList({"Zenkari: Warning. Layer is locked!"}));
    QCOMPARE(List()->rowCount(), 1);
    QCOMPARE(MaskValue(10, 5), 200);
}

void TestCut::aCutAndAPasteBringTheMaskBack()
{
    ZKApplication::SetBackground(Qt::black);
    GiveMask(0, true);
    for (int x = 0; x < 40; ++x)
        Document()->GetMaskImage(1)->SetColor(x, 7, LXRGBA32i(quint32(6 * x) << 24));
    Select({3, 4, 20, 6});
    m_pTool->Cut();
    QCOMPARE(MaskValue(15, 7), 0);
    m_pTool->Paste();
    for (int x = 0; x < 40; ++x)
        QCOMPARE(MaskValue(x, 7), 6 * x);
}

void TestCut::withoutAHistoryTheCutIsDone()
{
    ZKDocumentWidget bare(Document(), nullptr);
    bare.GetView()->GetLayerSelection()->select(Layers()->index(0, 0), QItemSelectionModel::ClearAndSelect);
    IDocumentView view;
    view.SetDocumentWidget(&bare);
    m_pTool->SetDocumentView(&view);
    Select({10, 5, 8, 6});
    m_pTool->Cut();
    QCOMPARE(qAlpha(m_pFixture->Pixel(10, 5)), 0);
    m_pTool->SetDocumentView(nullptr);
}

void TestCut::aLockedDocumentIsNotCut()
{
    Select({10, 5, 8, 6});
    m_pTool->StartCut();
    Document()->Lock();
    m_pTool->Cut();
    QCOMPARE(List()->rowCount(), 0);
    QCOMPARE(m_pFixture->Pixel(10, 5), Begun(10, 5).value);
    Document()->Unlock();
}

void TestCut::aFailureIsToldAndErasesNothing()
{
    Select({10, 5, 8, 6});
    m_pFixture->Widget()->hide();
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("file=\"src/clipboardprivate/ClipboardToolCopy\""));
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    QCOMPARE(BoxesDuring([this] { m_pTool->Cut(); }),
             QStringList({"Operation error: Cannot cut. Unexpected error occurred."}));
    QCOMPARE(List()->rowCount(), 0);
    QCOMPARE(HistoryTexts(), QStringList());
    QVERIFY(!QApplication::overrideCursor());

    // Nothing is left behind: the next copy is a copy.
    m_pTool->Copy();
    QCOMPARE(Cell(0, 3), QString("ARGB32\nCopied"));
}

void TestCut::withoutASelectionNothingHappens()
{
    m_pTool->Copy();
    m_pTool->Cut();
    QCOMPARE(List()->rowCount(), 0);
    QCOMPARE(HistoryTexts(), QStringList());
}

void TestCut::aFloatingPieceLandsBeforeItIsRead()
{
    connect(&m_pFixture->History(), &LexoUndoStack::aboutCommit, m_pTool.get(),
            [this] { Document()->GetLayerImage(1)->SetColor(10, 5, LXRGBA32i(0xFF0000FFu)); });
    Select({10, 5, 8, 6});
    m_pTool->Cut();
    QCOMPARE(ItemImage(0).GetColor(0, 0).value, 0xFF0000FFu);
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Pixel(10, 5), 0xFF0000FFu);
}

ZK_REGISTER_TEST(tst_cut, TestCut)
#include "tst_cut.moc"
