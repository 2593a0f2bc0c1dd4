#pragma once

#include "image/SwapFile.h"
#include "image/TileArena.h"
#include "image/TileNature.h"

#include <QtGlobal>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

/// What stands behind LXTileManager: see there for the operations. A class of its own, so that tests can make
/// one with a small budget or an unusable folder.
///
/// One mutex guards everything: a tile is pinned once for 16384 pixels of work, so it is hardly ever
/// contended. Swapping happens under it too, which makes others wait only when memory has run out. A blank
/// tile gets memory when somebody asks for its bytes, and that is cleared outside the mutex.
class TileStore
{
public:
    TileStore(qint64 memoryBudget, const std::string& swapFolder);
    ~TileStore();

    /// The one behind LXTileManager::Instance(), for what only the editor asks. Throws LXTMBadInstance.
    static TileStore& Main();

    void* MakeTile();
    /// A tile with the same bytes as another; costs nothing while that one is blank.
    void* CopyTile(void* handle);
    void* GetMemory(void* handle, bool write);
    /// For writing all the bytes: until then, those of a blank tile mean nothing.
    void* GetMemoryToOverwrite(void* handle);
    void FreeMemory(void* handle);
    void CleanUpTile(void* handle);
    /// Whether nobody has asked to write to the tile, so that all its bytes are 0.
    bool IsBlank(void* handle);
    /// See TileNature::Of().
    TileNature NatureOf(void* handle);

    int LiveTileCount() const;
    /// Tiles whose bytes are in memory now.
    int ResidentTileCount() const;
    /// What the swapped tiles take on disk, with the gaps between them.
    qint64 SwapBytes() const;
    void SetMemoryBudget(qint64 bytes);
    qint64 MemoryBudget() const;

private:
    Q_DISABLE_COPY(TileStore)

    struct Block
    {
        /// What the memory holds, where there is memory.
        enum class Content
        {
            Anything,
            BeingCleared,
            ItsBytes
        };

        uchar* memory = nullptr; ///< null while swapped out, blank and never asked for, or not alive
        SwapFile::Slot swapSlot; ///< a copy on disk that is still right
        int pins = 0;
        bool isBeingWritten = false; ///< somebody pinned it for writing, and pins are left since
        quint32 writes = 0;          ///< how often it was pinned for writing
        std::optional<TileNature> nature;
        bool isBlank = false; ///< all zeros: never pinned for writing
        Content content = Content::ItsBytes;
        quint32 generation = 0; ///< odd while alive, so that an old handle is told from its successor
        // Neighbours in the list of resident blocks that nobody pins, least recently used first.
        Block* older = nullptr;
        Block* newer = nullptr;
    };

    Block& Find(void* handle);
    static void* HandleOf(std::size_t index, quint32 generation);
    std::size_t TakeIndex();
    void Release(void* handle);
    void MakeRoom();
    Block* OldestThatNeedsNoWrite() const;
    static bool NeedsWrite(const Block& block);
    void SwapOut(Block& block);
    void BringIn(Block& block);
    uchar* Pin(Block& block);
    void MarkWritten(Block& block);
    void Clear(Block& block, std::unique_lock<std::mutex>& lock);
    void Unpin(Block& block);
    void DropSwapCopy(Block& block);
    void AppendUnpinned(Block& block);
    void RemoveUnpinned(Block& block);

    mutable std::mutex m_Mutex;
    std::condition_variable m_Cleared;
    TileArena m_Arena;
    SwapFile m_SwapFile;
    std::deque<Block> m_Blocks; ///< a deque, because the list points into it
    std::vector<std::size_t> m_FreeIndexes;
    Block* m_pOldest = nullptr;
    Block* m_pNewest = nullptr;
    qint64 m_MemoryBudget;
    qint64 m_ResidentBytes = 0;
    int m_LiveTiles = 0;
};
