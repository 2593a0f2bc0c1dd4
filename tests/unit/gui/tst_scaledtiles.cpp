#include "GuiFixture.h"

#include "gui/ScaledTileCache.h"
#include "gui/TileReduction.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <random>

/// The scaled pictures that views show, against the plain formula.
class TestScaledTiles : public QObject
{
    Q_OBJECT

private slots:
    void levelsAreTheMeanOfTheirBoxes_data();
    void levelsAreTheMeanOfTheirBoxes();
    void colorOfTransparentPixelsDoesNotBleed();
    void partsAgreeWithTheWhole();
    void repeatedTilesOfOneColorAreReducedLikeOthers();
    void tilesAreMadeOnce();
    void onlyWhatChangedIsMadeAgain();
    void whatChangedIsSeen();
    void budgetDropsTiles();
    void aBudgetBelowOneTileStillShowsThePicture();
};

namespace {
constexpr qint64 Megabyte = 1024 * 1024;

QRect LevelRect(const LXImage32& picture, int level)
{
    return QRect(QPoint(0, 0), ScaledTileCache::LevelSize({picture.Width(), picture.Height()}, level));
}

/// Opaque on the left; opaque, transparent and soft pixels in equal parts from column 40 on.
LXImage32 Noise(const QSize& size)
{
    std::mt19937 random(1);
    return GuiFixture::MakeImage(size, [&](int x, int) {
        const QRgb pixel = random();
        if (x < 40) return pixel | 0xff000000;
        return random() % 3 == 0 ? pixel : (random() % 2 ? pixel | 0xff000000 : pixel & 0x00ffffff);
    });
}

/// The slow twin: the mean of one box in real numbers.
QRgb SlowMean(const LXImage32& picture, const QRect& box)
{
    double alpha = 0, red = 0, green = 0, blue = 0;
    const QRect inside = box & picture.Rect();
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x) {
            const LXRGBA32i pixel = picture.GetColor(x, y);
            alpha += pixel.Alpha();
            red += pixel.Red() * pixel.Alpha() / 255.0;
            green += pixel.Green() * pixel.Alpha() / 255.0;
            blue += pixel.Blue() * pixel.Alpha() / 255.0;
        }
    }
    const double count = inside.width() * inside.height();
    return qRgba(qRound(red / count), qRound(green / count), qRound(blue / count), qRound(alpha / count));
}

int Distance(QRgb a, QRgb b)
{
    return qMax(qMax(qAbs(qRed(a) - qRed(b)), qAbs(qGreen(a) - qGreen(b))),
                qMax(qAbs(qBlue(a) - qBlue(b)), qAbs(qAlpha(a) - qAlpha(b))));
}

QRgb RawPixel(const QImage& image, int x, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y))[x];
}
} // namespace

void TestScaledTiles::levelsAreTheMeanOfTheirBoxes_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("level");
    for (const QSize size : {QSize(1, 1), QSize(127, 3), QSize(128, 128), QSize(129, 127), QSize(300, 200)}) {
        for (const int level : {0, 1, 2, 4, 7}) {
            QTest::addRow("%dx%d level %d", size.width(), size.height(), level) << size << level;
        }
    }
}

void TestScaledTiles::levelsAreTheMeanOfTheirBoxes()
{
    QFETCH(QSize, size);
    QFETCH(int, level);
    const LXImage32 picture = Noise(size);
    ScaledTileCache cache(Megabyte);
    const QImage made = cache.Compose(picture, level, LevelRect(picture, level));
    for (int y = 0; y < made.height(); ++y) {
        for (int x = 0; x < made.width(); ++x) {
            const QRgb slow = SlowMean(picture, QRect(x << level, y << level, 1 << level, 1 << level));
            // Qt's own premultiplying, used where nothing is averaged, rounds a half another way.
            QVERIFY2(Distance(RawPixel(made, x, y), slow) <= 1, qPrintable(QString("%1, %2").arg(x).arg(y)));
        }
    }
}

void TestScaledTiles::colorOfTransparentPixelsDoesNotBleed()
{
    const LXImage32 picture =
        GuiFixture::MakeImage({2, 2}, [](int x, int) { return x ? 0x00ff0000 : 0xff0000ff; });
    ScaledTileCache cache(Megabyte);
    const QImage made = cache.Compose(picture, 1, QRect(0, 0, 1, 1));
    QCOMPARE(RawPixel(made, 0, 0), qRgba(0, 0, 128, 128));
}

