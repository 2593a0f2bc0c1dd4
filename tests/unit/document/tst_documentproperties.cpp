#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentModel.h"
#include "document/LayerLocks.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QSignalSpy>
#include <QTest>

#include <limits>
#include <thread>

using namespace DocumentFixture;

class TestDocumentProperties : public QObject
{
    Q_OBJECT

private slots:
    void theResolutionIsToldWhenItChanges();
    void aResolutionThatIsNoneIsIgnored();
    void theUnitIsOneOfThree();
    void guidesKeepTheirOrder();
    void theProfileIsToldWhenItChanges();
    void aCopyTakesEverythingOver();
    void aStoppedCompositionIsToldOnceAtTheEnd();
    void stopsNest();
    void resumingWithoutAStopIsHarmless();
    void aStoppedCompositionStillComposesForWhoLooks();
    void aWorkersChangeWhileStoppedIsHeldBack();
    void aSmallerCanvasCutsWhatWasHeldBack();
    void pixelsAreReadWhereTheLayerLies();
    void pixelsOutsideAreNoPixels();
    void locksThatKeepSelectedPixels_data();
    void locksThatKeepSelectedPixels();
    void onlyRasterLayersAreEditable();
};

void TestDocumentProperties::theResolutionIsToldWhenItChanges()
{
    const OwnedDocument document = Make(QSize(10, 10));
    QSignalSpy told(document.get(), &LXDocumentInterface::ResolutionChanged);
    QCOMPARE(document->GetDPI(), 72.0);
    document->SetDPI(300);
    document->SetDPI(300);
    QCOMPARE(document->GetDPI(), 300.0);
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.at(0).at(0).toDouble(), 300.0);
}

void TestDocumentProperties::aResolutionThatIsNoneIsIgnored()
{
    const OwnedDocument document = Make(QSize(10, 10));
    using Limits = std::numeric_limits<double>;
    for (const double dpi : {0.0, -1.0, Limits::quiet_NaN(), Limits::infinity()}) {
        document->SetDPI(dpi);
        QCOMPARE(document->GetDPI(), 72.0);
    }
}

void TestDocumentProperties::theUnitIsOneOfThree()
{
    const OwnedDocument document = Make(QSize(10, 10));
    QSignalSpy told(document.get(), &LXDocumentInterface::UnitChanged);
    QCOMPARE(document->GetUnit(), 0);
    document->SetUnit(2);
    for (const int unit : {2, -1, 3}) {
        document->SetUnit(unit);
        QCOMPARE(document->GetUnit(), 2);
    }
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.at(0).at(0).toInt(), 2);
}

void TestDocumentProperties::guidesKeepTheirOrder()
{
    const OwnedDocument document = Make(QSize(10, 10));
    QSignalSpy told(document.get(), &LXDocumentInterface::GuidesChanged);
    QVERIFY(document->GetGuides().isEmpty());
    const LXGuides guides{{Qt::Vertical, 7.5}, {Qt::Horizontal, -3.0}, {Qt::Vertical, 2.0}};
    document->SetGuides(guides);
    document->SetGuides(guides);
    QCOMPARE(told.size(), 1);
    QCOMPARE(document->GetGuides().size(), 3);
    QCOMPARE(document->GetGuides().at(0).position, 7.5);
    QVERIFY(document->GetGuides().at(1).orientation == Qt::Horizontal);
    QCOMPARE(document->GetGuides().at(2).position, 2.0);
    document->SetGuides({});
    QCOMPARE(told.size(), 2);
    QVERIFY(document->GetGuides().isEmpty());
}

void TestDocumentProperties::theProfileIsToldWhenItChanges()
{
    const OwnedDocument document = Make(QSize(10, 10));
    QSignalSpy told(document.get(), &LXDocumentInterface::ICCProfileChanged);
    QVERIFY(document->GetICCProfile().IsNull());
    document->SetICCProfile(ZKCMSProfile(QByteArray("icc")));
    document->SetICCProfile(ZKCMSProfile(QByteArray("icc")));
    QCOMPARE(told.size(), 1);
    QCOMPARE(document->GetICCProfile().GetData(), QByteArray("icc"));
}

void TestDocumentProperties::aCopyTakesEverythingOver()
{
    const OwnedDocument document = Make(QSize(10, 10));
    document->SetDocumentName("Name");
    document->SetDPI(240);
    document->SetUnit(1);
    document->SetGuides({{Qt::Vertical, 4.0}});
    document->SetICCProfile(ZKCMSProfile(QByteArray("icc")));
    const OwnedDocument copy(LXDocumentFactory::Instance()->Copy(document.get()));
    QCOMPARE(copy->GetDocumentName(), QString("Name"));
    QCOMPARE(copy->GetDPI(), 240.0);
    QCOMPARE(copy->GetUnit(), 1);
    QVERIFY(copy->GetGuides() == document->GetGuides());
    QCOMPARE(copy->GetICCProfile(), document->GetICCProfile());
}

void TestDocumentProperties::aStoppedCompositionIsToldOnceAtTheEnd()
{
    const OwnedDocument document = Make(QSize(100, 100));
    SignalLog log(document.get());
    QVERIFY(!document->IsCompositionStopped());
    document->StopComposition();
    QVERIFY(document->IsCompositionStopped());
    document->UpdateDocumentRect(QRect(10, 10, 5, 5));
    document->UpdateDocumentRect(QRect(30, 40, 10, 10));
    QCOMPARE(log.Take(), QStringList());
    document->ResumeComposition();
    QVERIFY(!document->IsCompositionStopped());
    QCOMPARE(log.Take(), QStringList("CompositionChanged (10,10 30x40)"));
    document->StopComposition();
    document->ResumeComposition();
    QCOMPARE(log.Take(), QStringList());
}

