#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "document/LXDocumentModel.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <future>

using namespace DocumentFixture;

namespace {
constexpr quint32 Red = 0xFFFF0000;
constexpr quint32 Green = 0xFF00FF00;

quint32 Merged(LXDocumentInterface* document, int x, int y)
{
    const LXDocumentLayerLockerForRead locker(document, 0);
    return document->GetLayerImage(0)->GetColor(x, y).value;
}

/// A document of 40 x 30 with one layer of one color that fills it.
OwnedDocument MakeWithLayer(quint32 argb)
{
    OwnedDocument document = Make(QSize(40, 30));
    document->AddLayer("layer", Filled(QSize(40, 30), argb), QPoint());
    return document;
}

/// Gives layer 1 a mask of one value.
void GiveMask(LXDocumentInterface* document, quint32 value, const QRect& rect, bool reveals)
{
    document->AddMask(1, reveals);
    document->SetMaskImage(1, Filled(rect.size(), value << 24), rect.topLeft());
}

void Float(LXDocumentInterface* document, const LXImage32& image, const QPoint& place)
{
    document->CreateAdditionalLayer(1);
    *document->GetAdditionalLayerImage(1) = image;
    document->SetAdditionalLayerPosition(1, place);
    document->ShowAdditionalLayer(1);
}

void FloatOnMask(LXDocumentInterface* document, const LXImage32& gray, const QPoint& place)
{
    document->CreateAdditionalMask(1);
    *document->GetAdditionalMaskImage(1) = gray;
    document->SetAdditionalMaskPosition(1, place);
    document->ShowAdditionalMask(1);
}
} // namespace

class TestDocumentOverlay : public QObject
{
    Q_OBJECT

private slots:
    void creatingAsksForTheOlderPieceFirst();
    void whatTheAskedOnePutsDownIsKept();
    void anOlderOverlayThatNobodyTookIsDropped();
    void nothingShowsBeforeShow();
    void itLiesBeforeOpacityAndMask();
    void itLiesBeforeTheBlendMode();
    void translucentPixelsAreBlendedInModeZero();
    void itShowsBeyondTheLayer();
    void itShowsOverAnEmptyLayer();
    void aHiddenLayerHidesIt();
    void grayGoesIntoTheMask();
    void grayBeyondTheMaskStartsFromTheDefault();
    void moving();
    void itGoesAlongWhenRowsChange();
    void itsSizeFollowsTheWriter();
    void showAndRemoveTwiceAreHarmless();
    void badIdsAndMissingMasksAreHarmless();
    void invalidatingTellsNobody();
    void outsideChangesAreTold();
    void anOperationBeginsByPuttingDownEveryPiece();
    void anOperationEndsByRecomposingEverything();
    void aPinnedMaskOverlayKeepsWritersOut();
    void aCopyHasItPutDown();
    void theLayersOwnPixelsStay();
};

void TestDocumentOverlay::creatingAsksForTheOlderPieceFirst()
{
    const OwnedDocument document = MakeWithLayer(Red);
    document->AddMask(1, true);
    SignalLog log(document.get());
    document->CreateAdditionalLayer(1);
    document->CreateAdditionalMask(1);
    QCOMPARE(log.Take(), QStringList({"AboutRequesAdditionalLayer 1", "AboutRequesAdditionalMask 1"}));
    QVERIFY(document->GetAdditionalLayerImage(1)->IsNull());
    QVERIFY(document->GetAdditionalMaskImage(1)->IsNull());
}

void TestDocumentOverlay::whatTheAskedOnePutsDownIsKept()
{
    const OwnedDocument document = MakeWithLayer(Red);
    Float(document.get(), Filled(QSize(5, 5), Green), QPoint(3, 3));
    connect(document.get(), &LXDocumentInterface::AboutRequesAdditionalLayer, document.get(), [&](uint id) {
        document->RemoveAdditionalLayer(id);
        document->SetLayerImage(id, Filled(QSize(5, 5), Green), QPoint(3, 3));
    });
    document->CreateAdditionalLayer(1);
    QVERIFY(document->GetAdditionalLayerImage(1)->IsNull());
    QCOMPARE(Merged(document.get(), 4, 4), Green);
    QCOMPARE(Merged(document.get(), 0, 0), 0u);
}

