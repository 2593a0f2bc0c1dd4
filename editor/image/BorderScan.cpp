#include "image/BorderScan.h"

#include "image/LXImage.h"
#include "image/TileWalk.h"

#include <algorithm>
#include <cstdlib>

namespace {
/// The smallest rectangle around the pixels of one row of a tile that aren't border.
template <class IsContent>
QRect ContentOfRow(const LXRGBA32i* first, int count, const QPoint& place, IsContent isContent)
{
    const LXRGBA32i* const end = first + count;
    const LXRGBA32i* const left = std::find_if(first, end, isContent);
    if (left == end) return QRect();
    const LXRGBA32i* right = end - 1;
    while (!isContent(*right)) {
        --right;
    }
    return QRect(place + QPoint(static_cast<int>(left - first), 0),
                 QSize(static_cast<int>(right - left) + 1, 1));
}

template <class IsContent>
QRect Content(const LXImage32& image, IsContent isContent)
{
    QRect content;
    const LXTile* plain = nullptr; // a whole tile that is border
    TileWalk::ForEachTile(image.Rect(), [&](int column, int row, const QRect& part) {
        const LXTile* const tile = image.TileAt(column, row).data();
        // What lies between pixels that count needn't be looked at.
        if (tile == plain || content.contains(part)) return;
        const auto reader = image.ReadTile(column, row);
        QRect found;
        for (int y = part.top(); y <= part.bottom(); ++y) {
            const QPoint start(part.left(), y);
            found |=
                ContentOfRow(reader.Pixels() + TileWalk::IndexInTile(start), part.width(), start, isContent);
        }
        if (found.isEmpty() && part == TileWalk::TileRect(column, row)) plain = tile;
        content |= found;
    });
    return content;
}
} // namespace

QRect BorderScan::WithoutTransparency(const LXImage32& image, int tolerance)
{
    return Content(image, [tolerance](LXRGBA32i pixel) { return pixel.Alpha() > tolerance; });
}

QRect BorderScan::WithoutColor(const LXImage32& image, int tolerance, LXRGBA32i color)
{
    return Content(image, [tolerance, color](LXRGBA32i pixel) {
        return std::abs(pixel.Red() - color.Red()) > tolerance ||
               std::abs(pixel.Green() - color.Green()) > tolerance ||
               std::abs(pixel.Blue() - color.Blue()) > tolerance;
    });
}
