#pragma once

#include "ZKHostExport.h"

#include "image/LXTileExceptions.h"

#include <QtGlobal>

#include <memory>

class TileStore;

/// The store of all tiles: hands out zeroed blocks of 65536 bytes by opaque handles, and moves blocks that
/// nobody has pinned to a temporary file when they exceed the memory budget. All operations: any thread.
class ZK_HOST_EXPORT LXTileManager
{
public:
    static constexpr int TileBytes = 65536;

    /// The one store. Throws LXTMBadInstance once the program's static objects are being destroyed.
    static LXTileManager& Instance();

    /// Makes a tile of zero bytes, which takes memory when GetMemory() is first called. Throws
    /// std::bad_alloc.
    void* MakeTile();

    /// Pins the tile and returns its bytes, valid until the matching FreeMemory(). With `write` they count as
    /// changed. Pins nest. Throws LXTMInvalidBlock, LXTMAlreadyFree (the tile is gone), std::bad_alloc, or
    /// LXTMSwapError and LXTMSwapFileError when room had to be made and couldn't.
    void* GetMemory(void* handle, bool write);

    /// Takes one pin back. Throws LXTMAlreadyFree when there is none left, LXTMInvalidBlock.
    void FreeMemory(void* handle);

    /// Gives the tile up, pinned or not. Throws LXTMAlreadyFree the second time, LXTMInvalidBlock.
    void CleanUpTile(void* handle);

    /// Tiles that exist now, swapped ones included.
    int LiveTileCount() const;

    /// Bytes of tiles to keep in memory; pinned tiles stay even beyond it. At first three quarters of
    /// what the machine had free, one gibibyte at least.
    void SetMemoryBudget(qint64 bytes);
    qint64 MemoryBudget() const;

private:
    LXTileManager();
    ~LXTileManager();
    Q_DISABLE_COPY(LXTileManager)

    std::unique_ptr<TileStore> m_Store;
};
