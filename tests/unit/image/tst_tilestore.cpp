#include "image/LXTileExceptions.h"
#include "image/TileStore.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstring>
#include <random>
#include <utility>
#include <vector>

namespace {
constexpr qint64 TileBytes = 65536;
constexpr qint64 Plenty = qint64(1) << 30;

/// Fills a tile with bytes that tell it from the others.
void Write(TileStore& store, void* handle, int number)
{
    std::memset(store.GetMemory(handle, true), number, TileBytes);
    store.FreeMemory(handle);
}

bool Holds(TileStore& store, void* handle, int number)
{
    const auto* const bytes = static_cast<const uchar*>(store.GetMemory(handle, false));
    const bool isRight = std::all_of(bytes, bytes + TileBytes, [&](uchar byte) { return byte == number; });
    store.FreeMemory(handle);
    return isRight;
}
} // namespace

class TestTileStore : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void newTilesAreZeroEvenWhenMemoryIsUsedAgain();
    void liveTilesAreCounted();
    void pinsNest();
    void freeingTooOftenIsRefused();
    void cleaningUpTwiceIsRefused();
    void oldHandlesAreToldFromTheirSuccessors();
    void inventedHandlesAreRefused();
    void pinnedTilesMayBeCleanedUp();
    void tilesBeyondTheBudgetAreSwappedAndComeBack();
    void pinnedTilesStayInMemory();
    void leastRecentlyUsedTilesGoFirst();
    void swappedTilesCanBeReadOverAndOver();
    void swapFileHasNoName();
    void missingFolderIsReported();
    void everyTilePinnedGoesBeyondTheBudget();
    void failedAllocationLeavesTheStoreUsable();
    void blankTilesTakeNoMemory();
    void tilesAreBlankUntilTheyAreWritten();
    void overwrittenTilesHoldWhatWasWritten();
    void overwrittenTilesAreNotClearedFirst();
    void blankTilesAreNotSwapped();
    void copiesHoldTheSameBytes();
    void swappedTilesAreCompressed();
    void noiseComesBackFromTheSwapFile();
    void manyTilesComeAndGo();
    void memoryThatWasGivenBackServesAgain();
    void natureTellsSolidAndOpaqueTiles_data();
    void natureTellsSolidAndOpaqueTiles();
    void natureIsLookedAtOnce();
    void natureOfAWrittenTileIsLookedAtAgain();
    void natureIsNotRememberedWhileATileIsWritten();
    void natureOfABlankTileTakesNoMemory();
    void natureDiesWithItsTile();
};

void TestTileStore::newTilesAreZeroEvenWhenMemoryIsUsedAgain()
{
    TileStore store(Plenty, {});
    void* const first = store.MakeTile();
    QVERIFY(Holds(store, first, 0));
    Write(store, first, 77);
    store.CleanUpTile(first);
    QVERIFY(Holds(store, store.MakeTile(), 0));
}

void TestTileStore::liveTilesAreCounted()
{
    TileStore store(Plenty, {});
    QCOMPARE(store.LiveTileCount(), 0);
    void* const a = store.MakeTile();
    void* const b = store.MakeTile();
    QCOMPARE(store.LiveTileCount(), 2);
    store.CleanUpTile(a);
    store.CleanUpTile(b);
    QCOMPARE(store.LiveTileCount(), 0);
}

void TestTileStore::pinsNest()
{
    TileStore store(Plenty, {});
    void* const handle = store.MakeTile();
    void* const memory = store.GetMemory(handle, true);
    QVERIFY(store.GetMemory(handle, false) == memory);
    store.FreeMemory(handle);
    store.FreeMemory(handle);
    QVERIFY_EXCEPTION_THROWN(store.FreeMemory(handle), LXTMAlreadyFree);
}

void TestTileStore::freeingTooOftenIsRefused()
{
    TileStore store(Plenty, {});
    void* const handle = store.MakeTile();
    QVERIFY_EXCEPTION_THROWN(store.FreeMemory(handle), LXTMAlreadyFree);
    QVERIFY(Holds(store, handle, 0));
}

void TestTileStore::cleaningUpTwiceIsRefused()
{
    TileStore store(Plenty, {});
    void* const handle = store.MakeTile();
    store.CleanUpTile(handle);
    QVERIFY_EXCEPTION_THROWN(store.CleanUpTile(handle), LXTMAlreadyFree);
    QVERIFY_EXCEPTION_THROWN(store.GetMemory(handle, false), LXTMAlreadyFree);
    QVERIFY_EXCEPTION_THROWN(store.FreeMemory(handle), LXTMAlreadyFree);
    QCOMPARE(store.LiveTileCount(), 0);
}

