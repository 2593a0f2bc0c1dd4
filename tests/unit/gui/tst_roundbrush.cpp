#include "GuiFixture.h"

#include "core/ZKApplication.h"
#include "core/ZKBrushToolManager.h"
#include "document/LXDocumentModel.h"
#include "document/LayerLocks.h"
#include "gui/DocumentOf.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiArea_p.h"
#include "gui/LXOperationProgress.h"
#include "gui/RoundBrush.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoUndoStack.h"
#include "scripting/InputDriver.h"
#include "support/DocumentFixture.h"
#include "support/StrokeTwin.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QApplication>
#include <QItemSelectionModel>
#include <QMainWindow>
#include <QPainterPath>
#include <QPointer>
#include <QPushButton>
#include <QTest>

namespace {
constexpr QRgb Red = 0xFFFF0000;
const QRect Canvas(0, 0, 120, 90);

QPainterPath Line(const QPointF& from, const QPointF& to)
{
    QPainterPath path(from);
    path.lineTo(to);
    return path;
}

/// Takes longer to stroke with a small brush than anybody waits without a sign.
QPainterPath LongScribble()
{
    QPainterPath scribble(QPointF(0, 0));
    for (int i = 0; i < 400000; ++i)
        scribble.lineTo((i * 37) % 121, (i * 53) % 91);
    return scribble;
}

/// (255 x s + 0 x (255 - s)) / 255 of both, rounded once: what source-over gives on an opaque ground.
int Mixed(int ink, int ground, int strength)
{
    return (ink * strength + ground * (255 - strength) + 127) / 255;
}
} // namespace

/// Strokes on real documents: which pixels, which step, and what is refused.
class TestRoundBrush : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void itIsRegisteredWhileItLives();
    void settingsAreUserValuesInTheirRanges();
    void aStrokeCoversTheLayer();
    void opacityCountsOnceForTheWholeStroke();
    void undoAndRedoBringEverythingBack();
    void theSelectionBoundsTheStroke();
    void aLayerThatWasMovedIsPaintedWhereThePathLies();
    void theLayerGrowsInsideTheCanvasOnly();
    void withASelectionTheLayerGrowsInsideIt();
    void whatLiesBeyondTheCanvasIsPaintedToo();
    void lockedTransparencyKeepsTheAlpha();
    void aMaskTakesTheGrayOfItsForeground();
    void aMaskGrowsByItsDefault();
    void lockedLayersAreRefusedInWords_data();
    void lockedLayersAreRefusedInWords();
    void layersWithoutPixelsAreRefusedInWords();
    void nothingHappensWithoutOneTarget();
    void anEmptyPathDoesNothing();
    void aPathOutsideTheCanvasChangesNothing();
    void aHugePathIsPaintedWhereItIsSeen();
    void aLongStrokeCanBeCancelled();
    void aDocumentThatIsClosedEndsItsStroke();
    void aStrokeThatFailsChangesNothing();

private:
    LXDocumentModel* Model() const { return m_pDocument->GetModel(); }

    LexoUndoStack* History() const { return m_pView->GetHistory(); }

    /// The newest layer is the first row.
    void SelectLayer(int row) const
    {
        m_pView->GetLayerSelection()->setCurrentIndex(Model()->index(row),
                                                      QItemSelectionModel::ClearAndSelect);
    }

    void SelectMask(int row) const
    {
        SelectLayer(row);
        Model()->SetMaskSelected(row, true);
    }

    void Select(const QRect& rect) const
    {
        m_pDocument->SetSelectionMask(DocumentFixture::Filled(rect.size(), 0xFF000000u), rect.topLeft());
    }

    QRgb PixelOf(unsigned int id, int x, int y) const
    {
        const QPoint pixel = QPoint(x, y) - m_pDocument->GetLayerGeometry(id).topLeft();
        return m_pDocument->GetLayerImage(id)->GetColor(pixel.x(), pixel.y()).value;
    }

    int MaskAt(unsigned int id, int x, int y) const
    {
        const QPoint pixel = QPoint(x, y) - m_pDocument->GetMaskGeometry(id).topLeft();
        return m_pDocument->GetMaskImage(id)->GetColor(pixel.x(), pixel.y()).Alpha();
    }

    /// What the warning said that the stroke brought up; empty without one.
    QString WarningOf(const QPainterPath& path)
    {
        QString text;
        InputDriver input;
        input.WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
            text = box->windowTitle() + ": " + box->GetText();
            input.Key(Qt::Key_Escape);
        });
        m_pBrush->StrokePath(path);
        return text;
    }

    std::unique_ptr<QMainWindow> m_pWindow;
    std::unique_ptr<RoundBrush> m_pBrush;
    LXDocumentInterface* m_pDocument = nullptr;
    ZKDocumentView* m_pView = nullptr;
};

