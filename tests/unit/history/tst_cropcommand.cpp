#include "CanvasDocument.h"
#include "UndoLaw.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "history/ChangeCommandHelper.h"
#include "history/CropCommand.h"
#include "history/LexoUndoStack.h"
#include "image/ImageMetadata.h"
#include "support/PathFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <new>

using namespace DocumentFixture;

namespace {
constexpr bool Hide = true;
constexpr bool Delete = false;
constexpr bool Resample = true;
constexpr bool CopyPixels = false;

bool Crop(LXDocumentInterface* document, const QTransform& transform, const QSize& size, bool hide,
          bool resample, LexoUndoStack* stack)
{
    return ChangeCommandHelper::MakeCropCommand(document, "Crop", transform, size, hide, resample, stack);
}

bool Extend(LXDocumentInterface* document, const QTransform& transform, const QSize& size,
            const QColor& color, LexoUndoStack* stack)
{
    return ChangeCommandHelper::MakeCropCommand(document, "Canvas resize", transform, size, Hide, CopyPixels,
                                                color, stack);
}

QTransform QuarterTurn(const QSize& canvas)
{
    return QTransform().translate(canvas.height(), 0).rotate(90);
}
} // namespace

class TestCropCommand : public QObject
{
    Q_OBJECT

private slots:
    void hidingMovesEverythingAndKeepsWhatIsCutOff();
    void movedLayersKeepTheirTiles();
    void deletingCutsEverythingAtTheCanvas();
    void whatLiesOutsideLeavesAnEmptyLayer();
    void aQuarterTurnCarriesEverything();
    void fourQuarterTurnsChangeNothing();
    void twoMirrorsChangeNothing();
    void aTurnByHandIsRoundedToWholePixels();
    void aTurnThatIsNoNoiseIsNotRoundedAway();
    void anyAngleResamples();
    void layersAreResampledBicubically();
    void aTurnedMaskLeavesItsDefaultInTheCorners();
    void perspectiveCarriesEverything();

    void newCanvasTakesTheColorBelowTheBottomLayer();
    void anExtendedLayerKeepsItsTiles();
    void hiddenPixelsComeBackAboveTheColor();
    void turnedCornersTakeTheColor();
    void whatAnImageCarriesStaysWithTheLayer();
    void aTransparentColorChangesNothing();
    void withoutARasterLayerNothingTakesTheColor();
    void aSmallerCanvasTakesNoColor();

    void anIdleCropIsRefused();
    void impossibleCropsAreRefused();
    void aCanvasThatIsTooLargeThrowsAndChangesNothing();
    void withoutAStackItIsDoneForGood();
    void theCanvasIsToldOfOnce();
    void aMoveOnACanvasOfTheSameSizeIsSeen();
    void subPathsThatChangeAreCommittedEachWay();

    void theUndoLawHolds_data();
    void theUndoLawHolds();
};

void TestCropCommand::hidingMovesEverythingAndKeepsWhatIsCutOff()
{
    const OwnedDocument document = MakeCanvasDocument();
    const LXImage32 bottom = *document->GetLayerImage(2);
    const LXImage32 mask = *document->GetMaskImage(1);
    LexoUndoStack stack;
    QVERIFY(
        Crop(document.get(), QTransform::fromTranslate(-20, -30), QSize(50, 40), Hide, CopyPixels, &stack));
    QCOMPARE(stack.undoText(), QString("Crop"));
    QCOMPARE(document->GetDocumentSize(), QSize(50, 40));
    QCOMPARE(document->GetLayerGeometry(2), QRect(-20, -30, 100, 80));
    QVERIFY(AreEqual(*document->GetLayerImage(2), bottom));
    QCOMPARE(document->GetLayerGeometry(1), QRect(60, -40, 40, 30));
    QCOMPARE(document->GetMaskGeometry(1), QRect(65, -30, 30, 20));
    QVERIFY(AreEqual(*document->GetMaskImage(1), mask));
    QCOMPARE(document->GetSelectionGeometry(), QRect(10, 10, 20, 10));
    QCOMPARE(ChannelsOf(document.get())->All().first().coverage.Rect(), QRect(30, -20, 10, 20));
    const LXPath path = document->GetPathListModel()->GetPath(0).first().first;
    QCOMPARE(path[0].GetCenterPoint(), QPointF(-10, -10));
    QCOMPARE(path[1].GetCenterPoint(), QPointF(10.5, 10));
    QCOMPARE(document->GetColorSamples()->GetPoint(0), QPoint(-8, 4));
    QCOMPARE(document->GetGuides(), LXGuides({{Qt::Horizontal, -10}, {Qt::Vertical, 70}}));
}

