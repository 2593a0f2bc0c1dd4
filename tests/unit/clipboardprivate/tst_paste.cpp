#include "ClipboardFixture.h"
#include "clipboardprivate/MaskPasteProgress.h"

#include "document/LayerLocks.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiSubWindow.h"
#include "image/ZKCMSTransform.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QAbstractEventDispatcher>
#include <QAction>
#include <QColorSpace>
#include <QPushButton>
#include <QRegularExpression>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTimerEvent>

namespace {
constexpr LXRGBA32i Red(0xFFFF0000u);
constexpr LXRGBA32i HalfRed(0x80FF0000u);

QImage Filled(const QSize& size, QRgb color)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

/// Holds a conversion once, behind a tile of the pass with this label. It is followed while the first pass
/// runs.
class HeldPass
{
public:
    explicit HeldPass(const QString& pass) : m_Pass(pass) {}

    void Follow(MaskPasteProgress& progress)
    {
        QObject::connect(
            &progress, &MaskPasteProgress::ConversionLabel, &progress,
            [this](const QString& label) { m_Current = label; }, Qt::DirectConnection);
        QObject::connect(
            &progress, &MaskPasteProgress::ConversionPosition, &progress,
            [this](int position) {
                if (m_Current != m_Pass || position == 0 || m_bHeld) return;
                m_bHeld = true;
                m_Reached.release();
                m_Gate.acquire();
            },
            Qt::DirectConnection);
    }

    bool IsReached() const { return m_Reached.available() > 0; }

    void LetGo() { m_Gate.release(); }

private:
    const QString m_Pass;
    QString m_Current = QStringLiteral("Prepare conversion"); // of the worker, like the flag
    bool m_bHeld = false;
    QSemaphore m_Reached;
    QSemaphore m_Gate;
};
} // namespace

/// Pasting on layers and masks, as layers and as pictures.
class TestPaste : public QObject, private ClipboardFixture
{
    Q_OBJECT

private slots:

    void init() { MakeTool(); }

    void cleanup()
    {
        FaultSeams::Reset();
        DropTool();
    }

    void withoutASelectionThePictureIsCentered();
    void whatLiesOutsideTheLayerIsDropped();
    void aPasteIsUndoneAndRedone();
    void aSelectionTakesThePictureAtItsTopLeft();
    void aSoftSelectionMixes();
    void lockedTransparencyKeepsTheLayersShape();
    void lockedTransparencyKeepsTheLayersShapeInASelection();
    void lockedTransparencyCountsTheLayerAloneInASoftSelection();
    void aLockedLayerIsTold_data();
    void aLockedLayerIsTold();
    void aSelectionBesideTheLayerIsAStepWithoutAChange();
    void withoutAHistoryThePasteIsDone();
    void aFailureIsToldAndChangesNothing();

    void aMaskTakesTheLightness();
    void aMaskKeepsWhatIsNotSelected();
    void aPasteNeverEnlargesAMask();
    void aMaskPasteIsUndoneAndRedone();
    void aMaskWithLockedPixelsIsRefused();
    void cancellingLeavesTheMask_data();
    void cancellingLeavesTheMask();
    void aDocumentThatGoesUnderTheDialogIsLeftAlone();
    void aDocumentThatComesUnderTheDialogIsLeftAlone();
    void theRowThatWasPastedIsMarked();
    void aPictureLooksTheSameInAnotherProfile_data();
    void aPictureLooksTheSameInAnotherProfile();
    void aMaskTakesTheValuesWhateverTheProfile();
    void aCutWaitsUntilTheMaskIsPasted();

    void aNewLayerHoldsThePicture();
    void aNewLayerIsOneStep();
    void aNewLayerStaysInsideTheSelection();
    void withoutAHistoryTheNewLayerComes();
    void aFailedNewLayerLeavesNoLayer_data();
    void aFailedNewLayerLeavesNoLayer();
    void aNewLayerKeepsToTheOrderOfLayers();
    void aNewImageHoldsThePicture();
    void aNewImageKeepsTheProfile();
    void aRefusedNewImageIsToldAndLeavesNothing();
    void aFailureOnTheWorkerIsToldAndLeavesTheMask_data();
    void aFailureOnTheWorkerIsToldAndLeavesTheMask();
    void aStrangeFailureOfAForeignPictureIsReported();

private:
    void CheckLayerIsAsBegun();

