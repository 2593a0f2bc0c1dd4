#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "formats/PictureFile.h"
#include "support/FileBytes.h"
#include "support/FileFolder.h"
#include "support/PixelChecks.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QTest>

/// From a picture to a document and back.
class TestDocumentPicture : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void pictureBecomesOneLayer();
    void everythingComesBack();
    void layersAreMerged();
    void colorUnderTransparencyNeedsOnePlainLayer();
    void allTilesComeBackAtTheEnd();
    void memoryThatRunsOutGivesNothing();
};

namespace {
struct Release
{
    void operator()(LXDocumentInterface* document) const { LXDocumentFactory::Instance()->Release(document); }
};

using Document = std::unique_ptr<LXDocumentInterface, Release>;

Document Open(const Picture& picture)
{
    return Document(PictureFile::MakeDocument(picture, "lake.png"));
}

Picture SomePicture(const QSize& size)
{
    Picture picture;
    picture.image = PixelChecks::FromQImage(PixelChecks::RandomImage(size, 9));
    picture.dpi = 254.5;
    picture.iccProfile = FileBytes::IccProfile("RGB ");
    picture.exif = FileBytes::Exif({false, 1, 254.5, size, {}});
    return picture;
}

LXImage32 Plain(const QSize& size, quint32 color)
{
    LXImage32 image(size.width(), size.height());
    image.Fill(LXRGBA32i(color));
    return image;
}
} // namespace

void TestDocumentPicture::pictureBecomesOneLayer()
{
    const Picture picture = SomePicture(QSize(140, 90));
    const Document document = Open(picture);
    QCOMPARE(document->GetDocumentName(), QString("lake.png"));
    QCOMPARE(document->GetDocumentSize(), QSize(140, 90));
    QCOMPARE(document->GetDPI(), 254.5);
    QCOMPARE(document->GetICCProfile().GetData(), picture.iccProfile);
    QCOMPARE(document->GetModel()->rowCount(), 1);
    QCOMPARE(document->GetModel()->index(0, 0).data().toString(), QString("Background"));
    QCOMPARE(document->GetLayerGeometry(1), QRect(0, 0, 140, 90));
    QCOMPARE(document->GetDocumentState(), 0);
}

void TestDocumentPicture::everythingComesBack()
{
    const Picture before = SomePicture(QSize(140, 90));
    const Document document = Open(before);
    const Picture after = PictureFile::TakePicture(document.get());
    QCOMPARE(
        PixelChecks::FirstDifference(PixelChecks::ToQImage(after.image), PixelChecks::ToQImage(before.image)),
        QString());
    QCOMPARE(after.dpi, before.dpi);
    QCOMPARE(after.iccProfile, before.iccProfile);
    QCOMPARE(after.exif, before.exif);
}

void TestDocumentPicture::layersAreMerged()
{
    Picture picture;
    picture.image = Plain(QSize(20, 20), 0xFF0000FF);
    const Document document = Open(picture);
    document->AddLayer("Square", Plain(QSize(5, 5), 0xFFFFFF00), QPoint(10, 10));
    const LXImage32 merged = PictureFile::TakePicture(document.get()).image;
    QCOMPARE(merged.GetColor(9, 10).value, 0xFF0000FFU);
    QCOMPARE(merged.GetColor(10, 10).value, 0xFFFFFF00U);
}

void TestDocumentPicture::allTilesComeBackAtTheEnd()
{
    const int before = LXTileManager::Instance().LiveTileCount();
    FileFolder folder;
    for (const PictureFile::Format format : {PictureFile::Format::Png, PictureFile::Format::Jpeg}) {
        const QString path = folder.Path("lake");
        QVERIFY(PictureFile::WritePicture(path, format, SomePicture(QSize(300, 200))).IsOk());
        const Document document = Open(PictureFile::ReadPicture(path).picture);
        QVERIFY(PictureFile::WritePicture(path, format, PictureFile::TakePicture(document.get())).IsOk());
        QVERIFY(LXTileManager::Instance().LiveTileCount() > before);
    }
    QCOMPARE(LXTileManager::Instance().LiveTileCount(), before);
}

void TestDocumentPicture::colorUnderTransparencyNeedsOnePlainLayer()
{
    Picture picture;
    picture.image = Plain(QSize(20, 20), 0x00ABCDEF);
    const Document document = Open(picture);
    const auto takenColor = [&document] {
        return PictureFile::TakePicture(document.get()).image.GetColor(3, 3).value;
    };
    QCOMPARE(takenColor(), 0x00ABCDEFU);
    document->GetModel()->SetOpacity(0, 0.5);
    QCOMPARE(takenColor(), 0U);
    document->GetModel()->SetOpacity(0, 1);
    document->SetLayerOffset(1, QPoint(10, 0));
    QCOMPARE(takenColor(), 0U);
    document->SetLayerOffset(1, QPoint());
    document->GetModel()->SetVisible(0, false);
    QCOMPARE(takenColor(), 0U);
}

void TestDocumentPicture::memoryThatRunsOutGivesNothing()
{
    const Document document = Open(SomePicture(QSize(300, 200)));
    document->AddLayer("Square", Plain(QSize(5, 5), 0xFFFFFF00), QPoint(10, 10));
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    QVERIFY(PictureFile::TakePicture(document.get()).image.IsNull());
    FaultSeams::Reset();
    QVERIFY(!PictureFile::TakePicture(document.get()).image.IsNull());
}

ZK_REGISTER_TEST(tst_documentpicture, TestDocumentPicture)
#include "tst_documentpicture.moc"