void TestCropCommand::movedLayersKeepTheirTiles()
{
    const OwnedDocument document = MakeCanvasDocument();
    const LXTile* tile = document->GetLayerImage(2)->TileAt(0, 0).data();
    QVERIFY(
        Crop(document.get(), QTransform::fromTranslate(-20, -30), QSize(50, 40), Hide, CopyPixels, nullptr));
    QCOMPARE(static_cast<const LXTile*>(document->GetLayerImage(2)->TileAt(0, 0).data()), tile);
}

void TestCropCommand::deletingCutsEverythingAtTheCanvas()
{
    const OwnedDocument document = MakeCanvasDocument();
    const LXImage32 bottom = *document->GetLayerImage(2);
    const LXImage32 top = *document->GetLayerImage(1);
    const LXImage32 mask = *document->GetMaskImage(1);
    document->SetSelectionMask(Filled(QSize(60, 60), 0x80000000), QPoint(10, 10));
    // Leaves x from 20 to 89, y from 5 to 49.
    QVERIFY(
        Crop(document.get(), QTransform::fromTranslate(-20, -5), QSize(70, 45), Delete, CopyPixels, nullptr));
    QCOMPARE(document->GetLayerGeometry(2), QRect(0, 0, 70, 45));
    QVERIFY(AreEqual(*document->GetLayerImage(2), bottom.Copy(QRect(20, 5, 70, 45))));
    QCOMPARE(document->GetLayerGeometry(1), QRect(60, 0, 10, 15));
    QVERIFY(AreEqual(*document->GetLayerImage(1), top.Copy(QRect(0, 15, 10, 15))));
    QCOMPARE(document->GetMaskGeometry(1), QRect(65, 0, 5, 15));
    QVERIFY(AreEqual(*document->GetMaskImage(1), mask.Copy(QRect(0, 5, 5, 15))));
    QCOMPARE(document->GetSelectionGeometry(), QRect(0, 5, 50, 40));
    QCOMPARE(ChannelsOf(document.get())->All().first().coverage.Rect(), QRect(30, 5, 10, 20));
    // The guide at 90 lies on the new right edge.
    QCOMPARE(document->GetGuides(), LXGuides({{Qt::Horizontal, 15}, {Qt::Vertical, 70}}));

    QVERIFY(
        Crop(document.get(), QTransform::fromTranslate(0, -16), QSize(69, 20), Delete, CopyPixels, nullptr));
    QCOMPARE(document->GetGuides(), LXGuides());
}

void TestCropCommand::whatLiesOutsideLeavesAnEmptyLayer()
{
    const OwnedDocument document = MakeCanvasDocument();
    QCOMPARE(UndoLaw::BrokenBy(
                 document.get(),
                 new CropCommand(document.get(), {QTransform(), QSize(30, 30), Delete, CopyPixels, {}})),
             QString());
    QVERIFY(document->GetLayerImage(1)->IsNull());
    QVERIFY(document->GetMaskImage(1)->IsNull());
    QVERIFY(!document->HasSelection());
    QVERIFY(ChannelsOf(document.get())->All().first().coverage.image.IsNull());
    QCOMPARE(ChannelsOf(document.get())->Names(), QStringList({"kept", "soft"}));
    QCOMPARE(document->GetModel()->data(document->GetModel()->index(0), Qt::DecorationRole).isValid(), true);
    // Such a layer can be cropped again, with or without color.
    QVERIFY(Extend(document.get(), QTransform::fromTranslate(4, 4), QSize(40, 40), Qt::red, nullptr));
    QVERIFY(document->GetLayerImage(1)->IsNull());
}

