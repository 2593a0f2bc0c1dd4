#pragma once

#include "gui/CanvasPainter.h"
#include "image/LXImage.h"

#include <limits>
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
    static constexpr int Outside = -1;

    int ToDocument(int viewPos, int origin) const;
    void ReadMaskRow(int y);
    void PinTiles(int tileRow);

    const LXImage32& m_Mask;
    QPoint m_Offset;
    const CanvasPlace& m_Place;
    std::vector<int> m_MaskColumns;
    std::vector<quint8> m_Read; ///< of the mask row m_ReadRow
    int m_ReadRow = std::numeric_limits<int>::min();
    std::vector<LXTileReader<LXRGBA32i>> m_Tiles; ///< of the row m_TileRow, from m_FirstTile on
    int m_FirstTile = 0;
    int m_TileRow = Outside;
};
