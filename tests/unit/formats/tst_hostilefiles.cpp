#include "formats/PictureFile.h"
#include "support/FileBytes.h"
#include "support/FileFolder.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QTest>

#include <sys/stat.h>

#include <thread>

using FileBytes::JpegSpec;
using FileBytes::PngSpec;
using PictureFile::Error;
using PictureFile::Format;
using PictureFile::ReadPicture;

Q_DECLARE_METATYPE(PictureFile::Error)
Q_DECLARE_METATYPE(PictureFile::Format)

/// Files that are not what they seem: each is told clearly, and leaves nothing behind.
class TestHostileFiles : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void badFilesAreRefused_data();
    void badFilesAreRefused();
    void tooLargeIsToldBeforeMemoryIsTaken_data();
    void tooLargeIsToldBeforeMemoryIsTaken();
    void limitsAreInclusive();
    void packedMetadataDoesNotUnpackForEver();
    void contentTellsTheFormatNotTheEnding_data();
    void contentTellsTheFormatNotTheEnding();
    void whatIsNoFileIsRefused_data();
    void whatIsNoFileIsRefused();
    void unreadableFileIsRefused();
    void memoryThatRunsOutIsTold_data();
    void memoryThatRunsOutIsTold();
    void cancellingStopsAndLeavesNothing_data();
    void cancellingStopsAndLeavesNothing();
    void progressRises_data();
    void progressRises();
    void workersReadAtTheSameTime();

private:
    void CheckRefused(const PictureFile::ReadResult& result, Error error) const;

    FileFolder m_Folder;
};

