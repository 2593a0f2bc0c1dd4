#include "document/LXDocumentInterface.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "document/LXDocumentModel.h"
#include "document/MergedPartReader.h"
#include "image/LXTileManager.h"
#include "image/TileThreads.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QTest>

#include <atomic>

using namespace DocumentFixture;

namespace {
/// The slow twin: lays every layer and its coverage out over the whole canvas and blends them one after the
/// other, without a cache, without tiles.
LXImage32 Twin(LXDocumentInterface* document)
{
    const QSize canvas = document->GetDocumentSize();
    LXImage32 result(canvas.width(), canvas.height());
    const LXDocumentModel* model = document->GetModel();
    for (int row = model->rowCount() - 1; row >= 0; --row) {
        if (!model->GetVisible(row)) continue;
        const auto id = static_cast<unsigned int>(row) + 1;
        const LXDocumentLayerLockerForRead locker(document, id);

        LXImage32 picture(canvas.width(), canvas.height());
        const LXImage32& image = *document->GetLayerImage(id);
        BlendOn(image, image.Rect(), BlendMode::Source, picture, document->GetLayerGeometry(id), 1.0, false);
        if (const LXImage32* overlay = document->GetAdditionalLayerImage(id)) {
            BlendOn(*overlay, overlay->Rect(), BlendMode::Normal, picture,
                    document->GetAdditionalLayerGeometry(id), 1.0, false);
        }

        bool reveals = true;
        document->GetMaskInverted(id, &reveals);
        LXImage32 coverage = Filled(canvas, reveals ? 0xFF000000 : 0);
        if (model->HasMask(row)) {
            const LXImage32& mask = *document->GetMaskImage(id);
            BlendOn(mask, mask.Rect(), BlendMode::Source, coverage, document->GetMaskGeometry(id), 1.0,
                    false);
        }
        if (const LXImage32* overlay = document->GetAdditionalMaskImage(id)) {
            BlendOn(*overlay, overlay->Rect(), BlendMode::GrayToMask, coverage,
                    document->GetAdditionalMaskGeometry(id), 1.0, false);
        }
        BlendMaskOn(picture, picture.Rect(), model->GetBlendMode(row), result, result.Rect(),
                    model->GetOpacity(row), coverage, coverage.Rect(), false, false);
    }
    return result;
}

LXImage32 Merged(LXDocumentInterface* document)
{
    const LXDocumentLayerLockerForRead locker(document, 0);
    return *document->GetLayerImage(0);
}

quint64 ComposedTiles(LXDocumentInterface* document)
{
    return LXDocumentInterfacePrivate::Get(document)->merged.ComposedTiles();
}

bool SharesTile(LXDocumentInterface* document, unsigned int id, int column, int row)
{
    const LXDocumentLayerLockerForRead merged(document, 0);
    const LXDocumentLayerLockerForRead locker(document, id);
    return document->GetLayerImage(0)->TileAt(column, row) ==
           document->GetLayerImage(id)->TileAt(column, row);
}

unsigned int PickMode(Random& random)
{
    const int mode = Pick(random, 10, 23);
    return mode < 12 ? BlendMode::Normal : static_cast<unsigned int>(mode);
}

void AddRandomLayer(Random& random, LXDocumentInterface* document)
{
    const QRect canvas = document->GetLayerGeometry(0);
    // Some layers lie as the canvas does, some of them opaque: those are shared instead of blended.
    const bool isFull = Pick(random, 0, 2) == 0;
    const QRect rect = isFull ? canvas : PickRect(random, canvas, 100);
    const LXImage32 image = Pick(random, 0, 2) == 0
                                ? Filled(rect.size(), 0xFF000000 | static_cast<quint32>(random()))
                                : Noise(random, rect.size());
    document->AddLayer("layer", image, rect.topLeft(), Pick(random, 0, document->GetModel()->rowCount()));
}

void FloatSomething(Random& random, LXDocumentInterface* document, unsigned int id)
{
    const QRect place = PickRect(random, document->GetLayerGeometry(0), 50);
    document->CreateAdditionalLayer(id);
    *document->GetAdditionalLayerImage(id) = Noise(random, place.size());
    document->SetAdditionalLayerPosition(id, place.topLeft());
    document->ShowAdditionalLayer(id);
}

void FloatSomethingOnMask(Random& random, LXDocumentInterface* document, unsigned int id)
{
    if (!document->GetMaskImage(id)) return;
    const QRect place = PickRect(random, document->GetLayerGeometry(0), 50);
    document->CreateAdditionalMask(id);
    *document->GetAdditionalMaskImage(id) = Noise(random, place.size());
    document->SetAdditionalMaskPosition(id, place.topLeft());
    document->ShowAdditionalMask(id);
}

/// One change of the kinds that a person makes.
void ChangeSomething(Random& random, LXDocumentInterface* document)
{
    LXDocumentModel* model = document->GetModel();
    const int row = Pick(random, 0, model->rowCount() - 1);
    const auto id = static_cast<unsigned int>(row) + 1;
    const QRect canvas = document->GetLayerGeometry(0);
    const QPoint offset = PickRect(random, canvas, 50).topLeft();
    switch (Pick(random, 0, 18)) {
    case 0: return AddRandomLayer(random, document), void();
    case 1: return model->rowCount() > 1 ? document->RemoveLayer(id) : void();
    case 2: return model->MoveLayer(row, Pick(random, 0, model->rowCount() - 1));
    case 3: return model->SetOpacity(row, Pick(random, 0, 10) / 10.0);
    case 4: return model->SetBlendMode(row, PickMode(random));
    case 5: return model->SetVisible(row, !model->GetVisible(row));
    case 6: return document->AddMask(id, Pick(random, 0, 1) == 0);
    case 7: return document->RemoveMask(id);
    case 8: return document->SetMaskImage(id, MaskNoise(random, PickRect(random, canvas, 20).size()), offset);
    case 9: return document->SetLayerOffset(id, offset);
    case 10: return document->SetMaskOffset(id, offset);
    case 11: return document->SetLayerImage(id, Noise(random, PickRect(random, canvas, 20).size()), offset);
    case 12: return FloatSomething(random, document, id);
    case 13: return FloatSomethingOnMask(random, document, id);
    case 14: return document->SetAdditionalLayerPosition(id, offset);
    case 15: return document->SetAdditionalMaskPosition(id, offset);
    case 16: return document->RemoveAdditionalLayer(id);
    case 17: return document->RemoveAdditionalMask(id);
    default: break;
    }
    // Painting in place, told by its rectangle.
    const QRect layer = document->GetLayerGeometry(id);
    const QRect part = PickRect(random, layer, 0);
    {
        const LXDocumentLayerLockerForWrite locker(document, id);
        const LXImage32 paint = Noise(random, part.size());
        BlendOn(paint, paint.Rect(), BlendMode::Source, *document->GetLayerImage(id),
                part.translated(-layer.topLeft()), 1.0, false);
    }
    document->LayerImageChanged(id, part);
}
} // namespace

