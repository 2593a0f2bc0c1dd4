#include "image/TileArena.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <cstdlib>
#include <new>
#include <set>
#include <vector>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ZK_HAS_OWN_NEW 0 // the sanitizer's own watch more
#else
#define ZK_HAS_OWN_NEW 1
#endif

namespace {
/// Whether this thread finds no memory on the heap.
thread_local bool s_isHeapEmpty = false;
} // namespace

#if ZK_HAS_OWN_NEW
void* operator new(std::size_t size)
{
    void* const memory = s_isHeapEmpty ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
#endif

class TestTileArena : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { s_isHeapEmpty = false; }

    void blocksKeepApart();
    void aBlockIsGivenBackWithoutMemory();
};

void TestTileArena::blocksKeepApart()
{
    TileArena arena;
    std::vector<uchar*> blocks;
    std::set<uchar*> places;
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 130; ++i) {
            blocks.push_back(arena.Allocate());
            QVERIFY(places.insert(blocks.back()).second);
            blocks.back()[0] = static_cast<uchar>(i);
            blocks.back()[TileArena::BlockBytes - 1] = static_cast<uchar>(i);
        }
        for (auto block = places.begin(); block != places.end(); ++block) {
            const auto next = std::next(block);
            if (next != places.end()) QVERIFY(*next - *block >= std::ptrdiff_t(TileArena::BlockBytes));
        }
        for (int i = 0; i < 100; ++i) {
            arena.Free(blocks.back());
            places.erase(blocks.back());
            blocks.pop_back();
        }
    }
    for (uchar* const block : blocks) {
        arena.Free(block);
    }
}

/// When memory runs short, blocks are given back that chunks without a free one hold.
void TestTileArena::aBlockIsGivenBackWithoutMemory()
{
    if (!ZK_HAS_OWN_NEW) QSKIP("a sanitizer has its own heap");
    TileArena arena;
    std::vector<uchar*> blocks(64 * 3);
    for (uchar*& block : blocks) {
        block = arena.Allocate();
    }
    s_isHeapEmpty = true;
    for (uchar* const block : blocks) {
        arena.Free(block);
    }
    for (uchar*& block : blocks) {
        block = arena.Allocate();
    }
    s_isHeapEmpty = false;
    const std::set<uchar*> places(blocks.begin(), blocks.end());
    QCOMPARE(places.size(), blocks.size());
    for (uchar* const block : blocks) {
        arena.Free(block);
    }
}

ZK_REGISTER_TEST(tst_tilearena, TestTileArena)
#include "tst_tilearena.moc"