void TestCropCommand::aQuarterTurnCarriesEverything()
{
    const OwnedDocument document = MakeCanvasDocument();
    const LXRGBA32i corner = document->GetLayerImage(1)->GetColor(0, 29);
    const unsigned int maskValue = document->GetMaskImage(1)->GetColor(3, 2).value;
    QVERIFY(Crop(document.get(), QuarterTurn(QSize(100, 80)), QSize(80, 100), Hide, CopyPixels, nullptr));
    // (x, y) goes to (80 - y, x).
    QCOMPARE(document->GetLayerGeometry(2), QRect(0, 0, 80, 100));
    QCOMPARE(document->GetLayerGeometry(1), QRect(60, 80, 30, 40));
    QCOMPARE(document->GetLayerImage(1)->GetColor(0, 0).value, corner.value);
    QCOMPARE(document->GetMaskGeometry(1), QRect(60, 85, 20, 30));
    QCOMPARE(document->GetMaskImage(1)->GetColor(17, 3).value, maskValue);
    QCOMPARE(document->GetSelectionGeometry(), QRect(30, 30, 10, 20));
    QCOMPARE(ChannelsOf(document.get())->All().first().coverage.Rect(), QRect(50, 50, 20, 10));
    QCOMPARE(document->GetPathListModel()->GetPath(0).first().first[0].GetCenterPoint(), QPointF(60, 10));
    QCOMPARE(document->GetColorSamples()->GetPoint(0), QPoint(45, 12));
    QCOMPARE(document->GetGuides(), LXGuides({{Qt::Vertical, 60}, {Qt::Horizontal, 90}}));
}

void TestCropCommand::fourQuarterTurnsChangeNothing()
{
    const OwnedDocument document = MakeCanvasDocument();
    const QStringList before = DescribeWhole(document.get());
    for (int turn = 0; turn < 4; ++turn) {
        const QSize size = document->GetDocumentSize();
        QVERIFY(Crop(document.get(), QuarterTurn(size), size.transposed(), Hide, CopyPixels, nullptr));
    }
    QCOMPARE(DescribeWhole(document.get()), before);
}

void TestCropCommand::twoMirrorsChangeNothing()
{
    const OwnedDocument document = MakeCanvasDocument();
    const QStringList before = DescribeWhole(document.get());
    const QTransform across = QTransform().translate(100, 0).scale(-1, 1);
    const QTransform down = QTransform().translate(0, 80).scale(1, -1);
    for (const QTransform& mirror : {across, down, across, down}) {
        QVERIFY(Crop(document.get(), mirror, QSize(100, 80), Hide, CopyPixels, nullptr));
    }
    QCOMPARE(DescribeWhole(document.get()), before);
}

void TestCropCommand::aTurnByHandIsRoundedToWholePixels()
{
    const OwnedDocument byHand = MakeCanvasDocument();
    const OwnedDocument exact = MakeCanvasDocument();
    // A box dragged to fractions of pixels, its sides computed in single precision.
    const QTransform dragged = QTransform().translate(70.3, -4.6).rotate(90).scale(1.0000001, 0.9999999);
    QVERIFY(Crop(byHand.get(), dragged, QSize(60, 70), Delete, CopyPixels, nullptr));
    QVERIFY(Crop(exact.get(), QTransform().translate(70, -5).rotate(90), QSize(60, 70), Delete, CopyPixels,
                 nullptr));
    QCOMPARE(DescribeWhole(byHand.get()), DescribeWhole(exact.get()));
}

