#include "image/MaskPieces.h"

#include "image/TileThreads.h"
#include "image/TileWalk.h"

namespace {
using TileWalk::TileSide;

MaskValues ReadValues(const LXImage32& mask, const QRect& rect)
{
    MaskValues values(rect);
    const QRect inside = rect & mask.Rect();
    TileWalk::ReadSpans(mask, inside, [&](const LXRGBA32i* pixels, int x, int y, int count) {
        quint8* const row = values.Row(y + inside.top() - rect.top()) + (x + inside.left() - rect.left());
        for (int i = 0; i < count; ++i)
            row[i] = static_cast<quint8>(pixels[i].value >> 24);
    });
    return values;
}

bool IsSolid(const MaskValues& values)
{
    return std::equal(values.bytes.begin() + 1, values.bytes.end(), values.bytes.begin());
}

/// The tiles of the target start where those of the pieces do.
void Write(LXImage32& target, const MaskValues& piece, const QPoint& areaTopLeft)
{
    const QRect part = piece.rect.translated(-areaTopLeft);
    TileWalk::ForEachTile(part, [&](int column, int row, const QRect& inTile) {
        const auto tile = target.WriteTile(column, row);
        for (int y = inTile.top(); y <= inTile.bottom(); ++y) {
            LXRGBA32i* const pixels = tile.Pixels() + TileWalk::IndexInTile(QPoint(inTile.left(), y));
            const quint8* const values = piece.Row(y - part.top()) + (inTile.left() - part.left());
            for (int i = 0; i < inTile.width(); ++i)
                pixels[i] = LXRGBA32i(static_cast<quint32>(values[i]) << 24);
        }
    });
}

/// Whole tiles share the one that is given.
void WriteSolid(LXImage32& target, const QRect& part, const LXTilePointer& solid)
{
    TileWalk::ForEachTile(part, [&](int column, int row, const QRect& inTile) {
        if (inTile == TileWalk::TileRect(column, row)) {
            target.TileAt(column, row) = solid;
            return;
        }
        const LXRGBA32i color = LXTileReader<LXRGBA32i>(*solid).Pixels()[0];
        const auto tile = target.WriteTile(column, row);
        for (int y = inTile.top(); y <= inTile.bottom(); ++y) {
            std::fill_n(tile.Pixels() + TileWalk::IndexInTile(QPoint(inTile.left(), y)), inTile.width(),
                        color);
        }
    });
}

LXTilePointer SolidTile(quint8 value)
{
    LXImage32 tile(TileSide, TileSide);
    tile.Fill(LXRGBA32i(static_cast<quint32>(value) << 24));
    return tile.TileAt(0, 0);
}

/// Large enough that what is read around a piece isn't many times the piece.
int PieceSide(int reach)
{
    return TileSide * qMax(1, (2 * reach + TileSide - 1) / TileSide);
}
} // namespace

LXImage32 MaskPieces::Make(const LXImage32& mask, const QRect& area, int reach,
                           const std::function<quint8(quint8)>& ofSolid, const Kernel& kernel)
{
    LXImage32 made(area.width(), area.height());
    if (made.IsNull()) return made;

    const LXTilePointer full = SolidTile(255);
    const int side = PieceSide(reach);
    const int columns = (area.width() + side - 1) / side;
    const int rows = (area.height() + side - 1) / side;
    TileThreads::ForEach(columns * rows, [&](int number) {
        const QPoint corner(number % columns * side, number / columns * side);
        const QRect rect = QRect(corner, QSize(side, side)).translated(area.topLeft()) & area;
        const MaskValues around = ReadValues(mask, rect.adjusted(-reach, -reach, reach, reach));
        if (IsSolid(around)) {
            const quint8 value = ofSolid(around.bytes.front());
            if (value == 0) return; // as it was made
            WriteSolid(made, rect.translated(-area.topLeft()), value == 255 ? full : SolidTile(value));
            return;
        }
        MaskValues piece(rect);
        kernel(around, piece);
        Write(made, piece, area.topLeft());
    });
    return made;
}
