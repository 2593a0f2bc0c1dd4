#include "formats/ExifBlock.h"
#include "formats/PictureFile.h"
#include "support/FileBytes.h"
#include "support/FileFolder.h"
#include "support/PixelChecks.h"
#include "support/TestRegistry.h"

#include <QColor>
#include <QTest>

using FileBytes::JpegSpec;
using PictureFile::Format;

class TestJpeg : public QObject
{
    Q_OBJECT

private slots:
    void everyKindOfFileIsRead_data();
    void everyKindOfFileIsRead();
    void anotherReaderSeesTheSamePixels();
    void picturesComeBackNearly_data();
    void picturesComeBackNearly();
    void qualityDecidesTheSize();
    void transparentPixelsBecomeWhite();
    void allOrientationsAreApplied_data();
    void allOrientationsAreApplied();
    void orientationIsAppliedOnce();
    void resolutionIsRead_data();
    void resolutionIsRead();
    void resolutionProfileAndExifComeBack();
    void longProfilesAreSplitAndJoined();
    void exifTooLongForAMarkerIsLeftOut();
    void profileOfCmykFilesIsLeftOut();
    void exifTellsTheNewPicture();

private:
    Picture Read(const QByteArray& bytes) const
    {
        const PictureFile::ReadResult result = PictureFile::ReadPicture(m_Folder.Write("in.jpg", bytes));
        if (!result.outcome.IsOk()) qWarning("%s", qPrintable(result.outcome.message));
        return result.picture;
    }

    Picture RoundTrip(const Picture& picture, int quality = 92) const
    {
        const QString path = m_Folder.Path("out.jpg");
        const PictureFile::Outcome outcome =
            PictureFile::WritePicture(path, Format::Jpeg, picture, {quality});
        if (!outcome.IsOk()) qWarning("%s", qPrintable(outcome.message));
        return PictureFile::ReadPicture(path).picture;
    }

    FileFolder m_Folder;
};

namespace {
/// Soft colors, which the format keeps well.
int SoftSample(int x, int y, int channel)
{
    const int waves[4] = {x * 2, y * 3, x + y, (x + 2 * y) / 4};
    const int value = waves[channel] % 512;
    return value < 256 ? value : 511 - value;
}

QImage SoftImage(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            image.setPixel(x, y, qRgb(SoftSample(x, y, 0), SoftSample(x, y, 1), SoftSample(x, y, 2)));
        }
    }
    return image;
}

QRgb ExpectedPixel(const JpegSpec& spec, int x, int y)
{
    const auto sample = [x, y](int channel) { return SoftSample(x, y, channel); };
    switch (spec.space) {
    case JpegSpec::Gray: return qRgb(sample(0), sample(0), sample(0));
    case JpegSpec::Rgb: return qRgb(sample(0), sample(1), sample(2));
    default: break;
    }
    // With the marker the samples tell how much paper is left.
    const auto paper = [&spec, &sample](int ink) {
        return spec.hasAdobeMarker ? sample(ink) : 255 - sample(ink);
    };
    const auto light = [&paper](int ink) { return qRound(paper(ink) * paper(3) / 255.0); };
    return qRgb(light(0), light(1), light(2));
}

QImage ExpectedImage(const JpegSpec& spec)
{
    QImage image(spec.size, QImage::Format_ARGB32);
    for (int y = 0; y < spec.size.height(); ++y) {
        for (int x = 0; x < spec.size.width(); ++x) {
            image.setPixel(x, y, ExpectedPixel(spec, x, y));
        }
    }
    return image;
}

QByteArray SoftJpeg(const QSize& size = QSize(40, 30))
{
    return FileBytes::Jpeg({size}, SoftSample);
}

Picture PictureOf(const QImage& image)
{
    Picture picture;
    picture.image = PixelChecks::FromQImage(image);
    return picture;
}

QImage Reduced(const Picture& picture)
{
    return PixelChecks::ToQImage(picture.image);
}
} // namespace

Q_DECLARE_METATYPE(FileBytes::JpegSpec)

void TestJpeg::everyKindOfFileIsRead_data()
{
    QTest::addColumn<JpegSpec>("spec");
    const QSize size(141, 133);
    for (const bool isProgressive : {false, true}) {
        const char* kind = isProgressive ? "progressive" : "baseline";
        QTest::addRow("RGB, %s", kind) << JpegSpec{size, JpegSpec::Rgb, isProgressive};
        QTest::addRow("gray, %s", kind) << JpegSpec{size, JpegSpec::Gray, isProgressive};
        QTest::addRow("CMYK, %s", kind) << JpegSpec{size, JpegSpec::Cmyk, isProgressive};
        QTest::addRow("inverted CMYK, %s", kind) << JpegSpec{size, JpegSpec::Cmyk, isProgressive, true};
        QTest::addRow("inverted YCCK, %s", kind) << JpegSpec{size, JpegSpec::Ycck, isProgressive, true};
    }
}

