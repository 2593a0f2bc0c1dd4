#include "formats/DocumentFile.h"
#include "formats/PictureFile.h"
#include "support/DocumentFixture.h"
#include "support/FileBytes.h"
#include "support/FileFolder.h"
#include "support/PixelChecks.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QColorSpace>
#include <QTest>

#include <sys/resource.h>

#include <csignal>

using PictureFile::Error;
using PictureFile::Format;
using PictureFile::WritePicture;

Q_DECLARE_METATYPE(PictureFile::Format)

/// A save replaces the old file whole or not at all.
class TestSaving : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void olderFileIsReplaced_data();
    void olderFileIsReplaced();
    void fullDiskKeepsTheOlderFile_data();
    void fullDiskKeepsTheOlderFile();
    void fileThatMayNotGrowKeepsTheOlderFile();
    void cancellingKeepsTheOlderFile_data();
    void cancellingKeepsTheOlderFile();
    void failureLeavesNoNewFile();
    void unreachablePlacesAreTold_data();
    void unreachablePlacesAreTold();
    void folderWithoutRightsIsTold();
    void fileWithoutRightsIsToldAndStays();
    void tooLongNameIsTold();
    void linkStaysALink();
    void permissionsStay();
    void formatThatCannotHoldThePictureSaysSo();
    void pictureWithoutPixelsIsRefused();
    void unknownFormatIsRefused();
    void savingTakesNoTiles();
    void resolutionThatMeansNothingIsLeftOut_data();
    void resolutionThatMeansNothingIsLeftOut();
    void namesTellTheFormat_data();
    void namesTellTheFormat();
    void formatsKeepWhatTheySay();
    void formatsAreDescribed();

private:
    void AddFormats() const;

    FileFolder m_Folder;
};

namespace {
const QByteArray OldBytes = "the picture of yesterday";

Picture SomePicture(const QSize& size = QSize(200, 200))
{
    Picture picture;
    picture.image = PixelChecks::FromQImage(PixelChecks::RandomImage(size, 4));
    return picture;
}
} // namespace

void TestSaving::AddFormats() const
{
    QTest::addColumn<Format>("format");
    QTest::newRow("PNG") << Format::Png;
    QTest::newRow("JPEG") << Format::Jpeg;
}

void TestSaving::olderFileIsReplaced_data()
{
    AddFormats();
}

void TestSaving::olderFileIsReplaced()
{
    QFETCH(Format, format);
    FileFolder folder;
    const QString path = folder.Write("work", OldBytes);
    QVector<int> told;
    const FileProgress progress{[&told](int permille) { told << permille; }, {}};
    const PictureFile::Outcome outcome = WritePicture(path, format, SomePicture(), {}, progress);
    QCOMPARE(outcome.message, QString());
    QCOMPARE(PictureFile::ReadPicture(path).format, format);
    QCOMPARE(folder.Names(), QStringList("work"));
    QVERIFY(std::is_sorted(told.begin(), told.end()));
    QCOMPARE(told.last(), 1000);
}

void TestSaving::fullDiskKeepsTheOlderFile_data()
{
    AddFormats();
}

void TestSaving::fullDiskKeepsTheOlderFile()
{
    QFETCH(Format, format);
    FileFolder folder;
    const QString path = folder.Write("work", OldBytes);
    int failures = 0;
    // Whichever write it is that finds the disk full.
    for (int failing = 1;; ++failing) {
        FaultSeams::Reset();
        FaultSeams::FailNth(FaultSeams::Seam::FileWrite, failing);
        const PictureFile::Outcome outcome = WritePicture(path, format, SomePicture());
        if (outcome.IsOk()) break;
        ++failures;
        QCOMPARE(outcome.error, Error::WriteFailed);
        QVERIFY2(outcome.message.contains("No space left on device"), qPrintable(outcome.message));
        QVERIFY(outcome.message.contains("work"));
        QCOMPARE(folder.Read("work"), OldBytes);
        QCOMPARE(folder.Names(), QStringList("work"));
    }
    QVERIFY(failures > 0);
}

