#include "image/TileArena.h"

#include <qalgorithms.h>

#include <sys/mman.h>

#include <new>
#include <utility>

namespace {
constexpr quint64 AllFree = ~quint64(0);
constexpr std::align_val_t HugePage{std::size_t(2) << 20};
} // namespace

TileArena::~TileArena() = default;

void TileArena::ChunkDeleter::operator()(uchar* memory) const
{
    ::operator delete(memory, HugePage);
}

uchar* TileArena::Allocate()
{
    Chunk& chunk = m_WithFreeBlocks.empty() ? AddChunk() : m_Chunks.at(*m_WithFreeBlocks.begin());
    Q_ASSERT(chunk.freeBlocks != 0);
    if (chunk.freeBlocks == AllFree) --m_EmptyChunks;
    const uint block = qCountTrailingZeroBits(chunk.freeBlocks);
    chunk.freeBlocks &= ~(quint64(1) << block);
    if (chunk.freeBlocks == 0) chunk.placeWhenFull = m_WithFreeBlocks.extract(chunk.memory.get());
    return chunk.memory.get() + block * BlockBytes;
}

void TileArena::Free(uchar* block) noexcept
{
    const auto found = std::prev(m_Chunks.upper_bound(block));
    Chunk& chunk = found->second;
    const auto index = static_cast<std::size_t>(block - found->first) / BlockBytes;
    chunk.freeBlocks |= quint64(1) << index;
    if (chunk.placeWhenFull) m_WithFreeBlocks.insert(std::move(chunk.placeWhenFull));
    if (chunk.freeBlocks == AllFree) KeepOrDrop(found->first);
}

TileArena::Chunk& TileArena::AddChunk()
{
    std::unique_ptr<uchar, ChunkDeleter> memory(static_cast<uchar*>(::operator new(ChunkBytes, HugePage)));
    uchar* const base = memory.get();
    ::madvise(base, ChunkBytes, MADV_HUGEPAGE); // no more than a wish
    std::set<uchar*> place{base};               // before anything changes, for this may fail
    Chunk& chunk = m_Chunks[base];
    chunk.memory = std::move(memory);
    ++m_EmptyChunks;
    m_WithFreeBlocks.merge(place);
    return chunk;
}

void TileArena::KeepOrDrop(uchar* base)
{
    ++m_EmptyChunks;
    if (m_EmptyChunks > MostEmptyChunks) {
        DropChunk(base);
    } else if (m_EmptyChunks > FewEmptyChunks) {
        ::madvise(base, ChunkBytes, MADV_FREE);
    }
}

void TileArena::DropChunk(uchar* base)
{
    --m_EmptyChunks;
    m_WithFreeBlocks.erase(base);
    m_Chunks.erase(base);
}