void TestCropCommand::aTurnThatIsNoNoiseIsNotRoundedAway()
{
    const OwnedDocument document = MakeCanvasDocument();
    QVERIFY(Crop(document.get(), QTransform().rotate(20), QSize(100, 80), Hide, CopyPixels, nullptr));
    QVERIFY(document->GetLayerGeometry(2).width() > 100);
}

void TestCropCommand::anyAngleResamples()
{
    const OwnedDocument document = MakeCanvasDocument();
    document->SetLayerImage(2, Filled(QSize(100, 80), 0xFF3366CC), QPoint());
    const QTransform transform = QTransform().translate(30, 40).rotate(-20).translate(-50, -40);
    QVERIFY(Crop(document.get(), transform, QSize(60, 80), Delete, Resample, nullptr));
    const QRect rect = document->GetLayerGeometry(2);
    QVERIFY(QRect(0, 0, 60, 80).contains(rect));
    QCOMPARE(document->GetLayerImage(2)->GetColor(30 - rect.left(), 40 - rect.top()).value, 0xFF3366CCu);

    // The guide at y = 20 turns by less than half a right angle: it stays horizontal, through where its
    // middle goes.
    const QPointF middle = transform.map(QPointF(50, 20));
    QCOMPARE(document->GetGuides().first().orientation, Qt::Horizontal);
    QCOMPARE(document->GetGuides().first().position, middle.y());
}

void TestCropCommand::layersAreResampledBicubically()
{
    const OwnedDocument document = Make(QSize(4, 1));
    LXImage32 row(4, 1);
    row.Fill(LXRGBA32i(0xFF000064));
    row.SetColor(0, 0, LXRGBA32i(0xFF000000));
    document->AddLayer("layer", row, QPoint());
    QVERIFY(Crop(document.get(), QTransform::fromScale(2, 1), QSize(8, 1), Delete, Resample, nullptr));
    // 0, 100, 100, 100 become eight. The third lies a quarter before the second old one's middle: weights of
    // 0.2265625, 0.8671875 and -0.0703125, what lies before the border left out, 79.6875 / 1.0234375.
    QCOMPARE(document->GetLayerImage(1)->GetColor(2, 0).value, 0xFF00004Eu);
}

void TestCropCommand::aTurnedMaskLeavesItsDefaultInTheCorners()
{
    for (const bool reveals : {true, false}) {
        const OwnedDocument document = Make(QSize(40, 40));
        document->AddLayer("layer", Filled(QSize(40, 40), 0xFF3366CC), QPoint());
        document->AddMask(1, reveals);
        document->SetMaskImage(1, Filled(QSize(40, 40), 0x80000000), QPoint());
        const QTransform turn = QTransform().translate(20, 20).rotate(45).translate(-20, -20);
        QVERIFY(Crop(document.get(), turn, QSize(40, 40), Hide, Resample, nullptr));
        // The diagonal of 40 x 40 has 56.6 pixels.
        QCOMPARE(document->GetMaskGeometry(1), QRect(-9, -9, 58, 58));
        QCOMPARE(document->GetMaskImage(1)->GetColor(0, 0).value, reveals ? 0xFF000000u : 0u);
        QCOMPARE(document->GetMaskImage(1)->GetColor(29, 29).value, 0x80000000u);
    }
}

void TestCropCommand::perspectiveCarriesEverything()
{
    const OwnedDocument document = MakeCanvasDocument();
    document->SetLayerImage(2, Filled(QSize(100, 80), 0xFF3366CC), QPoint());
    QTransform transform;
    QVERIFY(QTransform::quadToQuad(
        QPolygonF({QPointF(20, 10), QPointF(80, 10), QPointF(100, 80), QPointF(0, 80)}),
        QPolygonF({QPointF(0, 0), QPointF(60, 0), QPointF(60, 60), QPointF(0, 60)}), transform));
    QVERIFY(Crop(document.get(), transform, QSize(60, 60), Delete, Resample, nullptr));
    QCOMPARE(document->GetLayerGeometry(2), QRect(0, 0, 60, 60));
    QVERIFY(AreEqual(*document->GetLayerImage(2), Filled(QSize(60, 60), 0xFF3366CC)));
    QCOMPARE(document->GetPathListModel()->GetPath(0).first().first[0].GetCenterPoint(),
             transform.map(QPointF(10, 20)));
}