void TestSaving::fileThatMayNotGrowKeepsTheOlderFile()
{
    FileFolder folder;
    const QString path = folder.Write("work", OldBytes);
    // The system itself refuses more than so many bytes.
    rlimit before{};
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto signalBefore = std::signal(SIGXFSZ, SIG_IGN);
    rlimit tight = before;
    tight.rlim_cur = 40000;
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &tight), 0);
    const PictureFile::Outcome outcome = WritePicture(path, Format::Png, SomePicture());
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, signalBefore);

    QCOMPARE(outcome.error, Error::WriteFailed);
    QVERIFY2(outcome.message.contains("File too large"), qPrintable(outcome.message));
    QCOMPARE(folder.Read("work"), OldBytes);
    QCOMPARE(folder.Names(), QStringList("work"));
}

void TestSaving::cancellingKeepsTheOlderFile_data()
{
    AddFormats();
}

void TestSaving::cancellingKeepsTheOlderFile()
{
    QFETCH(Format, format);
    FileFolder folder;
    const QString path = folder.Write("work", OldBytes);
    for (const int patience : {0, 100}) {
        int asked = 0;
        const FileProgress progress{{}, [&asked, patience] { return asked++ >= patience; }};
        const PictureFile::Outcome outcome = WritePicture(path, format, SomePicture(), {}, progress);
        QCOMPARE(outcome.error, Error::Cancelled);
        QCOMPARE(outcome.message, QString());
        QCOMPARE(folder.Read("work"), OldBytes);
        QCOMPARE(folder.Names(), QStringList("work"));
    }
}

void TestSaving::failureLeavesNoNewFile()
{
    FileFolder folder;
    FaultSeams::FailNth(FaultSeams::Seam::FileWrite, 2);
    QVERIFY(!WritePicture(folder.Path("new.png"), Format::Png, SomePicture()).IsOk());
    QCOMPARE(folder.Names(), QStringList());
}

void TestSaving::unreachablePlacesAreTold_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("told");
    QTest::newRow("vanished folder") << m_Folder.Path("gone/work.png") << "doesn't exist (any more)";
    QTest::newRow("folder of the system") << "/proc/work.png"
                                          << "It can't be written there";
    QTest::newRow("a folder itself") << m_Folder.Path(".") << "It can't be written there";
    QTest::newRow("below a file") << m_Folder.Write("file", OldBytes) + "/work.png"
                                  << "doesn't exist (any more)";
}

void TestSaving::unreachablePlacesAreTold()
{
    QFETCH(QString, path);
    QFETCH(QString, told);
    const PictureFile::Outcome outcome = WritePicture(path, Format::Png, SomePicture());
    QCOMPARE(outcome.error, Error::NotAllowed);
    QVERIFY(outcome.message.contains("” can't be saved.\n"));
    QVERIFY2(outcome.message.contains(told), qPrintable(outcome.message));
}

void TestSaving::fileWithoutRightsIsToldAndStays()
{
    for (const char* name : {"work.png", "work.jpg", "work.tif", "work.webp", "work.bmp", "work.ora"}) {
        FileFolder folder;
        folder.SetPermissions(QFile::Permissions(0x7777));
        const QString path = folder.Write(name, OldBytes);
        QVERIFY(QFile::setPermissions(path, QFile::Permissions(0x4444)));
        const DocumentFixture::OwnedDocument document(PictureFile::MakeDocument(SomePicture(), "a"));
        PictureFile::Outcome outcome;
        {
            const OrdinaryUser user;
            outcome = DocumentFile::Write(path, document.get());
        }
        QCOMPARE(outcome.error, Error::NotAllowed);
        QVERIFY2(outcome.message.contains("It can't be written there"), qPrintable(outcome.message));
        QCOMPARE(folder.Read(name), OldBytes);
        QCOMPARE(folder.Names(), QStringList(name));
    }
}

void TestSaving::folderWithoutRightsIsTold()
{
    FileFolder folder;
    const QString path = folder.Write("work", OldBytes);
    QVERIFY(QFile::setPermissions(path, QFile::Permissions(0x6666)));
    folder.SetPermissions(QFile::Permissions(0x5555));
    PictureFile::Outcome outcome;
    {
        const OrdinaryUser user;
        outcome = WritePicture(path, Format::Png, SomePicture());
    }
    folder.SetPermissions(QFile::Permissions(0x7755));
    QCOMPARE(outcome.error, Error::NotAllowed);
    QVERIFY2(outcome.message.contains("Permission denied"), qPrintable(outcome.message));
    QCOMPARE(folder.Read("work"), OldBytes);
    QCOMPARE(folder.Names(), QStringList("work"));
}