void TestTileStore::oldHandlesAreToldFromTheirSuccessors()
{
    TileStore store(Plenty, {});
    void* const old = store.MakeTile();
    store.CleanUpTile(old);
    void* const next = store.MakeTile();
    QVERIFY(next != old);
    QVERIFY_EXCEPTION_THROWN(store.CleanUpTile(old), LXTMAlreadyFree);
    QCOMPARE(store.LiveTileCount(), 1);
}

void TestTileStore::inventedHandlesAreRefused()
{
    TileStore store(Plenty, {});
    void* const handle = store.MakeTile();
    int local = 0;
    void* const invented[] = {nullptr, &local, static_cast<char*>(handle) + 1,
                              static_cast<char*>(handle) - 1};
    for (void* const bad : invented) {
        QVERIFY_EXCEPTION_THROWN(store.GetMemory(bad, false), LXTMInvalidBlock);
        QVERIFY_EXCEPTION_THROWN(store.FreeMemory(bad), LXTMInvalidBlock);
        QVERIFY_EXCEPTION_THROWN(store.CleanUpTile(bad), LXTMInvalidBlock);
    }
}

void TestTileStore::pinnedTilesMayBeCleanedUp()
{
    TileStore store(Plenty, {});
    void* const handle = store.MakeTile();
    store.GetMemory(handle, true);
    store.CleanUpTile(handle);
    QCOMPARE(store.LiveTileCount(), 0);
    QCOMPARE(store.ResidentTileCount(), 0);
    QVERIFY(Holds(store, store.MakeTile(), 0));
}

void TestTileStore::tilesBeyondTheBudgetAreSwappedAndComeBack()
{
    TileStore store(3 * TileBytes, QDir::tempPath().toStdString());
    std::vector<void*> tiles;
    for (int i = 0; i < 50; ++i) {
        tiles.push_back(store.MakeTile());
        Write(store, tiles.back(), i + 1);
        QVERIFY(store.ResidentTileCount() <= 3);
    }
    QCOMPARE(store.LiveTileCount(), 50);
    for (int i = 0; i < 50; ++i) {
        QVERIFY(Holds(store, tiles[static_cast<std::size_t>(i)], i + 1));
    }
    // A changed tile goes out with its new content, from a slot that others may have used in between.
    for (int i = 0; i < 50; i += 2) {
        Write(store, tiles[static_cast<std::size_t>(i)], 200);
    }
    for (int i = 0; i < 50; ++i) {
        QVERIFY(Holds(store, tiles[static_cast<std::size_t>(i)], i % 2 == 0 ? 200 : i + 1));
    }
    for (void* const tile : tiles) {
        store.CleanUpTile(tile);
    }
    QCOMPARE(store.LiveTileCount(), 0);
    QCOMPARE(store.ResidentTileCount(), 0);
}

void TestTileStore::pinnedTilesStayInMemory()
{
    TileStore store(2 * TileBytes, QDir::tempPath().toStdString());
    void* const pinned = store.MakeTile();
    auto* const memory = static_cast<uchar*>(store.GetMemory(pinned, true));
    memory[0] = 42;
    for (int i = 0; i < 10; ++i) {
        Write(store, store.MakeTile(), 9);
    }
    QCOMPARE(memory[0], uchar(42));
    QVERIFY(store.GetMemory(pinned, false) == memory);
}

void TestTileStore::leastRecentlyUsedTilesGoFirst()
{
    TileStore store(2 * TileBytes, QDir::tempPath().toStdString());
    void* const a = store.MakeTile();
    void* const b = store.MakeTile();
    Write(store, b, 2);
    Write(store, a, 1);
    Write(store, store.MakeTile(), 3);
    QCOMPARE(store.ResidentTileCount(), 2);

    // With room again, only a tile that went out adds to those in memory when it is read.
    store.SetMemoryBudget(Plenty);
    QVERIFY(Holds(store, a, 1));
    QCOMPARE(store.ResidentTileCount(), 2);
    QVERIFY(Holds(store, b, 2));
    QCOMPARE(store.ResidentTileCount(), 3);
}

void TestTileStore::swappedTilesCanBeReadOverAndOver()
{
    TileStore store(1 * TileBytes, QDir::tempPath().toStdString());
    void* const a = store.MakeTile();
    Write(store, a, 1);
    void* const b = store.MakeTile();
    Write(store, b, 2);
    for (int round = 0; round < 5; ++round) {
        QVERIFY(Holds(store, a, 1));
        QVERIFY(Holds(store, b, 2));
    }
}

