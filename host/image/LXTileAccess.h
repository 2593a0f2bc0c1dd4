#pragma once

#include "ZKHostExport.h"

#include "image/LXTile.h"

#include <QtGlobal>

#include <utility>

/// Keeps a tile's memory pinned while it lives, so that a kernel pins once a tile. It takes no count: the
/// slot it was made from must outlive it. Movable, so that a row of tiles can be held in a vector.
class ZK_HOST_EXPORT LXTileAccess
{
public:
    LXTileAccess(const LXTile& tile, bool write);

    LXTileAccess(LXTileAccess&& other) noexcept
        : m_Handle(std::exchange(other.m_Handle, nullptr)), m_pMemory(std::exchange(other.m_pMemory, nullptr))
    {}

    LXTileAccess& operator=(LXTileAccess&& other) noexcept
    {
        std::swap(m_Handle, other.m_Handle);
        std::swap(m_pMemory, other.m_pMemory);
        return *this;
    }

    ~LXTileAccess();

protected:
    void* Memory() const { return m_pMemory; }

private:
    Q_DISABLE_COPY(LXTileAccess)

    void* m_Handle;
    void* m_pMemory;
};

/// A tile's pixels for reading, row after row.
template <class Pixel>
class LXTileReader : public LXTileAccess
{
public:
    explicit LXTileReader(const LXTile& tile) : LXTileAccess(tile, false) {}

    const Pixel* Pixels() const { return static_cast<const Pixel*>(Memory()); }
};

/// A tile's pixels for writing; detaches the slot first.
template <class Pixel>
class LXTileWriter : public LXTileAccess
{
public:
    explicit LXTileWriter(LXTilePointer& slot) : LXTileAccess(Detached(slot), true) {}

    Pixel* Pixels() const { return static_cast<Pixel*>(Memory()); }

private:
    static const LXTile& Detached(LXTilePointer& slot)
    {
        DetachTile(slot);
        return *slot;
    }
};
