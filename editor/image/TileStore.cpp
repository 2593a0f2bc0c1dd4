#include "image/TileStore.h"

#include "image/LXTileExceptions.h"
#include "utils/FaultSeams.h"

#include <cstring>
#include <new>

static_assert(sizeof(void*) == 8, "a handle holds an index and a generation");
static_assert(TileArena::BlockBytes == SwapFile::BlockBytes, "a tile is one block everywhere");

namespace {
constexpr qint64 BlockBytes = static_cast<qint64>(TileArena::BlockBytes);
using Guard = std::lock_guard<std::mutex>;
} // namespace

TileStore::TileStore(qint64 memoryBudget, const std::string& swapFolder)
    : m_SwapFile(swapFolder), m_MemoryBudget(memoryBudget)
{}

TileStore::~TileStore() = default;

void* TileStore::MakeTile()
{
    if (FaultSeams::Pass(FaultSeams::Seam::TileAllocation)) throw std::bad_alloc();
    if (FaultSeams::Pass(FaultSeams::Seam::StrangeTileAllocation)) throw FaultSeams::StrangeFailure();

    const Guard guard(m_Mutex);
    const std::size_t index = TakeIndex();
    Block& block = m_Blocks[index];
    block.isBlank = true;
    ++block.generation;
    ++m_LiveTiles;
    return HandleOf(index, block.generation);
}

void* TileStore::CopyTile(void* handle)
{
    {
        const Guard guard(m_Mutex);
        Find(handle);
    }
    void* const copy = MakeTile();
    Block* source = nullptr;
    Block* target = nullptr;
    {
        const Guard guard(m_Mutex);
        source = &Find(handle);
        if (source->isBlank) return copy;
        target = &Find(copy);
        target->isBlank = false; // all of it is written below
        try {
            Pin(*source);
        } catch (...) {
            Release(copy);
            throw;
        }
        try {
            Pin(*target);
        } catch (...) {
            Unpin(*source);
            Release(copy);
            throw;
        }
    }
    std::memcpy(target->memory, source->memory, TileArena::BlockBytes);
    const Guard guard(m_Mutex);
    Unpin(*source);
    Unpin(*target);
    return copy;
}

void* TileStore::GetMemory(void* handle, bool write)
{
    std::unique_lock<std::mutex> lock(m_Mutex);
    Block& block = Find(handle);
    uchar* const memory = Pin(block);
    Clear(block, lock);
    if (write) MarkWritten(block);
    return memory;
}

void* TileStore::GetMemoryToOverwrite(void* handle)
{
    std::unique_lock<std::mutex> lock(m_Mutex);
    Block& block = Find(handle);
    uchar* const memory = Pin(block);
    if (block.content == Block::Content::Anything) block.content = Block::Content::ItsBytes;
    Clear(block, lock); // another thread may be at it
    MarkWritten(block);
    return memory;
}

bool TileStore::IsBlank(void* handle)
{
    const Guard guard(m_Mutex);
    return Find(handle).isBlank;
}

TileNature TileStore::NatureOf(void* handle)
{
    const uchar* memory = nullptr;
    quint32 writes = 0;
    {
        const Guard guard(m_Mutex);
        Block& block = Find(handle);
        if (block.nature) return *block.nature;
        if (block.isBlank) return {true, false, LXRGBA32i()};
        memory = Pin(block);
        writes = block.writes;
    }
    const TileNature nature = TileNature::OfPixels(reinterpret_cast<const LXRGBA32i*>(memory));
    const Guard guard(m_Mutex);
    Block& block = Find(handle);
    if (!block.isBeingWritten && block.writes == writes) block.nature = nature;
    Unpin(block);
    return nature;
}

void TileStore::FreeMemory(void* handle)
{
    const Guard guard(m_Mutex);
    Block& block = Find(handle);
    if (block.pins == 0) throw LXTMAlreadyFree();
    Unpin(block);
}

void TileStore::CleanUpTile(void* handle)
{
    const Guard guard(m_Mutex);
    Release(handle);
}

void TileStore::Release(void* handle)
{
    Block& block = Find(handle);
    if (block.memory != nullptr) {
        if (block.pins == 0) RemoveUnpinned(block);
        m_Arena.Free(block.memory);
        block.memory = nullptr;
        m_ResidentBytes -= BlockBytes;
    }
    DropSwapCopy(block);
    block.pins = 0;
    block.isBeingWritten = false;
    block.nature.reset();
    ++block.generation;
    --m_LiveTiles;
    const auto index = static_cast<std::size_t>(reinterpret_cast<quintptr>(handle) & 0xFFFFFFFFu) - 1;
    m_FreeIndexes.push_back(index); // never allocates: TakeIndex() reserved a place for every block
}

int TileStore::LiveTileCount() const
{
    const Guard guard(m_Mutex);
    return m_LiveTiles;
}

int TileStore::ResidentTileCount() const
{
    const Guard guard(m_Mutex);
    return static_cast<int>(m_ResidentBytes / BlockBytes);
}

qint64 TileStore::SwapBytes() const
{
    const Guard guard(m_Mutex);
    return m_SwapFile.FileBytes();
}

