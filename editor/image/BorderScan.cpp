#include "image/BorderScan.h"

#include "image/LXImage.h"
#include "image/SimilarKernels.h"
#include "image/TileBits.h"
#include "image/TileWalk.h"

#include <algorithm>

namespace {
using TileWalk::TileSide;

/// Looks from each side for the first tiles with content, so that what lies inside isn't looked at.
class ContentSearch
{
public:
    /// Border is what differs from the color by the tolerance at most, channel by channel.
    ContentSearch(const LXImage32& image, LXRGBA32i color, LXRGBA32i tolerance)
        : m_Image(image), m_Color(color), m_Tolerance(tolerance)
    {}

    QRect Run()
    {
        const int columns = static_cast<int>(m_Image.m_TilesX);
        const int rows = static_cast<int>(m_Image.m_TilesY);
        int top = 0;
        while (top < rows && !LookAt(QRect(0, top, columns, 1))) {
            ++top;
        }
        if (top == rows) return QRect();
        int bottom = rows - 1;
        while (bottom > top && !LookAt(QRect(0, bottom, columns, 1))) {
            --bottom;
        }
        // Only tiles between those rows are left, and only beside what was found.
        const int height = bottom - top - 1;
        for (int column = 0; height > 0 && column * TileSide < m_Content.left(); ++column) {
            LookAt(QRect(column, top + 1, 1, height));
        }
        for (int column = columns - 1; height > 0 && (column + 1) * TileSide - 1 > m_Content.right();
             --column) {
            LookAt(QRect(column, top + 1, 1, height));
        }
        return m_Content;
    }

private:
    /// Whether the tiles (columns and rows) have content, which it adds.
    bool LookAt(const QRect& tiles)
    {
        bool hasContent = false;
        for (int row = tiles.top(); row <= tiles.bottom(); ++row) {
            for (int column = tiles.left(); column <= tiles.right(); ++column) {
                const QRect content = ContentOf(column, row);
                hasContent = hasContent || !content.isEmpty();
                m_Content |= content;
            }
        }
        return hasContent;
    }

    QRect ContentOf(int column, int row)
    {
        const LXTile* const tile = m_Image.TileAt(column, row).data();
        if (tile == m_pPlain) return QRect();
        const QRect whole = TileWalk::TileRect(column, row);
        TileBits bits;
        SimilarKernels::Compare(m_Image.ReadTile(column, row).Pixels(), m_Color, m_Tolerance, bits);
        if (TileBitsMath::IsFull(bits)) m_pPlain = tile;
        for (RowBits& line : bits.rows) {
            line = ~line;
        }
        TileBitsMath::Clip(bits, (whole & m_Image.Rect()).translated(-whole.topLeft()));
        const QRect content = TileBitsMath::BoundsOf(bits);
        return content.isEmpty() ? QRect() : content.translated(whole.topLeft());
    }

    const LXImage32& m_Image;
    LXRGBA32i m_Color;
    LXRGBA32i m_Tolerance;
    const LXTile* m_pPlain = nullptr; ///< a whole tile that is border
    QRect m_Content;
};

quint32 ToByte(int tolerance)
{
    return static_cast<quint32>(std::min(tolerance, 255));
}
} // namespace

QRect BorderScan::WithoutTransparency(const LXImage32& image, int tolerance)
{
    if (tolerance < 0) return image.Rect();
    return ContentSearch(image, LXRGBA32i(), LXRGBA32i(ToByte(tolerance) << 24 | 0x00FFFFFF)).Run();
}

QRect BorderScan::WithoutColor(const LXImage32& image, int tolerance, LXRGBA32i color)
{
    if (tolerance < 0) return image.Rect();
    return ContentSearch(image, color, LXRGBA32i(0xFF000000 | ToByte(tolerance) * 0x010101)).Run();
}