void TestDocumentProperties::stopsNest()
{
    const OwnedDocument document = Make(QSize(100, 100));
    SignalLog log(document.get());
    document->StopComposition();
    document->StopComposition();
    document->UpdateDocumentRect(QRect());
    document->ResumeComposition();
    QVERIFY(document->IsCompositionStopped());
    QCOMPARE(log.Take(), QStringList());
    document->ResumeComposition();
    QCOMPARE(log.Take(), QStringList("CompositionChanged (0,0 100x100)"));
}

void TestDocumentProperties::resumingWithoutAStopIsHarmless()
{
    const OwnedDocument document = Make(QSize(100, 100));
    document->ResumeComposition();
    QVERIFY(!document->IsCompositionStopped());
    document->StopComposition();
    QVERIFY(document->IsCompositionStopped());
}

void TestDocumentProperties::aStoppedCompositionStillComposesForWhoLooks()
{
    const OwnedDocument document = Make(QSize(100, 100));
    document->StopComposition();
    document->AddLayer("layer", Filled(QSize(100, 100), 0xFF112233), QPoint());
    QColor color;
    QVERIFY(document->GetPixel(0, QPoint(50, 50), &color));
    QCOMPARE(color.rgba(), 0xFF112233u);
}

void TestDocumentProperties::aWorkersChangeWhileStoppedIsHeldBack()
{
    const OwnedDocument document = Make(QSize(100, 100));
    SignalLog log(document.get());
    document->StopComposition();
    std::thread worker([&] { document->UpdateDocumentRect(QRect(1, 2, 3, 4)); });
    worker.join();
    QCoreApplication::sendPostedEvents(document.get());
    QCOMPARE(log.Take(), QStringList());
    document->ResumeComposition();
    QCOMPARE(log.Take(), QStringList("CompositionChanged (1,2 3x4)"));
}

void TestDocumentProperties::aSmallerCanvasCutsWhatWasHeldBack()
{
    const OwnedDocument document = Make(QSize(100, 100));
    SignalLog log(document.get());
    document->StopComposition();
    document->UpdateDocumentRect(QRect(0, 0, 90, 90));
    document->SetDocumentSize(QSize(50, 40));
    document->ResumeComposition();
    QCOMPARE(log.Take(), QStringList({"DocumentSizeChanged 50x40", "CompositionChanged (0,0 50x40)"}));
}

void TestDocumentProperties::pixelsAreReadWhereTheLayerLies()
{
    const OwnedDocument document = Make(QSize(20, 20));
    LXImage32 image = Filled(QSize(4, 4), 0x80102030);
    image.SetColor(3, 0, LXRGBA32i(0x00AABBCC));
    document->AddLayer("layer", image, QPoint(18, -2));
    QColor color;
    QVERIFY(document->GetPixel(1, QPoint(18, 1), &color));
    QCOMPARE(color.rgba(), 0x80102030u);
    // Outside the canvas the layer still has pixels, and color under alpha 0 is color.
    QVERIFY(document->GetPixel(1, QPoint(21, -2), &color));
    QCOMPARE(color.rgba(), 0x00AABBCCu);
    QVERIFY(document->GetPixel(0, QPoint(0, 0), &color));
    QCOMPARE(color.rgba(), 0u);
}

void TestDocumentProperties::pixelsOutsideAreNoPixels()
{
    const OwnedDocument document = Make(QSize(20, 20));
    document->AddLayer("layer", Filled(QSize(4, 4), 0xFF102030), QPoint(2, 2));
    QColor color(Qt::red);
    QVERIFY(!document->GetPixel(1, QPoint(1, 2), &color));
    QVERIFY(!document->GetPixel(1, QPoint(6, 5), &color));
    QVERIFY(!document->GetPixel(2, QPoint(2, 2), &color));
    QVERIFY(!document->GetPixel(0, QPoint(20, 0), &color));
    QVERIFY(!document->GetPixel(0, QPoint(0, -1), &color));
    QCOMPARE(color, QColor(Qt::red));
}

void TestDocumentProperties::locksThatKeepSelectedPixels_data()
{
    QTest::addColumn<unsigned int>("locks");
    QTest::addColumn<bool>("areKept");
    QTest::newRow("none") << 0x0u << false;
    QTest::newRow("transparency") << 0x1u << false;
    QTest::newRow("pixels") << 0x2u << true;
    QTest::newRow("position") << 0x4u << false;
    QTest::newRow("everything") << 0x8u << true;
}

void TestDocumentProperties::locksThatKeepSelectedPixels()
{
    QFETCH(unsigned int, locks);
    QFETCH(bool, areKept);
    const OwnedDocument document = Make(QSize(20, 20));
    document->AddLayer("layer", LXImage32(4, 4), QPoint());
    document->GetModel()->SetLockFlags(0, locks);
    QCOMPARE(document->IsSelectionMoveLocked(1), areKept);
    QVERIFY(!document->IsSelectionMoveLocked(2));
}

void TestDocumentProperties::onlyRasterLayersAreEditable()
{
    const OwnedDocument document = Make(QSize(20, 20));
    document->AddLayer("layer", LXImage32(4, 4), QPoint());
    document->GetModel()->SetLockFlags(0, LayerLocks::Every);
    QVERIFY(document->IsLayerEditable(1));
    QVERIFY(!document->IsLayerEditable(0));
    QVERIFY(!document->IsLayerEditable(2));
}

ZK_REGISTER_TEST(tst_documentproperties, TestDocumentProperties)
#include "tst_documentproperties.moc"
