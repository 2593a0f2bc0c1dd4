#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "document/LXDocumentModel.h"
#include "document/LayerKind.h"
#include "document/LayerLocks.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QSignalSpy>
#include <QTest>

#include <thread>

using namespace DocumentFixture;

class TestDocument : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void theDocumentLockHasOneHolder();
    void theDocumentLockCanBeMadeToFail();
    void theStateIsToldWhenItChanges();
    void aNewDocumentIsEmpty();
    void sizesBeyondTheLimitAreIgnored();
    void layersAreNamedByRowPlusOneFromTheTop();
    void badIdsAnswerNothing();
    void idZeroIsTheCanvas();
    void aLayerMovesWithItsSignals();
    void aMaskMovesWithItsSignals();
    void aLayersImageIsReplacedInOneStep();
    void aLayersNewSizeIsKnownOnceTheWriterIsBack();
    void aMaskStartsWithItsDefault();
    void removingTheSelectedMaskSelectsTheLayer();
    void removingALayerAsksForItsFloatingPieceFirst();
    void endLayerChangeTellsOfLayerAndMask();
    void aChangeOfPixelsIsToldWhereTheLayerLies();
    void changesOutsideTheCanvasAreNotTold();
    void updateDocumentRectWithoutARectangleMeansAll();
    void nameAndResolution();
    void aWorkersChangeIsToldOnTheMainThread();
};

void TestDocument::theDocumentLockHasOneHolder()
{
    const OwnedDocument document = Make(QSize(10, 10));
    SignalLog log(document.get());
    QVERIFY(!document->Unlock());
    QVERIFY(document->Lock());
    QVERIFY(document->GetLockState());
    QVERIFY(!document->Lock());
    QVERIFY(document->Unlock());
    QVERIFY(!document->GetLockState());
    QCOMPARE(log.Take(), QStringList({"Locked", "Unlocked"}));
}

void TestDocument::theDocumentLockCanBeMadeToFail()
{
    const OwnedDocument document = Make(QSize(10, 10));
    FaultSeams::FailNth(FaultSeams::Seam::DocumentLock, 1);
    QVERIFY(!document->Lock());
    QVERIFY(!document->GetLockState());
    QVERIFY(document->Lock());
    FaultSeams::FailNth(FaultSeams::Seam::DocumentUnlock, 1);
    QVERIFY(!document->Unlock());
    QVERIFY(document->GetLockState());
    QVERIFY(document->Unlock());
}

void TestDocument::theStateIsToldWhenItChanges()
{
    const OwnedDocument document = Make(QSize(10, 10));
    SignalLog log(document.get());
    QCOMPARE(document->GetDocumentState(), 0);
    document->SetDocumentState(2);
    document->SetDocumentState(2);
    QCOMPARE(document->GetDocumentState(), 2);
    QCOMPARE(log.Take(), QStringList({"DocumentStateChanged 2"}));
}

void TestDocument::aNewDocumentIsEmpty()
{
    const OwnedDocument document(LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32));
    QCOMPARE(document->GetModel()->rowCount(), 0);
    QCOMPARE(document->GetDocumentSize(), QSize(0, 0));
    QVERIFY(!document->HasSelection());
    QVERIFY(document->GetLayerImage(0)->IsNull());
    QCOMPARE(document->GetModel()->GetDocument(), document.get());
}

void TestDocument::sizesBeyondTheLimitAreIgnored()
{
    const OwnedDocument document = Make(QSize(10, 20));
    document->SetDocumentSize(QSize(0, 5));
    document->SetDocumentSize(QSize(LXDocumentInterface::MAX_DOC_DIMENSION + 1, 5));
    QCOMPARE(document->GetDocumentSize(), QSize(10, 20));
    SignalLog log(document.get());
    document->SetDocumentSize(QSize(30, 40));
    QCOMPARE(log.Take(), QStringList({"DocumentSizeChanged 30x40", "CompositionChanged (0,0 30x40)"}));
    QVERIFY_EXCEPTION_THROWN(document->SetDocumentSize(QSize(300000, 300000)), std::bad_alloc);
    QCOMPARE(document->GetDocumentSize(), QSize(30, 40));
}