void TestCropCommand::newCanvasTakesTheColorBelowTheBottomLayer()
{
    const OwnedDocument document = MakeCanvasDocument();
    const LXImage32 bottom = *document->GetLayerImage(2);
    const LXImage32 top = *document->GetLayerImage(1);
    LexoUndoStack stack;
    QVERIFY(
        Extend(document.get(), QTransform::fromTranslate(10, 5), QSize(125, 90), QColor(10, 20, 30), &stack));
    QCOMPARE(document->GetLayerGeometry(2), QRect(0, 0, 125, 90));
    const LXImage32& wide = *document->GetLayerImage(2);
    const QRect old(10, 5, 100, 80);
    QVERIFY(AreEqual(wide.Copy(old), bottom)); // with the colors under alpha 0
    for (int y = 0; y < 90; ++y) {
        for (int x = 0; x < 125; ++x) {
            if (!old.contains(x, y)) QCOMPARE(wide.GetColor(x, y).value, 0xFF0A141Eu);
        }
    }
    QCOMPARE(document->GetLayerGeometry(1), QRect(90, -5, 40, 30));
    QVERIFY(AreEqual(*document->GetLayerImage(1), top));
}

void TestCropCommand::anExtendedLayerKeepsItsTiles()
{
    const OwnedDocument document = Make(QSize(640, 640));
    LXImage32 image = Filled(QSize(640, 640), 0xFF00FF00);
    image.SetColor(200, 200, LXRGBA32i(0x80FFFFFF));
    document->AddLayer("layer", image, QPoint(0, 0));
    QVERIFY(Extend(document.get(), QTransform(), QSize(700, 640), Qt::red, nullptr));
    const LXImage32& wide = *document->GetLayerImage(1);
    QCOMPARE(wide.GetColor(200, 200).value, 0x80FFFFFFu);
    QCOMPARE(wide.GetColor(640, 0).value, 0xFFFF0000u);
    for (int row = 0; row < 5; ++row) {
        for (int column = 0; column < 5; ++column) {
            QCOMPARE(wide.TileAt(column, row).data(), image.TileAt(column, row).data());
        }
    }
}

void TestCropCommand::hiddenPixelsComeBackAboveTheColor()
{
    const OwnedDocument document = Make(QSize(10, 10));
    LXImage32 image = Filled(QSize(14, 10), 0xFF00FF00);
    image.SetColor(11, 2, LXRGBA32i(0x00FFFFFF));
    image.SetColor(12, 2, LXRGBA32i(0x800000FF));
    document->AddLayer("layer", image, QPoint(0, 0));
    QVERIFY(Extend(document.get(), QTransform(), QSize(20, 10), Qt::red, nullptr));
    const LXImage32& wide = *document->GetLayerImage(1);
    QCOMPARE(document->GetLayerGeometry(1), QRect(0, 0, 20, 10));
    QCOMPARE(wide.GetColor(13, 2).value, 0xFF00FF00u);
    QCOMPARE(wide.GetColor(11, 2).value, 0xFFFF0000u);
    QCOMPARE(wide.GetColor(12, 2).value, 0xFF7F0080u); // 128 of 255 blue over red
    QCOMPARE(wide.GetColor(14, 2).value, 0xFFFF0000u);
}