namespace {
int Sample(int x, int y, int channel)
{
    return (x * 31 + y * 17 + channel * 101 + x * y) & 0xFF;
}

PngSpec SmallSpec(bool isInterlaced = false)
{
    return {QSize(50, 40), 8, PngSpec::Rgba, isInterlaced, {}};
}

QByteArray SmallPng(bool isInterlaced = false)
{
    return FileBytes::Png(SmallSpec(isInterlaced), Sample);
}

QByteArray SmallJpeg(bool isProgressive = false)
{
    return FileBytes::Jpeg({QSize(50, 40), JpegSpec::Rgb, isProgressive, false, 90}, Sample);
}

/// A file of valid chunks around any header and any compressed rows.
QByteArray PngOf(const PngSpec& spec, const QByteArray& rows)
{
    using namespace FileBytes;
    return PngSignature() + PngHeader(spec) + PngChunk("IDAT", qCompress(rows).mid(4)) + PngChunk("IEND", {});
}

QByteArray WithFlippedByte(QByteArray bytes, int at)
{
    bytes[at] = static_cast<char>(~bytes[at]);
    return bytes;
}

/// Without the segments of this mark.
QByteArray WithoutJpegSegments(QByteArray jpeg, char mark)
{
    for (int at = jpeg.indexOf(QByteArray("\xFF") + mark); at >= 0;
         at = jpeg.indexOf(QByteArray("\xFF") + mark)) {
        const int length = static_cast<quint8>(jpeg[at + 2]) * 256 + static_cast<quint8>(jpeg[at + 3]);
        jpeg.remove(at, 2 + length);
    }
    return jpeg;
}

/// A progressive file whose last scan comes very often.
QByteArray JpegOfManyScans(int count)
{
    const QByteArray jpeg = SmallJpeg(true);
    const int lastScan = jpeg.lastIndexOf("\xFF\xDA");
    const QByteArray scan = jpeg.mid(lastScan, jpeg.size() - 2 - lastScan);
    return jpeg.left(lastScan) + scan.repeated(count) + jpeg.right(2);
}

void AddBadPngFiles()
{
    using namespace FileBytes;
    const QByteArray png = SmallPng();
    constexpr int headerAt = 8;
    constexpr int dataAt = 33;
    const QByteArray head = PngSignature() + PngHeader(SmallSpec());
    const QByteArray row(50 * 4 + 1, '\0');

    QTest::newRow("PNG: signature only") << PngSignature();
    QTest::newRow("PNG: cut in the header") << png.left(20);
    QTest::newRow("PNG: cut behind the header") << png.left(dataAt);
    QTest::newRow("PNG: cut in the pixels") << png.left(png.size() / 2);
    QTest::newRow("PNG: cut before the end mark") << png.left(png.size() - 12);
    QTest::newRow("PNG: cut in the end mark") << png.left(png.size() - 1);
    QTest::newRow("PNG: interlaced, cut in a late pass")
        << SmallPng(true).left(SmallPng(true).size() * 3 / 4);
    QTest::newRow("PNG: header with a wrong check sum") << WithFlippedByte(png, headerAt + 8 + 13);
    QTest::newRow("PNG: pixels with a wrong check sum") << WithFlippedByte(png, png.size() - 12 - 2);
    QTest::newRow("PNG: a flipped byte in the pixels") << WithFlippedByte(png, dataAt + 100);
    QTest::newRow("PNG: no pixels") << head + PngChunk("IEND", {});
    QTest::newRow("PNG: too few rows") << PngOf(SmallSpec(), row.repeated(39));
    QTest::newRow("PNG: pixels that were never packed")
        << head + PngChunk("IDAT", QByteArray(9000, 'x')) + PngChunk("IEND", {});
    QTest::newRow("PNG: unknown row filter") << PngOf(SmallSpec(), QByteArray("\x09") + row.repeated(40));
    QTest::newRow("PNG: unknown chunk that must be known") << head + PngChunk("ABCD", "?") + png.mid(dataAt);
    QTest::newRow("PNG: chunk longer than the file")
        << head + Big32(0x7FFFFFFF) + "IDAT" + png.mid(dataAt + 8);
    QTest::newRow("PNG: header twice") << head + PngHeader(SmallSpec()) + png.mid(dataAt);
    QTest::newRow("PNG: no width") << PngOf({QSize(0, 40), 8, PngSpec::Rgba, false, {}}, row);
    QTest::newRow("PNG: width of a negative number")
        << PngOf({QSize(-1, 1), 8, PngSpec::Rgba, false, {}}, row);
    QTest::newRow("PNG: impossible bit depth")
        << PngOf({QSize(50, 40), 3, PngSpec::Rgba, false, {}}, row.repeated(40));
    QTest::newRow("PNG: palette picture without palette")
        << PngOf({QSize(8, 1), 8, PngSpec::Palette, false, {}}, QByteArray(9, '\0'));
    QTest::newRow("PNG: signature before a JPEG file") << PngSignature() + SmallJpeg();
}

void AddBadJpegFiles()
{
    using FileBytes::WithJpegSegment;
    using FileBytes::WithJpegSize;
    const QByteArray jpeg = SmallJpeg();
    const QByteArray progressive = SmallJpeg(true);
    const int scan = jpeg.indexOf("\xFF\xDA");

    QTest::newRow("JPEG: start mark only") << QByteArray("\xFF\xD8\xFF");
    QTest::newRow("JPEG: start and end") << QByteArray("\xFF\xD8\xFF\xD9");
    QTest::newRow("JPEG: cut in the tables") << jpeg.left(100);
    QTest::newRow("JPEG: cut before the scan") << jpeg.left(scan);
    QTest::newRow("JPEG: cut in the scan") << jpeg.left((scan + jpeg.size()) / 2);
    QTest::newRow("JPEG: cut before the end mark") << jpeg.left(jpeg.size() - 2);
    QTest::newRow("JPEG: end mark in the middle") << jpeg.left((scan + jpeg.size()) / 2) + "\xFF\xD9";
    QTest::newRow("JPEG: progressive, cut in a late scan")
        << progressive.left(progressive.lastIndexOf("\xFF\xDA") + 20);
    QTest::newRow("JPEG: more scans than anybody writes") << JpegOfManyScans(600);
    QTest::newRow("JPEG: no quantisation tables") << WithoutJpegSegments(jpeg, '\xDB');
    QTest::newRow("JPEG: no frame") << WithoutJpegSegments(jpeg, '\xC0');
    QTest::newRow("JPEG: a mark inside the scan") << QByteArray(jpeg).replace(scan + 60, 2, "\xFF\xC4");
    QTest::newRow("JPEG: table without length")
        << QByteArray(jpeg).replace(jpeg.indexOf("\xFF\xDB") + 2, 2, QByteArray(2, '\0'));
    QTest::newRow("JPEG: segment longer than the file")
        << QByteArray(WithJpegSegment(jpeg, 0xE5, "abc")).replace(4, 2, "\xFF\xFF");
    QTest::newRow("JPEG: claims more rows than it has") << WithJpegSize(jpeg, QSize(50, 4000));
    QTest::newRow("JPEG: claims no width") << WithJpegSize(jpeg, QSize(0, 40));
    QTest::newRow("JPEG: claims no height") << WithJpegSize(jpeg, QSize(50, 0));
    QTest::newRow("JPEG: noise behind the start mark") << QByteArray("\xFF\xD8\xFF") + QByteArray(5000, 'z');
}
} // namespace