void TestDocumentOverlay::anOlderOverlayThatNobodyTookIsDropped()
{
    const OwnedDocument document = MakeWithLayer(Red);
    Float(document.get(), Filled(QSize(5, 5), Green), QPoint(3, 3));
    QCOMPARE(Merged(document.get(), 4, 4), Green);
    document->CreateAdditionalLayer(1);
    QVERIFY(document->GetAdditionalLayerImage(1)->IsNull());
    QCOMPARE(document->GetAdditionalLayerGeometry(1), QRect());
    QCOMPARE(Merged(document.get(), 4, 4), Red);
}

void TestDocumentOverlay::nothingShowsBeforeShow()
{
    const OwnedDocument document = MakeWithLayer(Red);
    document->CreateAdditionalLayer(1);
    *document->GetAdditionalLayerImage(1) = Filled(QSize(5, 4), Green);
    document->SetAdditionalLayerPosition(1, QPoint(3, 2));
    QCOMPARE(document->GetAdditionalLayerGeometry(1), QRect(3, 2, 5, 4));
    document->UpdateDocumentRect(QRect());
    QCOMPARE(Merged(document.get(), 4, 4), Red);

    SignalLog log(document.get());
    document->ShowAdditionalLayer(1);
    QCOMPARE(log.Take(), QStringList("CompositionChanged (3,2 5x4)"));
    QCOMPARE(Merged(document.get(), 3, 2), Green);
    QCOMPARE(Merged(document.get(), 7, 5), Green);
    QCOMPARE(Merged(document.get(), 8, 5), Red);
    QCOMPARE(Merged(document.get(), 7, 6), Red);
}

/// 255 x 0.5 x 128 / 255 = 64, over nothing.
void TestDocumentOverlay::itLiesBeforeOpacityAndMask()
{
    const OwnedDocument document = MakeWithLayer(Red);
    GiveMask(document.get(), 128, QRect(0, 0, 40, 30), true);
    document->GetModel()->SetOpacity(0, 0.5);
    Float(document.get(), Filled(QSize(5, 5), Green), QPoint(2, 2));
    QCOMPARE(Merged(document.get(), 2, 2), 0x4000FF00u);
    QCOMPARE(Merged(document.get(), 0, 0), 0x40FF0000u);
}

/// Multiply: 128 x 100 / 255 = 50.2.
void TestDocumentOverlay::itLiesBeforeTheBlendMode()
{
    const OwnedDocument document = MakeWithLayer(0xFFFFFFFF);
    document->AddLayer("below", Filled(QSize(40, 30), 0xFF808080), QPoint(), 1);
    document->GetModel()->SetBlendMode(0, BlendMode::Multiply);
    Float(document.get(), Filled(QSize(5, 5), 0xFF646464), QPoint(2, 2));
    QCOMPARE(Merged(document.get(), 2, 2), 0xFF323232u);
    QCOMPARE(Merged(document.get(), 0, 0), 0xFF808080u);
}

/// s = 128, d = 100: alpha = 128 + 100 x 127 / 255 = 178; weights 255 x 128 = 32640 and 100 x 127 = 12700, so
/// red = 200 x 12700 / 45340 = 56.0 and blue = 250 x 32640 / 45340 = 180.0.
void TestDocumentOverlay::translucentPixelsAreBlendedInModeZero()
{
    const OwnedDocument document = MakeWithLayer(0x64C80000);
    Float(document.get(), Filled(QSize(5, 5), 0x800000FA), QPoint(2, 2));
    QCOMPARE(Merged(document.get(), 2, 2), 0xB23800B4u);
}

void TestDocumentOverlay::itShowsBeyondTheLayer()
{
    const OwnedDocument document = Make(QSize(300, 200));
    document->AddLayer("small", Filled(QSize(10, 10), Red), QPoint(5, 5));
    Float(document.get(), Filled(QSize(20, 20), Green), QPoint(120, 120));
    QCOMPARE(Merged(document.get(), 6, 6), Red);
    QCOMPARE(Merged(document.get(), 120, 120), Green);
    QCOMPARE(Merged(document.get(), 139, 139), Green);
    QCOMPARE(Merged(document.get(), 119, 119), 0u);
    QCOMPARE(Merged(document.get(), 140, 139), 0u);
}