class TestMergedPicture : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void aDocumentWithoutLayersIsTransparent();
    void layersLieFromTheLastRowUp();
    void equalsTheTwinThroughRandomChanges_data();
    void equalsTheTwinThroughRandomChanges();
    void nothingIsComposedBeforeSomebodyLooks();
    void onlyDirtyTilesAreComposedAgain();
    void onlyThePartThatIsReadIsComposed();
    void onlyTheTileOfOnePixelIsComposed();
    void aLoneOpaqueLayerSharesItsTiles();
    void theHighestOpaqueTileHidesWhatLiesBelow();
    void aTileIsSharedOnlyWhenItLiesAsTheCanvasDoes();
    void paintingOnASharedTileLeavesTheOldPictureAlone();
    void whatCouldNotBeComposedStaysDirty();
    void whatWasCancelledStaysDirty();
    void aReaderKeepsItsPictureWhileItLooksAgain();
};

void TestMergedPicture::aDocumentWithoutLayersIsTransparent()
{
    const OwnedDocument document = Make(QSize(130, 20));
    QVERIFY(AreEqual(Merged(document.get()), LXImage32(130, 20)));
}

void TestMergedPicture::layersLieFromTheLastRowUp()
{
    const OwnedDocument document = Make(QSize(4, 4));
    document->AddLayer("red", Filled(QSize(4, 4), 0xFFFF0000), QPoint());
    document->AddLayer("blue", Filled(QSize(2, 4), 0xFF0000FF), QPoint());
    QCOMPARE(Merged(document.get()).GetColor(0, 0).value, 0xFF0000FFu);
    QCOMPARE(Merged(document.get()).GetColor(3, 0).value, 0xFFFF0000u);
    document->GetModel()->MoveLayer(0, 1);
    QCOMPARE(Merged(document.get()).GetColor(0, 0).value, 0xFFFF0000u);
}

void TestMergedPicture::equalsTheTwinThroughRandomChanges_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("less than a tile") << QSize(60, 50);
    QTest::newRow("exactly two tiles") << QSize(256, 128);
    QTest::newRow("ends inside tiles") << QSize(300, 200);
}