void TestJpeg::everyKindOfFileIsRead()
{
    QFETCH(JpegSpec, spec);
    const Picture picture = Read(FileBytes::Jpeg(spec, SoftSample));
    QCOMPARE(PixelChecks::FirstDifference(Reduced(picture), ExpectedImage(spec), 4), QString());
}

void TestJpeg::anotherReaderSeesTheSamePixels()
{
    const QByteArray bytes = SoftJpeg(QSize(200, 150));
    const QImage seen = QImage::fromData(bytes).convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(PixelChecks::FirstDifference(Reduced(Read(bytes)), seen, 1), QString());

    RoundTrip(PictureOf(SoftImage(QSize(200, 150))));
    const QImage written = QImage(m_Folder.Path("out.jpg")).convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(PixelChecks::FirstDifference(written, SoftImage(QSize(200, 150)), 12), QString());
}

void TestJpeg::picturesComeBackNearly_data()
{
    QTest::addColumn<QSize>("size");
    for (const QSize& size : {QSize(1, 1), QSize(7, 9), QSize(128, 128), QSize(129, 127), QSize(300, 5)}) {
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
    }
}

void TestJpeg::picturesComeBackNearly()
{
    QFETCH(QSize, size);
    const Picture after = RoundTrip(PictureOf(SoftImage(size)), 100);
    QCOMPARE(PixelChecks::FirstDifference(Reduced(after), SoftImage(size), 4), QString());
}

void TestJpeg::qualityDecidesTheSize()
{
    const Picture picture =
        PictureOf(PixelChecks::RandomImage(QSize(64, 64), 3).convertToFormat(QImage::Format_RGB32));
    int before = 0;
    for (const int quality : {10, 50, 89, 90, 100}) {
        RoundTrip(picture, quality);
        const int length = m_Folder.Read("out.jpg").size();
        QVERIFY(length > before);
        before = length;
    }
    // Out of the range counts as its end.
    RoundTrip(picture, 1000);
    QCOMPARE(m_Folder.Read("out.jpg").size(), before);
}

void TestJpeg::transparentPixelsBecomeWhite()
{
    QImage image(48, 16, QImage::Format_ARGB32);
    image.fill(qRgba(200, 0, 0, 0));
    for (int y = 0; y < 16; ++y) {
        for (int x = 16; x < 48; ++x) {
            image.setPixel(x, y, x < 32 ? qRgba(0, 0, 0, 51) : qRgba(0, 0, 0, 255));
        }
    }
    const Picture after = RoundTrip(PictureOf(image), 100);
    const auto red = [&after](int x) { return after.image.GetColor(x, 8).Red(); };
    QVERIFY(qAbs(red(8) - 255) <= 2);
    QVERIFY(qAbs(red(24) - 204) <= 2); // four fifths of white
    QVERIFY(red(40) <= 2);
    QCOMPARE(after.image.GetColor(8, 8).Alpha(), 255);
}

void TestJpeg::allOrientationsAreApplied_data()
{
    QTest::addColumn<int>("orientation");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("firstStored");

    // Where the stored picture's top left pixel is seen.
    QTest::newRow("1") << 1 << QSize(40, 24) << QPoint(0, 0);
    QTest::newRow("2") << 2 << QSize(40, 24) << QPoint(39, 0);
    QTest::newRow("3") << 3 << QSize(40, 24) << QPoint(39, 23);
    QTest::newRow("4") << 4 << QSize(40, 24) << QPoint(0, 23);
    QTest::newRow("5") << 5 << QSize(24, 40) << QPoint(0, 0);
    QTest::newRow("6") << 6 << QSize(24, 40) << QPoint(23, 0);
    QTest::newRow("7") << 7 << QSize(24, 40) << QPoint(23, 39);
    QTest::newRow("8") << 8 << QSize(24, 40) << QPoint(0, 39);
    QTest::newRow("0 is none") << 0 << QSize(40, 24) << QPoint(0, 0);
    QTest::newRow("9 is none") << 9 << QSize(40, 24) << QPoint(0, 0);
}

void TestJpeg::allOrientationsAreApplied()
{
    QFETCH(int, orientation);
    QFETCH(QPoint, firstStored);
    const auto darkCorner = [](int x, int y, int) { return x < 8 && y < 8 ? 0 : 255; };
    const QByteArray exif = FileBytes::Exif({true, orientation, 0, {}, {}});
    const QByteArray jpeg = FileBytes::Jpeg({QSize(40, 24), JpegSpec::Gray}, darkCorner);
    const Picture picture = Read(FileBytes::WithJpegSegment(jpeg, 0xE1, FileBytes::ExifSegment(exif)));
    QTEST(picture.image.Rect().size(), "size");
    QVERIFY(picture.image.GetColor(firstStored.x(), firstStored.y()).Red() < 30);
}