void TestHostileFiles::CheckRefused(const PictureFile::ReadResult& result, Error error) const
{
    QCOMPARE(result.outcome.error, error);
    QVERIFY(result.picture.image.IsNull());
    QCOMPARE(result.format, Format::Unknown);
    if (error == Error::Cancelled) {
        QCOMPARE(result.outcome.message, QString());
    } else {
        QVERIFY(result.outcome.message.contains("” can't be opened.\n"));
    }
}

void TestHostileFiles::badFilesAreRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("one byte") << QByteArray("\x89");
    QTest::newRow("text") << QByteArray("Dear diary, today I learned to draw.");
    QTest::newRow("a picture of another kind") << QByteArray("8BPS\0\1\0\0\0\0\0\0\0", 13);
    AddBadPngFiles();
    AddBadJpegFiles();
}

void TestHostileFiles::badFilesAreRefused()
{
    QFETCH(QByteArray, bytes);
    const bool isKnown = bytes.startsWith(FileBytes::PngSignature()) || bytes.startsWith("\xFF\xD8\xFF");
    const int tilesBefore = LXTileManager::Instance().LiveTileCount();
    const QString path = m_Folder.Write("holiday.png", bytes);
    const QStringList namesBefore = m_Folder.Names();

    CheckRefused(ReadPicture(path), isKnown || bytes.isEmpty() ? Error::Broken : Error::UnknownFormat);
    QCOMPARE(LXTileManager::Instance().LiveTileCount(), tilesBefore);
    QCOMPARE(m_Folder.Names(), namesBefore);
    QVERIFY(ReadPicture(path).outcome.message.contains("holiday.png"));
}

void TestHostileFiles::tooLargeIsToldBeforeMemoryIsTaken_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("told");
    const auto png = [](int width, int height) {
        return PngOf({QSize(width, height), 8, PngSpec::Gray, false, {}}, QByteArray(100000, '\0'));
    };
    QTest::newRow("PNG: too wide") << png(60001, 1) << "60001 x 1 pixels";
    QTest::newRow("PNG: too high") << png(1, 60001) << "1 x 60001 pixels";
    QTest::newRow("PNG: as wide as numbers go") << png(0x7FFFFFFF, 1) << "2147483647 x 1 pixels";
    QTest::newRow("PNG: both sides allowed, too large together")
        << png(60000, 60000) << "60000 x 60000 pixels";
    QTest::newRow("PNG: one row above two gigabytes") << png(32768, 16385) << "32768 x 16385 pixels";
    const auto jpeg = [](bool isProgressive, int width, int height) {
        return FileBytes::WithJpegSize(SmallJpeg(isProgressive), QSize(width, height));
    };
    QTest::newRow("JPEG: too wide") << jpeg(false, 65500, 8) << "65500 x 8 pixels";
    QTest::newRow("JPEG: too large together") << jpeg(false, 30000, 30000) << "30000 x 30000 pixels";
    // What is gathered from the scans counts too: 6 bytes for each pixel.
    QTest::newRow("JPEG: progressive") << jpeg(true, 20000, 12000) << "20000 x 12000 pixels";
}

