#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "document/LXSelectionMaskHelper.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

using namespace DocumentFixture;

namespace {
int Product(int a, int b)
{
    return (a * b + 127) / 255;
}

LXRGBA32i At(const LXImage32& image, const QRect& rect, const QPoint& docPoint)
{
    const QPoint inside = docPoint - rect.topLeft();
    return image.Rect().contains(inside) ? image.GetColor(inside.x(), inside.y()) : LXRGBA32i();
}

/// A document in which the selection, the layer and its mask overlap in part, over several tiles.
OwnedDocument MakeRandom(Random& random)
{
    OwnedDocument document = Make(QSize(300, 200));
    const QRect canvas(0, 0, 300, 200);
    const QRect layer = PickRect(random, canvas, 40);
    const QRect mask = PickRect(random, canvas, 40);
    const QRect selection = PickRect(random, canvas, 40);
    document->AddLayer("layer", Noise(random, layer.size()), layer.topLeft());
    document->AddMask(1, Pick(random, 0, 1) == 0);
    document->SetMaskImage(1, MaskNoise(random, mask.size()), mask.topLeft());
    document->SetSelectionMask(MaskNoise(random, selection.size()), selection.topLeft());
    return document;
}

QRect SelectedPart(const LXDocumentInterface* document, const QRect& rect)
{
    return document->GetSelectionGeometry() & rect;
}
} // namespace

class TestSelectionMaskHelper : public QObject
{
    Q_OBJECT

private slots:
    void liftsTheLayersPixelsTimesCoverage();
    void liftsTheMaskAsGray();
    void theRestAndTheLiftedAddUp();
    void aCutPutBackRestoresEveryPixel();
    void theMaskIsLeftWithTheFill();
    void cutsAnswerTheWholeImageAsItWas();
    void cutsAreTold();
    void onePartialPixelByHand();
    void aSelectionThatMissesLiftsNothing();
    void withoutASelectionNothingIsLifted();
    void badIdsAndMissingMasksGiveNothing();
    void theMergedPictureCanBeLiftedButNotCut();
    void aCallerMayHoldTheReader();
    void boundsAreThoseOfPixelsWithAlpha();
    void boundsOfScatteredPixelsAreThoseOfATwin();
    void borderOfTransparency();
    void borderOfAColor();
};

void TestSelectionMaskHelper::liftsTheLayersPixelsTimesCoverage()
{
    Random random(11);
    for (int round = 0; round < 10; ++round) {
        const OwnedDocument document = MakeRandom(random);
        const QRect layer = document->GetLayerGeometry(1);
        const QRect part = SelectedPart(document.get(), layer);
        const LXSelectionMaskHelper helper(document.get());
        const LXImage32 lifted = helper.GetSelectionRGBA32iImage(1);
        QVERIFY(AreEqual(lifted, helper.GetSelectionBoundRGBA32iImage(1)));
        QCOMPARE(lifted.Rect().size(), part.isEmpty() ? QSize(0, 0) : part.size());
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x) {
                const LXRGBA32i pixel = At(*document->GetLayerImage(1), layer, QPoint(x, y));
                const LXRGBA32i cover =
                    At(document->GetSelectionMask(), document->GetSelectionGeometry(), QPoint(x, y));
                const auto alpha = static_cast<quint32>(Product(pixel.Alpha(), cover.Alpha()));
                QCOMPARE(At(lifted, part, QPoint(x, y)).value, (pixel.value & 0xFFFFFF) | alpha << 24);
            }
        }
    }
}

void TestSelectionMaskHelper::liftsTheMaskAsGray()
{
    Random random(12);
    for (int round = 0; round < 10; ++round) {
        const OwnedDocument document = MakeRandom(random);
        const QRect mask = document->GetMaskGeometry(1);
        const QRect part = SelectedPart(document.get(), mask);
        const LXSelectionMaskHelper helper(document.get());
        const LXImage32 lifted = helper.GetSelectionMaskGrayScale(1);
        QVERIFY(AreEqual(lifted, helper.GetSelectionBoundMaskGrayScale(1)));
        QCOMPARE(lifted.Rect().size(), part.isEmpty() ? QSize(0, 0) : part.size());
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x) {
                const auto value =
                    static_cast<quint32>(At(*document->GetMaskImage(1), mask, QPoint(x, y)).Alpha());
                const auto cover = static_cast<quint32>(
                    At(document->GetSelectionMask(), document->GetSelectionGeometry(), QPoint(x, y)).Alpha());
                QCOMPARE(At(lifted, part, QPoint(x, y)).value,
                         cover << 24 | value << 16 | value << 8 | value);
            }
        }
    }
}

