#include "image/LXImage.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QTest>

#include <random>
#include <set>
#include <stdexcept>

namespace {
const LXRGBA32i Red(0xFFFF0000);

int DistinctTiles(const LXImage32& image)
{
    std::set<void*> handles;
    for (const LXTilePointer& tile : image.m_Tiles) {
        handles.insert(tile->Handle());
    }
    return static_cast<int>(handles.size());
}

int PixelsOf(const LXImage32& image, int column, int row, LXRGBA32i color)
{
    const auto tile = image.ReadTile(column, row);
    return static_cast<int>(std::count(tile.Pixels(), tile.Pixels() + 128 * 128, color));
}

/// What the exception of `action` says; empty when there is none.
template <class Exception, class Action>
QByteArray WordsOf(Action action)
{
    try {
        action();
    } catch (const Exception& exception) {
        return exception.what();
    }
    return {};
}
} // namespace

class TestLXImage : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void pixelBytesAreBlueGreenRedAlpha();
    void nullImagesHaveNoTiles();
    void tileCountsRoundUp_data();
    void tileCountsRoundUp();
    void newImagesAreZeroAndShareOneTile();
    void tooManyTilesAreRefused();
    void fillCostsAtMostFourTiles_data();
    void fillCostsAtMostFourTiles();
    void fillLeavesTheCornerBeyondTheEdgeZero();
    void fillOfNothingDoesNothing();
    void failedFillLeavesTheImage();
    void getColorThrowsOutside();
    void setColorThrowsOutside();
    void setColorDetachesOneTile();
    void copiesShareTilesUntilWritten();
    void copiesCarryProfileResolutionAndMetadata();
    void copyOutsideReturnsTheWhole();
    void copyOfTheWholeSharesTiles();
    void copyIsTheIntersection();
    void tilesComeBackWhenImagesGo();
    void readingPinsWithoutDetaching();
    void movedAccessUnpinsOnce();
    void failedDetachLeavesTheImage();
};

void TestLXImage::pixelBytesAreBlueGreenRedAlpha()
{
    const LXRGBA32i pixel(0xAA112233);
    QCOMPARE(pixel.bytes[0], quint8(0x33));
    QCOMPARE(pixel.bytes[1], quint8(0x22));
    QCOMPARE(pixel.bytes[2], quint8(0x11));
    QCOMPARE(pixel.bytes[3], quint8(0xAA));
    QCOMPARE(pixel.Blue(), 0x33);
    QCOMPARE(pixel.Green(), 0x22);
    QCOMPARE(pixel.Red(), 0x11);
    QCOMPARE(pixel.Alpha(), 0xAA);
}

void TestLXImage::nullImagesHaveNoTiles()
{
    const int before = LXTileManager::Instance().LiveTileCount();
    const LXImage32 images[] = {LXImage32(), LXImage32(0, 0), LXImage32(0, 7), LXImage32(7, 0),
                                LXImage32(-3, 5)};
    for (const LXImage32& image : images) {
        QVERIFY(image.IsNull());
        QVERIFY(image.m_Tiles.empty());
        QCOMPARE(image.Width(), 0);
        QCOMPARE(image.Height(), 0);
    }
    QCOMPARE(LXTileManager::Instance().LiveTileCount(), before);
}

void TestLXImage::tileCountsRoundUp_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("tiles");
    QTest::newRow("1 x 1") << QSize(1, 1) << QSize(1, 1);
    QTest::newRow("127 x 128") << QSize(127, 128) << QSize(1, 1);
    QTest::newRow("129 x 256") << QSize(129, 256) << QSize(2, 2);
    QTest::newRow("300 x 270") << QSize(300, 270) << QSize(3, 3);
    QTest::newRow("257 x 1") << QSize(257, 1) << QSize(3, 1);
}

void TestLXImage::tileCountsRoundUp()
{
    QFETCH(QSize, size);
    QFETCH(QSize, tiles);
    const LXImage32 image(size.width(), size.height());
    QCOMPARE(QSize(static_cast<int>(image.m_TilesX), static_cast<int>(image.m_TilesY)), tiles);
    QCOMPARE(image.m_Tiles.size(), static_cast<std::size_t>(tiles.width() * tiles.height()));
    QCOMPARE(QSize(image.m_Width, image.m_Height), size);
}

void TestLXImage::newImagesAreZeroAndShareOneTile()
{
    const LXImage32 image(300, 270);
    QCOMPARE(DistinctTiles(image), 1);
    QCOMPARE(PixelsOf(image, 2, 2, LXRGBA32i()), 128 * 128);
    QCOMPARE(image.m_DpiX, 0);
    QCOMPARE(image.m_DpiY, 0);
    QVERIFY(image.m_Profile.IsNull());
    QVERIFY(image.m_ExifData.isEmpty());
}

