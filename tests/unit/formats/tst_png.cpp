#include "formats/PictureFile.h"
#include "support/FileBytes.h"
#include "support/FileFolder.h"
#include "support/PixelChecks.h"
#include "support/TestRegistry.h"

#include <QTest>

using FileBytes::PngSpec;
using PictureFile::Format;

class TestPng : public QObject
{
    Q_OBJECT

private slots:
    void everyKindOfFileIsRead_data();
    void everyKindOfFileIsRead();
    void transparentColorsBecomeAlpha_data();
    void transparentColorsBecomeAlpha();
    void allBytesComeBack_data();
    void allBytesComeBack();
    void opaquePicturesHaveNoAlphaInTheFile();
    void anotherReaderSeesTheSamePixels();
    void interlacedFilesOfAllSizesAreRead_data();
    void interlacedFilesOfAllSizesAreRead();
    void blankPartsTakeNoTiles();
    void resolutionComesBack_data();
    void resolutionComesBack();
    void profileAndExifComeBack();
    void profilesAreForRgb_data();
    void profilesAreForRgb();
    void exifOrientationIsAppliedOnce();

private:
    PictureFile::ReadResult Read(const QByteArray& bytes) const
    {
        return PictureFile::ReadPicture(m_Folder.Write("in.png", bytes));
    }

    Picture RoundTrip(const Picture& picture) const
    {
        const QString path = m_Folder.Path("out.png");
        const PictureFile::Outcome outcome = PictureFile::WritePicture(path, Format::Png, picture);
        if (!outcome.IsOk()) qWarning("%s", qPrintable(outcome.message));
        return PictureFile::ReadPicture(path).picture;
    }

    FileFolder m_Folder;
};

namespace {
/// Values that differ from pixel to pixel and use the whole range of the bit depth.
int SomeSample(const PngSpec& spec, int x, int y, int channel)
{
    const unsigned value =
        static_cast<unsigned>(x * 7919 + y * 104729 + channel * 15485863) * 2654435761U >> 8;
    return static_cast<int>(value & ((1U << spec.bitDepth) - 1));
}

/// A sample as a byte: the range of the depth stretched to 0 to 255, to the nearest.
int ToByte(int sample, int bitDepth)
{
    const int range = (1 << bitDepth) - 1;
    return (sample * 255 + range / 2) / range;
}

constexpr QRgb PaletteColors[4] = {0xFF102030, 0xFFA0B0C0, 0xFF00FF80, 0xFFFFFFFF};

QByteArray PaletteChunk()
{
    QByteArray colors;
    for (const QRgb color : PaletteColors) {
        colors.append(static_cast<char>(qRed(color)))
            .append(static_cast<char>(qGreen(color)))
            .append(static_cast<char>(qBlue(color)));
    }
    return FileBytes::PngChunk("PLTE", colors);
}

QRgb ExpectedPixel(const PngSpec& spec, int x, int y)
{
    const auto byte = [&](int channel) { return ToByte(SomeSample(spec, x, y, channel), spec.bitDepth); };
    switch (spec.colorType) {
    case PngSpec::Gray: return qRgba(byte(0), byte(0), byte(0), 255);
    case PngSpec::GrayAlpha: return qRgba(byte(0), byte(0), byte(0), byte(1));
    case PngSpec::Rgb: return qRgba(byte(0), byte(1), byte(2), 255);
    case PngSpec::Rgba: return qRgba(byte(0), byte(1), byte(2), byte(3));
    case PngSpec::Palette: break;
    }
    return PaletteColors[SomeSample(spec, x, y, 0) % 4];
}

QByteArray MakeFile(const PngSpec& spec)
{
    return FileBytes::Png(spec, [&spec](int x, int y, int channel) {
        const int sample = SomeSample(spec, x, y, channel);
        return spec.colorType == PngSpec::Palette ? sample % 4 : sample;
    });
}

QImage ExpectedImage(const PngSpec& spec)
{
    QImage image(spec.size, QImage::Format_ARGB32);
    for (int y = 0; y < spec.size.height(); ++y) {
        for (int x = 0; x < spec.size.width(); ++x) {
            image.setPixel(x, y, ExpectedPixel(spec, x, y));
        }
    }
    return image;
}

LXImage32 FilledImage(int width, int height, quint32 color)
{
    LXImage32 image(width, height);
    image.Fill(LXRGBA32i(color));
    return image;
}
} // namespace

Q_DECLARE_METATYPE(FileBytes::PngSpec)

