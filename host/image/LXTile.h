#pragma once

#include "ZKHostExport.h"

#include <QExplicitlySharedDataPointer>

/// One tile of pixels, shared by count: between images, and between slots of one image.
/// Any thread; the count is atomic.
class ZK_HOST_EXPORT LXTile : public QSharedData
{
public:
    /// A tile of zeros. Throws as LXTileManager::MakeTile().
    LXTile();
    /// A tile of its own with the same pixels.
    LXTile(const LXTile& other);
    LXTile& operator=(const LXTile&) = delete;
    /// Gives the tile back; never throws.
    ~LXTile();

    /// Whether another slot holds this tile too, so that writing needs a detach.
    bool IsShared() const { return ref.loadAcquire() != 1; }

    void* Handle() const { return m_Handle; }

private:
    void* m_Handle;
};

using LXTilePointer = QExplicitlySharedDataPointer<LXTile>;

/// Puts a tile of its own with the same pixels into the slot when its tile is shared. Two threads may detach
/// different slots at once, even of one tile, never the same slot.
ZK_HOST_EXPORT void DetachTile(LXTilePointer& slot);
