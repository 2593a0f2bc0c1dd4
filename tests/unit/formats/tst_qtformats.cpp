#include "formats/ExifBlock.h"
#include "formats/PictureFile.h"
#include "formats/WebpChunks.h"
#include "support/FileBytes.h"
#include "support/FileFolder.h"
#include "support/PixelChecks.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QColorSpace>
#include <QRandomGenerator>
#include <QTest>
#include <QtEndian>

#include <tiffio.h>

#include <limits>

using PictureFile::Error;
using PictureFile::Format;

Q_DECLARE_METATYPE(PictureFile::Format)

/// TIFF, WebP, BMP and GIF: what comes in and goes out, and the limits of all pictures.
class TestQtFormats : public QObject
{
    Q_OBJECT

private slots:

    void initTestCase()
    {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        // Qt's reader leaves the library's own, which print.
        TIFFSetErrorHandler(nullptr);
        TIFFSetWarningHandler(nullptr);
    }

    void cleanupTestCase() { qInstallMessageHandler(nullptr); }

    void cleanup() { FaultSeams::Reset(); }

    void opaquePicturesComeBackExactly_data();
    void opaquePicturesComeBackExactly();
    void transparencyComesBack_data();
    void transparencyComesBack();
    void bmpIsWrittenOnWhite();
    void bmpOfTheOldKindIsRead();
    void resolutionAndProfileStayWhereTheFormatHasThem();
    void aResolutionIsOnlyReadWhereThereIsOne_data();
    void aResolutionIsOnlyReadWhereThereIsOne();
    void webpKeepsWhatTheCameraNoted();
    void webpOfAnotherProgramIsTurnedUpright();
    void gifIsReadAndNotWritten();
    void cutOffFilesAreRefused_data();
    void cutOffFilesAreRefused();
    void flippedBytesAreReadOrRefused_data();
    void flippedBytesAreReadOrRefused();
    void bmpWithSidesBelowZeroIsRefused();
    void tooLargeIsToldBeforeItIsDecoded_data();
    void tooLargeIsToldBeforeItIsDecoded();
    void fullDiskKeepsTheOlderFile_data();
    void fullDiskKeepsTheOlderFile();
    void webpHoldsNoLongSides();

private:
    QByteArray Written(Format format, const QImage& image);

    FileFolder m_Folder;
};

namespace {
/// Two by two pixels: red, blue over blue, red.
const QByteArray SmallGif =
    QByteArray::fromHex("47494638396102000200f00000ff00000000ff2c0000000002000200000203440a05003b");

QImage Opaque(const QSize& size)
{
    QImage image = PixelChecks::RandomImage(size, 5);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            image.setPixel(x, y, image.pixel(x, y) | 0xFF000000);
        }
    }
    return image;
}

Picture PictureOf(const QImage& image)
{
    Picture picture;
    picture.image = PixelChecks::FromQImage(image);
    return picture;
}

void AddWritten()
{
    QTest::addColumn<Format>("format");
    QTest::newRow("TIFF") << Format::Tiff;
    QTest::newRow("WebP") << Format::Webp;
    QTest::newRow("BMP") << Format::Bmp;
}
} // namespace

QByteArray TestQtFormats::Written(Format format, const QImage& image)
{
    return PictureFile::WritePicture(m_Folder.Path("written"), format, PictureOf(image)).IsOk()
               ? m_Folder.Read("written")
               : QByteArray();
}

void TestQtFormats::opaquePicturesComeBackExactly_data()
{
    AddWritten();
}

void TestQtFormats::opaquePicturesComeBackExactly()
{
    QFETCH(Format, format);
    const QImage image = Opaque(QSize(150, 131));
    const PictureFile::ReadResult result =
        PictureFile::ReadPicture(m_Folder.Write("a", Written(format, image)));
    QCOMPARE(result.outcome.message, QString());
    QCOMPARE(result.format, format);
    QCOMPARE(PixelChecks::FirstDifference(PixelChecks::ToQImage(result.picture.image), image), QString());
    QCOMPARE(result.picture.dpi, 0.0);
}

void TestQtFormats::transparencyComesBack_data()
{
    QTest::addColumn<Format>("format");
    QTest::addColumn<bool>("keepsColorUnderTransparency");
    QTest::newRow("TIFF") << Format::Tiff << true;
    QTest::newRow("WebP") << Format::Webp << false;
}