void TestHostileFiles::tooLargeIsToldBeforeMemoryIsTaken()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, told);
    // Any tile would fail, and be told as too little memory.
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    const PictureFile::ReadResult result = ReadPicture(m_Folder.Write("huge.png", bytes));
    CheckRefused(result, Error::TooLarge);
    QVERIFY2(result.outcome.message.contains(told), qPrintable(result.outcome.message));
    QVERIFY(result.outcome.message.contains("At most 60000 pixels a side"));
}

void TestHostileFiles::limitsAreInclusive()
{
    const QString path = m_Folder.Write("small.png", SmallPng());
    QVERIFY(ReadPicture(path, {50, 50 * 40 * 4}).outcome.IsOk());
    CheckRefused(ReadPicture(path, {49, 50 * 40 * 4}), Error::TooLarge);
    CheckRefused(ReadPicture(path, {50, 50 * 40 * 4 - 1}), Error::TooLarge);
}

void TestHostileFiles::packedMetadataDoesNotUnpackForEver()
{
    // A hundred kilobytes that would become a hundred megabytes.
    const QByteArray zeros = qCompress(QByteArray(100 << 20, '\0'), 9).mid(4);
    for (const char* type : {"zTXt", "iCCP"}) {
        PngSpec spec = SmallSpec();
        spec.chunksBeforeData = FileBytes::PngChunk(type, QByteArray("name\0\0", 6) + zeros);
        const PictureFile::ReadResult result =
            ReadPicture(m_Folder.Write("bomb.png", FileBytes::Png(spec, Sample)));
        QVERIFY(result.outcome.IsOk());
        QCOMPARE(result.picture.iccProfile, QByteArray());
    }
}

void TestHostileFiles::contentTellsTheFormatNotTheEnding_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Format>("format");
    QTest::newRow("PNG called .jpg") << "a.jpg" << SmallPng() << Format::Png;
    QTest::newRow("JPEG called .png") << "b.png" << SmallJpeg() << Format::Jpeg;
    QTest::newRow("PNG without ending") << "c" << SmallPng() << Format::Png;
    QTest::newRow("JPEG called .txt") << "d.txt" << SmallJpeg() << Format::Jpeg;
    QTest::newRow("name with spaces and umlauts")
        << QStringLiteral("Gr\u00fcner See (1).png") << SmallPng() << Format::Png;
}

void TestHostileFiles::contentTellsTheFormatNotTheEnding()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    const PictureFile::ReadResult result = ReadPicture(m_Folder.Write(name, bytes));
    QCOMPARE(result.outcome.message, QString());
    QTEST(result.format, "format");
    QCOMPARE(result.picture.image.Rect().size(), QSize(50, 40));
}

void TestHostileFiles::whatIsNoFileIsRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<Error>("error");
    QTest::newRow("missing") << m_Folder.Path("gone.png") << Error::Missing;
    QTest::newRow("in a missing folder") << m_Folder.Path("gone/too.png") << Error::Missing;
    QTest::newRow("no name") << QString() << Error::Missing;
    QTest::newRow("folder") << m_Folder.Path(".") << Error::UnknownFormat;
    QTest::newRow("device that never ends") << "/dev/zero" << Error::UnknownFormat;
    const QString pipe = m_Folder.Path("pipe.png");
    ::mkfifo(qPrintable(pipe), 0600);
    QTest::newRow("pipe that never begins") << pipe << Error::UnknownFormat;
}

void TestHostileFiles::whatIsNoFileIsRefused()
{
    QFETCH(QString, path);
    QFETCH(Error, error);
    CheckRefused(ReadPicture(path), error);
}

void TestHostileFiles::unreadableFileIsRefused()
{
    FileFolder folder;
    const QString path = folder.Write("secret.png", SmallPng());
    folder.SetPermissions(QFile::Permissions(0x7755));
    QFile::setPermissions(path, QFile::Permissions());
    const OrdinaryUser user;
    CheckRefused(ReadPicture(path), Error::NotAllowed);
}