void TestRoundBrush::init()
{
    m_pWindow = std::make_unique<QMainWindow>();
    m_pWindow->setCentralWidget(LXDocumentManager::GetDocumentArea());
    m_pWindow->resize(500, 400);
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
    m_pDocument = GuiFixture::MakeDocument(Canvas.size()).release();
    QVERIFY(LXDocumentManager::Instance()->AddDocument(m_pDocument));
    m_pView = ViewOf(LXDocumentManager::GetDocumentArea()->GetActiveWindow());
    SelectLayer(0);
    m_pBrush = std::make_unique<RoundBrush>();
    m_pBrush->SetSettings({10, 100, 100, 10});
    ZKApplication::SetForeground(QColor(Red));
}

void TestRoundBrush::cleanup()
{
    m_pBrush.reset();
    LXMdiAreaPrivate::Get(LXDocumentManager::GetDocumentArea())->CloseAllUnasked();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_pWindow.reset();
}

void TestRoundBrush::itIsRegisteredWhileItLives()
{
    QCOMPARE(ZKBrushToolManager::GetPlugin(RoundBrush::Id), m_pBrush.get());
    QVERIFY(!m_pBrush->GetName().isEmpty());
    m_pBrush.reset();
    QVERIFY(!ZKBrushToolManager::GetPlugin(RoundBrush::Id));
}

void TestRoundBrush::settingsAreUserValuesInTheirRanges()
{
    const ZKBrushSettings settings{300, 40, 70, 25};
    m_pBrush->SetSettings(settings);
    QCOMPARE(ZKApplication::GetUserValue("RoundBrush/Size", 0).toInt(), 300);
    m_pBrush = nullptr;
    m_pBrush = std::make_unique<RoundBrush>();
    QCOMPARE(m_pBrush->GetSettings(), settings);
    m_pBrush->SetSettings({99999, 101, -1, 0});
    QCOMPARE(m_pBrush->GetSettings(), (ZKBrushSettings{2000, 100, 0, 1}));
    m_pBrush->SetSettings({0, -7, 101, 5000});
    QCOMPARE(m_pBrush->GetSettings(), (ZKBrushSettings{1, 0, 100, 1000}));
}

void TestRoundBrush::aStrokeCoversTheLayer()
{
    m_pBrush->SetSettings({14, 30, 100, 20});
    m_pBrush->StrokePath(Line({20, 30}, {90, 55}));
    QCOMPARE(History()->count(), 1);
    QCOMPARE(History()->text(0), QString("Stroke path"));
    QVERIFY(!m_pDocument->GetLockState());
    const StrokeTwin::Brush brush{14, 0.3, 14 * 0.2};
    const std::vector<int> strengths =
        StrokeTwin::Strengths(StrokeTwin::Middles({{20, 30}, {90, 55}}, brush.spacing), brush, Canvas);
    auto strength = strengths.begin();
    for (int y = 0; y < Canvas.height(); ++y) {
        for (int x = 0; x < Canvas.width(); ++x) {
            const int white = Mixed(0, 255, *strength++);
            QCOMPARE(PixelOf(1, x, y), qRgb(255, white, white));
        }
    }
}

void TestRoundBrush::opacityCountsOnceForTheWholeStroke()
{
    // Half of 255 rounds to 128, however often the line comes back.
    m_pBrush->SetSettings({10, 100, 50, 10});
    QPainterPath path = Line({20, 40}, {100, 40});
    path.lineTo(20, 40);
    m_pBrush->StrokePath(path);
    QCOMPARE(PixelOf(1, 60, 40), qRgb(255, 127, 127));
}

void TestRoundBrush::undoAndRedoBringEverythingBack()
{
    m_pDocument->AddLayer("small", DocumentFixture::Filled({30, 20}, 0x80204060u), {50, 40});
    SelectLayer(0);
    Select(QRect(10, 10, 90, 60));
    const QStringList before = DocumentFixture::DescribeWhole(m_pDocument);
    m_pBrush->StrokePath(Line({5, 5}, {115, 85}));
    const QStringList after = DocumentFixture::DescribeWhole(m_pDocument);
    QVERIFY(after != before);
    History()->undo();
    QCOMPARE(DocumentFixture::DescribeWhole(m_pDocument), before);
    History()->redo();
    QCOMPARE(DocumentFixture::DescribeWhole(m_pDocument), after);
}

