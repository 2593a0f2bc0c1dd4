#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "support/AdjustmentTwin.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QSignalSpy>
#include <QTest>

using namespace DocumentFixture;

namespace {
LXAdjustment Of(LXAdjustment::Kind kind)
{
    LXAdjustment adjustment;
    adjustment.kind = kind;
    return adjustment;
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

/// The slow twin of an adjustment over everything below: the whole picture in its new colors, opaque, blended
/// on the picture so that the alpha stays.
LXImage32 Adjusted(const LXImage32& below, const LXAdjustment& adjustment, unsigned int mode, double opacity,
                   const LXImage32& coverage)
{
    LXImage32 colors(below.Width(), below.Height());
    for (int y = 0; y < below.Height(); ++y) {
        for (int x = 0; x < below.Width(); ++x) {
            colors.SetColor(x, y, AdjustmentTwin::Adjusted(adjustment, below.GetColor(x, y)));
        }
    }
    LXImage32 result = below;
    BlendMaskOn(colors, colors.Rect(), mode, result, result.Rect(), opacity, coverage, coverage.Rect(), true,
                false);
    return result;
}
} // namespace

class TestAdjustmentLayers : public QObject
{
    Q_OBJECT

private slots:
    void itHasNoPixelsAndLiesEverywhere();
    void itChangesWhatLiesBelow_data();
    void itChangesWhatLiesBelow();
    void whatLiesAboveStaysAsItIs();
    void transparentPixelsStayTransparent();
    void insideAMaskOnly();
    void severalWorkOneAfterTheOther();
    void onlyWhatChangedBelowIsComposedAnew();
    void aChangeIsToldForTheWholeCanvas();
    void itDoesNotMove();
    void layersOfOtherKindsHaveNoAdjustment();
    void aCopyOfTheDocumentHasIt();
    void itWorksOnAnEmptyCanvasAndAfterAResize();
};

void TestAdjustmentLayers::itHasNoPixelsAndLiesEverywhere()
{
    const OwnedDocument document = Make(QSize(300, 200));
    LXAdjustment adjustment = Of(LXAdjustment::Levels);
    adjustment.inWhite = 400;
    QCOMPARE(document->AddAdjustmentLayer("Levels", adjustment), 1U);
    QCOMPARE(document->GetLayerKind(1), LayerKind::Adjustment);
    QVERIFY(document->GetLayerImage(1)->IsNull());
    QVERIFY(document->GetLayerGeometry(1).isEmpty());
    QCOMPARE(document->GetAdjustment(1).inWhite, 255);
    QVERIFY(!document->IsLayerEditable(1));
    const QModelIndex row = document->GetModel()->index(0);
    QCOMPARE(row.data(LXDocumentModel::KindRole).toInt(), LayerKind::Adjustment);
    QCOMPARE(row.data(LXDocumentModel::AdjustmentRole).value<LXAdjustment>().kind, LXAdjustment::Levels);
}

void TestAdjustmentLayers::itChangesWhatLiesBelow_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<unsigned int>("mode");
    QTest::addColumn<double>("opacity");
    for (const auto kind : {LXAdjustment::BrightnessContrast, LXAdjustment::Levels,
                            LXAdjustment::HueSaturation, LXAdjustment::Invert}) {
        for (const unsigned int mode : {BlendMode::Normal, BlendMode::Multiply, BlendMode::SoftLight}) {
            for (const double opacity : {1.0, 0.4}) {
                QTest::addRow("kind %d, mode %u, opacity %g", kind, mode, opacity)
                    << int(kind) << mode << opacity;
            }
        }
    }
}

void TestAdjustmentLayers::itChangesWhatLiesBelow()
{
    QFETCH(const int, kind);
    QFETCH(const unsigned int, mode);
    QFETCH(const double, opacity);
    Random random(7);
    const QSize size(300, 150);
    const OwnedDocument document = Make(size);
    document->AddLayer("ground", Noise(random, QSize(200, 100)), QPoint(60, 20));
    const LXImage32 below = Merged(document.get());

    LXAdjustment adjustment = Of(static_cast<LXAdjustment::Kind>(kind));
    adjustment.brightness = 12;
    adjustment.contrast = 30;
    adjustment.inBlack = 20;
    adjustment.gamma = 1.7;
    adjustment.hue = 180; // whole numbers in every precision
    document->AddAdjustmentLayer("adjustment", adjustment);
    document->GetModel()->SetBlendMode(0, mode);
    document->GetModel()->SetOpacity(0, opacity);
    const LXImage32 expected = Adjusted(below, adjustment, mode, opacity, Filled(size, 0xFF000000));
    QVERIFY(AreEqual(Merged(document.get()), expected));
    QVERIFY(!AreEqual(expected, below));

    document->GetModel()->SetVisible(0, false);
    QVERIFY(AreEqual(Merged(document.get()), below));
}