void TestDocumentOverlay::itShowsOverAnEmptyLayer()
{
    const OwnedDocument document = Make(QSize(40, 30));
    document->AddLayer("empty", LXImage32(), QPoint());
    Float(document.get(), Filled(QSize(5, 5), Green), QPoint(36, 26));
    QCOMPARE(Merged(document.get(), 39, 29), Green);
    QCOMPARE(Merged(document.get(), 35, 29), 0u);
}

void TestDocumentOverlay::aHiddenLayerHidesIt()
{
    const OwnedDocument document = MakeWithLayer(Red);
    document->GetModel()->SetVisible(0, false);
    Float(document.get(), Filled(QSize(5, 5), Green), QPoint(2, 2));
    QCOMPARE(Merged(document.get(), 2, 2), 0u);
}

/// Full coverage replaces the mask's 100 by 200; half gives (200 x 128 + 127 x 100) / 255 = 150.
void TestDocumentOverlay::grayGoesIntoTheMask()
{
    const OwnedDocument document = MakeWithLayer(Red);
    GiveMask(document.get(), 100, QRect(0, 0, 40, 30), true);
    LXImage32 gray = Filled(QSize(2, 1), 0xFFC8C8C8);
    gray.SetColor(1, 0, LXRGBA32i(0x80C8C8C8));
    FloatOnMask(document.get(), gray, QPoint(4, 4));
    QCOMPARE(Merged(document.get(), 3, 4), 0x64FF0000u);
    QCOMPARE(Merged(document.get(), 4, 4), 0xC8FF0000u);
    QCOMPARE(Merged(document.get(), 5, 4), 0x96FF0000u);
    QCOMPARE(Merged(document.get(), 6, 4), 0x64FF0000u);
}

/// Ground that reveals: (200 x 128 + 127 x 255) / 255 = 227; ground that hides: 200 x 128 / 255 = 100.
void TestDocumentOverlay::grayBeyondTheMaskStartsFromTheDefault()
{
    for (const bool reveals : {true, false}) {
        const OwnedDocument document = MakeWithLayer(Red);
        GiveMask(document.get(), 100, QRect(0, 0, 10, 10), reveals);
        FloatOnMask(document.get(), Filled(QSize(10, 10), 0x80C8C8C8), QPoint(20, 20));
        QCOMPARE(Merged(document.get(), 25, 25), reveals ? 0xE3FF0000u : 0x64FF0000u);
        QCOMPARE(Merged(document.get(), 15, 25), reveals ? Red : 0u);
    }
}

void TestDocumentOverlay::moving()
{
    const OwnedDocument document = MakeWithLayer(Red);
    Float(document.get(), Filled(QSize(5, 5), Green), QPoint(2, 2));
    QCOMPARE(Merged(document.get(), 2, 2), Green);
    SignalLog log(document.get());
    document->SetAdditionalLayerPosition(1, QPoint(-3, 20));
    QCOMPARE(log.Take(), QStringList());
    QCOMPARE(document->GetAdditionalLayerGeometry(1), QRect(-3, 20, 5, 5));
    QCOMPARE(Merged(document.get(), 2, 2), Red);
    QCOMPARE(Merged(document.get(), 1, 20), Green);
    QCOMPARE(Merged(document.get(), 2, 20), Red);

    document->UpdateDocumentRect(QRect(0, 20, 2, 5));
    QCOMPARE(log.Take(), QStringList("CompositionChanged (0,20 2x5)"));
}

void TestDocumentOverlay::itGoesAlongWhenRowsChange()
{
    const OwnedDocument document = MakeWithLayer(Red);
    Float(document.get(), Filled(QSize(5, 5), Green), QPoint(2, 2));
    document->AddLayer("above", LXImage32(40, 30), QPoint());
    QVERIFY(!document->GetAdditionalLayerImage(1));
    QCOMPARE(document->GetAdditionalLayerGeometry(2), QRect(2, 2, 5, 5));
    document->GetModel()->MoveLayer(1, 0);
    QCOMPARE(document->GetAdditionalLayerGeometry(1), QRect(2, 2, 5, 5));
    QCOMPARE(Merged(document.get(), 2, 2), Green);
}

