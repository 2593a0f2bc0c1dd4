#pragma once

#include "image/CoverCells.h"
#include "image/PathEdges.h"
#include "image/TileWalk.h"

#include <QPainterPath>
#include <QRect>
#include <QtGlobal>

#include <array>
#include <vector>

/// How much of each pixel of one tile a path covers, 0 to 255.
struct TileCoverage
{
    /// A row: all pixels before `first` and all from `end` on are covered alike.
    struct Span
    {
        bool IsOnly(quint8 covered) const { return first == end && before == covered && after == covered; }

        int first = 0;
        int end = 0;
        quint8 before = 0;
        quint8 after = 0;
    };

    const quint8* Row(int y) const { return bytes.data() + y * TileWalk::TileSide; }

    std::array<Span, TileWalk::TileSide> spans;
    std::array<quint8, TileWalk::TilePixels> bytes; ///< valid from each row's `first` to its `end`
};

/// How much of each pixel a path covers.
///
/// With antialiasing it is the pixel's mean winding number, brought between 0 and 1 by the fill rule: the
/// covered area, but where the path crosses itself inside a pixel. Without, 255 if the path holds the pixel's
/// middle, where one on the edge goes to the path on its right, so that neighbours share no pixel and miss
/// none.
class PathCoverage
{
public:
    /// @param touched  the pixels that count, not empty
    PathCoverage(const QPainterPath& path, bool isAntialiased, const QRect& touched);

    /// A row of tiles, from the left to the right. One thread each.
    class TileRow
    {
    public:
        TileRow(const PathCoverage& coverage, int row);

        /// Goes on to the next column, first to the leftmost that the path touches. The result stays valid
        /// until the next call.
        const TileCoverage& Next();

    private:
        void AddSide(const PathEdge& edge);
        void AddMiddles(const PathEdge& edge);
        void AddPiece(int column, double x0, int y0, double x1, int y1, int direction);
        TileCoverage::Span ResolveRow(int y);

        const PathCoverage& m_Coverage;
        int m_Top;    ///< image coordinates
        int m_Bottom; ///< the first row below
        int m_Left;
        int m_Columns;
        int m_Column = 0;
        std::vector<std::vector<PathPiece>> m_Pieces; ///< by columns
        CoverCells m_Cells;
        std::array<int, TileWalk::TileSide> m_Before{}; ///< each row's winding number at the column's left
        TileCoverage m_Tile;
    };

private:
    bool m_IsAntialiased;
    bool m_IsOddEven;
    QRect m_Tiles; ///< in columns and rows of tiles
    std::vector<PathEdge> m_Edges;
    std::vector<std::vector<int>> m_EdgesOfRow; ///< indices, by rows of tiles
};