/// Only the product of the tile counts matters.
void TestLXImage::tooManyTilesAreRefused()
{
    QCOMPARE(LXImage32(128001, 1000).m_Tiles.size(), std::size_t(1001 * 8));
    QCOMPARE(WordsOf<std::bad_alloc>([] { LXImage32(128001, 128000); }), QByteArray("bad allocation"));
    QCOMPARE(LXImage32(128000, 128000).m_Tiles.size(), std::size_t(1000000));
    QCOMPARE(WordsOf<std::bad_alloc>([] { LXImage32(2000000000, 2000000000); }),
             QByteArray("bad allocation"));
}

void TestLXImage::fillCostsAtMostFourTiles_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<quint32>("color");
    QTest::addColumn<int>("tiles");
    QTest::newRow("whole tiles") << QSize(384, 256) << 0xFF00FF00u << 1;
    QTest::newRow("open to the right") << QSize(300, 256) << 0xFF00FF00u << 2;
    QTest::newRow("open to the bottom") << QSize(256, 300) << 0xFF00FF00u << 2;
    QTest::newRow("open corner") << QSize(300, 300) << 0xFF00FF00u << 4;
    QTest::newRow("one small tile") << QSize(5, 5) << 0xFF00FF00u << 1;
    QTest::newRow("zero") << QSize(300, 300) << 0u << 1;
}

void TestLXImage::fillCostsAtMostFourTiles()
{
    QFETCH(QSize, size);
    QFETCH(quint32, color);
    QFETCH(int, tiles);
    const int before = LXTileManager::Instance().LiveTileCount();
    LXImage32 image(size.width(), size.height());
    image.SetColor(0, 0, Red);
    image.Fill(LXRGBA32i(color));
    QCOMPARE(DistinctTiles(image), tiles);
    QCOMPARE(LXTileManager::Instance().LiveTileCount() - before, tiles);
    const PlainImage expected(size.width(), size.height(), LXRGBA32i(color));
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(image), expected), QString());
}

void TestLXImage::fillLeavesTheCornerBeyondTheEdgeZero()
{
    LXImage32 image(130, 130);
    image.Fill(Red);
    QCOMPARE(PixelsOf(image, 0, 0, Red), 128 * 128);
    QCOMPARE(PixelsOf(image, 1, 0, Red), 2 * 128);
    QCOMPARE(PixelsOf(image, 0, 1, Red), 2 * 128);
    QCOMPARE(PixelsOf(image, 1, 1, Red), 4);
    QCOMPARE(PixelsOf(image, 1, 1, LXRGBA32i()), 128 * 128 - 4);
}

void TestLXImage::fillOfNothingDoesNothing()
{
    LXImage32 image;
    image.Fill(Red);
    QVERIFY(image.IsNull());
}

void TestLXImage::failedFillLeavesTheImage()
{
    LXImage32 image(130, 130);
    image.Fill(Red);
    const LXImage32 before = image;
    for (int n = 1; n <= 4; ++n) {
        FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, n);
        QVERIFY_EXCEPTION_THROWN(image.Fill(LXRGBA32i(0xFF0000FF)), std::bad_alloc);
        QVERIFY(image.m_Tiles == before.m_Tiles);
    }
}

void TestLXImage::getColorThrowsOutside()
{
    const LXImage32 image(130, 70);
    const QPoint outside[] = {{130, 0}, {-1, 0}, {0, 70}, {0, -1}, {140, 75}};
    for (const QPoint& at : outside) {
        QCOMPARE(WordsOf<std::out_of_range>([&] { image.GetColor(at.x(), at.y()); }),
                 QByteArray("LXImage::GetColor"));
    }
    QCOMPARE(image.GetColor(129, 69).value, 0u);
    QVERIFY_EXCEPTION_THROWN(LXImage32().GetColor(0, 0), std::out_of_range);
}

void TestLXImage::setColorThrowsOutside()
{
    LXImage32 image(130, 70);
    const QPoint outside[] = {{130, 0}, {-1, 0}, {0, 70}, {0, -1}};
    for (const QPoint& at : outside) {
        QCOMPARE(WordsOf<std::out_of_range>([&] { image.SetColor(at.x(), at.y(), Red); }),
                 QByteArray("LXImage::SetColor"));
    }
}

void TestLXImage::setColorDetachesOneTile()
{
    LXImage32 image(300, 270);
    image.SetColor(200, 200, Red);
    QCOMPARE(DistinctTiles(image), 2);
    QCOMPARE(image.GetColor(200, 200), Red);
    // The same place of the other tiles, which were one with it, is as it was.
    QCOMPARE(image.GetColor(200 - 128, 200 - 128).value, 0u);

    const void* const handle = image.TileAt(1, 1)->Handle();
    image.SetColor(201, 200, Red);
    QVERIFY(image.TileAt(1, 1)->Handle() == handle);
}