void TestRoundBrush::theSelectionBoundsTheStroke()
{
    LXImage32 mask = DocumentFixture::Filled({40, 90}, 0xFF000000u);
    for (int y = 0; y < 90; ++y)
        mask.SetColor(39, y, LXRGBA32i(0x80000000u));
    m_pDocument->SetSelectionMask(mask, {30, 0});
    m_pBrush->StrokePath(Line({10, 40}, {110, 40}));
    QCOMPARE(PixelOf(1, 29, 40), 0xFFFFFFFFu);
    QCOMPARE(PixelOf(1, 30, 40), Red);
    QCOMPARE(PixelOf(1, 68, 40), Red);
    QCOMPARE(PixelOf(1, 69, 40), qRgb(255, 127, 127));
    QCOMPARE(PixelOf(1, 70, 40), 0xFFFFFFFFu);
}

void TestRoundBrush::aLayerThatWasMovedIsPaintedWhereThePathLies()
{
    m_pDocument->AddLayer("moved", DocumentFixture::Filled({60, 60}, 0xFF000000u), {33, 21});
    SelectLayer(0);
    m_pBrush->StrokePath(Line({50, 50}, {70, 50}));
    QCOMPARE(m_pDocument->GetLayerGeometry(1), QRect(33, 21, 60, 60));
    QCOMPARE(PixelOf(1, 60, 50), Red);
    QCOMPARE(PixelOf(1, 60, 53), Red);
    QCOMPARE(PixelOf(1, 60, 57), 0xFF000000u);
}

void TestRoundBrush::theLayerGrowsInsideTheCanvasOnly()
{
    m_pDocument->AddLayer("small", DocumentFixture::Filled({10, 10}, 0xFF000000u), {50, 40});
    SelectLayer(0);
    m_pBrush->StrokePath(Line({-50, 45}, {55, 45}));
    // To the edge of the canvas, and the five and a half pixels up and down that the brush reaches.
    const QRect grown = m_pDocument->GetLayerGeometry(1);
    QCOMPARE(grown.left(), 0);
    QVERIFY(grown.top() >= 39 && grown.top() <= 40);
    QCOMPARE(PixelOf(1, 0, 45), Red);
    QCOMPARE(PixelOf(1, 30, 45), Red);
    History()->undo();
    QCOMPARE(m_pDocument->GetLayerGeometry(1), QRect(50, 40, 10, 10));
}

void TestRoundBrush::withASelectionTheLayerGrowsInsideIt()
{
    m_pDocument->AddLayer("small", DocumentFixture::Filled({10, 10}, 0xFF000000u), {50, 40});
    SelectLayer(0);
    Select(QRect(30, 20, 40, 50));
    m_pBrush->StrokePath(Line({5, 45}, {55, 45}));
    QCOMPARE(m_pDocument->GetLayerGeometry(1).left(), 30);
    QCOMPARE(PixelOf(1, 30, 45), Red);
}

void TestRoundBrush::whatLiesBeyondTheCanvasIsPaintedToo()
{
    m_pDocument->AddLayer("beyond", DocumentFixture::Filled({100, 40}, 0xFF000000u), {-60, 20});
    SelectLayer(0);
    m_pBrush->StrokePath(Line({-200, 40}, {20, 40}));
    QCOMPARE(m_pDocument->GetLayerGeometry(1), QRect(-60, 20, 100, 40));
    QCOMPARE(PixelOf(1, -60, 40), Red);
    QCOMPARE(PixelOf(1, 10, 40), Red);
}

void TestRoundBrush::lockedTransparencyKeepsTheAlpha()
{
    m_pDocument->AddLayer("half", DocumentFixture::Filled({20, 20}, 0x80000000u), {50, 40});
    SelectLayer(0);
    Model()->SetLockFlags(0, LayerLocks::Transparency);
    m_pBrush->StrokePath(Line({0, 50}, {119, 50}));
    QCOMPARE(m_pDocument->GetLayerGeometry(1), QRect(50, 40, 20, 20));
    QCOMPARE(PixelOf(1, 60, 50), 0x80FF0000u);
    QCOMPARE(PixelOf(1, 60, 42), 0x80000000u);
}