void TestSelectionMaskHelper::theRestAndTheLiftedAddUp()
{
    Random random(13);
    const OwnedDocument document = MakeRandom(random);
    const QRect layer = document->GetLayerGeometry(1);
    const QRect part = SelectedPart(document.get(), layer);
    QVERIFY(!part.isEmpty());
    LXSelectionMaskHelper helper(document.get());
    const LXImage32 lifted = helper.GetSelectionRGBA32iImage(1);
    const LXImage32 before = helper.CutSelectionRGBA32iImage(1);
    for (int y = layer.top(); y <= layer.bottom(); ++y) {
        for (int x = layer.left(); x <= layer.right(); ++x) {
            const LXRGBA32i was = At(before, layer, QPoint(x, y));
            const LXRGBA32i rest = At(*document->GetLayerImage(1), layer, QPoint(x, y));
            QCOMPARE(rest.value & 0xFFFFFF, was.value & 0xFFFFFF);
            QCOMPARE(rest.Alpha() + At(lifted, part, QPoint(x, y)).Alpha(), was.Alpha());
        }
    }
}

void TestSelectionMaskHelper::aCutPutBackRestoresEveryPixel()
{
    Random random(14);
    const OwnedDocument document = MakeRandom(random);
    const QStringList described = Describe(document.get());
    LXSelectionMaskHelper helper(document.get());
    const LXImage32 layer = helper.CutSelectionRGBA32iImage(1);
    const LXImage32 mask = helper.CutSelectionMaskGrayScale(1, LXRGBA32i(0xFF000000));
    QVERIFY(Describe(document.get()) != described);
    document->SetLayerImage(1, layer, document->GetLayerGeometry(1).topLeft());
    document->SetMaskImage(1, mask, document->GetMaskGeometry(1).topLeft());
    QCOMPARE(Describe(document.get()), described);
}

/// The fill's lightness is (max + min) / 2 of its channels; coverage c leaves
/// (lightness x c + (255 - c) x value) / 255, cut off.
void TestSelectionMaskHelper::theMaskIsLeftWithTheFill()
{
    Random random(15);
    const OwnedDocument document = MakeRandom(random);
    const QRect rect = document->GetMaskGeometry(1);
    QVERIFY(!SelectedPart(document.get(), rect).isEmpty());
    const LXImage32 before =
        LXSelectionMaskHelper(document.get()).CutSelectionMaskGrayScale(1, LXRGBA32i(0xFF64C83C));
    const int lightness = (200 + 60) / 2;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            const int cover =
                At(document->GetSelectionMask(), document->GetSelectionGeometry(), QPoint(x, y)).Alpha();
            const int was = At(before, rect, QPoint(x, y)).Alpha();
            const LXRGBA32i now = At(*document->GetMaskImage(1), rect, QPoint(x, y));
            QCOMPARE(now.Alpha(), (lightness * cover + (255 - cover) * was) / 255);
            QCOMPARE(now.value & 0xFFFFFF, 0u);
        }
    }
}

void TestSelectionMaskHelper::cutsAnswerTheWholeImageAsItWas()
{
    Random random(16);
    const OwnedDocument document = MakeRandom(random);
    const LXImage32 layer = *document->GetLayerImage(1);
    const LXImage32 mask = *document->GetMaskImage(1);
    LXSelectionMaskHelper helper(document.get());
    QVERIFY(AreEqual(helper.CutSelectionRGBA32iImage(1), layer));
    QVERIFY(AreEqual(helper.CutSelectionMaskGrayScale(1, LXRGBA32i(0xFFFFFFFF)), mask));
}

void TestSelectionMaskHelper::cutsAreTold()
{
    const OwnedDocument document = Make(QSize(40, 30));
    document->AddLayer("layer", Filled(QSize(20, 20), 0xFFFF0000), QPoint(5, 5));
    document->AddMask(1, true);
    document->SetSelectionMask(Filled(QSize(10, 10), 0xFF000000), QPoint(0, 0));
    SignalLog log(document.get());
    LXSelectionMaskHelper helper(document.get());
    helper.CutSelectionRGBA32iImage(1);
    QCOMPARE(log.Take(), QStringList({"LayerDataChanged 1", "CompositionChanged (5,5 5x5)"}));
    helper.CutSelectionMaskGrayScale(1, LXRGBA32i(0xFF000000));
    QCOMPARE(log.Take(), QStringList({"LayerMaskChanged 1", "CompositionChanged (5,5 5x5)"}));
}