    LXImage32 MaskNow() const { return *Document()->GetMaskImage(1); }
};

void TestPaste::CheckLayerIsAsBegun()
{
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 40; ++x)
            QCOMPARE(m_pFixture->Pixel(x, y), Begun(x, y).value);
    }
}

void TestPaste::withoutASelectionThePictureIsCentered()
{
    // (40 - 9) / 2 = 15, (30 - 6) / 2 = 12
    PutForeign(Filled({9, 6}, Red.value));
    m_pTool->Paste();
    QCOMPARE(HistoryTexts(), QStringList({"Paste"}));
    QCOMPARE(Cell(0, 3), QString("ARGB32\nPasted"));
    QCOMPARE(m_pFixture->Pixel(15, 12), Red.value);
    QCOMPARE(m_pFixture->Pixel(23, 17), Red.value);
    QCOMPARE(m_pFixture->Pixel(14, 12), Begun(14, 12).value);
    QCOMPARE(m_pFixture->Pixel(24, 17), Begun(24, 17).value);
    QCOMPARE(m_pFixture->Pixel(23, 18), Begun(23, 18).value);
}

void TestPaste::whatLiesOutsideTheLayerIsDropped()
{
    Document()->SetLayerOffset(1, {18, 14});
    PutForeign(Filled({9, 6}, Red.value));
    m_pTool->Paste();
    QCOMPARE(Document()->GetLayerGeometry(1), QRect(18, 14, 40, 30));
    QCOMPARE(m_pFixture->Pixel(18, 14), Red.value);
    QCOMPARE(m_pFixture->Pixel(23, 17), Red.value);
    QCOMPARE(m_pFixture->Pixel(24, 17), Begun(6, 3).value);
    m_pFixture->History().undo();
    QCOMPARE(Document()->GetLayerGeometry(1), QRect(18, 14, 40, 30));
    QCOMPARE(m_pFixture->Pixel(18, 14), Begun(0, 0).value);
}

void TestPaste::aPasteIsUndoneAndRedone()
{
    PutForeign(Filled({90, 60}, Red.value));
    m_pTool->Paste();
    QCOMPARE(m_pFixture->Pixel(0, 0), Red.value);
    QCOMPARE(m_pFixture->Pixel(39, 29), Red.value);
    m_pFixture->History().undo();
    CheckLayerIsAsBegun();
    m_pFixture->History().redo();
    QCOMPARE(m_pFixture->Pixel(20, 20), Red.value);
}

void TestPaste::aSelectionTakesThePictureAtItsTopLeft()
{
    PutForeign(Filled({9, 6}, Red.value));
    Select({2, 3, 4, 20});
    m_pTool->Paste();
    QCOMPARE(m_pFixture->Pixel(2, 3), Red.value);
    QCOMPARE(m_pFixture->Pixel(5, 8), Red.value);
    QCOMPARE(m_pFixture->Pixel(6, 3), Begun(6, 3).value);
    // Below the picture the selection has nothing to show.
    QCOMPARE(m_pFixture->Pixel(2, 9), Begun(2, 9).value);
    m_pFixture->History().undo();
    CheckLayerIsAsBegun();
}

void TestPaste::aSoftSelectionMixes()
{
    PutForeign(Filled({9, 6}, Red.value));
    Select({0, 0, 9, 6}, 51);
    m_pTool->Paste();
    // One fifth of red over the opaque (0, 0, 100).
    QCOMPARE(m_pFixture->Pixel(0, 0), qRgba(51, 0, 80, 255));
}

void TestPaste::lockedTransparencyKeepsTheLayersShape()
{
    LXImage32 image(40, 30);
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 20; ++x)
            image.SetColor(x, y, LXRGBA32i(0xFF0000FFu));
    }
    Document()->SetLayerImage(1, image, {});
    Layers()->SetLockFlags(0, LayerLocks::Transparency);
    PutForeign(Filled({10, 10}, Red.value));
    m_pTool->Paste();
    QCOMPARE(m_pFixture->Pixel(19, 15), Red.value);
    QCOMPARE(m_pFixture->Pixel(20, 15), 0u);
}

