#include "image/LXTileManager.h"

#include "image/SwapPlace.h"
#include "image/TileStore.h"

#include <QDir>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <fstream>
#include <string>

namespace {
/// Static images may outlive the store; they are told apart from those in time by this.
std::atomic<bool> s_IsGone{false};

TileStore* s_pStore = nullptr;

/// What programs could have without the system swapping, in bytes; 0 when it doesn't tell.
qint64 AvailableMemory()
{
    std::ifstream file("/proc/meminfo");
    std::string line;
    while (std::getline(file, line)) {
        long long kibibytes = 0;
        if (std::sscanf(line.c_str(), "MemAvailable: %lld kB", &kibibytes) == 1)
            return qint64(kibibytes) * 1024;
    }
    return 0;
}

/// How many programs like this one use the machine at the same time.
int Sharers()
{
    return std::max(1, qEnvironmentVariableIntValue(SharersVariable));
}

std::string SwapFolder()
{
    return ChooseSwapFolder({QDir::tempPath().toStdString(), "/var/tmp"}, LiesInMemory);
}

} // namespace

LXTileManager::LXTileManager()
    : m_Store(std::make_unique<TileStore>(FirstTileBudget(AvailableMemory(), Sharers()), SwapFolder()))
{
    s_pStore = m_Store.get();
}

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

TileStore& TileStore::Main()
{
    LXTileManager::Instance();
    return *s_pStore;
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