void TestTileStore::swapFileHasNoName()
{
    QTemporaryDir folder;
    TileStore store(1 * TileBytes, folder.path().toStdString());
    Write(store, store.MakeTile(), 1);
    Write(store, store.MakeTile(), 2);
    QCOMPARE(store.ResidentTileCount(), 1);
    QVERIFY(store.SwapBytes() > 0);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

void TestTileStore::missingFolderIsReported()
{
    TileStore store(1 * TileBytes, "/nowhere/at/all");
    void* const first = store.MakeTile();
    Write(store, first, 5);
    void* const second = store.MakeTile();
    QVERIFY_EXCEPTION_THROWN(store.GetMemory(second, true), LXTMSwapFileError);
    QVERIFY(Holds(store, first, 5));
    QCOMPARE(store.LiveTileCount(), 2);
    store.SetMemoryBudget(Plenty);
    QVERIFY(Holds(store, second, 0));
}

void TestTileStore::everyTilePinnedGoesBeyondTheBudget()
{
    TileStore store(1 * TileBytes, "/nowhere/at/all");
    void* const first = store.MakeTile();
    store.GetMemory(first, true);
    void* const second = store.MakeTile();
    store.GetMemory(second, true);
    QCOMPARE(store.ResidentTileCount(), 2);
}

void TestTileStore::failedAllocationLeavesTheStoreUsable()
{
    TileStore store(Plenty, {});
    FaultSeams::FailNth(FaultSeams::Seam::TileAllocation, 1);
    QVERIFY_EXCEPTION_THROWN(store.MakeTile(), std::bad_alloc);
    QCOMPARE(store.LiveTileCount(), 0);
    QVERIFY(Holds(store, store.MakeTile(), 0));
}

void TestTileStore::blankTilesTakeNoMemory()
{
    TileStore store(Plenty, {});
    void* const blank = store.MakeTile();
    void* const copy = store.CopyTile(blank);
    QCOMPARE(store.LiveTileCount(), 2);
    QCOMPARE(store.ResidentTileCount(), 0);
    QVERIFY(Holds(store, copy, 0));
    QCOMPARE(store.ResidentTileCount(), 1);
    store.CleanUpTile(blank);
    store.CleanUpTile(copy);
    QCOMPARE(store.ResidentTileCount(), 0);
}

void TestTileStore::tilesAreBlankUntilTheyAreWritten()
{
    TileStore store(Plenty, {});
    void* const handle = store.MakeTile();
    QVERIFY(store.IsBlank(handle));
    QVERIFY(Holds(store, handle, 0));
    QVERIFY(store.IsBlank(handle));
    QVERIFY(store.IsBlank(store.CopyTile(handle)));
    Write(store, handle, 0);
    QVERIFY(!store.IsBlank(handle));
    QVERIFY(!store.IsBlank(store.CopyTile(handle)));
    void* const overwritten = store.MakeTile();
    store.GetMemoryToOverwrite(overwritten);
    QVERIFY(!store.IsBlank(overwritten));
    store.CleanUpTile(handle);
    QVERIFY_EXCEPTION_THROWN(store.IsBlank(handle), LXTMAlreadyFree);
}

/// New ones, written ones, and some that lie in the swap file.
void TestTileStore::overwrittenTilesHoldWhatWasWritten()
{
    const QTemporaryDir folder;
    TileStore store(2 * TileBytes, folder.path().toStdString());
    std::vector<void*> tiles(6);
    std::generate(tiles.begin(), tiles.end(), [&] { return store.MakeTile(); });
    for (int round = 1; round < 4; ++round) {
        for (int i = 0; i < 6; ++i) {
            void* const tile = tiles[static_cast<std::size_t>(i)];
            std::memset(store.GetMemoryToOverwrite(tile), 10 * round + i, TileBytes);
            store.FreeMemory(tile);
        }
        for (int i = 0; i < 6; ++i) {
            QVERIFY(Holds(store, tiles[static_cast<std::size_t>(i)], 10 * round + i));
        }
    }
}

void TestTileStore::overwrittenTilesAreNotClearedFirst()
{
    TileStore store(Plenty, {});
    void* const old = store.MakeTile();
    Write(store, old, 77);
    store.CleanUpTile(old);
    void* const handle = store.MakeTile();
    const auto* const bytes = static_cast<const uchar*>(store.GetMemoryToOverwrite(handle));
    QCOMPARE(int{bytes[100]}, 77);
}

void TestTileStore::blankTilesAreNotSwapped()
{
    TileStore store(1 * TileBytes, "/nowhere/at/all");
    void* const a = store.MakeTile();
    void* const b = store.MakeTile();
    for (int round = 0; round < 3; ++round) {
        QVERIFY(Holds(store, a, 0));
        QVERIFY(Holds(store, b, 0));
    }
    QCOMPARE(store.ResidentTileCount(), 1);
    QCOMPARE(store.SwapBytes(), qint64(0));
}

void TestTileStore::copiesHoldTheSameBytes()
{
    TileStore store(1 * TileBytes, QDir::tempPath().toStdString());
    void* const first = store.MakeTile();
    Write(store, first, 33);
    void* const copy = store.CopyTile(first);
    Write(store, first, 44);
    QVERIFY(Holds(store, copy, 33));
    QVERIFY(Holds(store, first, 44));
    QVERIFY_EXCEPTION_THROWN(store.CopyTile(nullptr), LXTMInvalidBlock);
    QCOMPARE(store.LiveTileCount(), 2);
}

void TestTileStore::swappedTilesAreCompressed()
{
    TileStore store(1 * TileBytes, QDir::tempPath().toStdString());
    std::vector<void*> tiles;
    for (int i = 0; i < 11; ++i) {
        tiles.push_back(store.MakeTile());
        Write(store, tiles.back(), i + 1);
    }
    // Ten tiles of one value each, a page of 4096 bytes for each.
    QCOMPARE(store.SwapBytes(), qint64(10) * 4096);
    for (void* const tile : tiles) {
        store.CleanUpTile(tile);
    }
    QCOMPARE(store.SwapBytes(), qint64(0));
}

/// It can't be compressed, and lies beside what can.
void TestTileStore::noiseComesBackFromTheSwapFile()
{
    TileStore store(1 * TileBytes, QDir::tempPath().toStdString());
    std::mt19937 random(9);
    std::vector<std::pair<void*, std::vector<uchar>>> tiles;
    for (int i = 0; i < 12; ++i) {
        std::vector<uchar> bytes(TileBytes);
        const int noisy = i % 3 == 0 ? int(TileBytes) : i * 4000;
        std::generate_n(bytes.begin(), noisy, [&] { return static_cast<uchar>(random()); });
        void* const tile = store.MakeTile();
        std::copy(bytes.begin(), bytes.end(), static_cast<uchar*>(store.GetMemory(tile, true)));
        store.FreeMemory(tile);
        tiles.emplace_back(tile, bytes);
    }
    for (int round = 0; round < 2; ++round) {
        for (const auto& [tile, bytes] : tiles) {
            const auto* const memory = static_cast<const uchar*>(store.GetMemory(tile, false));
            QVERIFY(std::equal(bytes.begin(), bytes.end(), memory));
            store.FreeMemory(tile);
        }
    }
}

/// Several chunks of the arena fill up and run empty in an order of their own.
void TestTileStore::manyTilesComeAndGo()
{
    TileStore store(Plenty, {});
    std::vector<void*> tiles;
    for (int i = 0; i < 300; ++i) {
        tiles.push_back(store.MakeTile());
        Write(store, tiles.back(), i % 251);
    }
    for (std::size_t i = 0; i < tiles.size(); i += 3) {
        store.CleanUpTile(tiles[i]);
        tiles[i] = nullptr;
    }
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        if (tiles[i] != nullptr) QVERIFY(Holds(store, tiles[i], static_cast<int>(i) % 251));
    }
    for (void* const tile : tiles) {
        if (tile != nullptr) store.CleanUpTile(tile);
    }
    QCOMPARE(store.ResidentTileCount(), 0);
}