void TestPaste::lockedTransparencyKeepsTheLayersShapeInASelection()
{
    LXImage32 image(40, 30);
    image.SetColor(5, 5, LXRGBA32i(0xFF0000FFu));
    Document()->SetLayerImage(1, image, {});
    Layers()->SetLockFlags(0, LayerLocks::Transparency);
    PutForeign(Filled({10, 10}, Red.value));
    Select({3, 3, 10, 10});
    m_pTool->Paste();
    QCOMPARE(m_pFixture->Pixel(5, 5), Red.value);
    QCOMPARE(m_pFixture->Pixel(6, 5), 0u);
}

void TestPaste::lockedTransparencyCountsTheLayerAloneInASoftSelection()
{
    Layers()->SetLockFlags(0, LayerLocks::Transparency);
    PutForeign(Filled({9, 6}, Red.value));
    Select({0, 0, 9, 6}, 51);
    m_pTool->Paste();
    // Without the lock one fifth of it; the layer is opaque, and that is what counts.
    QCOMPARE(m_pFixture->Pixel(0, 0), Red.value);
}

void TestPaste::aLockedLayerIsTold_data()
{
    QTest::addColumn<unsigned int>("locks");
    QTest::addColumn<QStringList>("boxes");

    QTest::newRow("everything") << LayerLocks::All << QStringList("Zenkari: Warning. Layer is locked!");
    QTest::newRow("the pixels") << LayerLocks::Pixels
                                << QStringList("Zenkari: Warning. Image pixels are locked!");
    QTest::newRow("the position alone") << LayerLocks::Position << QStringList();
}

void TestPaste::aLockedLayerIsTold()
{
    QFETCH(unsigned int, locks);
    QFETCH(QStringList, boxes);
    PutForeign(Filled({9, 6}, Red.value));
    Layers()->SetLockFlags(0, locks);
    QCOMPARE(BoxesDuring([this] { m_pTool->Paste(); }), boxes);
    QCOMPARE(HistoryTexts(), boxes.isEmpty() ? QStringList("Paste") : QStringList());
}

void TestPaste::aSelectionBesideTheLayerIsAStepWithoutAChange()
{
    PutForeign(Filled({9, 6}, Red.value));
    Document()->SetLayerOffset(1, {20, 0});
    Select({0, 0, 10, 10});
    m_pTool->Paste();
    QCOMPARE(HistoryTexts(), QStringList({"Paste"}));
    QCOMPARE(Document()->GetLayerGeometry(1), QRect(20, 0, 40, 30));
    QCOMPARE(m_pFixture->Pixel(20, 0), Begun(0, 0).value);
    m_pFixture->History().undo();
    QCOMPARE(m_pFixture->Pixel(20, 0), Begun(0, 0).value);
}

void TestPaste::withoutAHistoryThePasteIsDone()
{
    PutForeign(Filled({9, 6}, Red.value));
    ZKDocumentWidget bare(Document(), nullptr);
    bare.GetView()->GetLayerSelection()->select(Layers()->index(0, 0), QItemSelectionModel::ClearAndSelect);
    IDocumentView view;
    view.SetDocumentWidget(&bare);
    m_pTool->SetDocumentView(&view);
    m_pTool->Paste();
    QCOMPARE(m_pFixture->Pixel(15, 12), Red.value);
    m_pTool->SetDocumentView(nullptr);
}

void TestPaste::aFailureIsToldAndChangesNothing()
{
    PutForeign(Filled({9, 6}, Red.value));
    m_pFixture->Widget()->hide();
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("file=\"src/clipboardprivate/ClipboardToolPaste\""));
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    QCOMPARE(BoxesDuring([this] { m_pTool->Paste(); }),
             QStringList({"Operation error: Cannot paste. Unexpected error occurred."}));
    QCOMPARE(HistoryTexts(), QStringList());
    CheckLayerIsAsBegun();
    QVERIFY(!QApplication::overrideCursor());
}