void TestMergedPicture::equalsTheTwinThroughRandomChanges()
{
    QFETCH(QSize, size);
    Random random(20240501);
    const OwnedDocument document = Make(size);
    for (int i = 0; i < 3; ++i) {
        AddRandomLayer(random, document.get());
    }
    for (int step = 0; step < 120; ++step) {
        // Several changes may gather before somebody looks.
        for (int change = Pick(random, 1, 3); change > 0; --change) {
            ChangeSomething(random, document.get());
        }
        const bool isEqual = AreEqual(Merged(document.get()), Twin(document.get()));
        QVERIFY2(isEqual,
                 qPrintable(QString("step %1\n%2").arg(step).arg(Describe(document.get()).join('\n'))));
    }
}

void TestMergedPicture::nothingIsComposedBeforeSomebodyLooks()
{
    const OwnedDocument document = Make(QSize(512, 512));
    document->AddLayer("layer", Filled(QSize(512, 512), 0xFF445566), QPoint());
    QCOMPARE(ComposedTiles(document.get()), quint64(0));
    Merged(document.get());
    QCOMPARE(ComposedTiles(document.get()), quint64(16));
    Merged(document.get());
    QCOMPARE(ComposedTiles(document.get()), quint64(16));
}

void TestMergedPicture::onlyDirtyTilesAreComposedAgain()
{
    const OwnedDocument document = Make(QSize(512, 512));
    document->AddLayer("layer", Filled(QSize(512, 512), 0x80445566), QPoint());
    Merged(document.get());
    const quint64 before = ComposedTiles(document.get());
    document->LayerImageChanged(1, QRect(127, 10, 2, 2));
    document->LayerImageChanged(1, QRect(128, 10, 2, 2));
    Merged(document.get());
    QCOMPARE(ComposedTiles(document.get()) - before, quint64(2));
}

void TestMergedPicture::onlyThePartThatIsReadIsComposed()
{
    const OwnedDocument document = Make(QSize(512, 512));
    document->AddLayer("layer", Filled(QSize(512, 512), 0xFF445566), QPoint());
    {
        const MergedPartReader reader(document.get(), QRect(130, 10, 126, 120));
        QCOMPARE(document->GetLayerImage(0)->GetColor(130, 10).value, 0xFF445566u);
        QCOMPARE(document->GetLayerImage(0)->GetColor(255, 129).value, 0xFF445566u);
    }
    QCOMPARE(ComposedTiles(document.get()), quint64(2));
    {
        const MergedPartReader nothing(document.get(), QRect());
        const MergedPartReader again(document.get(), QRect(130, 10, 1, 1));
    }
    QCOMPARE(ComposedTiles(document.get()), quint64(2));
    // The rest is still to be done.
    QVERIFY(AreEqual(Merged(document.get()), Twin(document.get())));
    QCOMPARE(ComposedTiles(document.get()), quint64(16));
}

void TestMergedPicture::onlyTheTileOfOnePixelIsComposed()
{
    const OwnedDocument document = Make(QSize(512, 512));
    document->AddLayer("layer", Filled(QSize(512, 512), 0xFF445566), QPoint());
    QColor color;
    QVERIFY(document->GetPixel(0, QPoint(511, 130), &color));
    QCOMPARE(color.rgba(), 0xFF445566u);
    QCOMPARE(ComposedTiles(document.get()), quint64(1));
    for (const QPoint& outside : {QPoint(-1, 0), QPoint(512, 130), QPoint(0, 9999)})
        QVERIFY(!document->GetPixel(0, outside, &color));
    QCOMPARE(ComposedTiles(document.get()), quint64(1));
}

void TestMergedPicture::aLoneOpaqueLayerSharesItsTiles()
{
    const int tilesBefore = LXTileManager::Instance().LiveTileCount();
    const OwnedDocument document = Make(QSize(300, 200));
    Random random(1);
    LXImage32 image = Noise(random, QSize(300, 200));
    for (int y = 0; y < 200; ++y) {
        for (int x = 0; x < 300; ++x) {
            image.SetColor(x, y, LXRGBA32i(image.GetColor(x, y).value | 0xFF000000));
        }
    }
    document->AddLayer("layer", image, QPoint());
    QVERIFY(AreEqual(Merged(document.get()), image));
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 3; ++column) {
            QVERIFY(SharesTile(document.get(), 1, column, row));
        }
    }
    // The image's six tiles, the blank one of the picture and nothing else.
    QCOMPARE(LXTileManager::Instance().LiveTileCount() - tilesBefore, 7);
}

