#include "document/LXDocumentFactory.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/SelectionChannels.h"
#include "image/LXTileManager.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QCoreApplication>
#include <QTest>
#include <QThread>

#include <thread>

using namespace DocumentFixture;

namespace {
OwnedDocument MakeRich()
{
    Random random(7);
    OwnedDocument document = Make(QSize(200, 150));
    document->AddLayer("low", Noise(random, QSize(200, 150)), QPoint());
    document->AddLayer("high", Noise(random, QSize(90, 160)), QPoint(-5, 20));
    document->AddMask(1, false);
    document->SetMaskImage(1, MaskNoise(random, QSize(140, 140)), QPoint(3, 3));
    document->GetModel()->SetOpacity(0, 0.5);
    document->GetModel()->SetLockFlags(1, 5);
    document->SetSelectionMask(MaskNoise(random, QSize(60, 60)), QPoint(-4, 8));
    ChannelsOf(document.get())->Set({{"kept", {MaskNoise(random, QSize(30, 20)), QPoint(100, 9)}}});
    document->SetDocumentName("Rich");
    document->SetDPI(300);
    document->SetICCProfile(ZKCMSProfile(QByteArray("icc")));
    return document;
}

void LookAtThePicture(LXDocumentInterface* document)
{
    const LXDocumentLayerLockerForRead merged(document, 0);
    QVERIFY(!document->GetLayerImage(0)->IsNull());
}
} // namespace

class TestDocumentFactory : public QObject
{
    Q_OBJECT

private slots:
    void releaseGivesEveryTileBack();
    void aCopyHasTheSameContentAndSharesTiles();
    void aCopyIsOnItsOwn();
    void aCopyMadeByAWorkerBelongsToTheMainThread();
    void nullIsHarmless();
};

void TestDocumentFactory::releaseGivesEveryTileBack()
{
    const int before = LXTileManager::Instance().LiveTileCount();
    {
        const OwnedDocument document = MakeRich();
        LookAtThePicture(document.get());
        QVERIFY(LXTileManager::Instance().LiveTileCount() > before);
    }
    QCOMPARE(LXTileManager::Instance().LiveTileCount(), before);
}

void TestDocumentFactory::aCopyHasTheSameContentAndSharesTiles()
{
    const OwnedDocument document = MakeRich();
    document->Lock();
    document->SetDocumentState(1);
    const int before = LXTileManager::Instance().LiveTileCount();
    const OwnedDocument copy(LXDocumentFactory::Instance()->Copy(document.get()));
    // Only the blank tile of the copy's own picture is new.
    QCOMPARE(LXTileManager::Instance().LiveTileCount() - before, 1);
    QCOMPARE(Describe(copy.get()), Describe(document.get()));
    QCOMPARE(copy->GetDocumentName(), QString("Rich"));
    QCOMPARE(copy->GetDPI(), 300.0);
    QCOMPARE(copy->GetICCProfile(), document->GetICCProfile());
    QVERIFY(!copy->GetLockState());
    QCOMPARE(copy->GetDocumentState(), 0);
}

void TestDocumentFactory::aCopyIsOnItsOwn()
{
    const OwnedDocument document = MakeRich();
    const QStringList before = Describe(document.get());
    const OwnedDocument copy(LXDocumentFactory::Instance()->Copy(document.get()));
    copy->GetLayerImage(1)->SetColor(0, 0, LXRGBA32i(0x12345678));
    copy->RemoveLayer(2);
    copy->TranslateSelection(QPoint(1, 1));
    QCOMPARE(Describe(document.get()), before);
}

void TestDocumentFactory::aCopyMadeByAWorkerBelongsToTheMainThread()
{
    const int before = LXTileManager::Instance().LiveTileCount();
    {
        const OwnedDocument document = MakeRich();
        LXDocumentInterface* copy = nullptr;
        std::thread maker([&] { copy = LXDocumentFactory::Instance()->Copy(document.get()); });
        maker.join();
        QCOMPARE(copy->thread(), QThread::currentThread());
        QCOMPARE(copy->GetModel()->thread(), QThread::currentThread());
        QCOMPARE(Describe(copy), Describe(document.get()));
        std::thread dropper([copy] { LXDocumentFactory::Instance()->Release(copy); });
        dropper.join();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QCOMPARE(LXTileManager::Instance().LiveTileCount(), before);
}

void TestDocumentFactory::nullIsHarmless()
{
    QVERIFY(!LXDocumentFactory::Instance()->Copy(nullptr));
    LXDocumentFactory::Instance()->Release(nullptr);
}

ZK_REGISTER_TEST(tst_documentfactory, TestDocumentFactory)
#include "tst_documentfactory.moc"