void TestAdjustmentLayers::whatLiesAboveStaysAsItIs()
{
    const OwnedDocument document = Make(QSize(200, 100));
    document->AddLayer("ground", Filled(QSize(200, 100), 0xFF102030), QPoint());
    document->AddAdjustmentLayer("invert", Of(LXAdjustment::Invert));
    document->AddLayer("above", Filled(QSize(100, 100), 0xFF405060), QPoint());
    const LXImage32 merged = Merged(document.get());
    QCOMPARE(merged.GetColor(50, 50).value, 0xFF405060U);
    QCOMPARE(merged.GetColor(150, 50).value, 0xFFEFDFCFU);
}

void TestAdjustmentLayers::transparentPixelsStayTransparent()
{
    const OwnedDocument document = Make(QSize(100, 50));
    document->AddLayer("soft", Filled(QSize(50, 50), 0x80FF0000), QPoint());
    document->AddAdjustmentLayer("invert", Of(LXAdjustment::Invert));
    const LXImage32 merged = Merged(document.get());
    QCOMPARE(merged.GetColor(10, 10).value, 0x8000FFFFU);
    QCOMPARE(merged.GetColor(80, 10).Alpha(), 0U);
}

void TestAdjustmentLayers::insideAMaskOnly()
{
    Random random(3);
    const QSize size(260, 140);
    for (const bool reveals : {true, false}) {
        const OwnedDocument document = Make(size);
        document->AddLayer("ground", Noise(random, size), QPoint());
        const LXImage32 below = Merged(document.get());
        document->AddAdjustmentLayer("invert", Of(LXAdjustment::Invert));
        document->AddMask(1, reveals);
        const LXImage32 mask = MaskNoise(random, QSize(90, 60));
        document->SetMaskImage(1, mask, QPoint(100, 50));
        LXImage32 coverage = Filled(size, reveals ? 0xFF000000 : 0);
        BlendOn(mask, mask.Rect(), BlendMode::Source, coverage, mask.Rect().translated(100, 50), 1.0, false);
        QVERIFY(AreEqual(Merged(document.get()),
                         Adjusted(below, Of(LXAdjustment::Invert), BlendMode::Normal, 1.0, coverage)));
        // The mask moves, the adjustment with it.
        document->SetMaskOffset(1, QPoint(0, 0));
        coverage = Filled(size, reveals ? 0xFF000000 : 0);
        BlendOn(mask, mask.Rect(), BlendMode::Source, coverage, mask.Rect(), 1.0, false);
        QVERIFY(AreEqual(Merged(document.get()),
                         Adjusted(below, Of(LXAdjustment::Invert), BlendMode::Normal, 1.0, coverage)));
    }
}

void TestAdjustmentLayers::severalWorkOneAfterTheOther()
{
    const OwnedDocument document = Make(QSize(100, 50));
    document->AddLayer("ground", Filled(QSize(100, 50), 0xFF646464), QPoint());
    LXAdjustment brighter;
    brighter.brightness = 20; // 100 becomes 151
    document->AddAdjustmentLayer("brighter", brighter);
    document->AddAdjustmentLayer("invert", Of(LXAdjustment::Invert));
    QCOMPARE(Merged(document.get()).GetColor(5, 5).value, 0xFF686868U);
    document->GetModel()->MoveLayer(0, 1); // first turned round: 155 becomes 206
    QCOMPARE(Merged(document.get()).GetColor(5, 5).value, 0xFFCECECEU);
}