void TestHostileFiles::memoryThatRunsOutIsTold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray turned = FileBytes::ExifSegment(FileBytes::Exif({false, 6, 0, {}, {}}));
    QTest::newRow("PNG") << FileBytes::Png({QSize(300, 300), 8, PngSpec::Rgb, false, {}}, Sample);
    QTest::newRow("PNG, interlaced") << FileBytes::Png({QSize(300, 300), 8, PngSpec::Rgb, true, {}}, Sample);
    QTest::newRow("JPEG") << FileBytes::Jpeg({QSize(300, 300)}, Sample);
    QTest::newRow("JPEG, turned") << FileBytes::WithJpegSegment(FileBytes::Jpeg({QSize(300, 300)}, Sample),
                                                                0xE1, turned);
}

void TestHostileFiles::memoryThatRunsOutIsTold()
{
    QFETCH(QByteArray, bytes);
    const QString path = m_Folder.Write("large.bin", bytes);
    const int tilesBefore = LXTileManager::Instance().LiveTileCount();
    for (const int failing : {1, 2, 9}) {
        FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, failing);
        CheckRefused(ReadPicture(path), Error::OutOfMemory);
        QCOMPARE(LXTileManager::Instance().LiveTileCount(), tilesBefore);
    }
    QVERIFY(ReadPicture(path).outcome.IsOk());
}

void TestHostileFiles::cancellingStopsAndLeavesNothing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("PNG") << SmallPng();
    QTest::newRow("PNG, interlaced") << SmallPng(true);
    QTest::newRow("JPEG") << SmallJpeg();
    QTest::newRow("JPEG, progressive") << SmallJpeg(true);
}

void TestHostileFiles::cancellingStopsAndLeavesNothing()
{
    QFETCH(QByteArray, bytes);
    const QString path = m_Folder.Write("slow.bin", bytes);
    const int tilesBefore = LXTileManager::Instance().LiveTileCount();
    for (const int patience : {0, 1, 20}) {
        int asked = 0;
        const FileProgress progress{{}, [&asked, patience] { return asked++ >= patience; }};
        CheckRefused(ReadPicture(path, {}, progress), Error::Cancelled);
        QCOMPARE(asked, patience + 1);
        QCOMPARE(LXTileManager::Instance().LiveTileCount(), tilesBefore);
    }
}

void TestHostileFiles::progressRises_data()
{
    cancellingStopsAndLeavesNothing_data();
}

void TestHostileFiles::progressRises()
{
    QFETCH(QByteArray, bytes);
    QVector<int> told;
    const FileProgress progress{[&told](int permille) { told << permille; }, {}};
    QVERIFY(ReadPicture(m_Folder.Write("slow.bin", bytes), {}, progress).outcome.IsOk());
    QVERIFY(told.size() > 10);
    QVERIFY(std::is_sorted(told.begin(), told.end()));
    QCOMPARE(told.first(), 0);
    QCOMPARE(told.last(), 1000);
}

void TestHostileFiles::workersReadAtTheSameTime()
{
    const QString png = m_Folder.Write("one.png", SmallPng());
    const QString jpeg = m_Folder.Write("two.jpg", SmallJpeg());
    const QString broken = m_Folder.Write("three.png", SmallPng().left(500));
    constexpr int rounds = 50;
    int good = 0;
    int refused = 0;
    std::thread worker([&] {
        for (int i = 0; i < rounds; ++i) {
            good += ReadPicture(png).outcome.IsOk();
        }
    });
    for (int i = 0; i < rounds; ++i) {
        refused += ReadPicture(broken).outcome.error == Error::Broken && ReadPicture(jpeg).outcome.IsOk();
    }
    worker.join();
    QCOMPARE(good, rounds);
    QCOMPARE(refused, rounds);
}

ZK_REGISTER_TEST(tst_hostilefiles, TestHostileFiles)
#include "tst_hostilefiles.moc"
