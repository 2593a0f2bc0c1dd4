#include "image/LXFloodFillHelper.h"
#include "image/LXImage.h"
#include "image/TileThreads.h"
#include "support/FillTwin.h"
#include "support/TestImages.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QTest>
#include <QThreadPool>

#include <algorithm>
#include <atomic>
#include <random>
#include <stdexcept>

namespace {
const LXRGBA32i Black(0xFF000000);
const LXRGBA32i Exact(0x00000000);

/// '#' is opaque black, anything else transparent.
PlainImage FromRows(const QStringList& rows)
{
    PlainImage image(rows.first().size(), rows.size());
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            if (rows[y][x] == QLatin1Char('#')) image.At(x, y) = Black;
        }
    }
    return image;
}

QStringList ToRows(const LXImage32& image)
{
    QStringList rows;
    for (int y = 0; y < image.Height(); ++y) {
        QString row;
        for (int x = 0; x < image.Width(); ++x) {
            row += image.GetColor(x, y).Alpha() > 0 ? '#' : '.';
        }
        rows += row;
    }
    return rows;
}

/// Few colors in patches of `grain` pixels, so that regions grow large and wind through many tiles.
PlainImage Patches(int width, int height, int grain, std::mt19937& random)
{
    PlainImage image(width, height);
    PlainImage coarse(width / grain + 1, height / grain + 1);
    for (LXRGBA32i& pixel : coarse.pixels) {
        pixel = random() % 5 < 3 ? LXRGBA32i(0xFF808080) : LXRGBA32i(0xFF000000u + random() % 256);
    }
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.At(x, y) = coarse.At(x / grain, y / grain);
        }
    }
    return image;
}

/// Corridors one pixel wide in a part of a picture, by a walk that turns back where it can go no further;
/// with `loops` walls in a hundred taken out again.
void DigMaze(PlainImage& image, const QRect& part, int loops, std::mt19937& random)
{
    const QPoint steps[] = {{2, 0}, {-2, 0}, {0, 2}, {0, -2}};
    std::vector<QPoint> path{part.topLeft()};
    image.At(part.left(), part.top()) = Black;
    while (!path.empty()) {
        const QPoint at = path.back();
        QPoint ways[4];
        unsigned int count = 0;
        for (const QPoint& step : steps) {
            const QPoint to = at + step;
            if (part.contains(to) && image.At(to.x(), to.y()) != Black) ways[count++] = step;
        }
        if (count == 0) {
            path.pop_back();
            continue;
        }
        const QPoint step = ways[random() % count];
        path.push_back(at + step);
        for (const QPoint& dug : {at + step / 2, at + step}) {
            image.At(dug.x(), dug.y()) = Black;
        }
    }
    for (int i = 0; i < part.width() * part.height() / 100 * loops; ++i) {
        const QPoint at(part.left() + static_cast<int>(random() % static_cast<unsigned>(part.width())),
                        part.top() + static_cast<int>(random() % static_cast<unsigned>(part.height())));
        image.At(at.x(), at.y()) = Black;
    }
}

/// While one lives, the pool has so many threads.
class PoolSize
{
public:
    explicit PoolSize(int threads) { QThreadPool::globalInstance()->setMaxThreadCount(threads); }

    ~PoolSize() { QThreadPool::globalInstance()->setMaxThreadCount(m_Before); }

private:
    Q_DISABLE_COPY(PoolSize)

    int m_Before = QThreadPool::globalInstance()->maxThreadCount();
};
} // namespace

class TestFloodFill : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void agreesWithTheTwin_data();
    void agreesWithTheTwin();

    void colorRangeAgreesWithTheTwin_data() { agreesWithTheTwin_data(); }

    void colorRangeAgreesWithTheTwin();
    void diagonalsDoNotConnect();
    void aSinglePixelHasASinglePixelsBounds();
    void aSpiralIsFollowedToItsEnd();
    void aMazeIsFollowedToItsEnds_data();
    void aMazeIsFollowedToItsEnds();
    void unwantedFloodsEnd();
    void toleranceIsPerChannel();
    void fullToleranceIgnoresAChannel();
    void seedOutsideTouchesNothing();
    void boundsMayBeMissing();
    void maskPixelsOutsideTheRegionStay();
    void onlyPixelsOfBothImagesCount();
    void maskMayBeTheSource();
    void wholeTilesShareOneTile();
    void pixelsBeyondTheEdgeAreNotPainted();
    void masksTooLargeForCachesAreTheSame();
    void failuresAreThrown();
    void lackOfMemoryIsThrown();
};