/// Alpha 200 under coverage 100: (20000 + 127) / 255 = 78 go, 122 stay.
void TestSelectionMaskHelper::onePartialPixelByHand()
{
    const OwnedDocument document = Make(QSize(4, 4));
    document->AddLayer("layer", Filled(QSize(4, 4), 0xC8112233), QPoint());
    document->SetSelectionMask(Filled(QSize(1, 1), 0x64000000), QPoint(2, 1));
    LXSelectionMaskHelper helper(document.get());
    QCOMPARE(helper.GetSelectionRGBA32iImage(1).GetColor(0, 0).value, 0x4E112233u);
    helper.CutSelectionRGBA32iImage(1);
    QCOMPARE(document->GetLayerImage(1)->GetColor(2, 1).value, 0x7A112233u);
    QCOMPARE(document->GetLayerImage(1)->GetColor(1, 1).value, 0xC8112233u);
}

void TestSelectionMaskHelper::aSelectionThatMissesLiftsNothing()
{
    const OwnedDocument document = Make(QSize(40, 30));
    document->AddLayer("layer", Filled(QSize(10, 10), 0xFFFF0000), QPoint());
    document->AddMask(1, true);
    document->SetMaskImage(1, Filled(QSize(10, 10), 0xFF000000), QPoint());
    document->SetSelectionMask(Filled(QSize(5, 5), 0xFF000000), QPoint(20, 20));
    const QStringList before = Describe(document.get());
    LXSelectionMaskHelper helper(document.get());
    QVERIFY(helper.GetSelectionRGBA32iImage(1).IsNull());
    QVERIFY(helper.GetSelectionMaskGrayScale(1).IsNull());
    SignalLog log(document.get());
    QCOMPARE(helper.CutSelectionRGBA32iImage(1).Rect(), QRect(0, 0, 10, 10));
    QCOMPARE(helper.CutSelectionMaskGrayScale(1, LXRGBA32i(0xFF000000)).Rect(), QRect(0, 0, 10, 10));
    QCOMPARE(log.Take(), QStringList());
    QCOMPARE(Describe(document.get()), before);
}

void TestSelectionMaskHelper::withoutASelectionNothingIsLifted()
{
    const OwnedDocument document = Make(QSize(40, 30));
    document->AddLayer("layer", Filled(QSize(10, 10), 0xFFFF0000), QPoint());
    document->AddMask(1, true);
    LXSelectionMaskHelper helper(document.get());
    QVERIFY(helper.GetSelectionRGBA32iImage(1).IsNull());
    QVERIFY(helper.GetSelectionMaskGrayScale(1).IsNull());
    QCOMPARE(helper.CutSelectionRGBA32iImage(1).GetColor(3, 3).value, 0xFFFF0000u);
    QCOMPARE(document->GetLayerImage(1)->GetColor(3, 3).value, 0xFFFF0000u);
}

void TestSelectionMaskHelper::badIdsAndMissingMasksGiveNothing()
{
    const OwnedDocument document = Make(QSize(40, 30));
    document->AddLayer("layer", Filled(QSize(10, 10), 0xFFFF0000), QPoint());
    document->SetSelectionMask(Filled(QSize(40, 30), 0xFF000000), QPoint());
    LXSelectionMaskHelper helper(document.get());
    QVERIFY(helper.GetSelectionRGBA32iImage(2).IsNull());
    QVERIFY(helper.CutSelectionRGBA32iImage(2).IsNull());
    QVERIFY(helper.GetSelectionMaskGrayScale(1).IsNull());
    QVERIFY(helper.GetSelectionMaskGrayScale(7).IsNull());
    QVERIFY(helper.CutSelectionMaskGrayScale(1, LXRGBA32i(0xFF000000)).IsNull());
}

void TestSelectionMaskHelper::theMergedPictureCanBeLiftedButNotCut()
{
    const OwnedDocument document = Make(QSize(40, 30));
    document->AddLayer("layer", Filled(QSize(10, 10), 0xFFFF0000), QPoint(5, 5));
    document->SetSelectionMask(Filled(QSize(6, 6), 0x80000000), QPoint(4, 4));
    LXSelectionMaskHelper helper(document.get());
    const LXImage32 lifted = helper.GetSelectionRGBA32iImage(0);
    QCOMPARE(lifted.Rect(), QRect(0, 0, 6, 6));
    QCOMPARE(lifted.GetColor(0, 0).value, 0u);
    QCOMPARE(lifted.GetColor(1, 1).value, 0x80FF0000u);
    QVERIFY(helper.CutSelectionRGBA32iImage(0).IsNull());
    QVERIFY(helper.CutSelectionMaskGrayScale(0, LXRGBA32i(0xFF000000)).IsNull());
}

