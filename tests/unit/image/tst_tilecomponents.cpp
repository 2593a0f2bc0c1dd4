#include "image/TileComponents.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <random>
#include <vector>

namespace {
using TileSides::Side;
using TileWalk::TileSide;

std::size_t At(int index)
{
    return static_cast<std::size_t>(index);
}

bool Has(const TileBits& bits, const QPoint& pixel)
{
    return (bits.rows[At(pixel.y())] & TileBitsMath::Bit(pixel.x())) != 0;
}

void Set(TileBits& bits, const QPoint& pixel)
{
    bits.rows[At(pixel.y())] |= TileBitsMath::Bit(pixel.x());
}

bool AreEqual(const TileBits& a, const TileBits& b)
{
    return a.rows == b.rows;
}

QPoint OnSide(Side side, int place)
{
    switch (side) {
    case TileSides::Top: return {place, 0};
    case TileSides::Bottom: return {place, TileSide - 1};
    case TileSides::Left: return {0, place};
    default: return {TileSide - 1, place};
    }
}

SideBits AlongSides(const TileBits& bits)
{
    SideBits along{};
    for (int side = 0; side < TileSides::Count; ++side) {
        for (int place = 0; place < TileSide; ++place) {
            if (Has(bits, OnSide(static_cast<Side>(side), place)))
                along[At(side)] |= TileBitsMath::Bit(place);
        }
    }
    return along;
}

/// Pixel by pixel: what of `inside` hangs together with a pixel of it.
void Flood(const TileBits& inside, const QPoint& from, TileBits& region)
{
    const QRect tile(0, 0, TileSide, TileSide);
    std::vector<QPoint> open{from};
    while (!open.empty()) {
        const QPoint at = open.back();
        open.pop_back();
        if (!tile.contains(at) || !Has(inside, at) || Has(region, at)) continue;
        Set(region, at);
        for (const QPoint& step : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
            open.push_back(at + step);
        }
    }
}

template <class IsSet>
TileBits Pattern(IsSet isSet)
{
    TileBits bits;
    for (int y = 0; y < TileSide; ++y) {
        for (int x = 0; x < TileSide; ++x) {
            if (isSet(x, y)) Set(bits, QPoint(x, y));
        }
    }
    return bits;
}

/// There and back again in columns of one pixel, from the top left.
TileBits Meander()
{
    return Pattern([](int x, int y) { return x % 2 == 0 || y == (x % 4 == 1 ? TileSide - 1 : 0); });
}
} // namespace

class TestTileComponents : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithAFloodPixelByPixel_data();
    void agreesWithAFloodPixelByPixel();
    void aMeanderIsOneComponent();
    void everySecondPixelIsAComponent();
    void innerComponentsAreNeverTaken();
    void nothingIsTakenTwice();
    void pixelsThatAreNotOpenTakeNothing();
    void whatWasTakenBeforeStays();
};

void TestTileComponents::agreesWithAFloodPixelByPixel_data()
{
    QTest::addColumn<int>("percent");
    QTest::addColumn<int>("grain");
    for (const int grain : {1, 2, 5}) {
        for (const int percent : {3, 35, 50, 59, 62, 75, 97, 100}) {
            QTest::addRow("%d %%, grain %d", percent, grain) << percent << grain;
        }
    }
}

/// Comes to the tile at random places, until nothing of the sides is left.
void TestTileComponents::agreesWithAFloodPixelByPixel()
{
    QFETCH(int, percent);
    QFETCH(int, grain);
    std::mt19937 random(17);
    for (int turn = 0; turn < 5; ++turn) {
        std::vector<bool> isCoarseSet(TileWalk::TilePixels);
        for (std::size_t i = 0; i < isCoarseSet.size(); ++i) {
            isCoarseSet[i] = static_cast<int>(random() % 100) < percent;
        }
        const TileBits open =
            Pattern([&](int x, int y) { return isCoarseSet[At(y / grain * TileSide + x / grain)]; });
        TileComponents components(open, TileBits());
        TileBits region;
        for (int visit = 0; visit < 300; ++visit) {
            const auto side = static_cast<Side>(random() % TileSides::Count);
            const int first = static_cast<int>(random() % TileSide);
            const int last = std::min(TileSide - 1, first + static_cast<int>(random() % 9));
            const TileBits before = region;
            for (int place = first; place <= last; ++place) {
                Flood(open, OnSide(side, place), region);
            }
            SideBits leaves{};
            const bool isAnyTaken = components.Take(side, TileBitsMath::Columns(first, last), leaves);
            QCOMPARE(isAnyTaken, !AreEqual(before, region));
            SideBits expected = AlongSides(region);
            const SideBits known = AlongSides(before);
            for (int i = 0; i < TileSides::Count; ++i) {
                expected[At(i)] &= ~known[At(i)];
            }
            QVERIFY(leaves == expected);
        }
        QVERIFY(AreEqual(components.Taken(), region));
    }
}