void TestFloodFill::agreesWithTheTwin_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("grain");
    QTest::newRow("1 x 1") << QSize(1, 1) << 1;
    QTest::newRow("127") << QSize(127, 127) << 1;
    QTest::newRow("128") << QSize(128, 128) << 3;
    QTest::newRow("129") << QSize(129, 129) << 2;
    QTest::newRow("130, fine") << QSize(130, 130) << 1;
    QTest::newRow("300 x 270, fine") << QSize(300, 270) << 1;
    QTest::newRow("300 x 270, coarse") << QSize(300, 270) << 7;
    QTest::newRow("a row") << QSize(700, 1) << 1;
    QTest::newRow("a column") << QSize(1, 700) << 5;
}

void TestFloodFill::agreesWithTheTwin()
{
    QFETCH(QSize, size);
    QFETCH(int, grain);
    std::mt19937 random(99);
    for (const quint32 tolerance : {0x00000000u, 0x00101010u, 0xFF404040u}) {
        for (int turn = 0; turn < 6; ++turn) {
            const PlainImage src = Patches(size.width(), size.height(), grain, random);
            const QPoint seed(static_cast<int>(random() % static_cast<unsigned int>(size.width())),
                              static_cast<int>(random() % static_cast<unsigned int>(size.height())));
            PlainImage expected(size.width(), size.height());
            LXImage32 mask(size.width(), size.height());
            const QRect expectedBounds =
                FillTwin::FloodFill(src, expected, seed, LXRGBA32i(tolerance), Black);
            QRect bounds;
            QVERIFY(LXFloodFillHelper::FloodFill(TestImages::ToTiles(src), mask, seed, LXRGBA32i(tolerance),
                                                 Black, &bounds));
            QCOMPARE(bounds, expectedBounds);
            QCOMPARE(TestImages::Difference(TestImages::ToPlain(mask), expected), QString());
        }
    }
}

void TestFloodFill::colorRangeAgreesWithTheTwin()
{
    QFETCH(QSize, size);
    QFETCH(int, grain);
    std::mt19937 random(98);
    for (const quint32 tolerance : {0x00000000u, 0x00101010u, 0xFF404040u}) {
        const PlainImage src = Patches(size.width(), size.height(), grain, random);
        const QPoint seed(size.width() / 2, size.height() / 3);
        PlainImage expected(size.width(), size.height());
        LXImage32 mask(size.width(), size.height());
        const QRect expectedBounds =
            FillTwin::ColorRangeFill(src, expected, seed, LXRGBA32i(tolerance), Black);
        QRect bounds;
        QVERIFY(LXFloodFillHelper::ColorRangeFill(TestImages::ToTiles(src), mask, seed, LXRGBA32i(tolerance),
                                                  Black, &bounds));
        QCOMPARE(bounds, expectedBounds);
        QCOMPARE(TestImages::Difference(TestImages::ToPlain(mask), expected), QString());
    }
}

void TestFloodFill::diagonalsDoNotConnect()
{
    const PlainImage src = FromRows({"##..#", //
                                     "##..#", //
                                     "..##.", //
                                     "..###"});
    LXImage32 mask(5, 4);
    QRect bounds;
    QVERIFY(
        LXFloodFillHelper::FloodFill(TestImages::ToTiles(src), mask, QPoint(2, 2), Exact, Black, &bounds));
    QCOMPARE(ToRows(mask), QStringList({".....", //
                                        ".....", //
                                        "..##.", //
                                        "..###"}));
    QCOMPARE(bounds, QRect(2, 2, 3, 2));

    QVERIFY(LXFloodFillHelper::ColorRangeFill(TestImages::ToTiles(src), mask, QPoint(2, 2), Exact, Black,
                                              &bounds));
    QCOMPARE(ToRows(mask), QStringList({"##..#", //
                                        "##..#", //
                                        "..##.", //
                                        "..###"}));
    QCOMPARE(bounds, QRect(0, 0, 5, 4));
}

