#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "formats/DocumentFile.h"
#include "support/FileBytes.h"
#include "support/FileFolder.h"
#include "support/IccProfiles.h"
#include "support/PixelChecks.h"
#include "support/TestRegistry.h"

#include <QRandomGenerator>
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
    void aProfileThatTheLibraryRefusesIsTold_data();
    void aProfileThatTheLibraryRefusesIsTold();
    void aWholeProfileInADamagedChunkIsKept_data();
    void aWholeProfileInADamagedChunkIsKept();
    void aBadProfileBesideThePixelsIsTold_data();
    void aBadProfileBesideThePixelsIsTold();
    void aProfileThatIsCutOffInATiffIsTold();
    void aProfileThatPngRefusesIsALoss();
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
    for (const char* name : {"a.ora", "a.png", "a.jpg", "a.tif", "a.webp"})
        QTest::addRow("%s, tables", name) << name << OnlyReadable().GetData();
    // More than one segment of a JPEG file holds.
    QByteArray large = AdobeRgb().GetData();
    large.append(QByteArray(150000, 'x'));
    QTest::newRow("a.jpg, many segments") << "a.jpg" << large;
    QTest::newRow("a.ora, large") << "a.ora" << large;
    QTest::newRow("a.tif, large") << "a.tif" << large;
    QTest::newRow("a.webp, large") << "a.webp" << large;
    QTest::newRow("a.tif, of an odd length") << "a.tif" << AdobeRgb().GetData() + 'x';
    QTest::newRow("a.webp, of an odd length") << "a.webp" << AdobeRgb().GetData() + 'x';
    // Packed more than the library reads from a PNG file; the own file has an entry for it.
    QRandomGenerator random(1);
    for (int i = 0; i < 9000000 / 4; ++i) {
        const quint32 number = random.generate();
        large.append(reinterpret_cast<const char*>(&number), sizeof(number));
    }
    QTest::newRow("a.ora, very large") << "a.ora" << large;
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
    QCOMPARE(PictureFile::KeepsProfile(kind, icc), kind != Format::Bmp);
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
    const QString refused = "is damaged, or isn't made for the picture's kind of colors.";
    QTest::newRow("text") << QByteArray(200, 'a') << refused;
    QTest::newRow("cut") << AdobeRgb().GetData().left(300) << refused;
    QTest::newRow("without curves") << QByteArray(AdobeRgb().GetData()).replace("rTRC", "xTRC")
                                    << "is damaged.";
    QTest::newRow("link of two devices") << InkLink().GetData() << refused;
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

void TestColorProfiles::aProfileThatTheLibraryRefusesIsTold_data()
{
    const QByteArray name("name\0\0", 6);
    QTest::addColumn<QByteArray>("chunk");
    QTest::newRow("a flipped byte") << PngChunk(
        "iCCP", name + qCompress(AdobeRgb().GetData()).mid(4).replace(30, 1, "?"));
    QTest::newRow("cut in the packed bytes")
        << PngChunk("iCCP", name + qCompress(AdobeRgb().GetData()).mid(4, 90));
    QTest::newRow("not packed") << PngChunk("iCCP", name + AdobeRgb().GetData());
    QTest::newRow("without a name") << PngChunk("iCCP", qCompress(AdobeRgb().GetData()).mid(4));
    QTest::newRow("empty") << PngChunk("iCCP", {});
    QTest::newRow("for gray") << PngChunk("iCCP", name + qCompress(Gray().GetData()).mid(4));
    QTest::newRow("for CMYK") << PngChunk("iCCP", name + qCompress(CalledOf("CMYK")).mid(4));
}

void TestColorProfiles::aProfileThatTheLibraryRefusesIsTold()
{
    QFETCH(QByteArray, chunk);
    PngSpec spec;
    spec.size = QSize(9, 7);
    spec.chunksBeforeData = chunk;
    const DocumentFile::ReadResult read =
        DocumentFile::Read(m_Folder.Write("refused.png", Png(spec, Sample)));
    QVERIFY2(read.outcome.IsOk(), qPrintable(read.outcome.message));
    QCOMPARE(read.notice,
             QString("The color profile in the file is damaged, or isn't made for the picture's kind of "
                     "colors.") +
                 LeftOut);
    QCOMPARE(read.picture.iccProfile, QByteArray());
    QCOMPARE(PixelChecks::ToQImage(read.picture.image).pixel(1, 2),
             qRgb(Sample(1, 2, 0), Sample(1, 2, 1), Sample(1, 2, 2)));
}