void TestPaste::aMaskTakesTheLightness()
{
    GiveMask(200, true);
    PutForeign(Filled({9, 6}, HalfRed.value));
    m_pTool->Paste();
    QCOMPARE(HistoryTexts(), QStringList({"Paste"}));
    // Red is 127 light: (127 x 128 + 127 x 200) / 255 = 163.4, truncated.
    QCOMPARE(MaskValue(15, 12), 163);
    QCOMPARE(MaskValue(14, 12), 200);
    QCOMPARE(Cell(0, 3), QString("ARGB32\nPasted"));
    CheckLayerIsAsBegun();
}

void TestPaste::aMaskKeepsWhatIsNotSelected()
{
    GiveMask(200, true);
    PutForeign(Filled({9, 6}, Red.value));
    Select({2, 3, 4, 20}, 51);
    m_pTool->Paste();
    // (127 x 51 + 204 x 200) / 255 = 185.4, truncated.
    QCOMPARE(MaskValue(2, 3), 185);
    QCOMPARE(MaskValue(5, 8), 185);
    QCOMPARE(MaskValue(6, 3), 200);
    QCOMPARE(MaskValue(2, 9), 200);
}

void TestPaste::aPasteNeverEnlargesAMask()
{
    GiveMask(200, false);
    Document()->SetMaskImage(1, LXImage32(10, 10), {18, 14});
    PutForeign(Filled({90, 60}, 0xFFFFFFFFu));
    m_pTool->Paste();
    QCOMPARE(Document()->GetMaskGeometry(1), QRect(18, 14, 10, 10));
    QCOMPARE(MaskValue(0, 0), 255);
    QCOMPARE(MaskValue(9, 9), 255);
}

void TestPaste::aMaskPasteIsUndoneAndRedone()
{
    GiveMask(200, true);
    PutForeign(Filled({9, 6}, 0xFF000000u));
    m_pTool->Paste();
    QCOMPARE(MaskValue(15, 12), 0);
    m_pFixture->History().undo();
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 40; ++x)
            QCOMPARE(MaskValue(x, y), 200);
    }
    m_pFixture->History().redo();
    QCOMPARE(MaskValue(15, 12), 0);
    QCOMPARE(MaskValue(24, 12), 200);
}

void TestPaste::aMaskWithLockedPixelsIsRefused()
{
    GiveMask(200, true);
    PutForeign(Filled({9, 6}, Red.value));
    Layers()->SetLockFlags(0, LayerLocks::Pixels);
    QCOMPARE(BoxesDuring([this] { m_pTool->Paste(); }),
             QStringList({"Zenkari: Warning. Image pixels are locked!"}));
    QCOMPARE(MaskValue(15, 12), 200);
}

void TestPaste::cancellingLeavesTheMask_data()
{
    QTest::addColumn<QString>("pass");
    QTest::addColumn<bool>("selected");
    QTest::newRow("in the first pass") << "Prepare conversion" << false;
    QTest::newRow("in the second pass") << "Mask conversion" << false;
    QTest::newRow("in the first pass, with a selection") << "Prepare conversion" << true;
    QTest::newRow("in the second pass, with a selection") << "Mask conversion" << true;
}