void TestTileStore::natureTellsSolidAndOpaqueTiles_data()
{
    QTest::addColumn<quint32>("color");
    QTest::addColumn<int>("otherPlace");
    QTest::addColumn<quint32>("other");
    QTest::addColumn<bool>("isSolid");
    QTest::addColumn<bool>("isOpaque");
    const quint32 opaque = 0xFF102030;
    const quint32 faint = 0x7F102030;
    QTest::newRow("one opaque color") << opaque << 0 << opaque << true << true;
    QTest::newRow("one translucent color") << faint << 0 << faint << true << false;
    QTest::newRow("another color in the last pixel") << opaque << 16383 << 0xFF102031u << false << true;
    QTest::newRow("another color in the first pixel") << opaque << 0 << 0xFF112030u << false << true;
    QTest::newRow("a translucent last pixel") << opaque << 16383 << 0xFE102030u << false << false;
    QTest::newRow("a translucent pixel in the middle") << opaque << 8000 << 0u << false << false;
    QTest::newRow("a single opaque pixel") << faint << 129 << opaque << false << false;
}

void TestTileStore::natureTellsSolidAndOpaqueTiles()
{
    QFETCH(quint32, color);
    QFETCH(int, otherPlace);
    QFETCH(quint32, other);
    TileStore store(Plenty, {});
    void* const handle = store.MakeTile();
    auto* const pixels = static_cast<quint32*>(store.GetMemory(handle, true));
    std::fill_n(pixels, TileBytes / 4, color);
    pixels[otherPlace] = other;
    store.FreeMemory(handle);
    QTEST(store.NatureOf(handle).isSolid, "isSolid");
    QTEST(store.NatureOf(handle).isOpaque, "isOpaque");
}