void TestDocumentOverlay::itsSizeFollowsTheWriter()
{
    const OwnedDocument document = MakeWithLayer(Red);
    Float(document.get(), Filled(QSize(5, 5), Green), QPoint(2, 2));
    {
        const LXDocumentLayerLockerForWrite locker(document.get(), 1);
        *document->GetAdditionalLayerImage(1) = Filled(QSize(9, 3), Green);
    }
    QCOMPARE(document->GetAdditionalLayerGeometry(1), QRect(2, 2, 9, 3));
}

void TestDocumentOverlay::showAndRemoveTwiceAreHarmless()
{
    const OwnedDocument document = MakeWithLayer(Red);
    Float(document.get(), Filled(QSize(5, 5), Green), QPoint(2, 2));
    SignalLog log(document.get());
    document->ShowAdditionalLayer(1);
    QCOMPARE(log.Take(), QStringList());
    document->RemoveAdditionalLayer(1);
    QCOMPARE(log.Take(), QStringList("CompositionChanged (2,2 5x5)"));
    QCOMPARE(Merged(document.get(), 2, 2), Red);
    QVERIFY(!document->GetAdditionalLayerImage(1));
    QCOMPARE(document->GetAdditionalLayerGeometry(1), QRect());
    document->RemoveAdditionalLayer(1);
    document->ShowAdditionalLayer(1);
    QCOMPARE(log.Take(), QStringList());
    QCOMPARE(document->GetAdditionalLayerGeometry(1), QRect());
}

void TestDocumentOverlay::badIdsAndMissingMasksAreHarmless()
{
    const OwnedDocument document = MakeWithLayer(Red);
    SignalLog log(document.get());
    for (const unsigned int id : {0u, 2u, 99u}) {
        document->CreateAdditionalLayer(id);
        document->SetAdditionalLayerPosition(id, QPoint(1, 1));
        document->ShowAdditionalLayer(id);
        QVERIFY(!document->GetAdditionalLayerImage(id));
        QCOMPARE(document->GetAdditionalLayerGeometry(id), QRect());
        document->RemoveAdditionalLayer(id);
        document->AdditionalLayerDataChangedExternal(id, QRect());
    }
    for (const unsigned int id : {0u, 1u, 2u}) {
        document->CreateAdditionalMask(id);
        document->SetAdditionalMaskPosition(id, QPoint(1, 1));
        document->ShowAdditionalMask(id);
        QVERIFY(!document->GetAdditionalMaskImage(id));
        QCOMPARE(document->GetAdditionalMaskGeometry(id), QRect());
        document->BeginAdditionalMaskRead(id);
        document->EndAdditionalMaskRead(id);
        document->RemoveAdditionalMask(id);
    }
    QCOMPARE(log.Take(), QStringList());
}

void TestDocumentOverlay::invalidatingTellsNobody()
{
    const OwnedDocument document = MakeWithLayer(Red);
    Float(document.get(), Filled(QSize(5, 5), Green), QPoint(2, 2));
    QCOMPARE(Merged(document.get(), 2, 2), Green);
    SignalLog log(document.get());
    {
        const LXDocumentLayerLockerForWrite locker(document.get(), 1);
        document->GetAdditionalLayerImage(1)->Fill(LXRGBA32i(0xFF0000FF));
    }
    QCOMPARE(Merged(document.get(), 2, 2), Green);
    document->InvalidateAdditionalLayer(1, QRect());
    QCOMPARE(Merged(document.get(), 2, 2), Green);
    document->InvalidateAdditionalLayer(1, QRect(2, 2, 5, 5));
    QCOMPARE(Merged(document.get(), 2, 2), 0xFF0000FFu);
    QCOMPARE(log.Take(), QStringList());
}

