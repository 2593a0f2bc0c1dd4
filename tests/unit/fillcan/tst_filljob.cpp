#include "FillDocument.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "fillcan/FillCommand.h"
#include "fillcan/FillJob.h"
#include "history/LexoCommand.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QRegularExpression>
#include <QTest>

#include <future>

namespace {
const QStringList Islands{"##..##", "##..##", "......"};

// Runs the job and its command; undo must bring every row back, redo the result again.
QStringList Filled(const FillDocument& document, const FillJobData& data)
{
    const QStringList before = document.Layer();
    const QRect geometryBefore = document->GetLayerGeometry(1);
    const FillJobResult result = RunLayerFillJob(document, data);
    if (result.error != 0) return {"error"};
    if (document.Layer() != before) return {"the job changed the document"};

    const std::unique_ptr<LexoCommand> command = MakeFillCommand(document, result);
    command->redo();
    const QStringList after = document.Layer();
    command->undo();
    if (document.Layer() != before || document->GetLayerGeometry(1) != geometryBefore) {
        return {"undo lost something"};
    }
    command->redo();
    return document.Layer() == after ? after : QStringList{"redo differs"};
}
} // namespace

class TestFillJob : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void aContiguousFillTakesWhatHangsTogether();
    void withoutContiguousAllSimilarPixelsAreFilled();
    void theToleranceCountsForEachChannel();
    void transparencyIsComparedUnlessIgnored();
    void theResultNamesItsTarget();

    void aClickThatFindsOnlyItselfIsOnePixel();
    void imagesAreCutToTheFilledArea();
    void aClickBesideTheLayerFillsTheEmptySpaceAndTheLayerGrows();
    void anAreaBesideTheLayerHasNothingToUndo();
    void aLayerBeyondTheCanvasIsFilledInsideIt();

    void allLayersComparesThePictureAndPaintsTheLayersRectangleAlone();
    void allLayersWithNothingInsideTheLayerChangesNothing();

    void aSelectionLimitsTheFill();
    void aSelectionWithoutTheClickLeavesThePixels();
    void aSelectionElsewhereLeavesThePixels();
    void aHalfSelectedPixelIsHalfFilled();

    void opacityZeroLeavesThePixels();
    void halfOpacityMixes();
    void blendModesAreUsed();
    void antialiasingSoftensInsideTheBounds();
    void antialiasingLeavesAStraightEdgeOfTheBounds();
    void antialiasingLeavesTheSelectionsEdge();

    void aPatternStartsAtTheAreasTopLeft();
    void aPatternBesideTheLayerStartsAtTheCanvas();
    void aPatternIsOffsetByTheTargetUnderAllLayers();
    void withoutAPatternNothingIsPainted();

    void anExceptionComesBackAsAnError();
    void anythingElseThrownComesBackAsAnError();
    void aMissingTileComesBackAsAnError();
    void aMissingLayerComesBackAsAnError();
    void theJobWaitsForAWriter();
};

void TestFillJob::cleanup()
{
    FaultSeams::Reset();
}

void TestFillJob::aContiguousFillTakesWhatHangsTogether()
{
    FillDocument document(6, 3);
    document.AddLayer(Islands);
    FillJobData data = FillDocument::Click(0, 1, Qt::red);
    data.contiguous = true;
    QCOMPARE(Filled(document, data), QStringList({"rr..##", "rr..##", "......"}));
}

void TestFillJob::withoutContiguousAllSimilarPixelsAreFilled()
{
    FillDocument document(6, 3);
    document.AddLayer(Islands);
    QCOMPARE(Filled(document, FillDocument::Click(0, 1, Qt::red)),
             QStringList({"rr..rr", "rr..rr", "......"}));
}

void TestFillJob::theToleranceCountsForEachChannel()
{
    FillDocument document(3, 1);
    document.AddLayer({"###"});
    document->GetLayerImage(1)->SetColor(1, 0, LXRGBA32i(0xFF000014));
    document->GetLayerImage(1)->SetColor(2, 0, LXRGBA32i(0xFF150000));
    FillJobData data = FillDocument::Click(0, 0, Qt::red);
    data.tolerance = 20;
    QCOMPARE(Filled(document, data), QStringList({"rr?"}));
}

void TestFillJob::transparencyIsComparedUnlessIgnored()
{
    FillDocument document(3, 1);
    document.AddLayer({"#.#"});
    FillJobData data = FillDocument::Click(0, 0, Qt::red);
    QCOMPARE(Filled(document, data), QStringList({"r.r"}));

    FillDocument other(3, 1);
    other.AddLayer({"#.#"});
    data.ignoreTransparency = true;
    QCOMPARE(Filled(other, data), QStringList({"rrr"}));
}