void TestTileStore::natureIsLookedAtOnce()
{
    TileStore store(Plenty, {});
    void* const handle = store.MakeTile();
    Write(store, handle, 255);
    QVERIFY(store.NatureOf(handle).isSolid);
    // Behind the store's back, which would see it if it looked again.
    *const_cast<uchar*>(static_cast<const uchar*>(store.GetMemory(handle, false))) = 1;
    store.FreeMemory(handle);
    QVERIFY(store.NatureOf(handle).isSolid);
}

void TestTileStore::natureOfAWrittenTileIsLookedAtAgain()
{
    TileStore store(Plenty, {});
    void* const handle = store.MakeTile();
    Write(store, handle, 255);
    QVERIFY(store.NatureOf(handle).isOpaque);
    Write(store, handle, 254);
    QVERIFY(!store.NatureOf(handle).isOpaque);
    QVERIFY(store.NatureOf(handle).isSolid);
}

void TestTileStore::natureIsNotRememberedWhileATileIsWritten()
{
    TileStore store(Plenty, {});
    void* const handle = store.MakeTile();
    auto* const bytes = static_cast<uchar*>(store.GetMemory(handle, true));
    QVERIFY(store.NatureOf(handle).isSolid);
    bytes[77] = 1;
    QVERIFY(!store.NatureOf(handle).isSolid);
    // A reader comes and goes while the writer is still there.
    store.GetMemory(handle, false);
    store.FreeMemory(handle);
    bytes[77] = 0;
    QVERIFY(store.NatureOf(handle).isSolid);
    bytes[77] = 1;
    store.FreeMemory(handle);
    QVERIFY(!store.NatureOf(handle).isSolid);
}

void TestTileStore::natureOfABlankTileTakesNoMemory()
{
    TileStore store(Plenty, {});
    void* const handle = store.MakeTile();
    QVERIFY(store.NatureOf(handle).isSolid);
    QVERIFY(!store.NatureOf(handle).isOpaque);
    QCOMPARE(store.ResidentTileCount(), 0);
}

void TestTileStore::natureDiesWithItsTile()
{
    TileStore store(Plenty, {});
    void* const first = store.MakeTile();
    Write(store, first, 255);
    QVERIFY(store.NatureOf(first).isOpaque);
    store.CleanUpTile(first);
    QVERIFY_EXCEPTION_THROWN(store.NatureOf(first), LXTMAlreadyFree);
    // In the same place.
    void* const second = store.MakeTile();
    QVERIFY(!store.NatureOf(second).isOpaque);
}

/// More than the arena keeps without telling the system that it may take the pages.
void TestTileStore::memoryThatWasGivenBackServesAgain()
{
    TileStore store(Plenty, {});
    for (int round = 1; round <= 2; ++round) {
        std::vector<void*> tiles;
        for (int i = 0; i < 2600; ++i) {
            tiles.push_back(store.MakeTile());
            if (i % 50 == 0) QVERIFY(Holds(store, tiles.back(), 0));
            Write(store, tiles.back(), round + i % 200);
        }
        for (std::size_t i = 0; i < tiles.size(); i += 50) {
            QVERIFY(Holds(store, tiles[i], round + static_cast<int>(i) % 200));
        }
        for (void* const tile : tiles) {
            store.CleanUpTile(tile);
        }
        QCOMPARE(store.ResidentTileCount(), 0);
    }
}

ZK_REGISTER_TEST(tst_tilestore, TestTileStore)
#include "tst_tilestore.moc"
