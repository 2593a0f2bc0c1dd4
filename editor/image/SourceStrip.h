#pragma once

#include "image/LXImage.h"
#include "image/TileWalk.h"

#include <algorithm>
#include <vector>

/// The rows of some columns of an image, in any order: fast for rows of the same tiles, whose memory stays
/// pinned. One thread; the image must outlive it.
class SourceStrip
{
public:
    /// The columns from `first` to the one before `end` lie inside the image.
    SourceStrip(const LXImage32& image, int first, int end) : m_Image(image), m_First(first), m_End(end) {}

    /// Calls `take(pixels, x, count)` for each span of row `y`; x counts from the strip's first column.
    template <class Take>
    void ReadRow(int y, Take take)
    {
        Enter(y / TileWalk::TileSide);
        int x = m_First;
        for (const LXTileReader<LXRGBA32i>& tile : m_Tiles) {
            const int end = std::min(m_End, (x / TileWalk::TileSide + 1) * TileWalk::TileSide);
            take(tile.Pixels() + TileWalk::IndexInTile(QPoint(x, y)), x - m_First, end - x);
            x = end;
        }
    }

private:
    void Enter(int row)
    {
        if (row == m_Row) return;
        m_Tiles.clear();
        m_Row = row;
        if (m_First >= m_End) return;
        for (int column = m_First / TileWalk::TileSide; column <= (m_End - 1) / TileWalk::TileSide;
             ++column) {
            m_Tiles.push_back(m_Image.ReadTile(column, row));
        }
    }

    const LXImage32& m_Image;
    int m_First;
    int m_End;
    int m_Row = -1;
    std::vector<LXTileReader<LXRGBA32i>> m_Tiles;
};