void TestScaledTiles::partsAgreeWithTheWhole()
{
    const LXImage32 picture = Noise({300, 260});
    ScaledTileCache cache(Megabyte);
    const QImage whole = cache.Compose(picture, 0, picture.Rect());
    const QRect part(100, 120, 60, 70);
    ScaledTileCache fresh(Megabyte);
    QCOMPARE(fresh.Compose(picture, 0, part), whole.copy(part));
}

void TestScaledTiles::repeatedTilesOfOneColorAreReducedLikeOthers()
{
    for (const quint32 color : {0xFF123456u, 0x80C0FF01u, 0x01FFFFFFu, 0x00FFFFFFu}) {
        LXImage32 shared(400, 300);
        shared.Fill(LXRGBA32i(color));
        shared.SetColor(7, 200, LXRGBA32i(0xFF00FF00));
        LXImage32 single = shared;
        for (LXTilePointer& tile : single.m_Tiles)
            const LXTileWriter<LXRGBA32i> detached(tile);
        for (int level = 0; level <= 7; ++level) {
            const QRect rect = LevelRect(shared, level);
            QImage expected(rect.size(), QImage::Format_ARGB32_Premultiplied);
            QImage seen(rect.size(), QImage::Format_ARGB32_Premultiplied);
            ReduceInto(single, level, rect, expected, QPoint());
            ReduceInto(shared, level, rect, seen, QPoint());
            QCOMPARE(seen, expected);
            // The picture's edge cuts the last tile, which tells nothing of its color.
            QCOMPARE(seen.pixel(rect.bottomRight()), seen.pixel(128 >> level, 0));
        }
    }
}

void TestScaledTiles::tilesAreMadeOnce()
{
    const LXImage32 picture = Noise({300, 260});
    ScaledTileCache cache(Megabyte);
    cache.Compose(picture, 0, picture.Rect());
    QCOMPARE(cache.MadePixels(), qint64(300 * 260));
    cache.Compose(picture, 0, picture.Rect());
    QCOMPARE(cache.MadePixels(), qint64(300 * 260));
    cache.Compose(picture, 1, LevelRect(picture, 1));
    QCOMPARE(cache.MadePixels(), qint64(300 * 260 + 150 * 130));
}

void TestScaledTiles::onlyWhatChangedIsMadeAgain()
{
    const LXImage32 picture = Noise({300, 260});
    ScaledTileCache cache(Megabyte);
    cache.Compose(picture, 0, picture.Rect());
    cache.Compose(picture, 2, LevelRect(picture, 2));
    const qint64 before = cache.MadePixels();
    cache.Invalidate(QRect(126, 10, 4, 2));
    cache.Compose(picture, 0, picture.Rect());
    QCOMPARE(cache.MadePixels() - before, qint64(4 * 2));
    cache.Compose(picture, 2, LevelRect(picture, 2));
    QCOMPARE(cache.MadePixels() - before, qint64(4 * 2 + 2 * 1));
}

void TestScaledTiles::whatChangedIsSeen()
{
    LXImage32 picture = Noise({300, 260});
    ScaledTileCache cache(Megabyte);
    for (const int level : {0, 1, 3})
        cache.Compose(picture, level, LevelRect(picture, level));
    for (int x = 120; x < 140; ++x)
        picture.SetColor(x, 128, LXRGBA32i(0xff00ff00));
    cache.Invalidate(QRect(120, 128, 20, 1));
    for (const int level : {0, 1, 3}) {
        ScaledTileCache fresh(Megabyte);
        QCOMPARE(cache.Compose(picture, level, LevelRect(picture, level)),
                 fresh.Compose(picture, level, LevelRect(picture, level)));
    }
}

void TestScaledTiles::budgetDropsTiles()
{
    const LXImage32 picture = Noise({3 * 128, 128});
    ScaledTileCache cache(2 * 128 * 128 * 4);
    const QImage first = cache.Compose(picture, 0, picture.Rect());
    QCOMPARE(cache.Compose(picture, 0, picture.Rect()), first);
    QVERIFY(cache.MadePixels() > qint64(3 * 128 * 128));
}

void TestScaledTiles::aBudgetBelowOneTileStillShowsThePicture()
{
    const LXImage32 picture = Noise({200, 150});
    ScaledTileCache none(0);
    ScaledTileCache ample(Megabyte);
    QCOMPARE(none.Compose(picture, 0, picture.Rect()), ample.Compose(picture, 0, picture.Rect()));
}

ZK_REGISTER_TEST(tst_scaledtiles, TestScaledTiles)
#include "tst_scaledtiles.moc"
