#include "gui/LXMimePictures.h"
#include "gui/MimeFileReader.h"
#include "support/TestRegistry.h"

#include <QBuffer>
#include <QImage>
#include <QMimeData>
#include <QPixmap>
#include <QTest>
#include <QUrl>

#include <stdexcept>

namespace {
QByteArray Encoded(const QImage& image, const char* format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, format)) qFatal("no writer for %s", format);
    return bytes;
}

QImage Filled(const QSize& size, QRgb color)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

/// What other programs' content gives: "width x height color" for each picture.
QStringList ReadAll(const QMimeData& data)
{
    QStringList pictures;
    const QList<LXImage32> images = LXMimePictures::Read(&data);
    for (const LXImage32& image : images) {
        pictures.append(QString("%1x%2 %3")
                            .arg(image.Width())
                            .arg(image.Height())
                            .arg(image.GetColor(0, 0).value, 8, 16, QChar('0')));
    }
    return pictures;
}

/// Files that need not be there: "7x3.png" is a white picture of that size, all else can't be read.
LXImage32 ReadName(const QString& path)
{
    const QString name = QUrl::fromLocalFile(path).fileName();
    const QStringList sides = name.left(name.indexOf('.')).split('x');
    if (sides.size() != 2) return {};
    LXImage32 image(sides[0].toInt(), sides[1].toInt());
    image.Fill(LXRGBA32i(0xFFFFFFFFu));
    return image;
}

bool IsPicture(const QString& path)
{
    return path.endsWith(".png");
}

QList<QUrl> Files(const QStringList& names)
{
    QList<QUrl> urls;
    for (const QString& name : names)
        urls.append(QUrl::fromLocalFile("/pictures/" + name));
    return urls;
}
} // namespace

class TestMimePictures : public QObject
{
    Q_OBJECT

private slots:

    void init() { MimeFileReader::Set(IsPicture, ReadName); }

    void cleanup() { MimeFileReader::SetBound({}); }

    void cleanupTestCase() { MimeFileReader::Set({}, {}); }

    void formatsAreRead_data();
    void formatsAreRead();
    void pngKeepsTheColorsUnderSmallAlphas();
    void pngCountsBeforeThePlatformsImage();
    void aDrawingComesAtItsOwnSize();
    void aDrawingThatCostsTooMuchIsRefusedInWords();
    void brokenPixelsAreNothing();
    void whatIsTooLargeIsNeverDecoded_data();
    void whatIsTooLargeIsNeverDecoded();
    void theBoundIsAskedBeforeDecoding();
    void whatIsTooLargeHidesNoOtherFormat();
    void plainTextIsNoPicture();
    void aPictureWithPlainTextIsText();
    void filesAreRead();
    void filesCountBeforePixels();
    void aMixedLotOfFilesIsLeftAlone();
    void manyFilesAreLeftAlone();
    void filesThatCantBeReadAreLeftOut();
    void addressesInTheWebAreNoFiles();
    void withoutAReaderFilesAreLeftAlone();
    void nothingIsNothing();
};

void TestMimePictures::formatsAreRead_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QByteArray>("bytes");

    const QImage image = Filled({5, 4}, qRgb(255, 0, 0));
    QTest::newRow("png") << QByteArray("image/png") << Encoded(image, "PNG");
    QTest::newRow("tiff") << QByteArray("image/tiff") << Encoded(image, "TIFF");
    QTest::newRow("bmp") << QByteArray("image/bmp") << Encoded(image, "BMP");
}

void TestMimePictures::formatsAreRead()
{
    QFETCH(QByteArray, format);
    QFETCH(QByteArray, bytes);
    QMimeData data;
    data.setData(QString::fromLatin1(format), bytes);
    QVERIFY(LXMimePictures::HasPictures(&data));
    QCOMPARE(ReadAll(data), QStringList("5x4 ffff0000"));
}

void TestMimePictures::pngKeepsTheColorsUnderSmallAlphas()
{
    QMimeData data;
    data.setData("image/png", Encoded(Filled({2, 2}, qRgba(200, 150, 100, 1)), "PNG"));
    QCOMPARE(ReadAll(data), QStringList("2x2 01c89664"));
}

void TestMimePictures::pngCountsBeforeThePlatformsImage()
{
    QMimeData data;
    data.setImageData(QPixmap::fromImage(Filled({2, 2}, qRgba(200, 150, 100, 1))));
    data.setData("image/png", Encoded(Filled({2, 2}, qRgba(200, 150, 100, 1)), "PNG"));
    QCOMPARE(ReadAll(data), QStringList("2x2 01c89664"));
}

void TestMimePictures::aDrawingComesAtItsOwnSize()
{
    QMimeData data;
    data.setData("image/svg+xml", "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='10'>"
                                  "<rect width='20' height='10' fill='#00ff00'/></svg>");
    QVERIFY(LXMimePictures::HasPictures(&data));
    QCOMPARE(ReadAll(data), QStringList("20x10 ff00ff00"));
}

void TestMimePictures::aDrawingThatCostsTooMuchIsRefusedInWords()
{
    QMimeData data;
    data.setData("image/svg+xml", "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='10'>"
                                  "<g id='a'><use href='#a'/><use href='#a'/></g></svg>");
    QVERIFY_EXCEPTION_THROWN(ReadAll(data), std::runtime_error);
    // What comes beside it is read.
    data.setData("image/bmp", Encoded(Filled({5, 4}, 0xFFFF0000u), "BMP"));
    QCOMPARE(ReadAll(data), QStringList("5x4 ffff0000"));
}

void TestMimePictures::brokenPixelsAreNothing()
{
    QMimeData data;
    data.setData("image/png", "not a picture");
    QCOMPARE(ReadAll(data), QStringList());
}