void TestPng::everyKindOfFileIsRead_data()
{
    QTest::addColumn<PngSpec>("spec");

    const struct
    {
        const char* name;
        PngSpec::ColorType type;
        QVector<int> depths;
    } kinds[] = {
        {"gray", PngSpec::Gray, {1, 2, 4, 8, 16}},
        {"gray and alpha", PngSpec::GrayAlpha, {8, 16}},
        {"RGB", PngSpec::Rgb, {8, 16}},
        {"RGB and alpha", PngSpec::Rgba, {8, 16}},
        {"palette", PngSpec::Palette, {2, 4, 8}},
    };

    for (const auto& kind : kinds) {
        for (const int depth : kind.depths) {
            for (const bool isInterlaced : {false, true}) {
                const QByteArray palette = kind.type == PngSpec::Palette ? PaletteChunk() : QByteArray();
                QTest::addRow("%s, %d bits%s", kind.name, depth, isInterlaced ? ", interlaced" : "")
                    << PngSpec{QSize(141, 37), depth, kind.type, isInterlaced, palette};
            }
        }
    }
}

void TestPng::everyKindOfFileIsRead()
{
    QFETCH(PngSpec, spec);
    const PictureFile::ReadResult result = Read(MakeFile(spec));
    QCOMPARE(result.outcome.message, QString());
    QCOMPARE(result.format, Format::Png);
    QCOMPARE(PixelChecks::FirstDifference(PixelChecks::ToQImage(result.picture.image), ExpectedImage(spec)),
             QString());
}

void TestPng::transparentColorsBecomeAlpha_data()
{
    QTest::addColumn<PngSpec>("spec");
    QTest::addColumn<QRgb>("first");
    QTest::addColumn<QRgb>("second");

    const auto transparency = [](const QByteArray& data) { return FileBytes::PngChunk("tRNS", data); };
    using namespace FileBytes;
    QTest::newRow("gray") << PngSpec{QSize(2, 1), 8, PngSpec::Gray, false, transparency(Big16(10))}
                          << qRgba(10, 10, 10, 0) << qRgba(20, 20, 20, 255);
    QTest::newRow("RGB") << PngSpec{QSize(2, 1), 8, PngSpec::Rgb, false,
                                    transparency(Big16(10) + Big16(11) + Big16(12))}
                         << qRgba(10, 11, 12, 0) << qRgba(20, 21, 22, 255);
    QTest::newRow("palette") << PngSpec{QSize(2, 1), 8, PngSpec::Palette, false,
                                        PngChunk("PLTE", "abcdef") + transparency(QByteArray("\x40", 1))}
                             << qRgba('a', 'b', 'c', 0x40) << qRgba('d', 'e', 'f', 255);
}

void TestPng::transparentColorsBecomeAlpha()
{
    QFETCH(PngSpec, spec);
    const bool isPalette = spec.colorType == PngSpec::Palette;
    const auto sample = [isPalette](int x, int, int channel) {
        return isPalette ? x : 10 + 10 * x + channel;
    };
    const LXImage32 image = Read(FileBytes::Png(spec, sample)).picture.image;
    QVERIFY(!image.IsNull());
    QTEST(QRgb(image.GetColor(0, 0).value), "first");
    QTEST(QRgb(image.GetColor(1, 0).value), "second");
}

void TestPng::allBytesComeBack_data()
{
    QTest::addColumn<QSize>("size");
    for (const QSize& size :
         {QSize(1, 1), QSize(127, 128), QSize(128, 128), QSize(129, 1), QSize(1, 129), QSize(300, 260)}) {
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
    }
}

void TestPng::allBytesComeBack()
{
    QFETCH(QSize, size);
    const QImage before = PixelChecks::RandomImage(size, 1);
    Picture picture;
    picture.image = PixelChecks::FromQImage(before);
    const Picture after = RoundTrip(picture);
    QCOMPARE(PixelChecks::FirstDifference(PixelChecks::ToQImage(after.image), before), QString());
}

void TestPng::opaquePicturesHaveNoAlphaInTheFile()
{
    constexpr int colorTypeAt = 25;
    Picture picture;
    picture.image = FilledImage(140, 3, 0xFF123456);
    RoundTrip(picture);
    QCOMPARE(int(m_Folder.Read("out.png")[colorTypeAt]), int(PngSpec::Rgb));

    picture.image.SetColor(139, 2, LXRGBA32i(0xFE123456));
    const Picture after = RoundTrip(picture);
    QCOMPARE(int(m_Folder.Read("out.png")[colorTypeAt]), int(PngSpec::Rgba));
    QCOMPARE(after.image.GetColor(139, 2).value, 0xFE123456U);
}

