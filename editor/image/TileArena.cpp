#include "image/TileArena.h"

#include <qalgorithms.h>

#include <new>

namespace {
constexpr quint64 AllFree = ~quint64(0);
constexpr std::align_val_t CacheLine{64};
} // namespace

TileArena::~TileArena() = default;

void TileArena::ChunkDeleter::operator()(uchar* memory) const
{
    ::operator delete(memory, CacheLine);
}

uchar* TileArena::Allocate()
{
    Chunk& chunk = m_WithFreeBlocks.empty() ? AddChunk() : m_Chunks.at(*m_WithFreeBlocks.begin());
    Q_ASSERT(chunk.freeBlocks != 0);
    const uint block = qCountTrailingZeroBits(chunk.freeBlocks);
    chunk.freeBlocks &= ~(quint64(1) << block);
    if (chunk.freeBlocks == 0) m_WithFreeBlocks.erase(chunk.memory.get());
    return chunk.memory.get() + block * BlockBytes;
}

void TileArena::Free(uchar* block)
{
    const auto found = std::prev(m_Chunks.upper_bound(block));
    Chunk& chunk = found->second;
    const auto index = static_cast<std::size_t>(block - found->first) / BlockBytes;
    chunk.freeBlocks |= quint64(1) << index;
    // One empty chunk stays in reserve, or a tile made and dropped in turn would go to the system each time.
    if (chunk.freeBlocks == AllFree && m_WithFreeBlocks.size() > 1) {
        DropChunk(found->first);
    } else {
        m_WithFreeBlocks.insert(found->first);
    }
}

TileArena::Chunk& TileArena::AddChunk()
{
    std::unique_ptr<uchar, ChunkDeleter> memory(static_cast<uchar*>(::operator new(ChunkBytes, CacheLine)));
    uchar* const base = memory.get();
    Chunk& chunk = m_Chunks[base];
    chunk.memory = std::move(memory);
    m_WithFreeBlocks.insert(base);
    return chunk;
}

void TileArena::DropChunk(uchar* base)
{
    m_WithFreeBlocks.erase(base);
    m_Chunks.erase(base);
}