void TestMimePictures::whatIsTooLargeIsNeverDecoded_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QByteArray>("bytes");

    // 272 million pixels of one bit each, in few bytes.
    QImage blank(17000, 16000, QImage::Format_Mono);
    blank.fill(0);
    QTest::newRow("a png of many pixels") << QByteArray("image/png") << Encoded(blank, "PNG");
    // One row: what forbids it is the length of a side.
    QTest::newRow("a long png") << QByteArray("image/png") << Encoded(Filled({60001, 1}, 0xFFFF0000u), "PNG");
    for (const char* size : {"width='60001' height='1'", "width='30000' height='30000'"}) {
        QTest::newRow(size) << QByteArray("image/svg+xml")
                            << QByteArray("<svg xmlns='http://www.w3.org/2000/svg' ") + size +
                                   "><rect width='9' height='1' fill='#00ff00'/></svg>";
    }
}

void TestMimePictures::whatIsTooLargeIsNeverDecoded()
{
    QFETCH(QByteArray, format);
    QFETCH(QByteArray, bytes);
    QMimeData data;
    data.setData(QString::fromLatin1(format), bytes);
    QCOMPARE(ReadAll(data), QStringList());
}

void TestMimePictures::theBoundIsAskedBeforeDecoding()
{
    QList<QSize> asked;
    MimeFileReader::SetBound([&asked](const QSize& size) {
        asked.append(size);
        return size.width() <= 5;
    });
    QMimeData data;
    data.setData("image/png", Encoded(Filled({5, 4}, 0xFFFF0000u), "PNG"));
    QCOMPARE(ReadAll(data), QStringList("5x4 ffff0000"));
    data.setData("image/png", Encoded(Filled({6, 4}, 0xFFFF0000u), "PNG"));
    QCOMPARE(ReadAll(data), QStringList());
    QCOMPARE(asked, (QList<QSize>{{5, 4}, {6, 4}}));
}

void TestMimePictures::whatIsTooLargeHidesNoOtherFormat()
{
    MimeFileReader::SetBound([](const QSize& size) { return size.width() <= 5; });
    QMimeData data;
    data.setData("image/png", Encoded(Filled({6, 4}, 0xFFFF0000u), "PNG"));
    data.setData("image/bmp", Encoded(Filled({3, 2}, 0xFF0000FFu), "BMP"));
    QCOMPARE(ReadAll(data), QStringList("3x2 ff0000ff"));
}

void TestMimePictures::plainTextIsNoPicture()
{
    QMimeData data;
    data.setText("words");
    QVERIFY(!LXMimePictures::HasPictures(&data));
    QCOMPARE(ReadAll(data), QStringList());
}

void TestMimePictures::aPictureWithPlainTextIsText()
{
    QMimeData data;
    data.setText("a table");
    data.setImageData(Filled({2, 2}, qRgb(1, 2, 3)));
    QVERIFY(!LXMimePictures::HasPictures(&data));
    QCOMPARE(ReadAll(data), QStringList());
}

void TestMimePictures::filesAreRead()
{
    QMimeData data;
    data.setUrls(Files({"7x3.png", "1x2.png"}));
    QVERIFY(LXMimePictures::HasPictures(&data));
    QCOMPARE(ReadAll(data), QStringList({"7x3 ffffffff", "1x2 ffffffff"}));
}

void TestMimePictures::filesCountBeforePixels()
{
    QMimeData data;
    data.setUrls(Files({"7x3.png"}));
    data.setText("/pictures/7x3.png");
    data.setImageData(Filled({2, 2}, qRgb(1, 2, 3)));
    QCOMPARE(ReadAll(data), QStringList("7x3 ffffffff"));
}

void TestMimePictures::aMixedLotOfFilesIsLeftAlone()
{
    QMimeData data;
    data.setUrls(Files({"7x3.png", "letter.txt"}));
    QVERIFY(!LXMimePictures::HasPictures(&data));
}

void TestMimePictures::manyFilesAreLeftAlone()
{
    QStringList names;
    for (int i = 0; i < LXMimePictures::MostFiles; ++i)
        names.append("7x3.png");
    QMimeData data;
    data.setUrls(Files(names));
    QCOMPARE(ReadAll(data).size(), LXMimePictures::MostFiles);
    data.setUrls(Files(names + QStringList("7x3.png")));
    QVERIFY(!LXMimePictures::HasPictures(&data));
}

void TestMimePictures::filesThatCantBeReadAreLeftOut()
{
    QMimeData data;
    data.setUrls(Files({"broken.png", "1x2.png"}));
    QCOMPARE(ReadAll(data), QStringList("1x2 ffffffff"));
}

void TestMimePictures::addressesInTheWebAreNoFiles()
{
    QMimeData data;
    data.setUrls({QUrl("https://example.org/7x3.png")});
    QVERIFY(!LXMimePictures::HasPictures(&data));

    // A picture dragged out of a browser comes with its address.
    data.setImageData(Filled({2, 2}, qRgb(1, 2, 3)));
    QCOMPARE(ReadAll(data), QStringList("2x2 ff010203"));
}

void TestMimePictures::withoutAReaderFilesAreLeftAlone()
{
    MimeFileReader::Set({}, {});
    QMimeData data;
    data.setUrls(Files({"7x3.png"}));
    QVERIFY(!LXMimePictures::HasPictures(&data));
}

void TestMimePictures::nothingIsNothing()
{
    QVERIFY(!LXMimePictures::HasPictures(nullptr));
    QVERIFY(LXMimePictures::Read(nullptr).isEmpty());
    const QMimeData data;
    QVERIFY(!LXMimePictures::HasPictures(&data));
}

ZK_REGISTER_TEST(tst_mimepictures, TestMimePictures)
#include "tst_mimepictures.moc"