void TestPaste::cancellingLeavesTheMask()
{
    QFETCH(QString, pass);
    QFETCH(bool, selected);
    const QSize size(1280, 1280);
    Document()->SetDocumentSize(size);
    GiveMask(200, true);
    LXImage32 mask(size.width(), size.height());
    for (int i = 0; i < 1280; ++i)
        mask.SetColor(i, i, LXRGBA32i(quint32(i % 256) << 24));
    Document()->SetMaskImage(1, mask, {});
    PutForeign(Filled(size, Red.value));
    if (selected) Select(QRect(QPoint(), size), 100);

    // Slow tiles keep the worker in its first pass until the dialog stands. In the pass that is meant it is
    // held after a tile, until the person has pressed Cancel.
    m_pFixture->Widget()->hide();
    FaultSeams::SlowDown(FaultSeams::Seam::TileAllocation, 20);
    HeldPass held(pass);
    m_pFixture->Input().WhenModalShows<MaskPasteProgress>([&](MaskPasteProgress* dialog) {
        held.Follow(*dialog);
        QTRY_VERIFY_WITH_TIMEOUT(held.IsReached(), 60000);
        m_pFixture->Input().Click(dialog->findChild<QPushButton*>());
        held.LetGo();
    });
    m_pTool->Paste();
    FaultSeams::Reset();
    QCOMPARE(m_pFixture->Input().CountWaitingActions(), 0);
    QCOMPARE(HistoryTexts(), QStringList());
    QCOMPARE(Cell(0, 3), QString("ARGB32\nCopied"));
    const LXImage32 after = MaskNow();
    for (unsigned int tile = 0; tile < mask.m_TilesX * mask.m_TilesY; ++tile) {
        const int column = int(tile % mask.m_TilesX);
        const int row = int(tile / mask.m_TilesX);
        QVERIFY(std::equal(mask.ReadTile(column, row).Pixels(), mask.ReadTile(column, row).Pixels() + 16384,
                           after.ReadTile(column, row).Pixels()));
    }
}

void TestPaste::aDocumentThatGoesUnderTheDialogIsLeftAlone()
{
    GiveMask(200, true);
    PutForeign(Filled({9, 6}, Red.value));
    // While the worker runs the view goes, as a window that closes takes it away.
    QTimer::singleShot(0, m_pFixture->Widget(), [this] { m_pTool->SetDocumentView(nullptr); });
    m_pTool->Paste();
    QCOMPARE(HistoryTexts(), QStringList());
    QCOMPARE(MaskValue(15, 12), 200);
}

void TestPaste::aDocumentThatComesUnderTheDialogIsLeftAlone()
{
    GiveMask(200, true);
    PutForeign(Filled({9, 6}, Red.value));
    ViewFixture other(40, 30);
    other.Document()->AddMask(1, true);
    LXImage32 mask(40, 30);
    mask.Fill(LXRGBA32i(0xC8000000u));
    other.Document()->SetMaskImage(1, mask, {});
    QTimer::singleShot(0, m_pFixture->Widget(), [&] { m_pTool->SetDocumentView(&other.ToolView()); });
    m_pTool->Paste();
    QCOMPARE(other.History().count(), 0);
    QCOMPARE(other.Document()->GetMaskImage(1)->GetColor(15, 12).Alpha(), 200);
    QCOMPARE(HistoryTexts(), QStringList());
    QCOMPARE(MaskValue(15, 12), 200);
    m_pTool->SetDocumentView(nullptr);
}

void TestPaste::theRowThatWasPastedIsMarked()
{
    GiveMask(200, true);
    PutForeign(Filled({9, 6}, Red.value));
    QTimer::singleShot(0, m_pFixture->Widget(), [] { PutForeign(Filled({3, 3}, 0xFF00FF00u)); });
    m_pTool->Paste();
    QCOMPARE(List()->rowCount(), 2);
    QCOMPARE(Cell(0, 3), QString("ARGB32\nPasted"));
    QCOMPARE(Cell(1, 3), QString("ARGB32\nCopied"));
    QCOMPARE(HistoryTexts(), QStringList("Paste"));
}

void TestPaste::aCutWaitsUntilTheMaskIsPasted()
{
    GiveMask(200, true);
    PutForeign(Filled({40, 30}, Red.value));
    Select({0, 0, 20, 20});
    QStringList under;
    QTimer::singleShot(0, m_pFixture->Widget(), [&] {
        m_pTool->StartCut();
        // Their moment is over, but not the paste.
        QTimerEvent moment(
            QAbstractEventDispatcher::instance()->registeredTimers(m_pTool.get()).first().timerId);
        QCoreApplication::sendEvent(m_pTool.get(), &moment);
        m_pTool->Cut();
        m_pTool->StartCut();
        m_pTool->Paste();
        m_pTool->PasteAsNewLayer();
        under = HistoryTexts();
    });
    m_pTool->Paste();
    QCOMPARE(under, QStringList());
    QCOMPARE(HistoryTexts(), QStringList("Paste"));
    QTRY_COMPARE(HistoryTexts(), QStringList({"Paste", "Cut"}));
}

