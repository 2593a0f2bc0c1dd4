#include "image/LXImage.h"
#include "image/TileStore.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QTest>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <functional>
#include <random>
#include <thread>
#include <vector>

namespace {
constexpr int ThreadCount = 4;
constexpr std::size_t TileBytes = 65536;

void RunInThreads(const std::function<void(int number)>& work)
{
    std::vector<std::thread> threads;
    threads.reserve(ThreadCount);
    for (int i = 0; i < ThreadCount; ++i) {
        threads.emplace_back(work, i);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}
} // namespace

/// Hammers the store and the images from several threads; what the thread sanitizer watches.
class TestTileThreads : public QObject
{
    Q_OBJECT

private slots:
    void tilesOfManyThreadsKeepApartWhileSwapping();
    void readersOfOneTileMayBeMany();
    void nobodySeesABlankTileBeforeItIsCleared();
    void imagesAreCopiedAndDroppedOnAnyThread();
    void copiesAreWrittenOnDifferentThreads();
    void differentTilesOfOneImageAreWrittenAtOnce();
    void onePixelEachOfOneTile();
};

void TestTileThreads::tilesOfManyThreadsKeepApartWhileSwapping()
{
    TileStore store(8 * TileBytes, QDir::tempPath().toStdString());
    std::atomic<int> wrong{0};
    RunInThreads([&](int number) {
        std::mt19937 random(static_cast<unsigned int>(number));
        std::vector<std::pair<void*, int>> tiles;
        for (int round = 0; round < 300; ++round) {
            if (tiles.size() < 6) {
                tiles.emplace_back(store.MakeTile(), 0);
            } else if (random() % 8 == 0) {
                store.CleanUpTile(tiles.back().first);
                tiles.pop_back();
            }
            auto& [handle, value] = tiles[random() % tiles.size()];
            auto* const bytes = static_cast<uchar*>(store.GetMemory(handle, true));
            if (bytes[0] != value || bytes[TileBytes - 1] != value) ++wrong;
            value = static_cast<int>(random() % 256);
            std::memset(bytes, value, TileBytes);
            store.FreeMemory(handle);
        }
        for (const auto& tile : tiles) {
            store.CleanUpTile(tile.first);
        }
    });
    QCOMPARE(wrong.load(), 0);
    QCOMPARE(store.LiveTileCount(), 0);
}

void TestTileThreads::readersOfOneTileMayBeMany()
{
    TileStore store(2 * TileBytes, QDir::tempPath().toStdString());
    void* const shared = store.MakeTile();
    std::memset(store.GetMemory(shared, true), 7, TileBytes);
    store.FreeMemory(shared);
    std::atomic<int> wrong{0};
    RunInThreads([&](int) {
        for (int round = 0; round < 200; ++round) {
            void* const own = store.MakeTile();
            const auto* const bytes = static_cast<const uchar*>(store.GetMemory(shared, false));
            if (bytes[round] != 7) ++wrong;
            store.FreeMemory(shared);
            store.CleanUpTile(own);
        }
    });
    QCOMPARE(wrong.load(), 0);
}

/// The memory held something else before, and all ask for it at once.
void TestTileThreads::nobodySeesABlankTileBeforeItIsCleared()
{
    TileStore store(8 * TileBytes, {});
    std::atomic<int> wrong{0};
    for (int round = 0; round < 200; ++round) {
        void* const former = store.MakeTile();
        std::memset(store.GetMemory(former, true), 77, TileBytes);
        store.FreeMemory(former);
        store.CleanUpTile(former);

        void* const tile = store.MakeTile();
        std::atomic<int> ready{0};
        RunInThreads([&](int) {
            for (++ready; ready < ThreadCount;) {
                std::this_thread::yield();
            }
            const auto* const bytes = static_cast<const uchar*>(store.GetMemory(tile, false));
            // From the end, which is cleared last.
            if (bytes[TileBytes - 1] != 0 || bytes[TileBytes / 2] != 0 || bytes[0] != 0) ++wrong;
            store.FreeMemory(tile);
        });
        store.CleanUpTile(tile);
    }
    QCOMPARE(wrong.load(), 0);
}

void TestTileThreads::imagesAreCopiedAndDroppedOnAnyThread()
{
    const int before = LXTileManager::Instance().LiveTileCount();
    {
        LXImage32 original(300, 270);
        original.Fill(LXRGBA32i(0xFF123456));
        RunInThreads([&](int) {
            for (int round = 0; round < 300; ++round) {
                const LXImage32 copy = original; // NOLINT(performance-unnecessary-copy-initialization)
                LXImage32 assigned;
                assigned = copy;
            }
        });
    }
    QCOMPARE(LXTileManager::Instance().LiveTileCount(), before);
}

/// The last two holders of a tile may meet: one drops it while the other asks whether it is alone.
void TestTileThreads::copiesAreWrittenOnDifferentThreads()
{
    const int before = LXTileManager::Instance().LiveTileCount();
    std::atomic<int> wrong{0};
    for (int round = 0; round < 50; ++round) {
        std::vector<LXImage32> copies;
        {
            LXImage32 original(300, 20);
            original.Fill(LXRGBA32i(0xFF000000));
            copies.assign(ThreadCount, original);
        }
        RunInThreads([&](int number) {
            LXImage32& mine = copies[static_cast<std::size_t>(number)];
            const LXRGBA32i color(0xFF000000u + static_cast<quint32>(number + 1));
            for (int x = 0; x < 300; x += 50) {
                mine.SetColor(x, number, color);
            }
            for (int x = 0; x < 300; x += 50) {
                const bool isRight = mine.GetColor(x, number) == color &&
                                     mine.GetColor(x, (number + 1) % ThreadCount).value == 0xFF000000u;
                if (!isRight) ++wrong;
            }
            mine = LXImage32();
        });
    }
    QCOMPARE(wrong.load(), 0);
    QCOMPARE(LXTileManager::Instance().LiveTileCount(), before);
}

void TestTileThreads::differentTilesOfOneImageAreWrittenAtOnce()
{
    for (int round = 0; round < 50; ++round) {
        // At first all slots share one tile, so that the threads detach it at the same time.
        LXImage32 image(128 * ThreadCount, 128);
        RunInThreads([&](int number) {
            const auto tile = image.WriteTile(number, 0);
            std::fill_n(tile.Pixels(), 128 * 128, LXRGBA32i(static_cast<quint32>(number + 1)));
        });
        for (int number = 0; number < ThreadCount; ++number) {
            QCOMPARE(image.GetColor(number * 128 + 127, 127).value, static_cast<quint32>(number + 1));
        }
    }
}

void TestTileThreads::onePixelEachOfOneTile()
{
    LXImage32 image(128, 128);
    const auto tile = image.WriteTile(0, 0);
    RunInThreads([&](int number) {
        for (int i = number; i < 128 * 128; i += ThreadCount) {
            tile.Pixels()[i] = LXRGBA32i(static_cast<quint32>(i));
        }
    });
    for (int i = 0; i < 128 * 128; ++i) {
        QCOMPARE(tile.Pixels()[i].value, static_cast<quint32>(i));
    }
}

ZK_REGISTER_TEST(tst_tilethreads, TestTileThreads)
#include "tst_tilethreads.moc"
