#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "formats/DocumentFile.h"
#include "support/FileBytes.h"
#include "support/FileFolder.h"
#include "support/IccProfiles.h"
#include "support/PixelChecks.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <memory>

using namespace FileBytes;
using namespace IccProfiles;

namespace {
using PictureFile::Format;

constexpr const char* LeftOut = " It was left out: the colors are shown as sRGB.";

struct Release
{
    void operator()(LXDocumentInterface* document) const { LXDocumentFactory::Instance()->Release(document); }
};

using Document = std::unique_ptr<LXDocumentInterface, Release>;

Picture PictureWith(const QByteArray& icc)
{
    Picture picture;
    picture.image = LXImage32(20, 10);
    picture.image.Fill(LXRGBA32i(0xFFC85A28));
    picture.iccProfile = icc;
    return picture;
}

int Sample(int x, int y, int channel)
{
    return channel == 3 ? 255 : (x * 31 + y * 57 + channel * 91) & 0xFF;
}

QByteArray PngWith(const QByteArray& icc)
{
    PngSpec spec;
    spec.size = QSize(9, 7);
    spec.chunksBeforeData = PngChunk("iCCP", QByteArray("name\0\0", 6) + qCompress(icc).mid(4));
    return Png(spec, Sample);
}

/// A profile for other colors than its tables are for.
QByteArray CalledOf(const char* colorSpace)
{
    return QByteArray(AdobeRgb().GetData()).replace(16, 4, colorSpace);
}
} // namespace

/// Profiles on the way through files.
class TestColorProfiles : public QObject
{
    Q_OBJECT

private slots:
    void everyFormatGivesBackTheBytes_data();
    void everyFormatGivesBackTheBytes();
    void aProfileOfTablesIsKeptOrTheLossIsTold_data();
    void aProfileOfTablesIsKeptOrTheLossIsTold();
    void aFileOfAnotherProgramKeepsAProfileOfTables_data();
    void aFileOfAnotherProgramKeepsAProfileOfTables();
    void copiesOfDocumentsHaveTheProfile();
    void aBadProfileIsToldAndLosesNoPixel_data();
    void aBadProfileIsToldAndLosesNoPixel();
    void aBadProfileInAPhotoIsTold_data();
    void aBadProfileInAPhotoIsTold();
    void aBadProfileInTheOwnFileIsTold();
    void aGoodFileSaysNothing();

private:
    FileFolder m_Folder;
};

void TestColorProfiles::everyFormatGivesBackTheBytes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("icc");
    for (const char* name : {"a.ora", "a.png", "a.jpg", "a.tif", "a.webp"}) {
        QTest::addRow("%s, Adobe RGB", name) << name << AdobeRgb().GetData();
        QTest::addRow("%s, sRGB of our own", name) << name << ZKCMSProfile::SRGB().GetData();
    }
    // More than one segment of a JPEG file holds.
    QByteArray large = AdobeRgb().GetData();
    large.append(QByteArray(150000, 'x'));
    QTest::newRow("a.jpg, many segments") << "a.jpg" << large;
    QTest::newRow("a.ora, large") << "a.ora" << large;
}

void TestColorProfiles::everyFormatGivesBackTheBytes()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, icc);
    const QString path = m_Folder.Path(name);
    const Document document(PictureFile::MakeDocument(PictureWith(icc), "a"));
    QVERIFY(DocumentFile::Write(path, document.get()).IsOk());
    const DocumentFile::ReadResult read = DocumentFile::Read(path);
    QVERIFY(read.outcome.IsOk());
    QCOMPARE(read.notice, QString());
    const Document opened(DocumentFile::MakeDocument(read, "a"));
    QCOMPARE(opened->GetICCProfile().GetData(), icc);
    QVERIFY(PictureFile::KeepsProfile(PictureFile::FormatOfName(name), icc) || name.endsWith("ora"));
}

