#pragma once

#include "image/TileWalk.h"

#include <QtGlobal>

#include <array>
#include <vector>

/// A piece of a path's side inside one tile. Tile coordinates in 65536ths of a pixel, so that pieces which
/// follow each other meet exactly; x may be the tile's right edge.
struct PathPiece
{
    int x0; ///< at the top
    int y0;
    int x1;
    int y1; ///< not above y0
    int direction;
};

/// Sums up how far each pixel of a tile lies to the right of a path's sides: the path's winding number, as
/// its mean over the pixel. What a piece covers goes into the cells of the pixels that it crosses; all pixels
/// to their right have it whole, so a running sum along the row finds them.
class CoverCells
{
public:
    static constexpr int One = 65536; ///< a whole pixel, covered once
    static constexpr int Shift = 16;
    static constexpr int Group = 16; ///< pixels that are handed on together, so that registers are full

    CoverCells();

    void Add(const PathPiece& piece);

    /// A row's winding numbers from the left to the right: constant before `first` and from `end` on, which
    /// are multiples of Group.
    struct Row
    {
        int first;
        int end;
        int before;       ///< of all pixels before `first`
        int after;        ///< of all pixels from `end` on, and what the next tile to the right begins with
        const int* cells; ///< of the pixels from `first` to the one before `end`
    };

    /// What row `y` sums up to when it begins with `before`; the row's cells are clear thereafter.
    Row Take(int y, int before);

private:
    static constexpr int Stride = TileWalk::TileSide + 2; ///< with what lies on the right edge

    struct Range
    {
        int first = Stride;
        int end = 0;
    };

    void AddInRow(int row, int x0, int x1, int height);

    std::vector<int> m_Cells;
    std::array<Range, TileWalk::TileSide> m_Ranges;
    std::array<int, TileWalk::TileSide + Group> m_Sums{}; ///< by pixels
};