void TestQtFormats::transparencyComesBack()
{
    QFETCH(Format, format);
    QFETCH(bool, keepsColorUnderTransparency);
    QVERIFY(PictureFile::KeepsAlpha(format));
    QImage image = PixelChecks::RandomImage(QSize(60, 50), 6);
    if (!keepsColorUnderTransparency) {
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qAlpha(image.pixel(x, y)) == 0) image.setPixel(x, y, 0);
            }
        }
    }
    const PictureFile::ReadResult result =
        PictureFile::ReadPicture(m_Folder.Write("b", Written(format, image)));
    QCOMPARE(result.outcome.message, QString());
    QCOMPARE(PixelChecks::FirstDifference(PixelChecks::ToQImage(result.picture.image), image), QString());
}

void TestQtFormats::bmpIsWrittenOnWhite()
{
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(200, 100, 0, 0));
    image.setPixel(1, 0, qRgba(200, 100, 0, 51));
    const PictureFile::ReadResult result =
        PictureFile::ReadPicture(m_Folder.Write("c", Written(Format::Bmp, image)));
    QCOMPARE(result.picture.image.GetColor(0, 0).value, 0xFFFFFFFFU);
    // A fifth of the color: 200 / 5 + 204, 100 / 5 + 204, 204.
    QCOMPARE(result.picture.image.GetColor(1, 0).value, quint32(qRgb(244, 224, 204)));
}

void TestQtFormats::bmpOfTheOldKindIsRead()
{
    // A header of 12 bytes, two rows of one pixel of 24 bits, each filled up to four bytes, the lower one
    // first.
    const QByteArray bytes = QByteArray::fromHex("424d"
                                                 "22000000"
                                                 "00000000"
                                                 "1a000000"
                                                 "0c000000"
                                                 "0100"
                                                 "0200"
                                                 "0100"
                                                 "1800"
                                                 "0000ff00"
                                                 "ff000000");
    const PictureFile::ReadResult result = PictureFile::ReadPicture(m_Folder.Write("old.bmp", bytes));
    QCOMPARE(result.outcome.message, QString());
    QCOMPARE(result.picture.image.GetColor(0, 0).value, 0xFF0000FFU);
    QCOMPARE(result.picture.image.GetColor(0, 1).value, 0xFFFF0000U);
    QCOMPARE(PictureFile::ReadPicture(m_Folder.Write("old.bmp", bytes.left(bytes.size() - 1))).outcome.error,
             Error::Broken);
}

void TestQtFormats::resolutionAndProfileStayWhereTheFormatHasThem()
{
    Picture picture = PictureOf(Opaque(QSize(20, 10)));
    picture.dpi = 300;
    picture.iccProfile = QColorSpace(QColorSpace::DisplayP3).iccProfile();
    QVERIFY(picture.iccProfile.size() > 200);
    for (const Format format : {Format::Tiff, Format::Webp, Format::Bmp}) {
        QVERIFY(PictureFile::WritePicture(m_Folder.Path("d"), format, picture).IsOk());
        const Picture read = PictureFile::ReadPicture(m_Folder.Path("d")).picture;
        QCOMPARE(read.dpi, format == Format::Webp ? 0.0 : 300.0);
        QCOMPARE(read.iccProfile, format == Format::Bmp ? QByteArray() : picture.iccProfile);
    }
}

void TestQtFormats::aResolutionIsOnlyReadWhereThereIsOne_data()
{
    QTest::addColumn<Format>("format");
    QTest::addColumn<double>("dpi");
    QTest::addColumn<double>("read");
    for (const Format format : {Format::Tiff, Format::Bmp}) {
        const bool isExact = format == Format::Tiff;
        const QString name = PictureFile::FormatName(format);
        QTest::addRow("%s: none", qPrintable(name)) << format << 0.0 << 0.0;
        // What Qt takes for a picture without one.
        QTest::addRow("%s: as screens have", qPrintable(name)) << format << 96.0 << 96.0;
        QTest::addRow("%s: a fraction", qPrintable(name)) << format << 72.5 << (isExact ? 72.5 : 72.49);
        QTest::addRow("%s: few", qPrintable(name)) << format << 0.25 << 0.25;
        QTest::addRow("%s: many", qPrintable(name)) << format << 99999.0 << 99999.0;
    }
}

void TestQtFormats::aResolutionIsOnlyReadWhereThereIsOne()
{
    QFETCH(Format, format);
    QFETCH(double, dpi);
    Picture picture = PictureOf(Opaque(QSize(20, 10)));
    picture.dpi = dpi;
    QVERIFY(PictureFile::WritePicture(m_Folder.Path("r"), format, picture).IsOk());
    QTEST(PictureFile::ReadPicture(m_Folder.Path("r")).picture.dpi, "read");
}

