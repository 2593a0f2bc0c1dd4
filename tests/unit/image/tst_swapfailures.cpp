#include "image/LXBlend.h"
#include "image/LXImage.h"
#include "image/LXTileExceptions.h"
#include "image/LXTileManager.h"
#include "image/TileStore.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QDir>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

using FaultSeams::Seam;

namespace {
constexpr qint64 TileBytes = 65536;
constexpr qint64 PageBytes = 4096;
constexpr qint64 Plenty = qint64(1) << 30;

void Write(TileStore& store, void* handle, int number)
{
    std::memset(store.GetMemory(handle, true), number, TileBytes);
    store.FreeMemory(handle);
}

/// Bytes that can't be compressed, so that the tile takes as many pages as it can.
void WriteNoise(TileStore& store, void* handle, unsigned int seed)
{
    std::mt19937 random(seed);
    auto* const bytes = static_cast<uchar*>(store.GetMemory(handle, true));
    std::generate_n(bytes, TileBytes, [&] { return static_cast<uchar>(random()); });
    store.FreeMemory(handle);
}

bool Holds(TileStore& store, void* handle, int number)
{
    const auto* const bytes = static_cast<const uchar*>(store.GetMemory(handle, false));
    const bool isRight = std::all_of(bytes, bytes + TileBytes, [&](uchar byte) { return byte == number; });
    store.FreeMemory(handle);
    return isRight;
}

/// The swap file, which has no name any more, as the kernel still knows it; empty for none.
QString OpenSwapFile(const QString& folder)
{
    const QDir open(QStringLiteral("/proc/self/fd"));
    for (const QString& number : open.entryList(QDir::Files | QDir::System)) {
        const QString target = QFile::symLinkTarget(open.filePath(number));
        if (target.startsWith(folder)) return open.filePath(number);
    }
    return QString();
}
} // namespace

/// Tile stores whose disk is full, or gives back what wasn't written.
class TestSwapFailures : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void aFullDiskIsReportedAndTheStoreStaysUsable();
    void aFailedReadIsReportedAndTheTileComesLater();
    void damagedBlocksAreReported_data();
    void damagedBlocksAreReported();
    void aFullDiskBlocksNothingThatNeedsNoWrite();
    void tilesThatLieOnTheDiskMakeRoomToo();
    void smallTilesTakeLargeGapsBeforeTheFileGrows();
    void theFileIsAsLongAsItsLastTile();
    void programsThatAreStartedDoNotHoldTheFile();
    void aCopyWhoseSourceCannotBeReadLeavesNothing();
    void aCopyWithoutRoomLeavesNothing();
    void blendingTellsOfTheDiskAndHoldsNothing();
};

void TestSwapFailures::aFullDiskIsReportedAndTheStoreStaysUsable()
{
    const QTemporaryDir folder;
    TileStore store(2 * TileBytes, folder.path().toStdString());
    std::vector<void*> tiles;
    for (int i = 0; i < 3; ++i) {
        tiles.push_back(store.MakeTile());
        Write(store, tiles.back(), i + 1);
    }
    const qint64 before = store.SwapBytes();
    QCOMPARE(before, PageBytes);

    void* const next = store.MakeTile();
    FaultSeams::FailNth(Seam::SwapWrite, 1);
    QVERIFY_EXCEPTION_THROWN(store.GetMemory(next, true), LXTMSwapError);
    QCOMPARE(store.SwapBytes(), before);
    QCOMPARE(store.ResidentTileCount(), 2);
    QVERIFY_EXCEPTION_THROWN(store.FreeMemory(next), LXTMAlreadyFree);

    Write(store, next, 4);
    tiles.push_back(next);
    for (int i = 0; i < 4; ++i) {
        QVERIFY(Holds(store, tiles[static_cast<std::size_t>(i)], i + 1));
    }
    // A slot that a failed write didn't give back would stay for ever.
    for (void* const tile : tiles)
        store.CleanUpTile(tile);
    QCOMPARE(store.SwapBytes(), qint64(0));
    QCOMPARE(store.ResidentTileCount(), 0);
}

void TestSwapFailures::aFailedReadIsReportedAndTheTileComesLater()
{
    const QTemporaryDir folder;
    TileStore store(2 * TileBytes, folder.path().toStdString());
    std::vector<void*> tiles;
    for (int i = 0; i < 3; ++i) {
        tiles.push_back(store.MakeTile());
        Write(store, tiles.back(), i + 1);
    }
    store.SetMemoryBudget(Plenty);
    const qint64 before = store.SwapBytes();
    QVERIFY(before > 0);
    FaultSeams::FailNth(Seam::SwapRead, 1);
    QVERIFY_EXCEPTION_THROWN(store.GetMemory(tiles[0], false), LXTMSwapError);
    QCOMPARE(store.SwapBytes(), before);
    QCOMPARE(store.ResidentTileCount(), 2);
    QVERIFY_EXCEPTION_THROWN(store.FreeMemory(tiles[0]), LXTMAlreadyFree);
    QVERIFY(Holds(store, tiles[0], 1));
    QCOMPARE(store.ResidentTileCount(), 3);
}