void TestDocumentOverlay::outsideChangesAreTold()
{
    const OwnedDocument document = MakeWithLayer(Red);
    Float(document.get(), Filled(QSize(5, 5), Green), QPoint(38, 2));
    SignalLog log(document.get());
    document->AdditionalLayerDataChangedExternal(1, QRect(38, 2, 1, 1));
    document->AdditionalLayerDataChangedExternal(1, QRect());
    QCOMPARE(log.Take(), QStringList({"CompositionChanged (38,2 1x1)", "CompositionChanged (38,2 2x5)"}));
}

void TestDocumentOverlay::anOperationBeginsByPuttingDownEveryPiece()
{
    const OwnedDocument document = MakeWithLayer(Red);
    document->AddLayer("middle", LXImage32(4, 4), QPoint(), 1);
    document->AddLayer("low", LXImage32(4, 4), QPoint(), 2);
    document->AddMask(3, true);
    document->CreateAdditionalLayer(1);
    document->CreateAdditionalMask(3);
    SignalLog log(document.get());
    document->BeginOperation();
    QCOMPARE(log.Take(), QStringList({"AboutRequesAdditionalLayer 1", "AboutRequesAdditionalMask 3"}));
}

void TestDocumentOverlay::anOperationEndsByRecomposingEverything()
{
    const OwnedDocument document = MakeWithLayer(Red);
    document->BeginOperation();
    SignalLog log(document.get());
    document->EndOperation();
    QCOMPARE(log.Take(), QStringList("CompositionChanged (0,0 40x30)"));
}

void TestDocumentOverlay::aPinnedMaskOverlayKeepsWritersOut()
{
    const OwnedDocument document = MakeWithLayer(Red);
    document->AddMask(1, true);
    document->CreateAdditionalMask(1);
    document->BeginAdditionalMaskRead(1);
    document->BeginAdditionalMaskRead(1);
    const auto writer = std::async(std::launch::async,
                                   [&] { const LXDocumentLayerLockerForWrite locker(document.get(), 1); });
    document->EndAdditionalMaskRead(1);
    QCOMPARE(writer.wait_for(std::chrono::milliseconds(30)), std::future_status::timeout);
    document->EndAdditionalMaskRead(1);
    QCOMPARE(writer.wait_for(std::chrono::seconds(20)), std::future_status::ready);
    document->EndAdditionalMaskRead(1);
}

void TestDocumentOverlay::aCopyHasItPutDown()
{
    const OwnedDocument document = MakeWithLayer(Red);
    GiveMask(document.get(), 100, QRect(0, 0, 10, 10), false);
    Float(document.get(), Filled(QSize(5, 5), Green), QPoint(38, 2));
    FloatOnMask(document.get(), Filled(QSize(5, 5), 0xFFC8C8C8), QPoint(38, 2));
    const OwnedDocument copy(LXDocumentFactory::Instance()->Copy(document.get()));
    QVERIFY(!copy->GetAdditionalLayerImage(1));
    QCOMPARE(copy->GetLayerGeometry(1), QRect(0, 0, 43, 30));
    QCOMPARE(copy->GetMaskGeometry(1), QRect(0, 0, 43, 10));
    QCOMPARE(copy->GetLayerImage(1)->GetColor(42, 2).value, Green);
    QCOMPARE(copy->GetLayerImage(1)->GetColor(42, 8).value, 0u);
    QCOMPARE(copy->GetMaskImage(1)->GetColor(20, 2).value, 0u);
    QCOMPARE(Merged(copy.get(), 39, 3), 0xC800FF00u);

    const LXDocumentLayerLockerForRead shown(document.get(), 0);
    const LXDocumentLayerLockerForRead copied(copy.get(), 0);
    QVERIFY(AreEqual(*copy->GetLayerImage(0), *document->GetLayerImage(0)));
}

void TestDocumentOverlay::theLayersOwnPixelsStay()
{
    const OwnedDocument document = MakeWithLayer(Red);
    const QStringList before = Describe(document.get());
    Float(document.get(), Filled(QSize(5, 5), Green), QPoint(2, 2));
    QCOMPARE(Merged(document.get(), 2, 2), Green);
    QCOMPARE(Describe(document.get()), before);
    document->RemoveAdditionalLayer(1);
    QCOMPARE(Describe(document.get()), before);
}

ZK_REGISTER_TEST(tst_documentoverlay, TestDocumentOverlay)
#include "tst_documentoverlay.moc"
