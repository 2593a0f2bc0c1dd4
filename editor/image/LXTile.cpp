#include "image/LXTile.h"

#include "image/LXTileManager.h"
#include "image/TileStore.h"

LXTile::LXTile() : m_Handle(LXTileManager::Instance().MakeTile()) {}

LXTile::LXTile(const LXTile& other) : QSharedData(other), m_Handle(TileStore::Main().CopyTile(other.Handle()))
{}

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