void TestPaste::aNewLayerHoldsThePicture()
{
    PutForeign(Filled({9, 6}, HalfRed.value));
    m_pTool->PasteAsNewLayer();
    QCOMPARE(Layers()->rowCount(), 2);
    QCOMPARE(Layers()->GetName(0), QString("Layer 1"));
    QCOMPARE(Document()->GetLayerGeometry(1), QRect(0, 0, 40, 30));
    QCOMPARE(m_pFixture->Pixel(15, 12), HalfRed.value);
    QCOMPARE(m_pFixture->Pixel(14, 12), 0u);
    QCOMPARE(m_pFixture->Pixel(15, 12, 2), Begun(15, 12).value);
    const QModelIndexList rows = m_pFixture->View()->GetLayerSelection()->selectedRows();
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.first().row(), 0);
}

void TestPaste::aNewLayerIsOneStep()
{
    PutForeign(Filled({9, 6}, Red.value));
    m_pTool->PasteAsNewLayer();
    QCOMPARE(HistoryTexts(), QStringList({"PasteAsNewLayer"}));
    QVERIFY(!m_pFixture->History().isMacroOpen());
    m_pFixture->History().undo();
    QCOMPARE(Layers()->rowCount(), 1);
    CheckLayerIsAsBegun();
    m_pFixture->History().redo();
    QCOMPARE(m_pFixture->Pixel(15, 12), Red.value);
}

void TestPaste::aNewLayerStaysInsideTheSelection()
{
    PutForeign(Filled({9, 6}, Red.value));
    Select({2, 3, 4, 4});
    m_pTool->PasteAsNewLayer();
    QCOMPARE(m_pFixture->Pixel(2, 3), Red.value);
    QCOMPARE(m_pFixture->Pixel(6, 3), 0u);
}

void TestPaste::withoutAHistoryTheNewLayerComes()
{
    PutForeign(Filled({9, 6}, Red.value));
    ZKDocumentWidget bare(Document(), nullptr);
    bare.GetView()->GetLayerSelection()->select(Layers()->index(0, 0), QItemSelectionModel::ClearAndSelect);
    IDocumentView view;
    view.SetDocumentWidget(&bare);
    m_pTool->SetDocumentView(&view);
    m_pTool->PasteAsNewLayer();
    QCOMPARE(Layers()->rowCount(), 2);
    QCOMPARE(m_pFixture->Pixel(15, 12), Red.value);
    m_pTool->SetDocumentView(nullptr);
}

void TestPaste::aFailedNewLayerLeavesNoLayer_data()
{
    QTest::addColumn<bool>("history");
    QTest::newRow("with a history") << true;
    QTest::newRow("without one") << false;
}

void TestPaste::aFailedNewLayerLeavesNoLayer()
{
    QFETCH(bool, history);
    PutForeign(Filled({9, 6}, Red.value));
    ZKDocumentWidget bare(Document(), nullptr);
    bare.GetView()->GetLayerSelection()->select(Layers()->index(0, 0), QItemSelectionModel::ClearAndSelect);
    IDocumentView view;
    view.SetDocumentWidget(&bare);
    if (!history) m_pTool->SetDocumentView(&view);
    m_pFixture->Widget()->hide();
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("file=\"src/clipboardprivate/ClipboardToolPaste\""));
    // The memory is gone as soon as the layer stands.
    const auto connection = connect(Layers(), &QAbstractItemModel::rowsInserted, m_pTool.get(),
                                    [] { FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1); });
    QCOMPARE(BoxesDuring([this] { m_pTool->PasteAsNewLayer(); }),
             QStringList({"Operation error: Cannot paste. Unexpected error occurred."}));
    QObject::disconnect(connection);
    QCOMPARE(Layers()->rowCount(), 1);
    CheckLayerIsAsBegun();
    QCOMPARE(HistoryTexts(), QStringList());
    QVERIFY(!m_pFixture->History().isMacroOpen());
    m_pTool->SetDocumentView(nullptr);
}