void TileStore::SetMemoryBudget(qint64 bytes)
{
    const Guard guard(m_Mutex);
    m_MemoryBudget = bytes;
}

qint64 TileStore::MemoryBudget() const
{
    const Guard guard(m_Mutex);
    return m_MemoryBudget;
}

void* TileStore::HandleOf(std::size_t index, quint32 generation)
{
    // Never dereferenced, so what the compiler can't know of it costs nothing.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<void*>((quintptr(generation) << 32) | (index + 1));
}

TileStore::Block& TileStore::Find(void* handle)
{
    const auto bits = reinterpret_cast<quintptr>(handle);
    const std::size_t place = bits & 0xFFFFFFFFu;
    const auto generation = static_cast<quint32>(bits >> 32);
    if (place == 0 || place > m_Blocks.size() || generation % 2 == 0) throw LXTMInvalidBlock();

    Block& block = m_Blocks[place - 1];
    if (generation > block.generation) throw LXTMInvalidBlock();
    if (generation < block.generation) throw LXTMAlreadyFree();
    return block;
}

std::size_t TileStore::TakeIndex()
{
    if (!m_FreeIndexes.empty()) {
        const std::size_t index = m_FreeIndexes.back();
        m_FreeIndexes.pop_back();
        return index;
    }
    const std::size_t needed = m_Blocks.size() + 1;
    if (m_FreeIndexes.capacity() < needed) m_FreeIndexes.reserve(needed * 2);
    m_Blocks.emplace_back();
    return m_Blocks.size() - 1;
}

/// Swaps out until one more block fits. Pinned blocks stay, whatever the budget says.
void TileStore::MakeRoom()
{
    while (m_pOldest != nullptr && m_ResidentBytes + BlockBytes > m_MemoryBudget) {
        try {
            SwapOut(*m_pOldest);
        } catch (...) {
            Block* const other = OldestThatNeedsNoWrite();
            if (other == nullptr) throw;
            SwapOut(*other);
        }
    }
}

/// Of the unpinned ones; null for none. Looks through the list, for which there is time when the disk is
/// full.
TileStore::Block* TileStore::OldestThatNeedsNoWrite() const
{
    Block* block = m_pOldest;
    while (block != nullptr && NeedsWrite(*block))
        block = block->newer;
    return block;
}

bool TileStore::NeedsWrite(const Block& block)
{
    return !block.isBlank && !block.swapSlot.IsTaken();
}

void TileStore::SwapOut(Block& block)
{
    if (NeedsWrite(block)) block.swapSlot = m_SwapFile.Write(block.memory);
    RemoveUnpinned(block);
    m_Arena.Free(block.memory);
    block.memory = nullptr;
    m_ResidentBytes -= BlockBytes;
}

void TileStore::BringIn(Block& block)
{
    MakeRoom();
    uchar* const memory = m_Arena.Allocate();
    try {
        if (block.swapSlot.IsTaken()) m_SwapFile.Read(block.swapSlot, memory);
    } catch (...) {
        m_Arena.Free(memory);
        throw;
    }
    block.content = block.isBlank ? Block::Content::Anything : Block::Content::ItsBytes;
    block.memory = memory;
    m_ResidentBytes += BlockBytes;
    AppendUnpinned(block);
}

uchar* TileStore::Pin(Block& block)
{
    if (block.memory == nullptr) BringIn(block);
    if (block.pins == 0) RemoveUnpinned(block);
    ++block.pins;
    return block.memory;
}

void TileStore::MarkWritten(Block& block)
{
    block.isBlank = false;
    block.isBeingWritten = true;
    ++block.writes;
    block.nature.reset();
    DropSwapCopy(block);
}

/// Clears the new memory of a pinned blank block without the lock, for that takes longer than all else here.
void TileStore::Clear(Block& block, std::unique_lock<std::mutex>& lock)
{
    if (block.content == Block::Content::Anything) {
        block.content = Block::Content::BeingCleared;
        lock.unlock();
        std::memset(block.memory, 0, TileArena::BlockBytes);
        lock.lock();
        block.content = Block::Content::ItsBytes;
        m_Cleared.notify_all();
    }
    m_Cleared.wait(lock, [&block] { return block.content == Block::Content::ItsBytes; });
}

void TileStore::Unpin(Block& block)
{
    if (--block.pins > 0) return;
    block.isBeingWritten = false;
    AppendUnpinned(block);
}

void TileStore::DropSwapCopy(Block& block)
{
    if (!block.swapSlot.IsTaken()) return;
    m_SwapFile.Release(block.swapSlot);
    block.swapSlot = {};
}

void TileStore::AppendUnpinned(Block& block)
{
    block.older = m_pNewest;
    block.newer = nullptr;
    (m_pNewest != nullptr ? m_pNewest->newer : m_pOldest) = &block;
    m_pNewest = &block;
}

void TileStore::RemoveUnpinned(Block& block)
{
    (block.older != nullptr ? block.older->newer : m_pOldest) = block.newer;
    (block.newer != nullptr ? block.newer->older : m_pNewest) = block.older;
    block.older = nullptr;
    block.newer = nullptr;
}