void TestColorProfiles::aProfileOfTablesIsKeptOrTheLossIsTold_data()
{
    QTest::addColumn<int>("format");
    QTest::newRow("PNG") << int(Format::Png);
    QTest::newRow("JPEG") << int(Format::Jpeg);
    QTest::newRow("TIFF") << int(Format::Tiff);
    QTest::newRow("WebP") << int(Format::Webp);
    QTest::newRow("BMP") << int(Format::Bmp);
}

void TestColorProfiles::aProfileOfTablesIsKeptOrTheLossIsTold()
{
    QFETCH(int, format);
    const auto kind = static_cast<Format>(format);
    const QByteArray icc = OnlyReadable().GetData();
    QVERIFY(PictureFile::WritePicture(m_Folder.Path("t"), kind, PictureWith(icc)).IsOk());
    const PictureFile::ReadResult read = PictureFile::ReadPicture(m_Folder.Path("t"));
    QVERIFY(read.outcome.IsOk());
    QCOMPARE(read.picture.iccProfile == icc, PictureFile::KeepsProfile(kind, icc));
    QCOMPARE(PictureFile::KeepsProfile(kind, icc), kind == Format::Png || kind == Format::Jpeg);
    QVERIFY(PictureFile::KeepsProfile(kind, QByteArray()));
}

void TestColorProfiles::aFileOfAnotherProgramKeepsAProfileOfTables_data()
{
    QTest::addColumn<int>("format");
    QTest::newRow("TIFF") << int(Format::Tiff);
    QTest::newRow("WebP") << int(Format::Webp);
}

void TestColorProfiles::aFileOfAnotherProgramKeepsAProfileOfTables()
{
    QFETCH(int, format);
    // Written with one that can be, which then gives its place to one of tables.
    const QByteArray tables = OnlyReadable().GetData();
    const QByteArray curves = AdobeRgb().GetData().leftJustified(tables.size(), 'x');
    QCOMPARE(curves.size(), tables.size());
    QVERIFY(PictureFile::WritePicture(m_Folder.Path("t"), static_cast<Format>(format), PictureWith(curves))
                .IsOk());
    QByteArray bytes = m_Folder.Read("t");
    QCOMPARE(bytes.count(curves), 1);
    const QString path = m_Folder.Write("t", bytes.replace(curves, tables));
    const PictureFile::ReadResult read = PictureFile::ReadPicture(path);
    QVERIFY(read.outcome.IsOk());
    QCOMPARE(read.picture.iccProfile, tables);
    QCOMPARE(read.picture.profileProblem, QString());
}

void TestColorProfiles::copiesOfDocumentsHaveTheProfile()
{
    const Document document(PictureFile::MakeDocument(PictureWith(AdobeRgb().GetData()), "a"));
    const Document copy(LXDocumentFactory::Instance()->Copy(document.get()));
    QCOMPARE(copy->GetICCProfile(), AdobeRgb());
}

void TestColorProfiles::aBadProfileIsToldAndLosesNoPixel_data()
{
    QTest::addColumn<QByteArray>("icc");
    QTest::addColumn<QString>("why");
    QTest::newRow("text") << QByteArray(200, 'a') << "is damaged.";
    QTest::newRow("cut") << AdobeRgb().GetData().left(300) << "is damaged.";
    QTest::newRow("without curves") << QByteArray(AdobeRgb().GetData()).replace("rTRC", "xTRC")
                                    << "is damaged.";
    QTest::newRow("link of two devices") << InkLink().GetData() << "is damaged.";
}

