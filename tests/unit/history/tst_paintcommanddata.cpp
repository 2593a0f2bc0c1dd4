#include "MemoryFile.h"

#include "history/LayerMaskPaintCommand.h"
#include "history/LayerMaskPaintCommandData.h"
#include "history/LayerPaintCommand.h"
#include "history/LayerPaintCommandData.h"
#include "image/ImageMetadata.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

using namespace DocumentFixture;

class TestPaintCommandData : public QObject
{
    Q_OBJECT

private slots:
    void keepsOnlyThePartAskedFor();
    void aPartOutsideTheImageIsNothing();
    void theImagesShareTheirTiles();
    void comesBackFromItsSerialForm();
    void whatAnImageCarriesComesBack();
    void sharedTilesAreWrittenOnce();
    void damagedInputChangesNothing();
    void aFullDiskIsTold();
    void releaseFreesTheImages();
    void theCostCountsEachTileOnce();
    void commandsTakeOnlyTheirOwnKind();
};

void TestPaintCommandData::keepsOnlyThePartAskedFor()
{
    Random random(3);
    const LXImage32 image = Noise(random, QSize(50, 40));
    LayerPaintCommandData data;
    data.SetUndoImage(image, QRect(10, 5, 20, 20));
    QVERIFY(AreEqual(data.GetUndoImage(), image.Copy(QRect(10, 5, 20, 20))));
    for (const QRect& whole : {QRect(), QRect().translated(7, 7), QRect(0, 0, 50, 40)}) {
        data.SetRedoImage(image, whole);
        QVERIFY(AreEqual(data.GetRedoImage(), image));
    }
}

void TestPaintCommandData::aPartOutsideTheImageIsNothing()
{
    LayerPaintCommandData data;
    data.SetUndoImage(Filled(QSize(50, 40), 0xFF123456), QRect(50, 0, 5, 5));
    QVERIFY(data.GetUndoImage().IsNull());
}

void TestPaintCommandData::theImagesShareTheirTiles()
{
    const LXImage32 image = Filled(QSize(300, 300), 0xFF123456);
    LayerPaintCommandData data;
    data.SetUndoImage(image, QRect());
    QVERIFY(data.GetUndoImage().TileAt(1, 1) == image.TileAt(1, 1));
}

void TestPaintCommandData::comesBackFromItsSerialForm()
{
    Random random(3);
    LayerPaintCommandData data;
    data.SetLayerID(7);
    data.SetUndoGeometry(QRect(-5, 3, 150, 40));
    data.SetRedoGeometry(QRect(9, 9, 10, 10));
    data.SetUndoImage(Noise(random, QSize(150, 40)), QRect());
    data.SetRedoImage(LXImage32(), QRect());
    MemoryFile file;
    QVERIFY(data.Serialize(&file));
    QVERIFY(data.Serialize(&file));

    for (int i = 0; i < 2; ++i) {
        LayerPaintCommandData read;
        QVERIFY(read.Deserialize(&file));
        QCOMPARE(read.GetLayerID(), 7u);
        QCOMPARE(read.GetUndoGeometry(), QRect(-5, 3, 150, 40));
        QCOMPARE(read.GetRedoGeometry(), QRect(9, 9, 10, 10));
        QVERIFY(AreEqual(read.GetUndoImage(), data.GetUndoImage()));
        QVERIFY(read.GetRedoImage().IsNull());
    }
    LayerPaintCommandData nothingLeft;
    QVERIFY(!nothingLeft.Deserialize(&file));
}

