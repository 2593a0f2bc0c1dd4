#pragma once

#include "image/LXImage.h"
#include "image/TileWalk.h"

#include <array>
#include <optional>

/// Pixels of an image in any order, with the tiles of the neighbourhood pinned. One thread; the image must
/// outlive it.
class SourcePixels
{
public:
    explicit SourcePixels(const LXImage32& image) : m_Image(image) {}

    /// (x, y) lies inside the image.
    LXRGBA32i At(int x, int y)
    {
        const int column = x / TileWalk::TileSide;
        const int row = y / TileWalk::TileSide;
        const int index = row % SlotsSide * SlotsSide + column % SlotsSide;
        Slot& slot = m_Slots[static_cast<std::size_t>(index)];
        if (slot.column != column || slot.row != row) {
            slot.tile.emplace(*m_Image.TileAt(column, row));
            slot.column = column;
            slot.row = row;
        }
        return slot.tile->Pixels()[TileWalk::IndexInTile(QPoint(x, y))];
    }

private:
    static constexpr int SlotsSide = 8;

    struct Slot
    {
        int column = -1;
        int row = -1;
        std::optional<LXTileReader<LXRGBA32i>> tile;
    };

    const LXImage32& m_Image;
    std::array<Slot, SlotsSide * SlotsSide> m_Slots;
};
