#include "document/AlphaScan.h"

#include "image/TileNature.h"

#include <algorithm>

namespace {
constexpr int TileSide = 128;

QRect TileRect(int column, int row)
{
    return QRect(column * TileSide, row * TileSide, TileSide, TileSide);
}

/// Calls visit(column, row, part) for every tile that the rectangle touches, `part` being what of the
/// rectangle lies in it, in pixels of the tile, until an answer is false. True when none was.
template <class Visit>
bool ForEachTile(const QRect& rect, Visit visit)
{
    for (int row = rect.top() / TileSide; row <= rect.bottom() / TileSide; ++row) {
        for (int column = rect.left() / TileSide; column <= rect.right() / TileSide; ++column) {
            const QRect tile = TileRect(column, row);
            if (!visit(column, row, (rect & tile).translated(-tile.topLeft()))) return false;
        }
    }
    return true;
}

/// The smallest rectangle around the pixels of the part with an alpha above the value, in pixels of the tile.
QRect BoundsInTile(const LXRGBA32i* pixels, const QRect& part, int value)
{
    QRect bounds;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const LXRGBA32i* first = pixels + y * TileSide + part.left();
        const LXRGBA32i* end = first + part.width();
        const auto isAbove = [value](LXRGBA32i pixel) { return pixel.Alpha() > value; };
        const LXRGBA32i* left = std::find_if(first, end, isAbove);
        if (left == end) continue;
        const LXRGBA32i* right = end - 1;
        while (!isAbove(*right)) {
            --right;
        }
        bounds |=
            QRect(part.left() + static_cast<int>(left - first), y, static_cast<int>(right - left) + 1, 1);
    }
    return bounds;
}

/// Without a way out in the middle, so that the compiler makes vectors of it.
bool IsRowOpaque(const LXRGBA32i* pixels, int count)
{
    quint32 common = 0xFFFFFFFF;
    for (int x = 0; x < count; ++x) {
        common &= pixels[x].value;
    }
    return common >> 24 == 0xFF;
}

/// Looks at tiles from all sides of an image inward, and at none that can tell nothing new.
class BoundsSearch
{
public:
    BoundsSearch(const LXImage32& image, int value) : m_Image(image), m_Value(value) {}

    QRect Run()
    {
        const int lastRow = static_cast<int>(m_Image.m_TilesY) - 1;
        const int lastColumn = static_cast<int>(m_Image.m_TilesX) - 1;
        int top = 0;
        while (top <= lastRow && !LookAt({0, top, lastColumn + 1, 1})) {
            ++top;
        }
        int bottom = lastRow;
        while (bottom > top && !LookAt({0, bottom, lastColumn + 1, 1})) {
            --bottom;
        }
        // Between the two rows only what reaches further to the sides is missing.
        for (int column = 0; column * TileSide < m_Bounds.left(); ++column) {
            if (LookAt({column, top + 1, 1, bottom - top - 1})) break;
        }
        for (int column = lastColumn; column >= 0 && RightOf(column) > m_Bounds.right(); --column) {
            if (LookAt({column, top + 1, 1, bottom - top - 1})) break;
        }
        return m_Bounds;
    }

    /// Whether there is any such pixel; the search ends at the first tile that has one.
    bool FindsAny()
    {
        for (int row = 0; row < static_cast<int>(m_Image.m_TilesY); ++row) {
            for (int column = 0; column < static_cast<int>(m_Image.m_TilesX); ++column) {
                if (LookAt({column, row, 1, 1})) return true;
            }
        }
        return false;
    }

private:
    int RightOf(int column) const { return TileRect(column, 0).right(); }

    /// @param tiles  columns and rows
    /// @return whether one of them has such a pixel
    bool LookAt(const QRect& tiles)
    {
        bool hasFound = false;
        for (int row = tiles.top(); row <= tiles.bottom(); ++row) {
            for (int column = tiles.left(); column <= tiles.right(); ++column) {
                hasFound = LookAtTile(column, row) || hasFound;
            }
        }
        return hasFound;
    }

    bool LookAtTile(int column, int row)
    {
        const LXTile* tile = m_Image.TileAt(column, row).data();
        if (tile == m_pEmpty) return false;
        const QRect whole = TileRect(column, row);
        const QRect part = whole & m_Image.Rect();
        const QRect found =
            BoundsInTile(m_Image.ReadTile(column, row).Pixels(), part.translated(-whole.topLeft()), m_Value);
        if (!found.isEmpty()) m_Bounds |= found.translated(whole.topLeft());
        if (found.isEmpty() && part == whole) m_pEmpty = tile;
        return !found.isEmpty();
    }

    const LXImage32& m_Image;
    int m_Value;
    QRect m_Bounds;
    const LXTile* m_pEmpty = nullptr; ///< was found without such a pixel
};
} // namespace

QRect AlphaScan::BoundsAbove(const LXImage32& image, int value)
{
    return BoundsSearch(image, value).Run();
}

bool AlphaScan::HasAbove(const LXImage32& image, int value)
{
    return BoundsSearch(image, value).FindsAny();
}

bool AlphaScan::IsOpaque(const LXImage32& image, const QRect& rect)
{
    return ForEachTile(rect, [&](int column, int row, const QRect& part) {
        if (part.width() == TileSide && part.height() == TileSide)
            return TileNature::Of(*image.TileAt(column, row)).isOpaque;
        const auto reader = image.ReadTile(column, row);
        for (int y = part.top(); y <= part.bottom(); ++y) {
            if (!IsRowOpaque(reader.Pixels() + y * TileSide + part.left(), part.width())) return false;
        }
        return true;
    });
}