void TestDocument::layersAreNamedByRowPlusOneFromTheTop()
{
    const OwnedDocument document = Make(QSize(10, 10));
    QCOMPARE(document->AddLayer("bottom", Filled(QSize(3, 4), 0xFF000000), QPoint(1, 2)), 1u);
    QCOMPARE(document->AddLayer("top", LXImage32(5, 6), QPoint()), 1u);
    QCOMPARE(document->AddLayer("lowest", LXImage32(7, 8), QPoint(), 99), 3u);
    QCOMPARE(document->GetModel()->GetName(0), QString("top"));
    QCOMPARE(document->GetModel()->GetName(2), QString("lowest"));
    QCOMPARE(document->GetLayerGeometry(2), QRect(1, 2, 3, 4));
    QCOMPARE(document->GetLayerImage(3)->Width(), 7);
    document->RemoveLayer(1);
    QCOMPARE(document->GetLayerGeometry(1), QRect(1, 2, 3, 4));
}

void TestDocument::badIdsAnswerNothing()
{
    const OwnedDocument document = Make(QSize(10, 10));
    document->AddLayer("layer", LXImage32(5, 6), QPoint());
    SignalLog log(document.get());
    for (const unsigned int id : {2u, ~0u}) {
        QVERIFY(!document->GetLayerImage(id));
        QVERIFY(!document->GetMaskImage(id));
        QCOMPARE(document->GetLayerGeometry(id), QRect());
        QCOMPARE(document->GetMaskGeometry(id), QRect());
        QCOMPARE(document->GetLayerKind(id), -1);
        QCOMPARE(document->GetLayerLockFlags(id), 0u);
        document->SetLayerOffset(id, QPoint(1, 1));
        document->SetMaskOffset(id, QPoint(1, 1));
        document->SetLayerImage(id, LXImage32(1, 1), QPoint());
        document->SetMaskImage(id, LXImage32(1, 1), QPoint());
        document->AddMask(id, true);
        document->RemoveMask(id);
        document->RemoveLayer(id);
        document->EndLayerChange(id);
        document->LayerImageChanged(id, QRect());
    }
    QCOMPARE(log.Take(), QStringList());
    QVERIFY(!document->GetMaskImage(1));
    document->SetMaskImage(1, LXImage32(1, 1), QPoint());
    QVERIFY2(!document->GetMaskImage(1), "an image makes no mask");
}

void TestDocument::idZeroIsTheCanvas()
{
    const OwnedDocument document = Make(QSize(12, 34));
    QCOMPARE(document->GetLayerGeometry(0), QRect(0, 0, 12, 34));
    QCOMPARE(document->GetMaskGeometry(0), QRect(0, 0, 12, 34));
    QCOMPARE(document->GetMaskImage(0), document->GetLayerImage(0));
    QCOMPARE(document->GetLayerKind(0), LayerKind::Raster);
    QCOMPARE(document->GetLayerLockFlags(0), 0u);
}

void TestDocument::aLayerMovesWithItsSignals()
{
    const OwnedDocument document = Make(QSize(100, 100));
    document->AddLayer("layer", LXImage32(10, 10), QPoint(20, 20));
    SignalLog log(document.get());
    document->SetLayerOffset(1, QPoint(50, 25));
    QCOMPARE(log.Take(), QStringList({"LayerPositionChanged 1 (50,25)", "CompositionChanged (20,20 40x15)"}));
    QCOMPARE(document->GetModel()->GetLayerOffset(0), QPoint(50, 25));
    document->SetLayerOffset(1, QPoint(50, 25));
    QCOMPARE(log.Take(), QStringList());
}