void TestCropCommand::turnedCornersTakeTheColor()
{
    const OwnedDocument document = Make(QSize(40, 40));
    document->AddLayer("layer", Filled(QSize(40, 40), 0xFF0000FF), QPoint(0, 0));
    const QTransform transform = QTransform().translate(20, 20).rotate(45).translate(-20, -20);
    QVERIFY(ChangeCommandHelper::MakeCropCommand(document.get(), "Crop", transform, QSize(40, 40), Delete,
                                                 Resample, QColor(Qt::red), nullptr));
    const LXImage32& turned = *document->GetLayerImage(1);
    QCOMPARE(document->GetLayerGeometry(1), QRect(0, 0, 40, 40));
    QCOMPARE(turned.GetColor(0, 0).value, 0xFFFF0000u);
    QCOMPARE(turned.GetColor(39, 39).value, 0xFFFF0000u);
    QCOMPARE(turned.GetColor(20, 20).value, 0xFF0000FFu);
    for (int i = 0; i < 40; ++i) {
        // Where the edge crosses, both together cover at least three quarters.
        QVERIFY(turned.GetColor(i, i).Alpha() >= 191);
    }
}

void TestCropCommand::whatAnImageCarriesStaysWithTheLayer()
{
    const OwnedDocument document = MakeCanvasDocument();
    LXImage32 image = *document->GetLayerImage(2);
    image.m_ExifData = {ZKEXIFElement{0, "block"}};
    image.m_DpiX = 300;
    document->SetLayerImage(2, image, QPoint());
    QVERIFY(Crop(document.get(), QuarterTurn(QSize(100, 80)), QSize(80, 100), Delete, CopyPixels, nullptr));
    QVERIFY(ImageMetadata::AreSame(*document->GetLayerImage(2), image));
    QVERIFY(Extend(document.get(), QTransform(), QSize(150, 150), Qt::red, nullptr));
    QVERIFY(ImageMetadata::AreSame(*document->GetLayerImage(2), image));
}

void TestCropCommand::aTransparentColorChangesNothing()
{
    const OwnedDocument plain = MakeCanvasDocument();
    const OwnedDocument extended = MakeCanvasDocument();
    const QTransform transform = QTransform::fromTranslate(10, 5);
    QVERIFY(Crop(plain.get(), transform, QSize(125, 90), Hide, CopyPixels, nullptr));
    QVERIFY(Extend(extended.get(), transform, QSize(125, 90), Qt::transparent, nullptr));
    QCOMPARE(DescribeWhole(extended.get()), DescribeWhole(plain.get()));
}

void TestCropCommand::withoutARasterLayerNothingTakesTheColor()
{
    const OwnedDocument document = Make(QSize(10, 10));
    QVERIFY(Extend(document.get(), QTransform(), QSize(20, 20), Qt::red, nullptr));
    LayerState letters;
    letters.properties.kind = LayerKind::Text;
    letters.image = Filled(QSize(5, 5), 0xFF000000);
    letters.properties.rect = QRect(0, 0, 5, 5);
    LXDocumentInterfacePrivate::Get(document.get())->InsertLayer(0, letters);
    QVERIFY(Extend(document.get(), QTransform(), QSize(30, 30), Qt::red, nullptr));
    QCOMPARE(document->GetLayerGeometry(1), QRect(0, 0, 5, 5));
}

void TestCropCommand::aSmallerCanvasTakesNoColor()
{
    const OwnedDocument document = MakeCanvasDocument();
    QVERIFY(Extend(document.get(), QTransform::fromTranslate(-5, -5), QSize(50, 50), Qt::red, nullptr));
    QCOMPARE(document->GetLayerGeometry(2), QRect(-5, -5, 100, 80));
}