void TestPng::anotherReaderSeesTheSamePixels()
{
    const QImage before = PixelChecks::RandomImage(QSize(200, 150), 2);
    Picture picture;
    picture.image = PixelChecks::FromQImage(before);
    RoundTrip(picture);
    const QImage seen = QImage(m_Folder.Path("out.png")).convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(PixelChecks::FirstDifference(seen, before), QString());
}

void TestPng::interlacedFilesOfAllSizesAreRead_data()
{
    QTest::addColumn<QSize>("size");
    for (int width = 1; width <= 9; ++width) {
        for (int height = 1; height <= 9; ++height) {
            QTest::addRow("%d x %d", width, height) << QSize(width, height);
        }
    }
    QTest::newRow("over tiles") << QSize(263, 259);
}

void TestPng::interlacedFilesOfAllSizesAreRead()
{
    QFETCH(QSize, size);
    const PngSpec spec{size, 8, PngSpec::Rgba, true, {}};
    const PictureFile::ReadResult result = Read(MakeFile(spec));
    QCOMPARE(PixelChecks::FirstDifference(PixelChecks::ToQImage(result.picture.image), ExpectedImage(spec)),
             QString());
}

void TestPng::blankPartsTakeNoTiles()
{
    Picture picture;
    picture.image = LXImage32(1280, 1280);
    picture.image.SetColor(1279, 1279, LXRGBA32i(0xFF0000FF));
    const int before = LXTileManager::Instance().LiveTileCount();
    const Picture after = RoundTrip(picture);
    QCOMPARE(after.image.GetColor(1279, 1279).value, 0xFF0000FFU);
    QCOMPARE(LXTileManager::Instance().LiveTileCount() - before, 2);
}

void TestPng::resolutionComesBack_data()
{
    QTest::addColumn<double>("dpi");
    QTest::newRow("none") << 0.0;
    QTest::newRow("72") << 72.0;
    QTest::newRow("96") << 96.0;
    QTest::newRow("300") << 300.0;
    QTest::newRow("2400") << 2400.0;
    QTest::newRow("broken number") << 254.2;
}

void TestPng::resolutionComesBack()
{
    QFETCH(double, dpi);
    Picture picture;
    picture.image = FilledImage(2, 2, 0xFF000000);
    picture.dpi = dpi;
    // The file counts whole pixels per meter.
    QVERIFY(qAbs(RoundTrip(picture).dpi - dpi) <= 0.02);
}

void TestPng::profileAndExifComeBack()
{
    Picture picture;
    picture.image = FilledImage(2, 2, 0xFF000000);
    picture.iccProfile = FileBytes::IccProfile("RGB ");
    picture.exif = FileBytes::Exif({true, 1, 0, QSize(2, 2), {}});
    const Picture after = RoundTrip(picture);
    QCOMPARE(after.iccProfile, picture.iccProfile);
    QCOMPARE(after.exif, picture.exif);
}

void TestPng::profilesAreForRgb_data()
{
    QTest::addColumn<int>("colorType");
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<bool>("isKept");
    QTest::newRow("RGB file") << int(PngSpec::Rgb) << FileBytes::IccProfile("RGB ") << true;
    QTest::newRow("gray file, which comes in as RGB")
        << int(PngSpec::Gray) << FileBytes::IccProfile("GRAY") << false;
}

void TestPng::profilesAreForRgb()
{
    QFETCH(int, colorType);
    QFETCH(QByteArray, profile);
    QFETCH(bool, isKept);
    PngSpec spec{QSize(2, 2), 8, PngSpec::ColorType(colorType), false, {}};
    const QByteArray nameAndMethod("name\0\0", 6);
    spec.chunksBeforeData = FileBytes::PngChunk("iCCP", nameAndMethod + qCompress(profile).mid(4));
    const PictureFile::ReadResult result = Read(MakeFile(spec));
    QCOMPARE(result.outcome.message, QString());
    QCOMPARE(result.picture.iccProfile, isKept ? profile : QByteArray());
}

void TestPng::exifOrientationIsAppliedOnce()
{
    PngSpec spec{QSize(3, 2), 8, PngSpec::Rgb, false, {}};
    spec.chunksBeforeData = FileBytes::PngChunk("eXIf", FileBytes::Exif({false, 6, 0, {}, {}}));
    const Picture picture = Read(MakeFile(spec)).picture;
    QCOMPARE(picture.image.Rect().size(), QSize(2, 3));
    QCOMPARE(QRgb(picture.image.GetColor(1, 0).value), ExpectedPixel(spec, 0, 0));
    QCOMPARE(picture.exif, FileBytes::Exif({false, 1, 0, {}, {}}));
    QCOMPARE(RoundTrip(picture).image.Rect().size(), QSize(2, 3));
}

ZK_REGISTER_TEST(tst_png, TestPng)
#include "tst_png.moc"