void TestDocument::aMaskMovesWithItsSignals()
{
    const OwnedDocument document = Make(QSize(100, 100));
    document->AddLayer("layer", LXImage32(10, 10), QPoint(0, 0));
    document->AddMask(1, true);
    document->SetMaskImage(1, LXImage32(5, 5), QPoint(2, 2));
    SignalLog log(document.get());
    document->SetMaskOffset(1, QPoint(8, 3));
    QCOMPARE(log.Take(), QStringList({"MaskPositionChanged 1 (8,3)", "CompositionChanged (2,2 8x6)"}));
    QCOMPARE(document->GetModel()->GetMaskOffset(0), QPoint(8, 3));
    QCOMPARE(document->GetMaskGeometry(1), QRect(8, 3, 5, 5));
}

void TestDocument::aLayersImageIsReplacedInOneStep()
{
    const OwnedDocument document = Make(QSize(100, 100));
    document->AddLayer("layer", LXImage32(10, 10), QPoint(0, 0));
    SignalLog log(document.get());
    document->SetLayerImage(1, Filled(QSize(20, 5), 0xFF112233), QPoint(30, 0));
    QCOMPARE(log.Take(), QStringList({"LayerPositionChanged 1 (30,0)", "LayerDataChanged 1",
                                      "CompositionChanged (0,0 50x10)"}));
    QCOMPARE(document->GetLayerGeometry(1), QRect(30, 0, 20, 5));
}

void TestDocument::aLayersNewSizeIsKnownOnceTheWriterIsBack()
{
    const OwnedDocument document = Make(QSize(100, 100));
    document->AddLayer("layer", LXImage32(10, 10), QPoint(3, 3));
    document->AddMask(1, true);
    {
        const LXDocumentLayerLockerForWrite locker(document.get(), 1);
        *document->GetLayerImage(1) = LXImage32(40, 50);
        *document->GetMaskImage(1) = LXImage32(7, 8);
    }
    QCOMPARE(document->GetLayerGeometry(1), QRect(3, 3, 40, 50));
    QCOMPARE(document->GetMaskGeometry(1), QRect(0, 0, 7, 8));
}

void TestDocument::aMaskStartsWithItsDefault()
{
    const OwnedDocument document = Make(QSize(20, 30));
    document->AddLayer("layer", LXImage32(10, 10), QPoint());
    bool reveals = false;
    for (const bool expected : {true, false}) {
        document->AddMask(1, expected);
        document->GetMaskInverted(1, &reveals);
        QCOMPARE(reveals, expected);
        QCOMPARE(document->GetMaskGeometry(1), QRect(0, 0, 20, 30));
        QCOMPARE(document->GetMaskImage(1)->GetColor(19, 29).value, expected ? 0xFF000000u : 0u);
    }
    document->RemoveMask(1);
    QVERIFY(!document->GetMaskImage(1));
    QCOMPARE(document->GetMaskGeometry(1), QRect());
    document->GetMaskInverted(1, &reveals);
    QVERIFY(reveals);
}

void TestDocument::removingTheSelectedMaskSelectsTheLayer()
{
    const OwnedDocument document = Make(QSize(20, 30));
    LXDocumentModel* model = document->GetModel();
    document->AddLayer("layer", LXImage32(10, 10), QPoint());
    model->SetMaskSelected(0, true);
    QVERIFY2(!model->GetMaskSelected(0), "there is no mask to select");
    document->AddMask(1, true);
    SignalLog log(document.get());
    model->SetMaskSelected(0, true);
    QVERIFY(model->GetMaskSelected(0));
    QVERIFY(!model->GetLayerSelected(0));
    QCOMPARE(log.Take(), QStringList({"MaskSelectedChanged 1", "LayerSelectedChanged 0"}));
    document->RemoveMask(1);
    QVERIFY(model->GetLayerSelected(0));
    QCOMPARE(log.Take(),
             QStringList({"AboutRequesAdditionalMask 1", "MaskSelectedChanged 0", "LayerSelectedChanged 1",
                          "LayerMaskChanged 1", "CompositionChanged (0,0 10x10)"}));
}

void TestDocument::removingALayerAsksForItsFloatingPieceFirst()
{
    const OwnedDocument document = Make(QSize(20, 30));
    document->AddLayer("layer", LXImage32(10, 10), QPoint());
    SignalLog log(document.get());
    document->RemoveLayer(1);
    QCOMPARE(log.Take(), QStringList({"AboutRequesAdditionalLayer 1", "AboutRequesAdditionalMask 1",
                                      "rowsRemoved 0", "CompositionChanged (0,0 10x10)"}));
}