void TestFillJob::theResultNamesItsTarget()
{
    FillDocument document(2, 2);
    document.AddLayer({"##", "##"});
    document.AddLayer({"ww", "ww"});
    FillJobData data = FillDocument::Click(0, 0, Qt::red);
    data.layerId = 2;
    const FillJobResult result = RunLayerFillJob(document, data);
    QCOMPARE(result.error, 0);
    QCOMPARE(result.layerId, 2u);
    QVERIFY(!result.isMask);
}

void TestFillJob::aClickThatFindsOnlyItselfIsOnePixel()
{
    FillDocument document(5, 4);
    document.AddLayer({".....", "..#..", ".....", "....."});
    const FillJobResult result = RunLayerFillJob(document, FillDocument::Click(2, 1, Qt::red));
    QCOMPARE(result.redoGeometry, QRect(2, 1, 1, 1));
    QCOMPARE(result.undoGeometry, QRect(0, 0, 5, 4));
    QCOMPARE(result.undoImage.Rect(), QRect(0, 0, 1, 1));
    QCOMPARE(result.redoImage.Rect(), QRect(0, 0, 1, 1));
    QCOMPARE(result.redoImage.GetColor(0, 0).value, quint32(0xFFFF0000));
    QCOMPARE(Filled(document, FillDocument::Click(2, 1, Qt::red)),
             QStringList({".....", "..r..", ".....", "....."}));
}

void TestFillJob::imagesAreCutToTheFilledArea()
{
    FillDocument document(300, 200);
    document->AddLayer("Layer", LXImage32(300, 200), {});
    for (int x = 140; x < 150; ++x) {
        document->GetLayerImage(1)->SetColor(x, 100, LXRGBA32i(0xFF000000));
    }
    const FillJobResult result = RunLayerFillJob(document, FillDocument::Click(145, 100, Qt::red));
    QCOMPARE(result.redoGeometry, QRect(140, 100, 10, 1));
    QCOMPARE(result.undoImage.Rect().size(), QSize(10, 1));
    QCOMPARE(result.redoImage.Rect().size(), QSize(10, 1));
}

void TestFillJob::aClickBesideTheLayerFillsTheEmptySpaceAndTheLayerGrows()
{
    FillDocument document(4, 3);
    document.AddLayer({"##"}, {1, 1});
    QCOMPARE(Filled(document, FillDocument::Click(0, 0, Qt::red)), QStringList({"rrrr", "r##r", "rrrr"}));
    QCOMPARE(document->GetLayerGeometry(1), QRect(0, 0, 4, 3));
}

void TestFillJob::anAreaBesideTheLayerHasNothingToUndo()
{
    FillDocument document(4, 1);
    document.AddLayer({"#"}, {3, 0});
    document.AddLayer({"g"}, {0, 0});
    FillJobData data = FillDocument::Click(2, 0, Qt::red);
    data.contiguous = true;
    const FillJobResult result = RunLayerFillJob(document, data);
    QCOMPARE(result.redoGeometry, QRect(1, 0, 3, 1));
    QVERIFY(result.undoImage.IsNull());
    QCOMPARE(Filled(document, data), QStringList({"grrr"}));
}

void TestFillJob::aLayerBeyondTheCanvasIsFilledInsideIt()
{
    FillDocument document(2, 1);
    document.AddLayer({"####"}, {-1, 0});
    QCOMPARE(Filled(document, FillDocument::Click(0, 0, Qt::red)), QStringList({"#rr#"}));
}

void TestFillJob::allLayersComparesThePictureAndPaintsTheLayersRectangleAlone()
{
    FillDocument document(4, 2);
    document.AddLayer({"wwww", "ww##"});
    document.AddLayer({"..", ".."}, {1, 0});
    FillJobData data = FillDocument::Click(0, 0, Qt::red);
    data.allLayers = true;
    // The lower layer's white is seen through the empty upper one, whose rectangle alone is painted.
    QCOMPARE(Filled(document, data), QStringList({"rr", "r."}));
    QCOMPARE(document->GetLayerGeometry(1), QRect(1, 0, 2, 2));
}

void TestFillJob::allLayersWithNothingInsideTheLayerChangesNothing()
{
    FillDocument document(4, 1);
    document.AddLayer({"ww##"});
    document.AddLayer({"."}, {3, 0});
    FillJobData data = FillDocument::Click(0, 0, Qt::red);
    data.allLayers = true;
    QCOMPARE(Filled(document, data), QStringList({"."}));
    QCOMPARE(document->GetLayerGeometry(1), QRect(3, 0, 1, 1));
}