void TestSwapFailures::damagedBlocksAreReported_data()
{
    QTest::addColumn<QByteArray>("written");
    QTest::newRow("short file") << QByteArray();
    QTest::newRow("no such code") << QByteArray(PageBytes, '\xff');
    // A literal run of no bytes: a sound stream, but of fewer bytes than a tile has.
    QTest::newRow("short block") << QByteArray(PageBytes, '\0');
}

void TestSwapFailures::damagedBlocksAreReported()
{
    QFETCH(QByteArray, written);
    const QTemporaryDir folder;
    TileStore store(1 * TileBytes, folder.path().toStdString());
    void* const tile = store.MakeTile();
    Write(store, tile, 7);
    Write(store, store.MakeTile(), 8);
    store.SetMemoryBudget(Plenty);

    QFile file(OpenSwapFile(folder.path()));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.resize(0));
    QCOMPARE(file.write(written), qint64(written.size()));
    file.close();
    QVERIFY_EXCEPTION_THROWN(store.GetMemory(tile, false), LXTMSwapError);
    QCOMPARE(store.ResidentTileCount(), 1);
    store.CleanUpTile(tile);
    QCOMPARE(store.LiveTileCount(), 1);
}

/// Three tiles in memory, of which the oldest needs a write that fails.
void TestSwapFailures::aFullDiskBlocksNothingThatNeedsNoWrite()
{
    const QTemporaryDir folder;
    TileStore store(3 * TileBytes, folder.path().toStdString());
    void* const dirty = store.MakeTile();
    void* const blank = store.MakeTile();
    void* const second = store.MakeTile();
    Write(store, dirty, 1);
    QVERIFY(Holds(store, blank, 0));
    Write(store, second, 2);
    QCOMPARE(store.ResidentTileCount(), 3);

    FaultSeams::FailNth(Seam::SwapWrite, 1);
    Write(store, store.MakeTile(), 3);
    QCOMPARE(store.SwapBytes(), qint64(0));
    QCOMPARE(store.ResidentTileCount(), 3);
    QVERIFY(Holds(store, dirty, 1));
    QVERIFY(Holds(store, second, 2));
    QVERIFY(store.IsBlank(blank));
}

void TestSwapFailures::tilesThatLieOnTheDiskMakeRoomToo()
{
    const QTemporaryDir folder;
    TileStore store(1 * TileBytes, folder.path().toStdString());
    void* const swapped = store.MakeTile();
    void* const dirty = store.MakeTile();
    Write(store, swapped, 1);
    Write(store, dirty, 2);
    const qint64 before = store.SwapBytes();
    store.SetMemoryBudget(2 * TileBytes);
    QVERIFY(Holds(store, swapped, 1)); // in memory and on the disk, and younger than the other
    QCOMPARE(store.ResidentTileCount(), 2);

    FaultSeams::FailNth(Seam::SwapWrite, 1);
    Write(store, store.MakeTile(), 3);
    QCOMPARE(store.SwapBytes(), before);
    QVERIFY(Holds(store, dirty, 2));
    QVERIFY(Holds(store, swapped, 1));
}

void TestSwapFailures::smallTilesTakeLargeGapsBeforeTheFileGrows()
{
    const QTemporaryDir folder;
    TileStore store(1 * TileBytes, folder.path().toStdString());
    void* const large = store.MakeTile();
    WriteNoise(store, large, 1);
    void* const after = store.MakeTile();
    Write(store, after, 2);
    void* const small = store.MakeTile();
    Write(store, small, 3);
    QCOMPARE(store.SwapBytes(), TileBytes + PageBytes);

    store.CleanUpTile(large);
    void* const last = store.MakeTile();
    Write(store, last, 4);
    QCOMPARE(store.SwapBytes(), TileBytes + PageBytes);
    QVERIFY(Holds(store, after, 2));
    QVERIFY(Holds(store, small, 3));
    QVERIFY(Holds(store, last, 4));
    // Given back, the gap is as large as before.
    store.CleanUpTile(small);
    void* const again = store.MakeTile();
    WriteNoise(store, again, 5);
    Write(store, store.MakeTile(), 6);
    QVERIFY(store.SwapBytes() <= TileBytes + 2 * PageBytes);
}