void TestDocument::endLayerChangeTellsOfLayerAndMask()
{
    const OwnedDocument document = Make(QSize(20, 30));
    document->AddLayer("layer", LXImage32(10, 10), QPoint());
    SignalLog log(document.get());
    QSignalSpy forwarded(document.get(), &LXDocumentInterface::LayerDataChanged);
    document->EndLayerChange(1);
    QCOMPARE(log.Take(), QStringList({"LayerDataChanged 1"}));
    QCOMPARE(forwarded.count(), 1);
    document->AddMask(1, true);
    log.Take();
    document->EndLayerChange(1);
    QCOMPARE(log.Take(), QStringList({"LayerDataChanged 1", "LayerMaskChanged 1"}));
}

void TestDocument::aChangeOfPixelsIsToldWhereTheLayerLies()
{
    const OwnedDocument document = Make(QSize(100, 100));
    document->AddLayer("layer", LXImage32(10, 10), QPoint(20, 20));
    SignalLog log(document.get());
    document->LayerImageChanged(1, QRect(0, 0, 25, 25));
    document->LayerImageChanged(1, QRect());
    QCOMPARE(log.Take(), QStringList({"CompositionChanged (20,20 5x5)", "CompositionChanged (20,20 10x10)"}));
}

void TestDocument::changesOutsideTheCanvasAreNotTold()
{
    const OwnedDocument document = Make(QSize(20, 20));
    document->AddLayer("layer", LXImage32(10, 10), QPoint(-10, 0));
    SignalLog log(document.get());
    document->LayerImageChanged(1, QRect());
    document->UpdateDocumentRect(QRect(20, 0, 5, 5));
    QCOMPARE(log.Take(), QStringList());
}

void TestDocument::updateDocumentRectWithoutARectangleMeansAll()
{
    const OwnedDocument document = Make(QSize(20, 20));
    SignalLog log(document.get());
    document->UpdateDocumentRect(QRect());
    document->UpdateDocumentRect(QRect().translated(5, 5));
    document->UpdateDocumentRect(QRect(-5, -5, 10, 10));
    QCOMPARE(log.Take(), QStringList({"CompositionChanged (0,0 20x20)", "CompositionChanged (0,0 20x20)",
                                      "CompositionChanged (0,0 5x5)"}));
}

void TestDocument::nameAndResolution()
{
    const OwnedDocument document = Make(QSize(20, 20));
    SignalLog log(document.get());
    document->SetDocumentName("Picture");
    document->SetDocumentName("Picture");
    QCOMPARE(document->GetDocumentName(), QString("Picture"));
    QCOMPARE(log.Take(), QStringList({"DocumentNameChanged Picture"}));
    QCOMPARE(document->GetDPI(), 72.0);
    document->SetDPI(300.0);
    document->SetDPI(0.0);
    QCOMPARE(document->GetDPI(), 300.0);
    document->SetICCProfile(ZKCMSProfile(QByteArray("icc")));
    QCOMPARE(document->GetICCProfile(), ZKCMSProfile(QByteArray("icc")));
}

void TestDocument::aWorkersChangeIsToldOnTheMainThread()
{
    const OwnedDocument document = Make(QSize(20, 20));
    document->AddLayer("layer", LXImage32(10, 10), QPoint());
    SignalLog log(document.get());
    std::thread worker([&] {
        document->SetLayerOffset(1, QPoint(5, 5));
        document->SetSelectionMask(Filled(QSize(4, 4), 0xFF000000), QPoint());
    });
    worker.join();
    QCOMPARE(log.Take(), QStringList());
    QCoreApplication::processEvents();
    QCOMPARE(log.Take(), QStringList({"LayerPositionChanged 1 (5,5)", "CompositionChanged (0,0 15x15)",
                                      "SelectionChanged"}));
}

ZK_REGISTER_TEST(tst_document, TestDocument)
#include "tst_document.moc"
