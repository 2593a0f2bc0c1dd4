#include "image/LXImageConvert.h"

#include "image/LXImage.h"
#include "image/TileThreads.h"
#include "image/TileWalk.h"

#include <QImage>

#include <algorithm>

namespace {
const LXRGBA32i* RowOf(const QImage& image, int x, int y)
{
    return reinterpret_cast<const LXRGBA32i*>(image.constScanLine(y)) + x;
}

bool IsBlank(const QImage& image, const QRect& part)
{
    for (int y = part.top(); y <= part.bottom(); ++y) {
        // All of a row at once, which vectorises.
        const LXRGBA32i* const row = RowOf(image, part.left(), y);
        quint32 all = 0;
        for (int x = 0; x < part.width(); ++x) {
            all |= row[x].value;
        }
        if (all != 0) return false;
    }
    return true;
}
} // namespace

void ConvertImage(const LXImage32& source, QImage& target)
{
    if (source.IsNull()) {
        target = QImage();
        return;
    }
    QImage result(source.Width(), source.Height(), QImage::Format_ARGB32);
    if (result.isNull()) throw std::bad_alloc();

    uchar* const bits = result.bits();
    const qsizetype bytesPerLine = result.bytesPerLine();
    TileThreads::ForEachTile(source.Rect(), [&](int, int, const QRect& part) {
        TileWalk::ReadSpans(source, part, [&](const LXRGBA32i* pixels, int x, int y, int count) {
            auto* const row = reinterpret_cast<LXRGBA32i*>(bits + (part.top() + y) * bytesPerLine);
            std::copy_n(pixels, count, row + part.left() + x);
        });
    });
    target = result;
}

void ConvertImage(const QImage& source, LXImage32& target)
{
    const QImage straight = source.convertToFormat(QImage::Format_ARGB32);
    if (straight.isNull() && !source.isNull()) throw std::bad_alloc();

    LXImage32 result(straight.width(), straight.height());
    TileThreads::ForEachTile(result.Rect(), [&](int column, int row, const QRect& part) {
        if (IsBlank(straight, part)) return;
        const auto tile = result.WriteTile(column, row);
        for (int y = part.top(); y <= part.bottom(); ++y) {
            std::copy_n(RowOf(straight, part.left(), y), part.width(),
                        tile.Pixels() + TileWalk::IndexInTile(QPoint(part.left(), y)));
        }
    });
    target = result;
}