void TestRoundBrush::aMaskTakesTheGrayOfItsForeground()
{
    m_pDocument->AddMask(1, true);
    SelectMask(0);
    ZKApplication::SetForeground(QColor(60, 60, 60));
    m_pBrush->SetSettings({10, 100, 50, 10});
    const QRgb layer = PixelOf(1, 60, 40);
    m_pBrush->StrokePath(Line({20, 40}, {100, 40}));
    QCOMPARE(History()->text(0), QString("Stroke path"));
    QCOMPARE(PixelOf(1, 60, 40), layer);
    QCOMPARE(MaskAt(1, 60, 20), 255);
    // Strength 128 of 255: (128 x 60 + 127 x 255) / 255, cut off.
    QCOMPARE(MaskAt(1, 60, 40), 157);
    History()->undo();
    QCOMPARE(MaskAt(1, 60, 40), 255);
}

void TestRoundBrush::aMaskGrowsByItsDefault()
{
    m_pDocument->AddMask(1, true);
    m_pDocument->SetMaskImage(1, DocumentFixture::Filled({10, 10}, 0), {50, 40});
    SelectMask(0);
    ZKApplication::SetForeground(Qt::black);
    m_pBrush->StrokePath(Line({20, 45}, {40, 45}));
    const QRect grown = m_pDocument->GetMaskGeometry(1);
    QVERIFY(grown.contains(QRect(20, 41, 40, 8)));
    QCOMPARE(MaskAt(1, 30, 45), 0);
    QCOMPARE(MaskAt(1, 55, 45), 0);
    QCOMPARE(MaskAt(1, 48, 45), 255);
    // Beside the round end, where the stroke's rectangle has a corner.
    QCOMPARE(MaskAt(1, 45, 40), 255);
    History()->undo();
    QCOMPARE(m_pDocument->GetMaskGeometry(1), QRect(50, 40, 10, 10));
}

void TestRoundBrush::lockedLayersAreRefusedInWords_data()
{
    QTest::addColumn<unsigned int>("locks");
    QTest::addColumn<bool>("isMask");
    QTest::addColumn<bool>("isRefused");
    QTest::newRow("pixels") << LayerLocks::Pixels << false << true;
    QTest::newRow("all") << LayerLocks::All << false << true;
    QTest::newRow("place") << LayerLocks::Position << false << false;
    QTest::newRow("mask, pixels") << LayerLocks::Pixels << true << false;
    QTest::newRow("mask, all") << LayerLocks::All << true << true;
}

void TestRoundBrush::lockedLayersAreRefusedInWords()
{
    QFETCH(unsigned int, locks);
    QFETCH(bool, isMask);
    QFETCH(bool, isRefused);
    m_pDocument->AddMask(1, true);
    if (isMask) SelectMask(0);
    Model()->SetMaskSelected(0, isMask);
    Model()->SetLockFlags(0, locks);
    ZKApplication::SetForeground(Qt::black);
    const QStringList before = DocumentFixture::Describe(m_pDocument);
    const QString refused = isRefused ? QString("Zenkari: Cannot stroke. Layer is locked.") : QString();
    QCOMPARE(WarningOf(Line({20, 40}, {100, 40})), refused);
    QCOMPARE(DocumentFixture::Describe(m_pDocument) == before, isRefused);
    QCOMPARE(History()->count(), isRefused ? 0 : 1);
}

void TestRoundBrush::layersWithoutPixelsAreRefusedInWords()
{
    m_pDocument->AddTextLayer("text", {10, 10});
    SelectLayer(0);
    QVERIFY(WarningOf(Line({20, 40}, {100, 40})).contains("no pixels"));
    m_pDocument->AddAdjustmentLayer("adjustment", LXAdjustment());
    SelectLayer(0);
    QVERIFY(WarningOf(Line({20, 40}, {100, 40})).contains("no pixels"));
    QCOMPARE(History()->count(), 0);
    // Their masks have some.
    m_pDocument->AddMask(1, true);
    SelectMask(0);
    QCOMPARE(WarningOf(Line({20, 40}, {100, 40})), QString());
    QCOMPARE(History()->count(), 1);
}