void TestTileComponents::aMeanderIsOneComponent()
{
    const TileBits meander = Meander();
    TileComponents components(meander, TileBits());
    SideBits leaves{};
    QVERIFY(components.Take(TileSides::Left, TileBitsMath::Bit(40), leaves));
    QVERIFY(AreEqual(components.Taken(), meander));
    QVERIFY(leaves == AlongSides(meander));
}

/// As many components at the sides as there can be, and as many runs.
void TestTileComponents::everySecondPixelIsAComponent()
{
    const TileBits board = Pattern([](int x, int y) { return (x + y) % 2 == 0; });
    TileComponents components(board, TileBits());
    TileBits expected;
    int taken = 0;
    for (int side = 0; side < TileSides::Count; ++side) {
        for (int place = 0; place < TileSide; ++place) {
            SideBits leaves{};
            const QPoint pixel = OnSide(static_cast<Side>(side), place);
            if (!components.Take(static_cast<Side>(side), TileBitsMath::Bit(place), leaves)) continue;
            Set(expected, pixel);
            ++taken;
            QVERIFY(AreEqual(components.Taken(), expected));
        }
    }
    QCOMPARE(taken, 254);
}

void TestTileComponents::innerComponentsAreNeverTaken()
{
    TileBits open = Pattern([](int x, int y) { return x == 0 || y == 0; });
    const TileBits frame = open;
    Set(open, QPoint(60, 60));
    Set(open, QPoint(2, 2));
    TileComponents components(open, TileBits());
    SideBits leaves{};
    for (const Side side : {TileSides::Top, TileSides::Bottom, TileSides::Left, TileSides::Right}) {
        components.Take(side, ~RowBits(0), leaves);
    }
    QVERIFY(AreEqual(components.Taken(), frame));
}

void TestTileComponents::nothingIsTakenTwice()
{
    TileComponents components(Meander(), TileBits());
    SideBits leaves{};
    QVERIFY(!components.HasTaken());
    QVERIFY(components.Take(TileSides::Top, TileBitsMath::Bit(0), leaves));
    QVERIFY(components.HasTaken());
    leaves = {};
    QVERIFY(!components.Take(TileSides::Bottom, ~RowBits(0), leaves));
    QVERIFY(leaves == SideBits{});
}

void TestTileComponents::pixelsThatAreNotOpenTakeNothing()
{
    TileBits open;
    Set(open, QPoint(5, 0));
    TileComponents components(open, TileBits());
    SideBits leaves{};
    QVERIFY(!components.Take(TileSides::Top, ~TileBitsMath::Bit(5), leaves));
    QVERIFY(!components.Take(TileSides::Left, ~RowBits(0), leaves));
    QVERIFY(!components.HasTaken());
    QVERIFY(leaves == SideBits{});
}

void TestTileComponents::whatWasTakenBeforeStays()
{
    TileBits open;
    Set(open, QPoint(5, 0));
    TileBits taken;
    Set(taken, QPoint(90, 100));
    TileComponents components(open, taken);
    QVERIFY(AreEqual(components.Taken(), taken));
    SideBits leaves{};
    QVERIFY(components.Take(TileSides::Top, TileBitsMath::Bit(5), leaves));
    Set(taken, QPoint(5, 0));
    QVERIFY(AreEqual(components.Taken(), taken));
}

ZK_REGISTER_TEST(tst_tilecomponents, TestTileComponents)
#include "tst_tilecomponents.moc"