void TestSaving::tooLongNameIsTold()
{
    FileFolder folder;
    const PictureFile::Outcome outcome =
        WritePicture(folder.Path(QString(300, 'n')), Format::Png, SomePicture());
    QVERIFY(!outcome.IsOk());
    QVERIFY2(outcome.message.contains("File name too long"), qPrintable(outcome.message));
    QCOMPARE(folder.Names(), QStringList());
}

void TestSaving::linkStaysALink()
{
    FileFolder folder;
    const QString path = folder.Write("work", OldBytes);
    const QString link = folder.Path("link");
    QVERIFY(QFile::link(path, link));
    QVERIFY(WritePicture(link, Format::Png, SomePicture()).IsOk());
    QVERIFY(QFileInfo(link).isSymLink());
    QVERIFY(PictureFile::ReadPicture(path).outcome.IsOk());
}

void TestSaving::permissionsStay()
{
    FileFolder folder;
    const QString path = folder.Write("work", OldBytes);
    const QFile::Permissions permissions = QFile::ReadOwner | QFile::WriteOwner;
    QVERIFY(QFile::setPermissions(path, permissions));
    const QFile::Permissions before = QFile::permissions(path);
    QVERIFY(WritePicture(path, Format::Png, SomePicture()).IsOk());
    QCOMPARE(QFile::permissions(path), before);
}

void TestSaving::formatThatCannotHoldThePictureSaysSo()
{
    FileFolder folder;
    Picture picture;
    picture.image = LXImage32(65501, 1);
    const PictureFile::Outcome outcome = WritePicture(folder.Path("wide.jpg"), Format::Jpeg, picture);
    QCOMPARE(outcome.error, Error::TooLarge);
    QVERIFY(outcome.message.contains("65500 pixels a side"));
    QCOMPARE(folder.Names(), QStringList());
    QVERIFY(WritePicture(folder.Path("wide.png"), Format::Png, picture).IsOk());
}

void TestSaving::pictureWithoutPixelsIsRefused()
{
    FileFolder folder;
    QCOMPARE(WritePicture(folder.Path("none.png"), Format::Png, Picture()).error, Error::OutOfMemory);
    QCOMPARE(folder.Names(), QStringList());
}

void TestSaving::unknownFormatIsRefused()
{
    FileFolder folder;
    const PictureFile::Outcome outcome =
        WritePicture(folder.Path("work.doc"), Format::Unknown, SomePicture());
    QCOMPARE(outcome.error, Error::UnknownFormat);
    QVERIFY(outcome.message.contains("(OpenRaster, PNG, JPEG"));
    QCOMPARE(folder.Names(), QStringList());
}

void TestSaving::savingTakesNoTiles()
{
    FileFolder folder;
    const Picture picture = SomePicture();
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    QVERIFY(WritePicture(folder.Path("work.png"), Format::Png, picture).IsOk());
    QVERIFY(WritePicture(folder.Path("work.jpg"), Format::Jpeg, picture).IsOk());
}

void TestSaving::resolutionThatMeansNothingIsLeftOut_data()
{
    QTest::addColumn<double>("dpi");
    QTest::newRow("negative") << -72.0;
    QTest::newRow("larger than any number in a file") << 1e300;
    QTest::newRow("infinite") << qInf();
    QTest::newRow("no number") << qQNaN();
}

void TestSaving::resolutionThatMeansNothingIsLeftOut()
{
    QFETCH(double, dpi);
    FileFolder folder;
    Picture picture = SomePicture(QSize(4, 4));
    picture.dpi = dpi;
    for (const Format format : {Format::Png, Format::Jpeg}) {
        QVERIFY(WritePicture(folder.Path("work"), format, picture).IsOk());
        QCOMPARE(PictureFile::ReadPicture(folder.Path("work")).picture.dpi, 0.0);
    }
}