void TestPaintCommandData::whatAnImageCarriesComesBack()
{
    LXImage32 image = Filled(QSize(5, 5), 0xFF123456);
    image.m_Profile = ZKCMSProfile("profile");
    image.m_DpiX = 300;
    image.m_DpiY = 150;
    image.m_ExifData = {ZKEXIFElement{0, "block"}, ZKEXIFElement{271, "maker"}};
    LayerPaintCommandData data;
    data.SetUndoImage(image, QRect());
    MemoryFile file;
    QVERIFY(data.Serialize(&file));
    LayerPaintCommandData read;
    QVERIFY(read.Deserialize(&file));
    QVERIFY(ImageMetadata::AreSame(read.GetUndoImage(), image));
    QVERIFY(!ImageMetadata::AreSame(read.GetRedoImage(), image));
}

void TestPaintCommandData::sharedTilesAreWrittenOnce()
{
    LayerPaintCommandData data;
    data.SetUndoImage(LXImage32(128 * 50, 128 * 50), QRect());
    MemoryFile file;
    QVERIFY(data.Serialize(&file));
    QVERIFY(file.bytes.size() < 2 * 65536);
    LayerPaintCommandData read;
    QVERIFY(read.Deserialize(&file));
    QCOMPARE(read.GetMemoryCost(), qint64(65536));
}

void TestPaintCommandData::damagedInputChangesNothing()
{
    Random random(3);
    LayerPaintCommandData data;
    data.SetLayerID(7);
    data.SetUndoImage(Noise(random, QSize(20, 20)), QRect());
    MemoryFile whole;
    QVERIFY(data.Serialize(&whole));

    LayerPaintCommandData target;
    target.SetLayerID(3);
    for (int length = 0; length < whole.bytes.size(); length += 997) {
        MemoryFile cut;
        cut.bytes = whole.bytes.left(length);
        QVERIFY(!target.Deserialize(&cut));
    }
    // Lengths, sizes and tile numbers that can't be: every byte of the head is spoilt in turn.
    for (int i = 0; i < 64; ++i) {
        MemoryFile spoilt;
        spoilt.bytes = whole.bytes;
        spoilt.bytes[i] = static_cast<char>(~spoilt.bytes[i]);
        LayerPaintCommandData read;
        read.Deserialize(&spoilt);
    }
    QCOMPARE(target.GetLayerID(), 3u);
}

void TestPaintCommandData::aFullDiskIsTold()
{
    MemoryFile file;
    file.isFull = true;
    QVERIFY(!LayerPaintCommandData().Serialize(&file));
}

void TestPaintCommandData::releaseFreesTheImages()
{
    LayerPaintCommandData data;
    data.SetLayerID(7);
    data.SetUndoImage(Filled(QSize(10, 10), 1), QRect());
    data.SetRedoImage(Filled(QSize(10, 10), 2), QRect());
    data.ReleaseSerializeData();
    QCOMPARE(data.GetMemoryCost(), qint64(0));
    QCOMPARE(data.GetLayerID(), 7u);
}

void TestPaintCommandData::theCostCountsEachTileOnce()
{
    LayerPaintCommandData data;
    data.SetUndoImage(LXImage32(500, 500), QRect());
    QCOMPARE(data.GetMemoryCost(), qint64(65536));
    data.SetRedoImage(Filled(QSize(500, 500), 0xFF000000), QRect());
    QCOMPARE(data.GetMemoryCost(), qint64(5 * 65536));
}

void TestPaintCommandData::commandsTakeOnlyTheirOwnKind()
{
    LayerPaintCommand layer(nullptr, true);
    LayerMaskPaintCommand mask(nullptr, true);
    LayerPaintCommandData layerData;
    LayerMaskPaintCommandData maskData;
    QVERIFY(!layer.SetCommandData(&maskData));
    QVERIFY(!mask.SetCommandData(&layerData));
    QVERIFY(layer.SetCommandData(new LayerPaintCommandData));
    QVERIFY(mask.SetCommandData(new LayerMaskPaintCommandData));
    QVERIFY(layerData.GetDataType() != maskData.GetDataType());
}

ZK_REGISTER_TEST(tst_paintcommanddata, TestPaintCommandData)
#include "tst_paintcommanddata.moc"