void TestRoundBrush::nothingHappensWithoutOneTarget()
{
    const QPainterPath path = Line({20, 40}, {100, 40});
    m_pDocument->AddLayer("second", DocumentFixture::Filled({10, 10}, 0xFF000000u), {});
    m_pView->GetLayerSelection()->clearSelection();
    m_pBrush->StrokePath(path);
    for (int row = 0; row < 2; ++row)
        m_pView->GetLayerSelection()->select(Model()->index(row), QItemSelectionModel::Select);
    m_pBrush->StrokePath(path);
    SelectLayer(0);
    QVERIFY(m_pDocument->Lock());
    m_pBrush->StrokePath(path);
    QVERIFY(m_pDocument->Unlock());
    QCOMPARE(History()->count(), 0);
    LXMdiAreaPrivate::Get(LXDocumentManager::GetDocumentArea())->CloseAllUnasked();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_pBrush->StrokePath(path);
}

void TestRoundBrush::anEmptyPathDoesNothing()
{
    m_pBrush->StrokePath(QPainterPath());
    m_pBrush->StrokePath(QPainterPath({30, 30}));
    QCOMPARE(History()->count(), 0);
}

void TestRoundBrush::aPathOutsideTheCanvasChangesNothing()
{
    const QStringList before = DocumentFixture::DescribeWhole(m_pDocument);
    m_pBrush->StrokePath(Line({-300, -50}, {500, -50}));
    QCOMPARE(DocumentFixture::DescribeWhole(m_pDocument), before);
    QCOMPARE(History()->count(), 1);
    History()->undo();
    History()->redo();
    QCOMPARE(DocumentFixture::DescribeWhole(m_pDocument), before);
}

void TestRoundBrush::aHugePathIsPaintedWhereItIsSeen()
{
    m_pBrush->StrokePath(Line({-4e8, 45}, {4e8, 45}));
    QCOMPARE(m_pDocument->GetLayerGeometry(1), Canvas);
    QCOMPARE(PixelOf(1, 0, 45), Red);
    QCOMPARE(PixelOf(1, 119, 45), Red);
    QCOMPARE(PixelOf(1, 60, 60), 0xFFFFFFFFu);
}

void TestRoundBrush::aLongStrokeCanBeCancelled()
{
    m_pBrush->SetSettings({3, 100, 100, 1});
    const QPainterPath scribble = LongScribble();
    const QStringList before = DocumentFixture::DescribeWhole(m_pDocument);
    InputDriver input;
    input.WhenModalShows<LXOperationProgress>([&](LXOperationProgress* dialog) {
        QVERIFY(m_pDocument->GetLockState());
        input.Click(dialog->findChild<QPushButton*>());
    });
    m_pBrush->StrokePath(scribble);
    QCOMPARE(input.CountWaitingActions(), 0);
    QCOMPARE(DocumentFixture::DescribeWhole(m_pDocument), before);
    QCOMPARE(History()->count(), 0);
    QVERIFY(!m_pDocument->GetLockState());
}

void TestRoundBrush::aDocumentThatIsClosedEndsItsStroke()
{
    m_pBrush->SetSettings({3, 100, 100, 1});
    const QPointer<LXDocumentInterface> document = m_pDocument;
    InputDriver input;
    input.WhenModalShows<LXOperationProgress>([](LXOperationProgress*) {
        LXMdiAreaPrivate::Get(LXDocumentManager::GetDocumentArea())->CloseAllUnasked();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
    m_pBrush->StrokePath(LongScribble());
    QCOMPARE(input.CountWaitingActions(), 0);
    QVERIFY(!document);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestRoundBrush::aStrokeThatFailsChangesNothing()
{
    using FaultSeams::Seam;
    const QStringList before = DocumentFixture::DescribeWhole(m_pDocument);
    // On the worker, wherever it takes tiles, and at the push.
    bool isDone = false;
    for (int n = 1; n < 100 && !isDone; ++n) {
        const Seam seam = n % 2 == 0 ? Seam::TileAllocation : Seam::StrangeTileAllocation;
        FaultSeams::FailNth(seam, n / 2 + 1);
        const QString told = WarningOf(Line({20, 40}, {100, 40}));
        FaultSeams::Reset();
        isDone = told.isEmpty();
        if (isDone) break;
        QVERIFY(told.startsWith("Operation error: Cannot stroke the path. "));
        QCOMPARE(told.contains("memory"), seam == Seam::TileAllocation);
        QCOMPARE(DocumentFixture::DescribeWhole(m_pDocument), before);
        QCOMPARE(History()->count(), 0);
        QVERIFY(!m_pDocument->GetLockState());
    }
    QVERIFY(isDone);
    QCOMPARE(History()->count(), 1);
}

ZK_REGISTER_TEST(tst_roundbrush, TestRoundBrush)
#include "tst_roundbrush.moc"
