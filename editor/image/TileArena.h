#pragma once

#include <QtGlobal>

#include <cstddef>
#include <map>
#include <memory>
#include <set>

/// Memory for tiles, cut from chunks of 64, so that the heap neither fragments nor grows a header a tile.
/// Chunks lie on huge pages where the system has them, and empty ones stay in reserve: the system clears what
/// it hands out, which takes longer than many a kernel. Beyond a few it may take their pages back when memory
/// runs short. Not locked: the tile store does that.
class TileArena
{
public:
    static constexpr std::size_t BlockBytes = 65536;

    TileArena() = default;
    ~TileArena();

    /// A block with undefined content. Throws std::bad_alloc.
    uchar* Allocate();
    /// Never fails: the tile store counts on it amidst its own changes.
    void Free(uchar* block) noexcept;

private:
    Q_DISABLE_COPY(TileArena)

    static constexpr std::size_t ChunkBlocks = 64;
    static constexpr std::size_t ChunkBytes = ChunkBlocks * BlockBytes;
    static constexpr std::size_t FewEmptyChunks = 32;
    static constexpr std::size_t MostEmptyChunks = 128;

    struct ChunkDeleter
    {
        void operator()(uchar* memory) const;
    };

    struct Chunk
    {
        std::unique_ptr<uchar, ChunkDeleter> memory;
        quint64 freeBlocks = ~quint64(0);          ///< bit n: block n is free
        std::set<uchar*>::node_type placeWhenFull; ///< its place among those with free blocks, kept meanwhile
    };

    Chunk& AddChunk();
    void KeepOrDrop(uchar* base);
    void DropChunk(uchar* base);

    std::map<uchar*, Chunk> m_Chunks;  ///< by address
    std::set<uchar*> m_WithFreeBlocks; ///< lowest address first, so that the others run empty
    std::size_t m_EmptyChunks = 0;
};