void TestSwapFailures::theFileIsAsLongAsItsLastTile()
{
    const QTemporaryDir folder;
    TileStore store(1 * TileBytes, folder.path().toStdString());
    std::vector<void*> tiles;
    for (int i = 0; i < 4; ++i) {
        tiles.push_back(store.MakeTile());
        Write(store, tiles.back(), i + 1);
    }
    const QFileInfo file(OpenSwapFile(folder.path()));
    const auto length = [&] {
        QFile open(file.filePath());
        return open.open(QIODevice::ReadOnly) ? open.size() : -1;
    };
    QVERIFY(length() > 2 * PageBytes);
    QCOMPARE(store.SwapBytes(), 3 * PageBytes);
    store.CleanUpTile(tiles[0]);
    QCOMPARE(store.SwapBytes(), 3 * PageBytes); // a gap
    store.CleanUpTile(tiles[2]);
    QCOMPARE(store.SwapBytes(), 2 * PageBytes);
    QCOMPARE(length(), 2 * PageBytes);
    store.CleanUpTile(tiles[1]);
    QCOMPARE(store.SwapBytes(), qint64(0));
    QCOMPARE(length(), qint64(0));
    QVERIFY(Holds(store, tiles[3], 4));
}

void TestSwapFailures::programsThatAreStartedDoNotHoldTheFile()
{
    const QTemporaryDir folder;
    TileStore store(1 * TileBytes, folder.path().toStdString());
    Write(store, store.MakeTile(), 1);
    Write(store, store.MakeTile(), 2);
    const QString file = OpenSwapFile(folder.path());
    QVERIFY(!file.isEmpty());
    QVERIFY((::fcntl(QFileInfo(file).fileName().toInt(), F_GETFD) & FD_CLOEXEC) != 0);
}

void TestSwapFailures::aCopyWhoseSourceCannotBeReadLeavesNothing()
{
    const QTemporaryDir folder;
    TileStore store(1 * TileBytes, folder.path().toStdString());
    void* const source = store.MakeTile();
    Write(store, source, 1);
    Write(store, store.MakeTile(), 2);
    FaultSeams::FailNth(Seam::SwapRead, 1);
    QVERIFY_EXCEPTION_THROWN(store.CopyTile(source), LXTMSwapError);
    QCOMPARE(store.LiveTileCount(), 2);
    QVERIFY_EXCEPTION_THROWN(store.FreeMemory(source), LXTMAlreadyFree);
    QVERIFY(Holds(store, store.CopyTile(source), 1));
}

void TestSwapFailures::aCopyWithoutRoomLeavesNothing()
{
    TileStore store(Plenty, "/nowhere/at/all");
    void* const source = store.MakeTile();
    Write(store, source, 1);
    Write(store, store.MakeTile(), 2);
    store.SetMemoryBudget(1 * TileBytes);
    QVERIFY_EXCEPTION_THROWN(store.CopyTile(source), LXTMSwapFileError);
    QCOMPARE(store.LiveTileCount(), 2);
    QCOMPARE(store.ResidentTileCount(), 2);
    // Not pinned any more.
    QVERIFY_EXCEPTION_THROWN(store.FreeMemory(source), LXTMAlreadyFree);
    store.SetMemoryBudget(Plenty);
    QVERIFY(Holds(store, store.CopyTile(source), 1));
}

/// Somewhere in the middle, on whichever thread it happens.
void TestSwapFailures::blendingTellsOfTheDiskAndHoldsNothing()
{
    TileStore& store = TileStore::Main();
    const auto putBack =
        qScopeGuard([&store, budget = store.MemoryBudget()] { store.SetMemoryBudget(budget); });
    constexpr int side = 1024; // 64 tiles
    LXImage32 source(side, side);
    LXImage32 target(side, side);
    source.Fill(LXRGBA32i(0x80FF0000));
    for (int y = 0; y < side; y += 128) {
        for (int x = 0; x < side; x += 128) {
            source.SetColor(x, y, LXRGBA32i(0xFF00FF00));
            target.SetColor(x, y, LXRGBA32i(0xFF0000FF));
        }
    }
    LXImage32 expected = target;
    BlendOn(source, source.Rect(), 3, expected, target.Rect(), 0.5, false);
    store.SetMemoryBudget(8 * TileBytes);
    const LXImage32 untouched = target;
    FaultSeams::FailNth(Seam::SwapRead, 20);
    QVERIFY_EXCEPTION_THROWN(BlendOn(source, source.Rect(), 3, target, target.Rect(), 0.5, false),
                             LXTMSwapError);
    // What is pinned could not go out.
    store.SetMemoryBudget(1 * TileBytes);
    LXImage32 other(1, 1);
    other.SetColor(0, 0, LXRGBA32i(0xFF000000));
    QCOMPARE(store.ResidentTileCount(), 1);
    store.SetMemoryBudget(8 * TileBytes);
    QCOMPARE(untouched.GetColor(0, 0).value, 0xFF0000FFu);
    target = untouched;
    BlendOn(source, source.Rect(), 3, target, target.Rect(), 0.5, false);
    for (const QPoint& point : {QPoint(0, 0), QPoint(1, 1), QPoint(896, 128), QPoint(1023, 1023)}) {
        const quint32 color = target.GetColor(point.x(), point.y()).value;
        QCOMPARE(color, expected.GetColor(point.x(), point.y()).value);
        QVERIFY(color != untouched.GetColor(point.x(), point.y()).value);
    }
}

ZK_REGISTER_TEST(tst_swapfailures, TestSwapFailures)
#include "tst_swapfailures.moc"