void TestColorProfiles::aBadProfileIsToldAndLosesNoPixel()
{
    QFETCH(QByteArray, icc);
    QFETCH(QString, why);
    const QString good = m_Folder.Write("good.png", PngWith(AdobeRgb().GetData()));
    const QString bad = m_Folder.Write("bad.png", PngWith(icc));
    const DocumentFile::ReadResult read = DocumentFile::Read(bad);
    QVERIFY(read.outcome.IsOk());
    QCOMPARE(read.notice, "The color profile in the file " + why + LeftOut);
    QCOMPARE(read.picture.iccProfile, QByteArray());
    const QImage pixels = PixelChecks::ToQImage(read.picture.image);
    QCOMPARE(
        PixelChecks::FirstDifference(pixels, PixelChecks::ToQImage(DocumentFile::Read(good).picture.image)),
        QString());
    QCOMPARE(pixels.pixel(1, 2), qRgb(Sample(1, 2, 0), Sample(1, 2, 1), Sample(1, 2, 2)));
}

void TestColorProfiles::aBadProfileInAPhotoIsTold_data()
{
    const QByteArray mark("ICC_PROFILE\0", 12);
    QTest::addColumn<QByteArray>("segment");
    QTest::addColumn<QString>("why");
    QTest::newRow("for CMYK") << mark + "\1\1" + CalledOf("CMYK")
                              << "is made for CMYK pictures, not for RGB.";
    QTest::newRow("for gray") << mark + "\1\1" + CalledOf("GRAY")
                              << "is made for gray pictures, not for RGB.";
    QTest::newRow("for Lab") << mark + "\1\1" + CalledOf("Lab ") << "isn't made for RGB pictures.";
    QTest::newRow("text") << mark + "\1\1" + QByteArray(200, 'a') << "is damaged.";
    QTest::newRow("second segment missing") << mark + "\1\2" + AdobeRgb().GetData() << "is damaged.";
}

void TestColorProfiles::aBadProfileInAPhotoIsTold()
{
    QFETCH(QByteArray, segment);
    QFETCH(QString, why);
    QVERIFY(PictureFile::WritePicture(m_Folder.Path("p.jpg"), Format::Jpeg, PictureWith({})).IsOk());
    const QByteArray plain = m_Folder.Read("p.jpg");
    const QString path = m_Folder.Write("q.jpg", WithJpegSegment(plain, 0xE2, segment));
    const DocumentFile::ReadResult read = DocumentFile::Read(path);
    QVERIFY(read.outcome.IsOk());
    QCOMPARE(read.notice, "The color profile in the file " + why + LeftOut);
    QCOMPARE(read.picture.iccProfile, QByteArray());
    QCOMPARE(PixelChecks::FirstDifference(
                 PixelChecks::ToQImage(read.picture.image),
                 PixelChecks::ToQImage(DocumentFile::Read(m_Folder.Path("p.jpg")).picture.image)),
             QString());
}

void TestColorProfiles::aBadProfileInTheOwnFileIsTold()
{
    const Document document(PictureFile::MakeDocument(PictureWith({}), "a"));
    document->SetICCProfile(ZKCMSProfile(CalledOf("CMYK")));
    QVERIFY(DocumentFile::Write(m_Folder.Path("a.ora"), document.get()).IsOk());
    const DocumentFile::ReadResult read = DocumentFile::Read(m_Folder.Path("a.ora"));
    QVERIFY(read.outcome.IsOk());
    QCOMPARE(read.notice,
             QString("The color profile in the file is made for CMYK pictures, not for RGB.") + LeftOut);
    const Document opened(DocumentFile::MakeDocument(read, "a"));
    QVERIFY(opened->GetICCProfile().IsNull());
    QCOMPARE(opened->GetLayerImage(1)->GetColor(3, 3).value, 0xFFC85A28U);
}

void TestColorProfiles::aGoodFileSaysNothing()
{
    const DocumentFile::ReadResult read =
        DocumentFile::Read(m_Folder.Write("good.png", PngWith(AdobeRgb().GetData())));
    QCOMPARE(read.notice, QString());
    QCOMPARE(read.picture.iccProfile, AdobeRgb().GetData());
}

ZK_REGISTER_TEST(tst_colorprofiles, TestColorProfiles)
#include "tst_colorprofiles.moc"