void TestFillJob::aSelectionLimitsTheFill()
{
    FillDocument document(4, 2);
    document.AddLayer({"####", "####"});
    document.SetSelection({"##"}, {1, 0});
    QCOMPARE(Filled(document, FillDocument::Click(1, 0, Qt::red)), QStringList({"#rr#", "####"}));
}

void TestFillJob::aSelectionWithoutTheClickLeavesThePixels()
{
    FillDocument document(4, 1);
    document.AddLayer({"##ww"});
    document.SetSelection({"..##"});
    const QStringList before = document.Layer();
    QCOMPARE(Filled(document, FillDocument::Click(0, 0, Qt::red)), before);
}

void TestFillJob::aSelectionElsewhereLeavesThePixels()
{
    FillDocument document(4, 1);
    document.AddLayer({"##ww"});
    document.SetSelection({"##"}, {20, 20});
    QVERIFY(document->HasSelection());
    const FillJobResult result = RunLayerFillJob(document, FillDocument::Click(0, 0, Qt::red));
    QCOMPARE(result.error, 0);
    QVERIFY(result.redoGeometry.isEmpty());
    QCOMPARE(Filled(document, FillDocument::Click(0, 0, Qt::red)), QStringList({"##ww"}));
}

void TestFillJob::aHalfSelectedPixelIsHalfFilled()
{
    FillDocument document(2, 1);
    document.AddLayer({"##"});
    document.SetSelection({"#h"});
    Filled(document, FillDocument::Click(0, 0, Qt::white));
    QCOMPARE(document.LayerPixel(0, 0), QRgb(0xFFFFFFFF));
    QCOMPARE(document.LayerPixel(1, 0), QRgb(0xFF808080));
}

void TestFillJob::opacityZeroLeavesThePixels()
{
    FillDocument document(3, 1);
    document.AddLayer({"#.w"});
    FillJobData data = FillDocument::Click(0, 0, Qt::red);
    data.opacity = 0;
    QCOMPARE(Filled(document, data), QStringList({"#.w"}));
}

void TestFillJob::halfOpacityMixes()
{
    FillDocument document(1, 1);
    document.AddLayer({"#"});
    FillJobData data = FillDocument::Click(0, 0, Qt::white);
    data.opacity = 0.2;
    Filled(document, data);
    QCOMPARE(document.LayerPixel(0, 0), QRgb(0xFF333333));
}

void TestFillJob::blendModesAreUsed()
{
    FillDocument document(1, 1);
    document.AddLayer({"#"});
    document->GetLayerImage(1)->SetColor(0, 0, LXRGBA32i(0xFF64C832));
    FillJobData data = FillDocument::Click(0, 0, QColor(255, 0, 255));
    data.blendMode = 1; // Multiply
    Filled(document, data);
    QCOMPARE(document.LayerPixel(0, 0), QRgb(0xFF640032));
}

void TestFillJob::antialiasingSoftensInsideTheBounds()
{
    FillDocument document(5, 5);
    document.AddLayer({"#####", "#####", "##w##", "#####", "#####"});
    FillJobData data = FillDocument::Click(0, 0, Qt::red);
    data.antialiasing = true;
    Filled(document, data);
    // Only the middle of the kernel, 12 of 60, misses: 204 of 255 red over white.
    QCOMPARE(document.LayerPixel(2, 2), QRgb(0xFFFF3333));
    // 4 of 60 miss beside the hole: 238 of 255 red over black.
    QCOMPARE(document.LayerPixel(1, 1), QRgb(0xFFEE0000));
    QCOMPARE(document.LayerPixel(0, 2), QRgb(0xFFFB0000));
}

void TestFillJob::antialiasingLeavesAStraightEdgeOfTheBounds()
{
    FillDocument document(6, 4);
    document.AddLayer({"......", ".####.", ".####.", "......"});
    FillJobData data = FillDocument::Click(2, 2, Qt::red);
    data.antialiasing = true;
    QCOMPARE(Filled(document, data), QStringList({"......", ".rrrr.", ".rrrr.", "......"}));
}

void TestFillJob::antialiasingLeavesTheSelectionsEdge()
{
    FillDocument document(5, 1);
    document.AddLayer({"#####"});
    document.SetSelection({"##.##"});
    FillJobData data = FillDocument::Click(0, 0, Qt::red);
    data.antialiasing = true;
    QCOMPARE(Filled(document, data), QStringList({"rr#rr"}));
}

void TestFillJob::aPatternStartsAtTheAreasTopLeft()
{
    FillDocument document(5, 3);
    document.AddLayer({".....", ".###.", ".###."});
    FillJobData data = FillDocument::Click(2, 2, Qt::red);
    QImage pattern(2, 1, QImage::Format_ARGB32);
    pattern.setPixel(0, 0, 0xFFFF0000);
    pattern.setPixel(1, 0, 0xFF0000FF);
    data.brush = QBrush(pattern);
    QCOMPARE(Filled(document, data), QStringList({".....", ".rbr.", ".rbr."}));
}

