#include "image/LXTile.h"

#include "image/LXTileAccess.h"
#include "image/LXTileManager.h"

#include <cstring>

LXTile::LXTile() : m_Handle(LXTileManager::Instance().MakeTile()) {}

LXTile::LXTile(const LXTile& other) : QSharedData(other), m_Handle(LXTileManager::Instance().MakeTile())
{
    try {
        const LXTileReader<uchar> source(other);
        LXTileManager& manager = LXTileManager::Instance();
        std::memcpy(manager.GetMemory(m_Handle, true), source.Pixels(), LXTileManager::TileBytes);
        manager.FreeMemory(m_Handle);
    } catch (...) {
        LXTileManager::Instance().CleanUpTile(m_Handle);
        throw;
    }
}

LXTile::~LXTile()
{
    try {
        LXTileManager::Instance().CleanUpTile(m_Handle);
    } catch (const std::exception&) {
        // The store is gone and has taken the tile with it.
    }
}

void DetachTile(LXTilePointer& slot)
{
    if (slot->IsShared()) slot = LXTilePointer(new LXTile(*slot));
}