void TestPaste::aNewLayerKeepsToTheOrderOfLayers()
{
    PutForeign(Filled({9, 6}, Red.value));
    m_pFixture->View()->BlockLayerOrderOperations(true);
    QVERIFY(!Action("New layer")->isEnabled());
    QVERIFY(Action("Paste")->isEnabled());
    m_pTool->PasteAsNewLayer();
    QCOMPARE(Layers()->rowCount(), 1);
    m_pFixture->View()->BlockLayerOrderOperations(false);
    QVERIFY(Action("New layer")->isEnabled());
}

void TestPaste::aNewImageHoldsThePicture()
{
    const std::unique_ptr<LXMdiArea> area(LXDocumentManager::GetDocumentArea());
    PutForeign(Filled({9, 6}, HalfRed.value));
    m_pTool->PasteAsNew();
    const QList<LXDocumentInterface*> documents = LXDocumentManager::Instance()->GetDocuments();
    QCOMPARE(documents.size(), 1);
    LXDocumentInterface* made = documents.first();
    QCOMPARE(made->GetDocumentSize(), QSize(9, 6));
    QCOMPARE(made->GetDocumentName(), QString("Untitled 1"));
    QCOMPARE(made->GetModel()->rowCount(), 1);
    QCOMPARE(made->GetModel()->GetName(0), QString("Background layer"));
    QCOMPARE(made->GetLayerImage(1)->GetColor(8, 5).value, HalfRed.value);
    QCOMPARE(made->GetDocumentState(), 1);
}

void TestPaste::aNewImageKeepsTheProfile()
{
    const std::unique_ptr<LXMdiArea> area(LXDocumentManager::GetDocumentArea());
    Select({1, 2, 5, 5});
    m_pTool->Copy();
    // The same values, but other colors.
    Document()->SetICCProfile(ZKCMSProfile("a profile"));
    m_pTool->Copy();
    QCOMPARE(List()->rowCount(), 1);
    m_pTool->PasteAsNew();
    PutForeign(Filled({9, 6}, Red.value));
    m_pTool->PasteAsNew();
    QList<QByteArray> profiles;
    const QList<LXDocumentInterface*> made = LXDocumentManager::Instance()->GetDocuments();
    for (const LXDocumentInterface* document : made)
        profiles.append(document->GetICCProfile().GetData());
    QCOMPARE(profiles, (QList<QByteArray>{"a profile", ""}));
}

void TestPaste::aPictureLooksTheSameInAnotherProfile_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<bool>("changes");
    const QByteArray adobe = IccProfiles::AdobeRgb().GetData();
    const QByteArray wide = IccProfiles::WideRgb().GetData();
    QTest::newRow("another one") << adobe << wide << true;
    QTest::newRow("another that means the same")
        << QByteArray(ZKCMSProfile::SRGB().GetData()) << QColorSpace(QColorSpace::SRgb).iccProfile() << false;
    QTest::newRow("the same") << adobe << adobe << false;
    QTest::newRow("the copied one has none") << QByteArray() << wide << false;
    QTest::newRow("the document has none") << adobe << QByteArray() << false;
    QTest::newRow("the document's is damaged") << adobe << QByteArray("no profile") << false;
}

void TestPaste::aPictureLooksTheSameInAnotherProfile()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(bool, changes);
    Document()->SetICCProfile(ZKCMSProfile(from));
    Select({4, 3, 6, 5});
    m_pTool->Copy();
    Document()->SetICCProfile(ZKCMSProfile(to));
    Select({24, 13, 6, 5});
    // On a layer of its own, where nothing shines through.
    m_pTool->PasteAsNewLayer();

    const LXImage32 pasted = *Document()->GetLayerImage(1);
    const ZKCMSTransform transform{ZKCMSProfile(from), ZKCMSProfile(to)};
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 6; ++x) {
            LXRGBA32i expected = Begun(4 + x, 3 + y);
            if (changes) transform(&expected, 1);
            QCOMPARE(pasted.GetColor(24 + x, 13 + y).value, expected.value);
        }
    }
    QCOMPARE(pasted.GetColor(24, 13) != Begun(4, 3), changes);
    // The list keeps what was copied.
    QCOMPARE(ItemImage(0).m_Profile, ZKCMSProfile(from));
    QCOMPARE(ItemImage(0).GetColor(0, 0).value, Begun(4, 3).value);
    m_pFixture->History().undo();
    CheckLayerIsAsBegun();
}