void TestQtFormats::webpKeepsWhatTheCameraNoted()
{
    Picture picture = PictureOf(Opaque(QSize(20, 10)));
    picture.dpi = 240;
    picture.exif = FileBytes::Exif({true, 1, 72, QSize(20, 10), {}});
    QVERIFY(PictureFile::WritePicture(m_Folder.Path("c"), Format::Webp, picture).IsOk());
    const Picture read = PictureFile::ReadPicture(m_Folder.Path("c")).picture;
    QCOMPARE(read.exif.size(), picture.exif.size());
    QCOMPARE(ExifBlock(read.exif).GetDpi(), 240.0);
    QCOMPARE(read.dpi, 240.0);
    QCOMPARE(
        PixelChecks::FirstDifference(PixelChecks::ToQImage(read.image), PixelChecks::ToQImage(picture.image)),
        QString());
}

void TestQtFormats::webpOfAnotherProgramIsTurnedUpright()
{
    const QImage image = Opaque(QSize(20, 10));
    constexpr int turnedRight = 6;
    const QByteArray exif = FileBytes::Exif({false, turnedRight, 0, {}, {}});
    for (const QByteArray& mark : {QByteArray(), QByteArray("Exif\0\0", 6)}) {
        const QByteArray file = WebpChunks::With(Written(Format::Webp, image), {{}, mark + exif});
        const Picture read = PictureFile::ReadPicture(m_Folder.Write("t.webp", file)).picture;
        QCOMPARE(PixelChecks::FirstDifference(PixelChecks::ToQImage(read.image),
                                              image.transformed(QTransform().rotate(90))),
                 QString());
        QCOMPARE(read.exif, FileBytes::Exif({false, 1, 0, {}, {}}));
    }
}

void TestQtFormats::gifIsReadAndNotWritten()
{
    const PictureFile::ReadResult result = PictureFile::ReadPicture(m_Folder.Write("e.gif", SmallGif));
    QCOMPARE(result.outcome.message, QString());
    QCOMPARE(result.format, Format::Gif);
    QCOMPARE(result.picture.image.Rect().size(), QSize(2, 2));
    QCOMPARE(result.picture.image.GetColor(0, 0).value, 0xFFFF0000U);
    QVERIFY(!PictureFile::CanWrite(Format::Gif));
    QVERIFY(!PictureFile::SaveFilter().contains("gif"));
    const PictureFile::Outcome outcome =
        PictureFile::WritePicture(m_Folder.Path("f.gif"), Format::Gif, result.picture);
    QCOMPARE(outcome.error, Error::UnknownFormat);
    QVERIFY(!m_Folder.Names().contains("f.gif"));
}

void TestQtFormats::cutOffFilesAreRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QImage image = Opaque(QSize(40, 30));
    const auto add = [](const char* name, const QByteArray& bytes, int shortest) {
        for (const int length : {shortest, 20, 40, bytes.size() / 2, bytes.size() - 5}) {
            if (length >= bytes.size()) continue;
            QTest::addRow("%s: %d bytes", name, length) << bytes.left(length);
        }
    };
    add("TIFF", Written(Format::Tiff, image), 8);
    add("WebP", Written(Format::Webp, image), 12);
    add("BMP", Written(Format::Bmp, image), 2);
    add("GIF", SmallGif, 6);
}

void TestQtFormats::cutOffFilesAreRefused()
{
    QFETCH(QByteArray, bytes);
    const int tilesBefore = LXTileManager::Instance().LiveTileCount();
    const PictureFile::ReadResult result = PictureFile::ReadPicture(m_Folder.Write("cut", bytes));
    QCOMPARE(result.outcome.error, Error::Broken);
    QVERIFY(result.outcome.message.contains("can't be opened"));
    QVERIFY(result.picture.image.IsNull());
    QCOMPARE(LXTileManager::Instance().LiveTileCount(), tilesBefore);
}

void TestQtFormats::flippedBytesAreReadOrRefused_data()
{
    AddWritten();
}