void TestSelectionMaskHelper::aCallerMayHoldTheReader()
{
    const OwnedDocument document = Make(QSize(40, 30));
    document->AddLayer("layer", Filled(QSize(10, 10), 0xFFFF0000), QPoint());
    document->SetSelectionMask(Filled(QSize(4, 4), 0xFF000000), QPoint());
    const LXDocumentLayerLockerForRead layer(document.get(), 1);
    const LXDocumentSelectionLockerForRead selection(document.get());
    LXSelectionMaskHelper(document.get()).CutSelectionRGBA32iImage(1);
    QCOMPARE(document->GetLayerImage(1)->GetColor(3, 3).value, 0x00FF0000u);
    QCOMPARE(document->GetLayerImage(1)->GetColor(4, 4).value, 0xFFFF0000u);
}

void TestSelectionMaskHelper::boundsAreThoseOfPixelsWithAlpha()
{
    LXImage32 image = Filled(QSize(300, 200), 0x00FFFFFF);
    QCOMPARE(LXSelectionMaskHelper::GetSelectionBoundRect(image), QRect());
    QCOMPARE(LXSelectionMaskHelper::GetSelectionBoundRect(LXImage32()), QRect());
    image.SetColor(7, 150, LXRGBA32i(0x01000000));
    image.SetColor(290, 9, LXRGBA32i(0x01000000));
    QCOMPARE(LXSelectionMaskHelper::GetSelectionBoundRect(image), QRect(QPoint(7, 9), QPoint(290, 150)));
}

void TestSelectionMaskHelper::boundsOfScatteredPixelsAreThoseOfATwin()
{
    Random random(23);
    for (int round = 0; round < 200; ++round) {
        LXImage32 image(Pick(random, 1, 700), Pick(random, 1, 600));
        QRect twin;
        for (int pixels = Pick(random, 0, 6); pixels > 0; --pixels) {
            const QPoint place(Pick(random, 0, image.Width() - 1), Pick(random, 0, image.Height() - 1));
            image.SetColor(place.x(), place.y(), LXRGBA32i(0x01000000));
            twin |= QRect(place, QSize(1, 1));
        }
        QCOMPARE(LXSelectionMaskHelper::GetSelectionBoundRect(image), twin);
    }
}

void TestSelectionMaskHelper::borderOfTransparency()
{
    LXImage32 image = Filled(QSize(300, 200), 0x0AFFFFFF);
    image.SetColor(20, 30, LXRGBA32i(0x0BFFFFFF));
    image.SetColor(200, 40, LXRGBA32i(0x0BFFFFFF));
    using Helper = LXSelectionMaskHelper;
    QCOMPARE(Helper::MakeImageTransparencyBorder(image, 9), QRect(0, 0, 300, 200));
    QCOMPARE(Helper::MakeImageTransparencyBorder(image, 10), QRect(QPoint(20, 30), QPoint(200, 40)));
    QCOMPARE(Helper::MakeImageTransparencyBorder(image, 11), QRect());
    QCOMPARE(Helper::MakeImageTransparencyBorder(image, 0xFFFFFFFFu), QRect());
    QCOMPARE(Helper::MakeImageTransparencyBorder(LXImage32(), 0), QRect());
}

void TestSelectionMaskHelper::borderOfAColor()
{
    LXImage32 image = Filled(QSize(300, 200), 0xFF404040);
    image.SetColor(20, 30, LXRGBA32i(0xFF40404B));
    image.SetColor(200, 40, LXRGBA32i(0x00354040));
    using Helper = LXSelectionMaskHelper;
    const LXRGBA32i color(0x12404040);
    QCOMPARE(Helper::MakeImageBrightnessBorder(image, 10, color), QRect(QPoint(20, 30), QPoint(200, 40)));
    QCOMPARE(Helper::MakeImageBrightnessBorder(image, 11, color), QRect());
    QCOMPARE(Helper::MakeImageBrightnessBorder(image, 0xFFFFFFFFu, color), QRect());
}

ZK_REGISTER_TEST(tst_selectionmaskhelper, TestSelectionMaskHelper)
#include "tst_selectionmaskhelper.moc"
