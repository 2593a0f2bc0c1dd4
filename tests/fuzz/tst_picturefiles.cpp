#include "Mutator.h"

#include "formats/ExifBlock.h"
#include "formats/PictureFile.h"
#include "support/FileBytes.h"
#include "support/FileFolder.h"
#include "support/TestRegistry.h"

#include <QTest>

using FileBytes::JpegSpec;
using FileBytes::PngSpec;

/// Thousands of damaged files, the same ones in every run: each is read or refused, and nothing is left
/// behind.
class TestPictureFiles : public QObject
{
    Q_OBJECT

private slots:
    void damagedPngFiles();
    void damagedPngFilesWithRightSums();
    void damagedJpegFiles();
    void damagedExifBlocks();

private:
    void Check(const QByteArray& bytes, int number);
    void CheckSaved(const Picture& picture, const QByteArray& name) const;
    void CheckAllWereTried() const;

    FileFolder m_Folder;
    int m_Read = 0;
    int m_Refused = 0;
};

namespace {
constexpr int Rounds = 2500;
/// Small, so that a file that claims much costs no time.
constexpr FormatLimits Limits{400, 400 * 400 * 4};

int Sample(int x, int y, int channel)
{
    return (x * 31 + y * 17 + channel * 101 + x * y) & 0xFF;
}

QByteArray SomeExif()
{
    return FileBytes::Exif({true, 6, 300, QSize(37, 29), "thumbnail"});
}

QVector<QByteArray> PngSeeds()
{
    using namespace FileBytes;
    const QSize size(37, 29);
    const QByteArray profile =
        PngChunk("iCCP", QByteArray("name\0\0", 6) + qCompress(IccProfile("RGB ")).mid(4));
    const QByteArray exif = PngChunk("eXIf", SomeExif());
    const QByteArray density = PngChunk("pHYs", Big32(11811) + Big32(11811) + "\1");
    const QByteArray palette =
        PngChunk("PLTE", QByteArray(256 * 3, 'p')) + PngChunk("tRNS", QByteArray(200, 't'));
    return {
        Png({size, 8, PngSpec::Rgba, false, profile + density + exif}, Sample),
        Png({size, 8, PngSpec::Rgb, true, exif}, Sample),
        Png({size, 8, PngSpec::Palette, false, palette}, Sample),
        Png({size, 16, PngSpec::GrayAlpha, true, density}, Sample),
        Png({size, 1, PngSpec::Gray, true, {}}, [](int x, int y, int) { return (x ^ y) & 1; }),
    };
}

QVector<QByteArray> JpegSeeds()
{
    using namespace FileBytes;
    const QSize size(37, 29);
    const QByteArray profile = QByteArray("ICC_PROFILE\0\1\1", 14) + IccProfile("RGB ");
    const QByteArray plain = Jpeg({size}, Sample);
    return {
        WithJpegSegment(plain, 0xE1, ExifSegment(SomeExif())), WithJpegSegment(plain, 0xE2, profile),
        Jpeg({size, JpegSpec::Rgb, true, false, 80}, Sample),  Jpeg({size, JpegSpec::Gray, true}, Sample),
        Jpeg({size, JpegSpec::Ycck, false, true, 90}, Sample), Jpeg({size, JpegSpec::Cmyk}, Sample),
    };
}
} // namespace

void TestPictureFiles::Check(const QByteArray& bytes, int number)
{
    using namespace PictureFile;
    const QByteArray name = "round " + QByteArray::number(number);
    const int tilesBefore = LXTileManager::Instance().LiveTileCount();
    {
        const ReadResult result = ReadPicture(m_Folder.Write("damaged", bytes), Limits);
        QVERIFY2(result.outcome.IsOk() != result.picture.image.IsNull(), name);
        QVERIFY2(result.outcome.IsOk() == result.outcome.message.isEmpty(), name);
        QVERIFY2(result.outcome.error != Error::OutOfMemory, name);
        ++(result.outcome.IsOk() ? m_Read : m_Refused);
        if (result.outcome.IsOk()) {
            QVERIFY2(Limits.Allow(result.picture.image.Rect().size()), name);
            // Not each time: a save waits until the disk has it.
            constexpr int saveEach = 50;
            if (m_Read % saveEach == 0) CheckSaved(result.picture, name);
        }
    }
    QVERIFY2(LXTileManager::Instance().LiveTileCount() == tilesBefore, name);
}

/// What came in, odd metadata too, can go out and comes in again.
void TestPictureFiles::CheckSaved(const Picture& picture, const QByteArray& name) const
{
    using namespace PictureFile;
    for (const Format format : {Format::Png, Format::Jpeg}) {
        const QString path = m_Folder.Path("again");
        QVERIFY2(WritePicture(path, format, picture).IsOk(), name);
        QCOMPARE(ReadPicture(path, Limits).picture.image.Rect(), picture.image.Rect());
    }
}

/// A damage that never matters, or always, would test nothing.
void TestPictureFiles::CheckAllWereTried() const
{
    QCOMPARE(m_Read + m_Refused, Rounds);
    QVERIFY2(m_Read > Rounds / 50, qPrintable(QString("only %1 files were read").arg(m_Read)));
    QVERIFY2(m_Refused > Rounds / 50, qPrintable(QString("only %1 files were refused").arg(m_Refused)));
}

void TestPictureFiles::damagedPngFiles()
{
    m_Read = m_Refused = 0;
    const QVector<QByteArray> seeds = PngSeeds();
    Mutator mutator(1);
    for (int round = 0; round < Rounds; ++round) {
        Check(mutator.Damage(seeds[round % seeds.size()]), round);
    }
    CheckAllWereTried();
}

void TestPictureFiles::damagedPngFilesWithRightSums()
{
    m_Read = m_Refused = 0;
    const QVector<QByteArray> seeds = PngSeeds();
    Mutator mutator(2);
    for (int round = 0; round < Rounds; ++round) {
        Check(mutator.DamagePngBehindItsSums(seeds[round % seeds.size()]), round);
    }
    CheckAllWereTried();
}

void TestPictureFiles::damagedJpegFiles()
{
    m_Read = m_Refused = 0;
    const QVector<QByteArray> seeds = JpegSeeds();
    Mutator mutator(3);
    for (int round = 0; round < Rounds; ++round) {
        Check(mutator.Damage(seeds[round % seeds.size()]), round);
    }
    CheckAllWereTried();
}

void TestPictureFiles::damagedExifBlocks()
{
    Mutator mutator(4);
    for (int round = 0; round < 20 * Rounds; ++round) {
        const QByteArray bytes = mutator.Damage(SomeExif());
        ExifBlock block(bytes);
        QVERIFY(block.GetOrientation() >= 1 && block.GetOrientation() <= 8);
        QVERIFY(block.GetDpi() >= 0);
        block.SetOrientation(1);
        block.SetDpi(240);
        block.SetPixelSize(QSize(10, 10));
        block.DropThumbnail();
        QVERIFY(block.GetBytes().size() <= bytes.size());
    }
}

ZK_REGISTER_TEST(tst_picturefiles, TestPictureFiles)
#include "tst_picturefiles.moc"
