#pragma once

#include "image/SimilarPixels.h"
#include "image/TileBits.h"

#include <QPoint>
#include <QRect>

#include <cstddef>
#include <memory>
#include <vector>

/// Grows a region from a seed. Works on whole rows of a tile's bits; what reaches a tile's side is handed to
/// the neighbour, which is then visited (again). Each pixel is taken once, so time is linear in the area, and
/// memory is three bits a pixel of the tiles reached.
class TileFlood
{
public:
    /// @param area  the pixels that may belong to the region, from (0, 0).
    TileFlood(SimilarPixels& similar, const QRect& area);

    void Run(const QPoint& seed);

    /// Calls `visit(column, row, region)` for each tile with a part of the region.
    template <class Visit>
    void ForEachPart(Visit visit) const
    {
        for (std::size_t i = 0; i < m_Tiles.size(); ++i) {
            if (!m_Tiles[i]) continue;
            const auto column = static_cast<int>(i % static_cast<std::size_t>(m_Columns));
            const auto row = static_cast<int>(i / static_cast<std::size_t>(m_Columns));
            visit(column, row, m_Tiles[i]->region);
        }
    }

private:
    struct Tile
    {
        TileBits open;        ///< similar and not yet taken
        TileBits region;      ///< taken
        TileBits wanted;      ///< open pixels beside taken ones of another row or tile
        RowBits rowsToDo = 0; ///< the rows with wanted pixels
        bool isQueued = false;
    };

    Tile& TileAt(int column, int row);
    static void Want(Tile& tile, int y, RowBits columns);
    void WantInNeighbour(const QPoint& place, int y, RowBits columns);
    void Visit(const QPoint& place);
    RowBits TakeRow(Tile& tile, int y);

    SimilarPixels& m_Similar;
    QRect m_Area;
    int m_Columns;
    int m_Rows;
    std::vector<std::unique_ptr<Tile>> m_Tiles;
    std::vector<QPoint> m_Queue; ///< column and row of the tiles to visit, each once at most
};
