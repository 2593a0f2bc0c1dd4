#pragma once

#include "gui/CanvasPainter.h"
#include "image/LXImage.h"

#include <limits>
#include <map>
#include <vector>

/// Tells for rows of viewport pixels how much of their middles a selection covers. The caller holds the
/// selection's locker, and rows are best read from the top down.
class CoverageRows
{
public:
    /// @param offset       the mask's top left, document pixels
    /// @param firstColumn  the first viewport pixel of the rows
    /// Mask and place must outlive this.
    CoverageRows(const LXImage32& mask, const QPoint& offset, const CanvasPlace& place, int firstColumn,
                 int columns);

    /// Writes 0 to 255 for each column; 0 outside the mask.
    void Read(int viewRow, std::vector<quint8>& coverage);

private:
    /// Columns that one column of the mask's tiles holds.
    struct Span
    {
        int tile;
        std::size_t first;
        std::size_t count;
    };

    /// A pinned tile under a span.
    struct Source
    {
        LXTileReader<LXRGBA32i> tile;
        int solid; ///< the coverage that all of its pixels have; None when they differ
    };

    static constexpr int None = -1;

    int ToDocument(int viewPos, int origin) const;
    void ReadMaskRow(int y);
    void PinTiles(int tileRow);
    int SolidCoverage(const LXTile* tile, const LXRGBA32i* pixels);

    const LXImage32& m_Mask;
    QPoint m_Offset;
    const CanvasPlace& m_Place;
    std::size_t m_Columns;
    std::vector<int> m_InTile;  ///< of each column inside the mask, from the first span's first one on
    std::vector<Span> m_Spans;  ///< from left to right
    std::vector<quint8> m_Read; ///< of the mask row m_ReadRow
    int m_ReadRow = std::numeric_limits<int>::min();
    std::vector<Source> m_Sources; ///< of the row m_TileRow, one for each span
    int m_TileRow = None;
    /// Tiles that the mask holds many times are looked through once.
    std::map<const LXTile*, int> m_Solid;
};