void TestJpeg::orientationIsAppliedOnce()
{
    const QByteArray exif = FileBytes::Exif({false, 6, 0, {}, {}});
    const Picture once = Read(FileBytes::WithJpegSegment(SoftJpeg(), 0xE1, FileBytes::ExifSegment(exif)));
    QCOMPARE(once.image.Rect().size(), QSize(30, 40));
    QCOMPARE(once.exif, FileBytes::Exif({false, 1, 0, {}, {}}));
    const Picture twice = RoundTrip(once);
    QCOMPARE(twice.image.Rect().size(), QSize(30, 40));
    QCOMPARE(twice.exif, once.exif);
}

void TestJpeg::resolutionIsRead_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<int>("density");
    QTest::addColumn<double>("exifDpi");
    QTest::addColumn<double>("dpi");
    QTest::newRow("per inch") << 1 << 300 << 0.0 << 300.0;
    QTest::newRow("per centimeter") << 2 << 100 << 0.0 << 254.0;
    QTest::newRow("only a ratio") << 0 << 1 << 0.0 << 0.0;
    QTest::newRow("a ratio, Exif tells") << 0 << 1 << 240.0 << 240.0;
    QTest::newRow("both tell") << 1 << 96 << 240.0 << 96.0;
}

void TestJpeg::resolutionIsRead()
{
    QFETCH(int, unit);
    QFETCH(int, density);
    QFETCH(double, exifDpi);
    constexpr int unitAt = 13;
    QByteArray jpeg = SoftJpeg();
    jpeg[unitAt] = static_cast<char>(unit);
    jpeg.replace(unitAt + 1, 4, FileBytes::Big16(quint32(density)) + FileBytes::Big16(quint32(density)));
    // Behind the first marker, which the library wants to be its own.
    const QByteArray exif = FileBytes::Exif({false, 1, exifDpi, {}, {}});
    const QByteArray segment =
        FileBytes::WithJpegSegment("\xFF\xD8", 0xE1, FileBytes::ExifSegment(exif)).mid(2);
    constexpr int firstMarkerEnd = 20;
    jpeg.insert(firstMarkerEnd, segment);
    QTEST(Read(jpeg).dpi, "dpi");
}

void TestJpeg::resolutionProfileAndExifComeBack()
{
    Picture picture = PictureOf(SoftImage(QSize(20, 10)));
    picture.dpi = 240;
    picture.iccProfile = FileBytes::IccProfile("RGB ");
    picture.exif = FileBytes::Exif({true, 1, 240, QSize(20, 10), {}});
    const Picture after = RoundTrip(picture);
    QCOMPARE(after.dpi, 240.0);
    QCOMPARE(after.iccProfile, picture.iccProfile);
    QCOMPARE(ExifBlock(after.exif).GetDpi(), 240.0);
    QCOMPARE(after.exif.size(), picture.exif.size());
}

void TestJpeg::longProfilesAreSplitAndJoined()
{
    Picture picture = PictureOf(SoftImage(QSize(20, 10)));
    picture.iccProfile = FileBytes::IccProfile("RGB ");
    while (picture.iccProfile.size() < 200000) {
        picture.iccProfile += picture.iccProfile;
    }
    QCOMPARE(RoundTrip(picture).iccProfile, picture.iccProfile);
}

void TestJpeg::exifTooLongForAMarkerIsLeftOut()
{
    Picture picture = PictureOf(SoftImage(QSize(20, 10)));
    picture.exif = FileBytes::Exif({true, 1, 0, {}, {}}) + QByteArray(70000, 'n');
    const Picture after = RoundTrip(picture);
    QCOMPARE(after.image.Rect().size(), QSize(20, 10));
    QCOMPARE(after.exif, QByteArray());
}

void TestJpeg::profileOfCmykFilesIsLeftOut()
{
    const QByteArray content = QByteArray("ICC_PROFILE\0\1\1", 14) + FileBytes::IccProfile("CMYK");
    const QByteArray jpeg = FileBytes::Jpeg({QSize(8, 8), JpegSpec::Cmyk}, SoftSample);
    const Picture picture = Read(FileBytes::WithJpegSegment(jpeg, 0xE2, content));
    QCOMPARE(picture.image.Width(), 8);
    QCOMPARE(picture.iccProfile, QByteArray());
}

void TestJpeg::exifTellsTheNewPicture()
{
    Picture picture = PictureOf(SoftImage(QSize(20, 10)));
    picture.dpi = 300;
    picture.exif = FileBytes::Exif({false, 1, 72, QSize(4000, 3000), "the picture before it was cropped"});
    const QByteArray written = RoundTrip(picture).exif;
    QVERIFY(!written.contains("before it was cropped"));
    QCOMPARE(ExifBlock(written).GetDpi(), 300.0);
    // The directory with the size, as it would be written for this picture.
    constexpr int sizeDirectoryLength = 2 + 2 * 12 + 4;
    const QByteArray fresh = FileBytes::Exif({false, 1, 72, QSize(20, 10), {}});
    QVERIFY(written.contains(fresh.right(sizeDirectoryLength)));
}

ZK_REGISTER_TEST(tst_jpeg, TestJpeg)
#include "tst_jpeg.moc"