void TestFloodFill::aSinglePixelHasASinglePixelsBounds()
{
    LXImage32 src(200, 200);
    src.SetColor(128, 127, Black);
    LXImage32 mask(200, 200);
    QRect bounds;
    QVERIFY(LXFloodFillHelper::FloodFill(src, mask, QPoint(128, 127), Exact, Black, &bounds));
    QCOMPARE(bounds, QRect(128, 127, 1, 1));
    QCOMPARE(mask.GetColor(128, 127), Black);
}

/// One pixel wide, through the same tiles again and again.
void TestFloodFill::aSpiralIsFollowedToItsEnd()
{
    constexpr int side = 301;
    PlainImage src(side, side);
    QPoint at(0, 0);
    QPoint step(1, 0);
    src.At(0, 0) = Black;
    const auto isFree = [&](const QPoint& p) {
        return src.Contains(p.x(), p.y()) && src.At(p.x(), p.y()) != Black;
    };
    for (int turns = 0; turns < 2;) {
        const QPoint next = at + step;
        const QPoint beyond = next + step;
        const bool isBlocked =
            !src.Contains(next.x(), next.y()) || (src.Contains(beyond.x(), beyond.y()) && !isFree(beyond));
        if (isBlocked) {
            step = QPoint(-step.y(), step.x());
            ++turns;
            continue;
        }
        at = next;
        src.At(at.x(), at.y()) = Black;
        turns = 0;
    }
    LXImage32 mask(side, side);
    QVERIFY(
        LXFloodFillHelper::FloodFill(TestImages::ToTiles(src), mask, QPoint(0, 0), Exact, Black, nullptr));
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(mask), src), QString());
}

void TestFloodFill::aMazeIsFollowedToItsEnds_data()
{
    QTest::addColumn<int>("loops");
    QTest::addColumn<int>("threads");
    for (const int threads : {1, 4}) {
        for (const int loops : {0, 1, 10, 40}) {
            QTest::addRow("%d loops, %d threads", loops, threads) << loops << threads;
        }
    }
}

/// Two mazes, noise and a plain area, all apart: what was only looked at ahead must not be taken.
void TestFloodFill::aMazeIsFollowedToItsEnds()
{
    QFETCH(int, loops);
    QFETCH(int, threads);
    const PoolSize pool(threads);
    std::mt19937 random(static_cast<unsigned>(7 + loops));
    PlainImage src(1400, 900);
    const QRect mazes[] = {QRect(0, 0, 790, 700), QRect(800, 300, 600, 590)};
    for (const QRect& maze : mazes) {
        DigMaze(src, maze, loops, random);
    }
    for (int y = 710; y < src.height; ++y) {
        std::fill_n(&src.At(0, y), 790, Black);
    }
    for (int y = 0; y < 290; ++y) {
        for (int x = 800; x < src.width; ++x) {
            if (random() % 100 < 60) src.At(x, y) = Black;
        }
    }
    const LXImage32 tiles = TestImages::ToTiles(src);
    for (const QPoint& seed : {QPoint(0, 0), QPoint(800, 300), QPoint(1, 1)}) {
        PlainImage expected(src.width, src.height);
        LXImage32 mask(src.width, src.height);
        const QRect expectedBounds = FillTwin::FloodFill(src, expected, seed, Exact, Black);
        QRect bounds;
        QVERIFY(LXFloodFillHelper::FloodFill(tiles, mask, seed, Exact, Black, &bounds));
        QCOMPARE(bounds, expectedBounds);
        QCOMPARE(TestImages::Difference(TestImages::ToPlain(mask), expected), QString());
    }
}

/// After any number of tiles, on one thread and on several.
void TestFloodFill::unwantedFloodsEnd()
{
    std::mt19937 random(3);
    PlainImage src(700, 700);
    DigMaze(src, QRect(0, 0, 700, 700), 0, random);
    const LXImage32 tiles = TestImages::ToTiles(src);
    for (const int threads : {1, 4}) {
        const PoolSize pool(threads);
        for (const int most : {0, 1, 20, 40}) {
            std::atomic<int> asked{0};
            const TileThreads::CancelScope scope([&] { return asked++ < most; });
            LXImage32 mask(700, 700);
            QVERIFY_EXCEPTION_THROWN(
                LXFloodFillHelper::FloodFill(tiles, mask, QPoint(0, 0), Exact, Black, nullptr),
                TileThreads::Cancelled);
        }
    }
}