void TestLXImage::copiesShareTilesUntilWritten()
{
    const int before = LXTileManager::Instance().LiveTileCount();
    LXImage32 image(300, 270);
    image.Fill(Red);
    LXImage32 copy = image;
    LXImage32 assigned;
    assigned = image;
    QVERIFY(copy.m_Tiles == image.m_Tiles);
    QVERIFY(assigned.m_Tiles == image.m_Tiles);
    QCOMPARE(LXTileManager::Instance().LiveTileCount() - before, 4);

    copy.SetColor(0, 0, LXRGBA32i(0xFF0000FF));
    QCOMPARE(LXTileManager::Instance().LiveTileCount() - before, 5);
    QCOMPARE(image.GetColor(0, 0), Red);
    QCOMPARE(assigned.GetColor(0, 0), Red);
    QCOMPARE(copy.GetColor(1, 0), Red);
    QCOMPARE(copy.TileAt(1, 0), image.TileAt(1, 0));
}

void TestLXImage::copiesCarryProfileResolutionAndMetadata()
{
    LXImage32 image(300, 270);
    image.m_Profile = ZKCMSProfile("icc");
    image.m_DpiX = 300;
    image.m_DpiY = 72;
    image.m_ExifData = {{0, "exif"}};
    const LXImage32 copies[] = {image, image.Copy(QRect(5, 5, 10, 10)), image.Copy(QRect())};
    for (const LXImage32& copy : copies) {
        QVERIFY(copy.m_Profile == ZKCMSProfile("icc"));
        QCOMPARE(copy.m_DpiX, 300);
        QCOMPARE(copy.m_DpiY, 72);
        QCOMPARE(copy.m_ExifData, image.m_ExifData);
    }
}

void TestLXImage::copyOutsideReturnsTheWhole()
{
    LXImage32 image(300, 270);
    image.Fill(Red);
    const QRect outside[] = {QRect(300, 0, 10, 10), QRect(-20, 5, 20, 10), QRect(), QRect(5, 5, 0, 0)};
    for (const QRect& rect : outside) {
        QVERIFY(image.Copy(rect).m_Tiles == image.m_Tiles);
    }
}

void TestLXImage::copyOfTheWholeSharesTiles()
{
    const LXImage32 image(300, 270);
    QVERIFY(image.Copy(image.Rect()).m_Tiles == image.m_Tiles);
    QVERIFY(image.Copy(QRect(-9, -9, 1000, 1000)).m_Tiles == image.m_Tiles);
}

void TestLXImage::copyIsTheIntersection()
{
    std::mt19937 random(7);
    const PlainImage plain = TestImages::Random(300, 270, random);
    const LXImage32 image = TestImages::ToTiles(plain);
    const QRect rects[] = {{0, 0, 1, 1},       {100, 100, 100, 100}, {-10, -10, 140, 140},
                           {290, 260, 50, 50}, {128, 128, 128, 128}, {0, 0, 300, 269}};
    for (const QRect& rect : rects) {
        const QRect part = rect & QRect(0, 0, 300, 270);
        PlainImage expected(part.width(), part.height());
        for (int y = 0; y < part.height(); ++y) {
            for (int x = 0; x < part.width(); ++x) {
                expected.At(x, y) = plain.At(part.left() + x, part.top() + y);
            }
        }
        QCOMPARE(TestImages::Difference(TestImages::ToPlain(image.Copy(rect)), expected), QString());
    }
}

void TestLXImage::tilesComeBackWhenImagesGo()
{
    const int before = LXTileManager::Instance().LiveTileCount();
    {
        LXImage32 image(300, 270);
        image.SetColor(1, 1, Red);
        LXImage32 copy = image;
        copy.SetColor(200, 1, Red);
        image = LXImage32(5, 5);
        QVERIFY(LXTileManager::Instance().LiveTileCount() > before);
    }
    QCOMPARE(LXTileManager::Instance().LiveTileCount(), before);
}

void TestLXImage::readingPinsWithoutDetaching()
{
    LXImage32 image(300, 270);
    const LXImage32 copy = image;
    {
        const auto tile = image.ReadTile(1, 1);
        QCOMPARE(tile.Pixels()[0].value, 0u);
    }
    QVERIFY(copy.m_Tiles == image.m_Tiles);
    QVERIFY(image.TileAt(1, 1)->IsShared());
}

void TestLXImage::movedAccessUnpinsOnce()
{
    LXImage32 image(300, 1);
    std::vector<LXTileWriter<LXRGBA32i>> row;
    row.reserve(1); // so that the first ones move when it grows
    for (int column = 0; column < 3; ++column) {
        row.push_back(image.WriteTile(column, 0));
    }
    row[2].Pixels()[5] = Red;
    row.clear();
    QCOMPARE(image.GetColor(261, 0), Red);
    QVERIFY(!image.TileAt(2, 0)->IsShared());
    // No pin is left that could be taken back.
    QVERIFY_EXCEPTION_THROWN(LXTileManager::Instance().FreeMemory(image.TileAt(2, 0)->Handle()),
                             LXTMAlreadyFree);
}

void TestLXImage::failedDetachLeavesTheImage()
{
    LXImage32 image(300, 270);
    const LXImage32 before = image;
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    QVERIFY_EXCEPTION_THROWN(image.SetColor(0, 0, Red), std::bad_alloc);
    QVERIFY(image.m_Tiles == before.m_Tiles);
}

ZK_REGISTER_TEST(tst_lximage, TestLXImage)
#include "tst_lximage.moc"