void TestSaving::namesTellTheFormat_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Format>("format");
    QTest::newRow("png") << "/a/b.c/lake.png" << Format::Png;
    QTest::newRow("capitals") << "LAKE.PNG" << Format::Png;
    QTest::newRow("jpg") << "lake.jpg" << Format::Jpeg;
    QTest::newRow("jpeg") << "lake.v2.JPeG" << Format::Jpeg;
    QTest::newRow("another") << "lake.xcf" << Format::Unknown;
    QTest::newRow("none") << "lake" << Format::Unknown;
    QTest::newRow("only in the folder") << "/a/b.png/lake" << Format::Unknown;
    QTest::newRow("nothing") << QString() << Format::Unknown;
}

void TestSaving::namesTellTheFormat()
{
    QFETCH(QString, name);
    QTEST(PictureFile::FormatOfName(name), "format");
}

void TestSaving::formatsKeepWhatTheySay()
{
    Picture picture;
    picture.image = LXImage32(20, 10);
    picture.image.Fill(LXRGBA32i(qRgba(10, 20, 30, 255)));
    picture.dpi = 300;
    picture.iccProfile = QColorSpace(QColorSpace::DisplayP3).iccProfile();
    picture.exif = FileBytes::Exif({true, 1, 0, {}, {}});
    for (const Format format : {Format::Png, Format::Jpeg, Format::Tiff, Format::Webp, Format::Bmp}) {
        const QString path = m_Folder.Path("kept");
        QVERIFY(PictureFile::WritePicture(path, format, picture).IsOk());
        const Picture read = PictureFile::ReadPicture(path).picture;
        QCOMPARE(!read.iccProfile.isEmpty(), PictureFile::KeepsProfile(format));
        QCOMPARE(!read.exif.isEmpty(), PictureFile::KeepsExif(format, picture));
        QCOMPARE(read.dpi, PictureFile::SavedResolution(format, picture));
    }
}

void TestSaving::formatsAreDescribed()
{
    QVERIFY(PictureFile::KeepsAlpha(Format::Png));
    QVERIFY(!PictureFile::KeepsAlpha(Format::Jpeg));
    QVERIFY(!PictureFile::KeepsAlpha(Format::Unknown));
    QVERIFY(!PictureFile::KeepsProfile(Format::Unknown));
    QVERIFY(!PictureFile::KeepsProfile(Format::Unknown, "profile"));
    QVERIFY(!PictureFile::KeepsColorUnderAlpha0(Format::Unknown));
    Picture picture;
    QVERIFY(PictureFile::KeepsExif(Format::Unknown, picture));
    picture.exif = FileBytes::Exif({});
    picture.dpi = 300;
    QVERIFY(!PictureFile::KeepsExif(Format::Unknown, picture));
    QCOMPARE(PictureFile::SavedResolution(Format::Unknown, picture), 0.0);
    QCOMPARE(PictureFile::DefaultEnding(Format::Jpeg), QString("jpg"));
    QCOMPARE(PictureFile::FormatName(Format::Png), QString("PNG"));
    QCOMPARE(PictureFile::FormatName(Format::Unknown), QString());
    QCOMPARE(DocumentFile::OpenFilter(),
             QString("All pictures (*.ora *.png *.jpg *.jpeg *.jpe *.tif *.tiff *.webp *.bmp *.gif);;"
                     "OpenRaster picture with layers (*.ora);;PNG picture (*.png);;"
                     "JPEG picture (*.jpg *.jpeg *.jpe);;TIFF picture (*.tif *.tiff);;WebP picture (*.webp);;"
                     "BMP picture (*.bmp);;GIF picture (*.gif);;All files (*)"));
    QCOMPARE(PictureFile::SaveFilter(),
             QString("PNG picture (*.png);;JPEG picture (*.jpg *.jpeg *.jpe);;TIFF picture (*.tif *.tiff);;"
                     "WebP picture (*.webp);;BMP picture (*.bmp)"));
    QCOMPARE(DocumentFile::SaveFilter(), DocumentFile::OwnFilter() + ";;" + PictureFile::SaveFilter());
    QCOMPARE(DocumentFile::EndingOfFilter("JPEG picture (*.jpg *.jpeg *.jpe)"), QString("jpg"));
    QCOMPARE(DocumentFile::EndingOfFilter("All files (*)"), QString());
}

ZK_REGISTER_TEST(tst_saving, TestSaving)
#include "tst_saving.moc"