void TestAdjustmentLayers::onlyWhatChangedBelowIsComposedAnew()
{
    const OwnedDocument document = Make(QSize(512, 512));
    document->AddLayer("ground", Filled(QSize(512, 512), 0xFF102030), QPoint());
    document->AddLayer("spot", Filled(QSize(20, 20), 0xFFFFFFFF), QPoint(10, 10));
    document->AddAdjustmentLayer("invert", Of(LXAdjustment::Invert));
    Merged(document.get());
    const quint64 before = ComposedTiles(document.get());
    document->SetLayerOffset(2, QPoint(50, 60));
    const LXImage32 merged = Merged(document.get());
    QCOMPARE(ComposedTiles(document.get()), before + 1);
    QCOMPARE(merged.GetColor(60, 70).value, 0xFF000000U);
    QCOMPARE(merged.GetColor(15, 15).value, 0xFFEFDFCFU);
}

void TestAdjustmentLayers::aChangeIsToldForTheWholeCanvas()
{
    const OwnedDocument document = Make(QSize(200, 100));
    document->AddLayer("ground", Filled(QSize(200, 100), 0xFF102030), QPoint());
    document->AddAdjustmentLayer("adjustment", Of(LXAdjustment::Levels));
    Merged(document.get());
    QSignalSpy composed(document.get(), &LXDocumentInterface::CompositionChanged);
    QSignalSpy data(document.get(), &LXDocumentInterface::LayerDataChanged);
    LXAdjustment adjustment = Of(LXAdjustment::Levels);
    adjustment.outBlack = 255;
    document->SetAdjustment(1, adjustment);
    QCOMPARE(data.count(), 1);
    QCOMPARE(composed.count(), 1);
    QCOMPARE(composed.first().first().toRect(), QRect(0, 0, 200, 100));
    QCOMPARE(Merged(document.get()).GetColor(100, 50).value, 0xFFFFFFFFU);
    document->SetAdjustment(1, adjustment);
    QCOMPARE(composed.count(), 1);
}

void TestAdjustmentLayers::itDoesNotMove()
{
    const OwnedDocument document = Make(QSize(100, 50));
    document->AddLayer("ground", Filled(QSize(100, 50), 0xFF102030), QPoint());
    document->AddAdjustmentLayer("invert", Of(LXAdjustment::Invert));
    const QStringList before = DescribeWhole(document.get());
    SignalLog log(document.get());
    document->SetLayerOffset(1, QPoint(30, 30));
    document->SetLayerMaskOffset(1, QPoint(30, 30), QPoint(4, 4));
    QCOMPARE(log.Take(), QStringList());
    QCOMPARE(DescribeWhole(document.get()), before);
}

void TestAdjustmentLayers::layersOfOtherKindsHaveNoAdjustment()
{
    const OwnedDocument document = Make(QSize(100, 50));
    document->AddLayer("ground", Filled(QSize(100, 50), 0xFF102030), QPoint());
    SignalLog log(document.get());
    document->SetAdjustment(1, Of(LXAdjustment::Invert));
    document->SetAdjustment(0, Of(LXAdjustment::Invert));
    document->SetAdjustment(7, Of(LXAdjustment::Invert));
    QCOMPARE(log.Take(), QStringList());
    QVERIFY(document->GetAdjustment(1) == LXAdjustment());
    QVERIFY(!document->GetModel()->index(0).data(LXDocumentModel::AdjustmentRole).isValid());
}

void TestAdjustmentLayers::aCopyOfTheDocumentHasIt()
{
    const OwnedDocument document = Make(QSize(100, 50));
    document->AddLayer("ground", Filled(QSize(100, 50), 0xFF102030), QPoint());
    document->AddAdjustmentLayer("invert", Of(LXAdjustment::Invert));
    const OwnedDocument copy(LXDocumentFactory::Instance()->Copy(document.get()));
    QCOMPARE(Merged(copy.get()).GetColor(5, 5).value, 0xFFEFDFCFU);
}

void TestAdjustmentLayers::itWorksOnAnEmptyCanvasAndAfterAResize()
{
    const OwnedDocument document = Make(QSize(100, 50));
    document->AddAdjustmentLayer("invert", Of(LXAdjustment::Invert));
    QCOMPARE(Merged(document.get()).GetColor(5, 5).value, 0U);
    document->AddLayer("ground", Filled(QSize(400, 300), 0xFF102030), QPoint(), 1);
    document->SetDocumentSize(QSize(400, 300));
    QCOMPARE(Merged(document.get()).GetColor(399, 299).value, 0xFFEFDFCFU);
}

ZK_REGISTER_TEST(tst_adjustmentlayers, TestAdjustmentLayers)
#include "tst_adjustmentlayers.moc"
