#include "image/LXTileManager.h"

#include "image/TileStore.h"

#include <QDir>

#include <unistd.h>

#include <atomic>

namespace {
/// Static images may outlive the store; they are told apart from those in time by this.
std::atomic<bool> s_IsGone{false};

qint64 HalfOfTheMachinesMemory()
{
    constexpr qint64 fallback = qint64(2) << 30;
    const qint64 pages = ::sysconf(_SC_PHYS_PAGES);
    const qint64 pageBytes = ::sysconf(_SC_PAGESIZE);
    return pages > 0 && pageBytes > 0 ? pages * pageBytes / 2 : fallback;
}
} // namespace

LXTileManager::LXTileManager()
    : m_Store(std::make_unique<TileStore>(HalfOfTheMachinesMemory(), QDir::tempPath().toStdString()))
{}

LXTileManager::~LXTileManager()
{
    s_IsGone = true;
}

LXTileManager& LXTileManager::Instance()
{
    if (s_IsGone) throw LXTMBadInstance();
    static LXTileManager instance;
    return instance;
}

void* LXTileManager::MakeTile()
{
    return m_Store->MakeTile();
}

void* LXTileManager::GetMemory(void* handle, bool write)
{
    return m_Store->GetMemory(handle, write);
}

void LXTileManager::FreeMemory(void* handle)
{
    m_Store->FreeMemory(handle);
}

void LXTileManager::CleanUpTile(void* handle)
{
    m_Store->CleanUpTile(handle);
}

int LXTileManager::LiveTileCount() const
{
    return m_Store->LiveTileCount();
}

void LXTileManager::SetMemoryBudget(qint64 bytes)
{
    m_Store->SetMemoryBudget(bytes);
}

qint64 LXTileManager::MemoryBudget() const
{
    return m_Store->MemoryBudget();
}