void TestColorProfiles::aWholeProfileInADamagedChunkIsKept_data()
{
    const QByteArray name("name\0\0", 6);
    const QByteArray icc = AdobeRgb().GetData();
    const QByteArray whole = PngChunk("iCCP", name + qCompress(icc).mid(4));
    QTest::addColumn<QByteArray>("chunk");
    QTest::newRow("wrong check sum") << whole.left(whole.size() - 4) + Big32(1);
    // What stands behind the profile isn't unpacked.
    QTest::newRow("a hundred megabytes more")
        << PngChunk("iCCP", name + qCompress(icc + QByteArray(100 << 20, 'x'), 9).mid(4));
}

/// The packed bytes have a check sum of their own.
void TestColorProfiles::aWholeProfileInADamagedChunkIsKept()
{
    QFETCH(QByteArray, chunk);
    PngSpec spec;
    spec.size = QSize(9, 7);
    spec.chunksBeforeData = chunk;
    const DocumentFile::ReadResult read = DocumentFile::Read(m_Folder.Write("kept.png", Png(spec, Sample)));
    QVERIFY2(read.outcome.IsOk(), qPrintable(read.outcome.message));
    QCOMPARE(read.notice, QString());
    QCOMPARE(read.picture.iccProfile, AdobeRgb().GetData());
}

void TestColorProfiles::aBadProfileBesideThePixelsIsTold_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<QByteArray>("icc");
    QTest::addColumn<QString>("why");
    for (const Format format : {Format::Tiff, Format::Webp}) {
        const auto add = [format](const char* name, const QByteArray& icc, const char* why) {
            QTest::addRow("%s, %s", qPrintable(PictureFile::FormatName(format)), name)
                << int(format) << icc << why;
        };
        add("text", QByteArray(200, 'a'), "is damaged.");
        add("one byte", "a", "is damaged.");
        add("cut", AdobeRgb().GetData().left(300), "is damaged.");
        add("for CMYK", CalledOf("CMYK"), "is made for CMYK pictures, not for RGB.");
        add("for gray", Gray().GetData(), "is made for gray pictures, not for RGB.");
    }
}

void TestColorProfiles::aBadProfileBesideThePixelsIsTold()
{
    QFETCH(int, format);
    QFETCH(QByteArray, icc);
    QFETCH(QString, why);
    // The writer takes whatever it gets.
    QVERIFY(
        PictureFile::WritePicture(m_Folder.Path("b"), static_cast<Format>(format), PictureWith(icc)).IsOk());
    const DocumentFile::ReadResult read = DocumentFile::Read(m_Folder.Path("b"));
    QVERIFY(read.outcome.IsOk());
    QCOMPARE(read.notice, "The color profile in the file " + why + LeftOut);
    QCOMPARE(read.picture.iccProfile, QByteArray());
    QCOMPARE(read.picture.image.GetColor(3, 3).value, 0xFFC85A28U);
}

void TestColorProfiles::aProfileThatIsCutOffInATiffIsTold()
{
    QVERIFY(PictureFile::WritePicture(m_Folder.Path("t"), Format::Tiff, PictureWith(AdobeRgb().GetData()))
                .IsOk());
    QByteArray bytes = m_Folder.Read("t");
    // The directory's entry: the tag, bytes of no type, how many, and where they stand.
    const QByteArray head = QByteArray::fromHex("73870700");
    const int entry = bytes.lastIndexOf(head);
    QVERIFY(entry > 0);
    bytes.replace(entry + 8, 4, QByteArray::fromHex("00000010"));
    const DocumentFile::ReadResult read = DocumentFile::Read(m_Folder.Write("cut.tif", bytes));
    QVERIFY(read.outcome.IsOk());
    QCOMPARE(read.notice, QString("The color profile in the file is damaged.") + LeftOut);
    QCOMPARE(read.picture.image.GetColor(3, 3).value, 0xFFC85A28U);
}

void TestColorProfiles::aProfileThatPngRefusesIsALoss()
{
    const QByteArray odd = AdobeRgb().GetData() + "odd"; // not as long as it says
    QVERIFY(ZKCMSProfile(odd).IsValid());
    QVERIFY(PictureFile::WritePicture(m_Folder.Path("o"), Format::Png, PictureWith(odd)).IsOk());
    const PictureFile::ReadResult read = PictureFile::ReadPicture(m_Folder.Path("o"));
    QVERIFY(read.outcome.IsOk());
    QCOMPARE(read.picture.iccProfile, QByteArray());
    QVERIFY(!PictureFile::KeepsProfile(Format::Png, odd));
    QVERIFY(PictureFile::KeepsProfile(Format::Png, AdobeRgb().GetData()));
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