void TestQtFormats::flippedBytesAreReadOrRefused()
{
    QFETCH(Format, format);
    constexpr int files = 400;
    Picture picture = PictureOf(Opaque(QSize(20, 15)));
    picture.dpi = 300;
    picture.exif = FileBytes::Exif({true, 1, 72, QSize(20, 10), {}});
    picture.iccProfile = QColorSpace(QColorSpace::DisplayP3).iccProfile();
    QVERIFY(PictureFile::WritePicture(m_Folder.Path("f"), format, picture).IsOk());
    const QByteArray whole = m_Folder.Read("f");
    FormatLimits limits;
    limits.maxDecodedBytes = 1 << 20;
    QRandomGenerator random(7);
    const int tilesBefore = LXTileManager::Instance().LiveTileCount();
    for (int i = 0; i < files; ++i) {
        QByteArray bytes = whole;
        const int flips = random.bounded(1, 6);
        // Where the tags of these formats stand: at the begin or at the end.
        for (int flip = 0; flip < flips; ++flip) {
            const int at = random.bounded(qMin(400, bytes.size()));
            bytes[random.bounded(2) == 0 ? at : bytes.size() - 1 - at] =
                static_cast<char>(random.bounded(256));
        }
        const PictureFile::ReadResult read =
            PictureFile::ReadPicture(m_Folder.Write("flipped", bytes), limits);
        QVERIFY(read.outcome.IsOk() == !read.picture.image.IsNull());
        QVERIFY(read.outcome.IsOk() || read.outcome.message.contains("can't be opened"));
    }
    QCOMPARE(LXTileManager::Instance().LiveTileCount(), tilesBefore);
}

void TestQtFormats::bmpWithSidesBelowZeroIsRefused()
{
    // As far below as the numbers go, so that a product of them fits into nothing.
    QByteArray bytes = Written(Format::Bmp, Opaque(QSize(40, 30)));
    qToLittleEndian(std::numeric_limits<qint32>::min(), bytes.data() + 18);
    qToLittleEndian(std::numeric_limits<qint32>::max(), bytes.data() + 22);
    qToLittleEndian(quint16(65535), bytes.data() + 28);
    QCOMPARE(PictureFile::ReadPicture(m_Folder.Write("below", bytes)).outcome.error, Error::Broken);
}

void TestQtFormats::tooLargeIsToldBeforeItIsDecoded_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QImage image = Opaque(QSize(40, 30));
    QByteArray bmp = Written(Format::Bmp, image);
    qToLittleEndian(qint32(60001), bmp.data() + 18);
    QTest::newRow("BMP: too wide") << bmp;
    qToLittleEndian(qint32(40000), bmp.data() + 18);
    qToLittleEndian(qint32(40000), bmp.data() + 22);
    QTest::newRow("BMP: too large together") << bmp;
    QByteArray gif = SmallGif;
    for (const int at : {6, 8, 18, 20}) {
        qToLittleEndian(quint16(60001), gif.data() + at);
    }
    QTest::newRow("GIF: too large") << gif;
}

void TestQtFormats::tooLargeIsToldBeforeItIsDecoded()
{
    QFETCH(QByteArray, bytes);
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    const PictureFile::ReadResult result = PictureFile::ReadPicture(m_Folder.Write("huge", bytes));
    QCOMPARE(result.outcome.error, Error::TooLarge);
    QVERIFY2(result.outcome.message.contains("of memory"), qPrintable(result.outcome.message));
}

void TestQtFormats::fullDiskKeepsTheOlderFile_data()
{
    AddWritten();
}

void TestQtFormats::fullDiskKeepsTheOlderFile()
{
    QFETCH(Format, format);
    const FileFolder folder;
    folder.Write("work", "yesterday");
    FaultSeams::FailNth(FaultSeams::Seam::FileWrite, 1);
    const PictureFile::Outcome outcome =
        PictureFile::WritePicture(folder.Path("work"), format, PictureOf(Opaque(QSize(40, 30))));
    QCOMPARE(outcome.error, Error::WriteFailed);
    QVERIFY2(outcome.message.contains("No space left on device"), qPrintable(outcome.message));
    QCOMPARE(folder.Read("work"), QByteArray("yesterday"));
    QCOMPARE(folder.Names(), QStringList("work"));
}

void TestQtFormats::webpHoldsNoLongSides()
{
    const PictureFile::Outcome outcome = PictureFile::WritePicture(m_Folder.Path("long.webp"), Format::Webp,
                                                                   PictureOf(Opaque(QSize(16384, 1))));
    QCOMPARE(outcome.error, Error::TooLarge);
    QVERIFY2(outcome.message.contains("16383 pixels a side"), qPrintable(outcome.message));
}

ZK_REGISTER_TEST(tst_qtformats, TestQtFormats)
#include "tst_qtformats.moc"
