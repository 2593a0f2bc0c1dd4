#include "image/LXTileAccess.h"

#include "image/LXTileManager.h"

LXTileAccess::LXTileAccess(const LXTile& tile, bool write)
    : m_Handle(tile.Handle()), m_pMemory(LXTileManager::Instance().GetMemory(m_Handle, write))
{}

LXTileAccess::~LXTileAccess()
{
    if (m_Handle == nullptr) return;
    try {
        LXTileManager::Instance().FreeMemory(m_Handle);
    } catch (const std::exception&) {
        // Only after the store itself is gone, and then no pin matters.
    }
}
