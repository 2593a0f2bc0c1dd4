#include "formats/ExifBlock.h"
#include "support/FileBytes.h"
#include "support/TestRegistry.h"

#include <QTest>

using FileBytes::ExifSpec;

class TestExifBlock : public QObject
{
    Q_OBJECT

private slots:
    void valuesAreRead_data();
    void valuesAreRead();
    void valuesAreCorrected_data();
    void valuesAreCorrected();
    void resolutionInCentimetersIsConverted();
    void thumbnailIsTakenOut_data();
    void thumbnailIsTakenOut();
    void absentValuesAreNotAdded();
    void damagedBlocksAreLeftAlone_data();
    void damagedBlocksAreLeftAlone();
    void everyCutOfABlockIsHarmless();
};

void TestExifBlock::valuesAreRead_data()
{
    QTest::addColumn<bool>("isBigEndian");
    QTest::newRow("little endian") << false;
    QTest::newRow("big endian") << true;
}

void TestExifBlock::valuesAreRead()
{
    QFETCH(bool, isBigEndian);
    const ExifBlock block(FileBytes::Exif({isBigEndian, 6, 299.5, {}, {}}));
    QCOMPARE(block.GetOrientation(), 6);
    QCOMPARE(block.GetDpi(), 299.5);
}

void TestExifBlock::valuesAreCorrected_data()
{
    valuesAreRead_data();
}

void TestExifBlock::valuesAreCorrected()
{
    QFETCH(bool, isBigEndian);
    const ExifSpec before{isBigEndian, 8, 72, QSize(400, 300), {}};
    const ExifSpec after{isBigEndian, 1, 72, QSize(5000, 70000), {}};
    ExifBlock block(FileBytes::Exif(before));
    block.SetOrientation(1);
    block.SetPixelSize(QSize(5000, 70000));
    QCOMPARE(block.GetBytes(), FileBytes::Exif(after));
    block.SetDpi(300.25);
    QCOMPARE(block.GetDpi(), 300.25);
}

void TestExifBlock::resolutionInCentimetersIsConverted()
{
    QByteArray bytes = FileBytes::Exif({false, 1, 100, {}, {}});
    // The unit is the last of four entries, its value eight bytes behind its begin.
    bytes[8 + 2 + 3 * 12 + 8] = 3;
    QCOMPARE(ExifBlock(bytes).GetDpi(), 254.0);
}

void TestExifBlock::thumbnailIsTakenOut_data()
{
    QTest::addColumn<QByteArray>("behind");
    QTest::newRow("at the end") << QByteArray();
    QTest::newRow("with something behind") << QByteArray("maker's note");
}

void TestExifBlock::thumbnailIsTakenOut()
{
    QFETCH(QByteArray, behind);
    const QByteArray thumbnail = "what was cropped away";
    const QByteArray bytes = FileBytes::Exif({false, 3, 72, QSize(8, 8), thumbnail}) + behind;
    ExifBlock block(bytes);
    block.DropThumbnail();
    QVERIFY(!block.GetBytes().contains(thumbnail));
    QVERIFY(block.GetBytes().endsWith(behind));
    QCOMPARE(block.GetOrientation(), 3);
    // The link to the directory that described it is gone too.
    const QByteArray once = block.GetBytes();
    block.DropThumbnail();
    QCOMPARE(block.GetBytes(), once);
}

void TestExifBlock::absentValuesAreNotAdded()
{
    const QByteArray bytes = FileBytes::Exif({false, 1, 0, {}, {}});
    ExifBlock block(bytes);
    QCOMPARE(block.GetDpi(), 0.0);
    block.SetDpi(300);
    block.SetPixelSize(QSize(4, 5));
    block.DropThumbnail();
    QCOMPARE(block.GetBytes(), bytes);
}

void TestExifBlock::damagedBlocksAreLeftAlone_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray good = FileBytes::Exif({false, 6, 72, QSize(8, 8), "thumb"});
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no TIFF") << QByteArray("GIF89a..............");
    QTest::newRow("wrong magic number") << QByteArray(good).replace(2, 1, "\x2B");
    QTest::newRow("directory far outside") << QByteArray(good).replace(4, 4, "\xF0\xFF\xFF\xFF");
    QTest::newRow("directory inside the header")
        << QByteArray(good).replace(4, 4, QByteArray("\x04\0\0\0", 4));
}

void TestExifBlock::damagedBlocksAreLeftAlone()
{
    QFETCH(QByteArray, bytes);
    ExifBlock block(bytes);
    QCOMPARE(block.GetOrientation(), 1);
    QCOMPARE(block.GetDpi(), 0.0);
    block.SetOrientation(1);
    block.SetDpi(300);
    block.SetPixelSize(QSize(4, 5));
    block.DropThumbnail();
    QCOMPARE(block.GetBytes(), bytes);
}

void TestExifBlock::everyCutOfABlockIsHarmless()
{
    const QByteArray good = FileBytes::Exif({true, 6, 72, QSize(8, 8), "thumb"});
    for (int length = 0; length < good.size(); ++length) {
        ExifBlock block(good.left(length));
        QVERIFY(block.GetOrientation() == 1 || block.GetOrientation() == 6);
        block.SetOrientation(1);
        block.SetDpi(300);
        block.SetPixelSize(QSize(4, 5));
        block.DropThumbnail();
        QVERIFY(block.GetBytes().size() <= length);
    }
}

ZK_REGISTER_TEST(tst_exifblock, TestExifBlock)
#include "tst_exifblock.moc"