void TestCropCommand::anIdleCropIsRefused()
{
    const OwnedDocument document = MakeCanvasDocument();
    const QStringList before = DescribeWhole(document.get());
    LexoUndoStack stack;
    for (const bool hide : {Hide, Delete}) {
        QVERIFY(!Crop(document.get(), QTransform(), QSize(100, 80), hide, CopyPixels, &stack));
        QVERIFY(!Crop(document.get(), QTransform(), QSize(100, 80), hide, Resample, &stack));
        QVERIFY(!Crop(document.get(), QTransform::fromTranslate(0.3, -0.2), QSize(100, 80), hide, CopyPixels,
                      &stack));
    }
    QCOMPARE(stack.count(), 0);
    QCOMPARE(DescribeWhole(document.get()), before);
    QVERIFY(
        Crop(document.get(), QTransform::fromTranslate(0.3, -0.2), QSize(100, 80), Hide, Resample, &stack));
}

void TestCropCommand::impossibleCropsAreRefused()
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const int most = LXDocumentInterface::MAX_DOC_DIMENSION;
    const OwnedDocument document = MakeCanvasDocument();
    const QStringList before = DescribeWhole(document.get());
    LexoUndoStack stack;
    for (const QSize& size :
         {QSize(), QSize(0, 10), QSize(10, 0), QSize(-1, 10), QSize(most + 1, 1), QSize(1, most + 1)}) {
        QVERIFY(!Crop(document.get(), QTransform(), size, Hide, CopyPixels, &stack));
    }
    for (const QTransform& transform : {QTransform::fromScale(0, 1), QTransform(1, 2, 2, 4, 0, 0),
                                        QTransform(nan, 0, 0, 1, 0, 0), QTransform::fromTranslate(nan, 0)}) {
        QVERIFY(!Crop(document.get(), transform, QSize(10, 10), Hide, Resample, &stack));
    }
    QCOMPARE(stack.count(), 0);
    QCOMPARE(DescribeWhole(document.get()), before);
}

void TestCropCommand::aCanvasThatIsTooLargeThrowsAndChangesNothing()
{
    const OwnedDocument document = MakeCanvasDocument();
    const QStringList before = DescribeWhole(document.get());
    LexoUndoStack stack;
    const int most = LXDocumentInterface::MAX_DOC_DIMENSION;
    QVERIFY_EXCEPTION_THROWN(Crop(document.get(), QTransform(), QSize(most, most), Hide, CopyPixels, &stack),
                             std::bad_alloc);
    QVERIFY_EXCEPTION_THROWN(
        Crop(document.get(), QTransform::fromScale(1e7, 1e7), QSize(10, 10), Hide, Resample, &stack),
        std::bad_alloc);
    QCOMPARE(stack.count(), 0);
    QCOMPARE(DescribeWhole(document.get()), before);
}

void TestCropCommand::withoutAStackItIsDoneForGood()
{
    const OwnedDocument document = MakeCanvasDocument();
    QVERIFY(Crop(document.get(), QTransform(), QSize(30, 30), Hide, CopyPixels, nullptr));
    QCOMPARE(document->GetDocumentSize(), QSize(30, 30));
}

void TestCropCommand::theCanvasIsToldOfOnce()
{
    const OwnedDocument document = MakeCanvasDocument();
    SignalLog log(document.get());
    QVERIFY(
        Crop(document.get(), QTransform::fromTranslate(-20, -30), QSize(50, 40), Hide, CopyPixels, nullptr));
    const QStringList lines = log.Take();
    QCOMPARE(lines.filter("CompositionChanged"), QStringList("CompositionChanged (0,0 50x40)"));
    QCOMPARE(lines.filter("DocumentSizeChanged"), QStringList("DocumentSizeChanged 50x40"));
    QVERIFY(lines.contains("LayerPositionChanged 1 (60,-40)"));
    QVERIFY(lines.contains("MaskPositionChanged 1 (65,-30)"));
    QVERIFY(lines.contains("LayerDataChanged 2"));
    QVERIFY(lines.contains("LayerMaskChanged 2"));
    QCOMPARE(lines.filter("AboutSelectionMove"), QStringList());
}