void TestFloodFill::toleranceIsPerChannel()
{
    LXImage32 src(4, 1);
    src.SetColor(0, 0, LXRGBA32i(0xFF646464));
    src.SetColor(1, 0, LXRGBA32i(0xFF696464)); // red 5 off
    src.SetColor(2, 0, LXRGBA32i(0xFF64645E)); // blue 6 off
    src.SetColor(3, 0, LXRGBA32i(0xFF646464));
    LXImage32 mask(4, 1);
    QVERIFY(LXFloodFillHelper::FloodFill(src, mask, QPoint(0, 0), LXRGBA32i(0x00050505), Black, nullptr));
    QCOMPARE(ToRows(mask), QStringList("##.."));

    mask = LXImage32(4, 1);
    QVERIFY(LXFloodFillHelper::FloodFill(src, mask, QPoint(0, 0), LXRGBA32i(0x00050506), Black, nullptr));
    QCOMPARE(ToRows(mask), QStringList("####"));
}

void TestFloodFill::fullToleranceIgnoresAChannel()
{
    LXImage32 src(2, 1);
    src.SetColor(0, 0, LXRGBA32i(0xFF112233));
    src.SetColor(1, 0, LXRGBA32i(0x00112233));
    LXImage32 mask(2, 1);
    QVERIFY(LXFloodFillHelper::FloodFill(src, mask, QPoint(0, 0), LXRGBA32i(0xFE000000), Black, nullptr));
    QCOMPARE(ToRows(mask), QStringList("#."));
    QVERIFY(LXFloodFillHelper::FloodFill(src, mask, QPoint(0, 0), LXRGBA32i(0xFF000000), Black, nullptr));
    QCOMPARE(ToRows(mask), QStringList("##"));
}

void TestFloodFill::seedOutsideTouchesNothing()
{
    const LXImage32 src(10, 10);
    LXImage32 mask(10, 10);
    const LXImage32 before = mask;
    const QRect untouched(3, 4, 5, 6);
    QRect bounds = untouched;
    const QPoint outside[] = {{-1, 0}, {0, -1}, {10, 0}, {0, 10}};
    for (const QPoint& seed : outside) {
        QVERIFY(!LXFloodFillHelper::FloodFill(src, mask, seed, Exact, Black, &bounds));
        QVERIFY(!LXFloodFillHelper::ColorRangeFill(src, mask, seed, Exact, Black, &bounds));
    }
    QVERIFY(!LXFloodFillHelper::FloodFill(LXImage32(), mask, QPoint(0, 0), Exact, Black, &bounds));
    QCOMPARE(bounds, untouched);
    QVERIFY(mask.m_Tiles == before.m_Tiles);
}

void TestFloodFill::boundsMayBeMissing()
{
    LXImage32 mask(10, 10);
    QVERIFY(LXFloodFillHelper::FloodFill(LXImage32(10, 10), mask, QPoint(0, 0), Exact, Black, nullptr));
    QVERIFY(LXFloodFillHelper::ColorRangeFill(LXImage32(10, 10), mask, QPoint(0, 0), Exact, Black, nullptr));
    QCOMPARE(mask.GetColor(9, 9), Black);
}

void TestFloodFill::maskPixelsOutsideTheRegionStay()
{
    LXImage32 mask(3, 1);
    mask.Fill(LXRGBA32i(0x11223344));
    QVERIFY(LXFloodFillHelper::FloodFill(TestImages::ToTiles(FromRows({"#.#"})), mask, QPoint(0, 0), Exact,
                                         LXRGBA32i(0x55667788), nullptr));
    QCOMPARE(mask.GetColor(0, 0).value, 0x55667788u);
    QCOMPARE(mask.GetColor(1, 0).value, 0x11223344u);
    QCOMPARE(mask.GetColor(2, 0).value, 0x11223344u);
}

void TestFloodFill::onlyPixelsOfBothImagesCount()
{
    QRect bounds;
    LXImage32 small(200, 5);
    QVERIFY(LXFloodFillHelper::FloodFill(LXImage32(300, 300), small, QPoint(0, 0), Exact, Black, &bounds));
    QCOMPARE(bounds, QRect(0, 0, 200, 5));
    LXImage32 large(300, 300);
    QVERIFY(LXFloodFillHelper::ColorRangeFill(LXImage32(200, 5), large, QPoint(0, 0), Exact, Black, &bounds));
    QCOMPARE(bounds, QRect(0, 0, 200, 5));
    QCOMPARE(large.GetColor(200, 0).value, 0u);
}