void TestMergedPicture::theHighestOpaqueTileHidesWhatLiesBelow()
{
    const OwnedDocument document = Make(QSize(256, 128));
    document->AddLayer("below", Filled(QSize(256, 128), 0x80FF0000), QPoint());
    document->AddLayer("opaque", Filled(QSize(256, 128), 0xFF00FF00), QPoint());
    document->AddLayer("above", Filled(QSize(10, 10), 0x800000FF), QPoint(130, 5));
    QVERIFY(SharesTile(document.get(), 2, 0, 0));
    QVERIFY(!SharesTile(document.get(), 2, 1, 0));
    QVERIFY(AreEqual(Merged(document.get()), Twin(document.get())));
}

void TestMergedPicture::aTileIsSharedOnlyWhenItLiesAsTheCanvasDoes()
{
    const OwnedDocument document = Make(QSize(256, 128));
    LXImage32 drawing = Filled(QSize(300, 200), 0xFF00FF00);
    for (int x = 5; x < 300; x += 20) {
        drawing.SetColor(x, 50, LXRGBA32i(0xFF0000FF));
    }
    document->AddLayer("shifted", drawing, QPoint(-1, 0));
    QVERIFY(!SharesTile(document.get(), 1, 0, 0));
    // What is of one color lies everywhere as it does at home.
    document->SetLayerImage(1, Filled(QSize(300, 200), 0xFF00FF00), QPoint(-1, 0));
    QVERIFY(SharesTile(document.get(), 1, 0, 0));
    document->SetLayerImage(1, drawing, QPoint(-1, 0));
    QVERIFY(!SharesTile(document.get(), 1, 0, 0));
    document->SetLayerOffset(1, QPoint(-128, -128));
    document->SetLayerImage(1, Filled(QSize(400, 300), 0xFF00FF00), QPoint(-128, -128));
    const LXDocumentLayerLockerForRead merged(document.get(), 0);
    QVERIFY(document->GetLayerImage(0)->TileAt(0, 0) == document->GetLayerImage(1)->TileAt(1, 1));
}

void TestMergedPicture::paintingOnASharedTileLeavesTheOldPictureAlone()
{
    const OwnedDocument document = Make(QSize(128, 128));
    document->AddLayer("layer", Filled(QSize(128, 128), 0xFF00FF00), QPoint());
    const LXImage32 before = Merged(document.get());
    {
        const LXDocumentLayerLockerForWrite locker(document.get(), 1);
        document->GetLayerImage(1)->SetColor(5, 5, LXRGBA32i(0xFFFFFFFF));
    }
    document->LayerImageChanged(1, QRect(5, 5, 1, 1));
    QCOMPARE(before.GetColor(5, 5).value, 0xFF00FF00u);
    QCOMPARE(Merged(document.get()).GetColor(5, 5).value, 0xFFFFFFFFu);
}

void TestMergedPicture::whatCouldNotBeComposedStaysDirty()
{
    const OwnedDocument document = Make(QSize(256, 256));
    document->AddLayer("layer", Filled(QSize(256, 256), 0x8000FF00), QPoint());
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 3);
    QVERIFY_EXCEPTION_THROWN(Merged(document.get()), std::bad_alloc);
    QVERIFY(AreEqual(Merged(document.get()), Twin(document.get())));
}

void TestMergedPicture::whatWasCancelledStaysDirty()
{
    const OwnedDocument document = Make(QSize(640, 640));
    document->AddLayer("layer", Filled(QSize(630, 620), 0x8000FF00), QPoint(4, 3));
    for (const int most : {0, 1, 20, 7}) {
        document->GetModel()->SetVisible(0, most % 2 == 0);
        {
            std::atomic<int> asked{0};
            const TileThreads::CancelScope scope([&] { return asked++ < most; });
            QVERIFY_EXCEPTION_THROWN(Merged(document.get()), TileThreads::Cancelled);
        }
        QVERIFY(AreEqual(Merged(document.get()), Twin(document.get())));
    }
}

void TestMergedPicture::aReaderKeepsItsPictureWhileItLooksAgain()
{
    const OwnedDocument document = Make(QSize(64, 64));
    document->AddLayer("layer", Filled(QSize(64, 64), 0xFF00FF00), QPoint());
    const LXDocumentLayerLockerForRead outer(document.get(), 0);
    document->GetModel()->SetVisible(0, false);
    QCOMPARE(document->GetLayerImage(0)->GetColor(0, 0).value, 0xFF00FF00u);
    const LXDocumentLayerLockerForRead inner(document.get(), 0);
    QCOMPARE(document->GetLayerImage(0)->GetColor(0, 0).value, 0u);
}

ZK_REGISTER_TEST(tst_mergedpicture, TestMergedPicture)
#include "tst_mergedpicture.moc"