void TestFillJob::aPatternBesideTheLayerStartsAtTheCanvas()
{
    FillDocument document(4, 1);
    document.AddLayer({"#"});
    FillJobData data = FillDocument::Click(1, 0, Qt::red);
    QImage pattern(2, 1, QImage::Format_ARGB32);
    pattern.setPixel(0, 0, 0xFFFF0000);
    pattern.setPixel(1, 0, 0xFF0000FF);
    data.brush = QBrush(pattern);
    QCOMPARE(Filled(document, data), QStringList({"#brb"}));
}

void TestFillJob::aPatternIsOffsetByTheTargetUnderAllLayers()
{
    FillDocument document(4, 1);
    document.AddLayer({"wwww"});
    document.AddLayer({"..."}, {1, 0});
    FillJobData data = FillDocument::Click(0, 0, Qt::red);
    data.allLayers = true;
    QImage pattern(2, 1, QImage::Format_ARGB32);
    pattern.setPixel(0, 0, 0xFFFF0000);
    pattern.setPixel(1, 0, 0xFF0000FF);
    data.brush = QBrush(pattern);
    QCOMPARE(Filled(document, data), QStringList({"rbr"}));
}

void TestFillJob::withoutAPatternNothingIsPainted()
{
    FillDocument document(2, 1);
    document.AddLayer({"##"});
    FillJobData data = FillDocument::Click(0, 0, Qt::red);
    data.brush = QBrush();
    QCOMPARE(Filled(document, data), QStringList({"##"}));
}

void TestFillJob::anExceptionComesBackAsAnError()
{
    FillDocument document(2, 1);
    document.AddLayer({"##"});
    FaultSeams::FailNth(FaultSeams::Seam::FloodFill, 1);
    QTest::ignoreMessage(QtDebugMsg,
                         QRegularExpression("^Build date=.*, time=.*\\. Unexpected exception: line=1416, "
                                            "file=\"src/fillcan/FillCan_p\"\\. Exception content:\".+\"$"));
    const FillJobResult result = RunLayerFillJob(document, FillDocument::Click(0, 0, Qt::red));
    QVERIFY(result.error != 0);
    QVERIFY(result.undoImage.IsNull());
    QVERIFY(result.redoImage.IsNull());
    QCOMPARE(result.layerId, 1u);
}

void TestFillJob::anythingElseThrownComesBackAsAnError()
{
    FillDocument document(2, 1);
    document.AddLayer({"##"});
    FaultSeams::FailNth(FaultSeams::Seam::StrangeTileAllocation, 2);
    QTest::ignoreMessage(QtDebugMsg,
                         QRegularExpression("^Build date=.*, time=.*\\. Unexpected unknown exception: "
                                            "line=1421, file=\"src/fillcan/FillCan_p\"$"));
    const FillJobResult result = RunLayerFillJob(document, FillDocument::Click(0, 0, Qt::red));
    QVERIFY(result.error != 0);
    QVERIFY(result.undoImage.IsNull());
    QVERIFY(result.redoImage.IsNull());
}

void TestFillJob::aMissingTileComesBackAsAnError()
{
    FillDocument document(2, 1);
    document.AddLayer({"##"});
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 2);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("line=1416.*bad.?alloc"));
    QVERIFY(RunLayerFillJob(document, FillDocument::Click(0, 0, Qt::red)).error != 0);
}

void TestFillJob::aMissingLayerComesBackAsAnError()
{
    FillDocument document(2, 1);
    document.AddLayer({"##"});
    FillJobData data = FillDocument::Click(0, 0, Qt::red);
    data.layerId = 7;
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("line=1416"));
    QVERIFY(RunLayerFillJob(document, data).error != 0);
}

void TestFillJob::theJobWaitsForAWriter()
{
    FillDocument document(2, 1);
    document.AddLayer({"##"});
    std::future<FillJobResult> job;
    {
        const LXDocumentLayerLockerForWrite locker(document, 1);
        job = std::async(std::launch::async, RunLayerFillJob, static_cast<LXDocumentInterface*>(document),
                         FillDocument::Click(0, 0, Qt::red));
        QCOMPARE(job.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
        document->GetLayerImage(1)->SetColor(1, 0, LXRGBA32i(0xFFFFFFFF));
    }
    QCOMPARE(job.get().redoGeometry, QRect(0, 0, 1, 1));
}

ZK_REGISTER_TEST(tst_filljob, TestFillJob)

#include "tst_filljob.moc"