void TestCropCommand::aMoveOnACanvasOfTheSameSizeIsSeen()
{
    const OwnedDocument document = Make(QSize(40, 30));
    document->AddLayer("layer", Filled(QSize(10, 10), 0xFFFF0000), QPoint());
    const auto shown = [&document](int x) {
        const LXDocumentLayerLockerForRead locker(document.get(), 0);
        return document->GetLayerImage(0)->GetColor(x, 0).value;
    };
    QCOMPARE(shown(0), 0xFFFF0000u);
    SignalLog log(document.get());
    QVERIFY(Crop(document.get(), QTransform::fromTranslate(5, 0), QSize(40, 30), Hide, CopyPixels, nullptr));
    QCOMPARE(log.Take().filter("CompositionChanged"), QStringList("CompositionChanged (0,0 40x30)"));
    QCOMPARE(shown(0), 0u);
    QCOMPARE(shown(14), 0xFFFF0000u);
}

/// What shows the handles of a sub path looks at it anew.
void TestCropCommand::subPathsThatChangeAreCommittedEachWay()
{
    const OwnedDocument document = MakeCanvasDocument();
    LXPathsListModel* paths = document->GetPathListModel();
    paths->InsertSubPath(0, 1, {}, LXPathsListModel::Unite);
    paths->InsertPath(1, "other", {{PathFixture::Line({1, 2}, {3, 4}), LXPathsListModel::Unite}});
    LexoUndoStack stack;
    PathFixture::PathSignals told(paths);
    const auto committed = [&told] { return told.Take().filter("ChangesCommitted"); };
    // An empty sub path is the same at any place.
    const QStringList changed{"ChangesCommitted 0 0", "ChangesCommitted 1 0"};
    QVERIFY(Crop(document.get(), QTransform::fromTranslate(-5, 0), QSize(90, 80), Hide, CopyPixels, &stack));
    QCOMPARE(committed(), changed);
    stack.undo();
    QCOMPARE(committed(), changed);
    stack.redo();
    QCOMPARE(committed(), changed);
    // More canvas to the right leaves every path where it is.
    QVERIFY(Crop(document.get(), QTransform(), QSize(200, 80), Hide, CopyPixels, &stack));
    QCOMPARE(committed(), QStringList());
}

void TestCropCommand::theUndoLawHolds_data()
{
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("resample");
    const QTransform moved = QTransform::fromTranslate(-20, -30);
    QTest::newRow("smaller") << moved << QSize(50, 40) << CopyPixels;
    QTest::newRow("larger") << QTransform::fromTranslate(7, 9) << QSize(130, 140) << CopyPixels;
    QTest::newRow("same size, moved") << moved << QSize(100, 80) << CopyPixels;
    QTest::newRow("turned") << QuarterTurn(QSize(100, 80)) << QSize(80, 100) << CopyPixels;
    QTest::newRow("any angle") << QTransform(moved).rotate(13) << QSize(60, 70) << Resample;
    QTest::newRow("stretched by a little")
        << QTransform(1.0005, 0, 0, 1, 0.4, 0.3) << QSize(100, 80) << Resample;
    QTest::newRow("perspective") << QTransform(1, 0, 0.002, 0.1, 1, 0.001, 3, 4, 1) << QSize(90, 70)
                                 << Resample;
    QTest::newRow("nothing left") << QTransform::fromTranslate(1000, 0) << QSize(60, 70) << CopyPixels;
}

void TestCropCommand::theUndoLawHolds()
{
    QFETCH(QTransform, transform);
    QFETCH(QSize, size);
    QFETCH(bool, resample);
    for (const bool hide : {Hide, Delete}) {
        for (const QColor& color : {QColor(), QColor(200, 100, 50, 128)}) {
            const OwnedDocument document = MakeCanvasDocument();
            auto* command = new CropCommand(document.get(), {transform, size, hide, resample, color});
            QCOMPARE(UndoLaw::BrokenBy(document.get(), command), QString());
            QCOMPARE(document->GetDocumentSize(), size);
        }
    }
}

ZK_REGISTER_TEST(tst_cropcommand, TestCropCommand)
#include "tst_cropcommand.moc"