void TestPaste::aMaskTakesTheValuesWhateverTheProfile()
{
    Document()->SetICCProfile(IccProfiles::AdobeRgb());
    GiveMask(77, true);
    Select({4, 3, 6, 5});
    m_pTool->Copy();
    Document()->SetICCProfile(IccProfiles::WideRgb());
    LXImage32 other(40, 30);
    other.Fill(LXRGBA32i(0xFF000000u));
    Document()->SetMaskImage(1, other, {});
    Select({24, 13, 6, 5});
    m_pTool->Paste();
    QCOMPARE(MaskValue(25, 14), 77);
}

void TestPaste::aRefusedNewImageIsToldAndLeavesNothing()
{
    const std::unique_ptr<LXMdiArea> area(LXDocumentManager::GetDocumentArea());
    PutForeign(Filled({9, 6}, Red.value));
    FaultSeams::FailNth(FaultSeams::Seam::DocumentAdd, 1);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("file=\"src/clipboardprivate/ClipboardToolPaste\""));
    QCOMPARE(BoxesDuring([this] { m_pTool->PasteAsNew(); }),
             QStringList("Operation error: Cannot paste. Unexpected error occurred."));
    QVERIFY(LXDocumentManager::Instance()->GetDocuments().isEmpty());
    QVERIFY(!QGuiApplication::overrideCursor());
    // The row is still there, and the next time it opens.
    QCOMPARE(List()->rowCount(), 1);
    m_pTool->PasteAsNew();
    QCOMPARE(LXDocumentManager::Instance()->GetDocuments().size(), 1);
}

void TestPaste::aStrangeFailureOfAForeignPictureIsReported()
{
    m_pFixture->Widget()->hide();
    QTest::ignoreMessage(
        QtDebugMsg,
        QRegularExpression("Unexpected unknown exception: line=.*clipboardprivate/ClipboardToolCopy"));
    FaultSeams::FailNth(FaultSeams::Seam::StrangeTileAllocation, 1);
    PutForeign(Filled({9, 6}, Red.value));
    QCOMPARE(List()->rowCount(), 0);
    PutForeign(Filled({9, 7}, Red.value));
    QCOMPARE(List()->rowCount(), 1);
}

void TestPaste::aFailureOnTheWorkerIsToldAndLeavesTheMask_data()
{
    QTest::addColumn<int>("seam");
    QTest::newRow("no memory") << int(FaultSeams::Seam::TileAllocation);
    QTest::newRow("something strange") << int(FaultSeams::Seam::StrangeTileAllocation);
}

void TestPaste::aFailureOnTheWorkerIsToldAndLeavesTheMask()
{
    QFETCH(int, seam);
    GiveMask(200, true);
    PutForeign(Filled({9, 6}, Red.value));
    m_pFixture->Widget()->hide();
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("file=\"src/clipboardprivate/ClipboardToolPaste\""));
    FaultSeams::FailNth(static_cast<FaultSeams::Seam>(seam), 1);
    QCOMPARE(BoxesDuring([this] { m_pTool->Paste(); }),
             QStringList({"Operation error: Cannot paste. Unexpected error occurred."}));
    QCOMPARE(HistoryTexts(), QStringList());
    QCOMPARE(MaskValue(15, 12), 200);
    QVERIFY(!Document()->GetLockState());
    QVERIFY(!QGuiApplication::overrideCursor());
    QCOMPARE(Cell(0, 3), QString("ARGB32\nCopied"));
    m_pTool->Paste();
    QCOMPARE(HistoryTexts(), QStringList("Paste"));
}

ZK_REGISTER_TEST(tst_paste, TestPaste)
#include "tst_paste.moc"