void TestFloodFill::maskMayBeTheSource()
{
    std::mt19937 random(5);
    const PlainImage src = Patches(300, 270, 9, random);
    PlainImage expected = src;
    FillTwin::FloodFill(src, expected, QPoint(10, 10), Exact, LXRGBA32i(0x01020304));
    LXImage32 image = TestImages::ToTiles(src);
    QVERIFY(
        LXFloodFillHelper::FloodFill(image, image, QPoint(10, 10), Exact, LXRGBA32i(0x01020304), nullptr));
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(image), expected), QString());

    expected = src;
    FillTwin::ColorRangeFill(src, expected, QPoint(10, 10), Exact, LXRGBA32i(0x01020304));
    image = TestImages::ToTiles(src);
    QVERIFY(LXFloodFillHelper::ColorRangeFill(image, image, QPoint(10, 10), Exact, LXRGBA32i(0x01020304),
                                              nullptr));
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(image), expected), QString());
}

void TestFloodFill::wholeTilesShareOneTile()
{
    const int before = LXTileManager::Instance().LiveTileCount();
    const LXImage32 src(1280, 1280);
    LXImage32 mask(1280, 1280);
    QVERIFY(LXFloodFillHelper::FloodFill(src, mask, QPoint(5, 5), Exact, Black, nullptr));
    QVERIFY(mask.TileAt(0, 0) == mask.TileAt(9, 9));
    QCOMPARE(LXTileManager::Instance().LiveTileCount() - before, 2);
}

void TestFloodFill::pixelsBeyondTheEdgeAreNotPainted()
{
    LXImage32 mask(130, 130);
    QVERIFY(
        LXFloodFillHelper::ColorRangeFill(LXImage32(130, 130), mask, QPoint(0, 0), Exact, Black, nullptr));
    const auto corner = mask.ReadTile(1, 1);
    QCOMPARE(std::count(corner.Pixels(), corner.Pixels() + 128 * 128, Black), std::ptrdiff_t(4));
}

/// A new mask, so that all its tiles are written whole.
void TestFloodFill::masksTooLargeForCachesAreTheSame()
{
    std::mt19937 random(21);
    const PlainImage src = Patches(1700, 1700, 3, random);
    const QPoint seed(140, 130);
    PlainImage expected(1700, 1700);
    const QRect expectedBounds = FillTwin::ColorRangeFill(src, expected, seed, Exact, Black);
    LXImage32 mask(1700, 1700);
    QRect bounds;
    QVERIFY(LXFloodFillHelper::ColorRangeFill(TestImages::ToTiles(src), mask, seed, Exact, Black, &bounds));
    QCOMPARE(bounds, expectedBounds);
    QCOMPARE(TestImages::Difference(TestImages::ToPlain(mask), expected), QString());
}

void TestFloodFill::failuresAreThrown()
{
    const LXImage32 src(10, 10);
    LXImage32 mask(10, 10);
    FaultSeams::FailNth(FaultSeams::Seam::FloodFill, 1);
    QVERIFY_EXCEPTION_THROWN(LXFloodFillHelper::FloodFill(src, mask, QPoint(0, 0), Exact, Black, nullptr),
                             std::runtime_error);
    FaultSeams::FailNth(FaultSeams::Seam::FloodFill, 1);
    QVERIFY_EXCEPTION_THROWN(
        LXFloodFillHelper::ColorRangeFill(src, mask, QPoint(0, 0), Exact, Black, nullptr),
        std::runtime_error);
}

void TestFloodFill::lackOfMemoryIsThrown()
{
    const LXImage32 src(130, 130);
    LXImage32 mask(130, 130);
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 2);
    QVERIFY_EXCEPTION_THROWN(LXFloodFillHelper::FloodFill(src, mask, QPoint(0, 0), Exact, Black, nullptr),
                             std::bad_alloc);
}

ZK_REGISTER_TEST(tst_floodfill, TestFloodFill)
#include "tst_floodfill.moc"
