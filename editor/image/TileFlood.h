#pragma once

#include "image/SimilarPixels.h"
#include "image/TileBits.h"
#include "image/TileComponents.h"

#include <QPoint>
#include <QRect>

#include <functional>
#include <memory>
#include <vector>

/// Grows a region from a seed, in waves of tiles that are worked on at once. A tile works on whole rows of
/// its bits; what reaches its sides is handed to the neighbours between two waves. Where the region comes
/// back to a tile again and again, the tile's components are found once, and what comes to it from then on
/// passes through without another visit.
///
/// Each pixel is taken once, so time is linear in the area; memory is three bits a pixel of the tiles
/// reached, up to fifteen in a labyrinth, and none for those that the region fills whole.
class TileFlood
{
public:
    /// @param area  the pixels that may belong to the region, from (0, 0).
    TileFlood(SimilarPixels& similar, const QRect& area);

    void Run(const QPoint& seed);

    /// Calls `visit(column, row, region)` for each tile with a part of the region, on several threads.
    void ForEachPart(const std::function<void(int column, int row, const TileBits& region)>& visit) const;

private:
    using Side = TileSides::Side;

    /// What a tile that is neither filled whole nor empty needs.
    struct Bits
    {
        TileBits open;        ///< similar and not yet taken
        TileBits region;      ///< taken
        TileBits wanted;      ///< open pixels beside taken ones of another row or tile
        RowBits rowsToDo = 0; ///< the rows with wanted pixels
    };

    struct Tile
    {
        enum class State
        {
            Unseen,
            Open, ///< similar throughout and not yet taken
            Taken,
            Mixed
        };

        QPoint place; ///< column and row
        State state = State::Unseen;
        bool isQueued = false;
        int spreads = 0;            ///< how often the region spread inside
        SideBits reached{};         ///< pixels along each side that the region comes to, until the visit
        SideBits leaves{};          ///< pixels along each side that were taken and not yet handed over
        std::unique_ptr<Bits> bits; ///< of a mixed tile
        std::unique_ptr<TileComponents> components; ///< of the open pixels of a tile come to often
    };

    Tile* TileAt(const QPoint& place);
    void Reach(const QPoint& place, Side side, RowBits pixels);
    void Look(Tile& tile);
    static bool IsWinding(const Tile& tile);
    bool AddAhead(std::vector<Tile*>& wave);
    void Visit(Tile& tile);
    void HandOver();
    static void WantAlong(Bits& bits, Side side, RowBits pixels);
    static void Want(Bits& bits, int y, RowBits columns);
    static void Spread(Tile& tile);
    static void TakeComponents(Tile& tile);
    static RowBits TakeRow(Bits& bits, int y);

    SimilarPixels& m_Similar;
    QRect m_Area;
    int m_Columns;
    int m_Rows;
    std::vector<std::unique_ptr<Tile>> m_Tiles; ///< row by row
    std::vector<Tile*> m_Reached;               ///< every tile there is
    std::vector<Tile*> m_Next;                  ///< the next wave
    std::vector<Tile*> m_Leaving;               ///< tiles with something to hand over
    int m_Walked = 0;                           ///< tiles whose components were, or are being, found
    int m_Useful = 0;                           ///< those of them that the region has come to
};
