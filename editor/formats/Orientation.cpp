#include "formats/Orientation.h"

#include <QPoint>
#include <QRect>
#include <QSize>

#include <algorithm>

namespace {
constexpr int TileSide = 128;

/// Where the pixels of a picture come from that is turned as the number says.
class Turn
{
public:
    Turn(int orientation, const QSize& sourceSize)
        : m_Orientation(orientation), m_Last(sourceSize.width() - 1, sourceSize.height() - 1)
    {}

    QPoint SourceOf(const QPoint& turned) const
    {
        const int x = turned.x();
        const int y = turned.y();
        switch (m_Orientation) {
        case 2: return {m_Last.x() - x, y};
        case 3: return {m_Last.x() - x, m_Last.y() - y};
        case 4: return {x, m_Last.y() - y};
        case 5: return {y, x};
        case 6: return {y, m_Last.y() - x};
        case 7: return {m_Last.x() - y, m_Last.y() - x};
        case 8: return {m_Last.x() - y, x};
        default: return turned;
        }
    }

    QRect SourceOf(const QRect& turned) const
    {
        const QPoint a = SourceOf(turned.topLeft());
        const QPoint b = SourceOf(turned.bottomRight());
        return {QPoint(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
                QPoint(std::max(a.x(), b.x()), std::max(a.y(), b.y()))};
    }

private:
    int m_Orientation;
    QPoint m_Last; ///< the source's pixel at the bottom right
};

/// The two quarter turns undo each other, all others themselves.
int InverseOf(int orientation)
{
    if (orientation == 6) return 8;
    return orientation == 8 ? 6 : orientation;
}

QRect TileRect(int column, int row)
{
    return {column * TileSide, row * TileSide, TileSide, TileSide};
}

int IndexInTile(const QPoint& pixel)
{
    return (pixel.y() % TileSide) * TileSide + pixel.x() % TileSide;
}

/// Copies the pixels of an upright tile that one stored tile holds.
void CopyPart(const Turn& turn, const QRect& uprightPart, const LXTileReader<LXRGBA32i>& from,
              const LXTileWriter<LXRGBA32i>& to)
{
    for (int y = uprightPart.top(); y <= uprightPart.bottom(); ++y) {
        for (int x = uprightPart.left(); x <= uprightPart.right(); ++x) {
            const QPoint upright(x, y);
            to.Pixels()[IndexInTile(upright)] = from.Pixels()[IndexInTile(turn.SourceOf(upright))];
        }
    }
}
} // namespace

LXImage32 Orientation::MakeUpright(const LXImage32& stored, int orientation)
{
    const bool swapsSides = orientation >= 5;
    const QSize storedSize = stored.Rect().size();
    const QSize uprightSize = swapsSides ? storedSize.transposed() : storedSize;
    const Turn turn(orientation, storedSize);
    const Turn turnBack(InverseOf(orientation), uprightSize);

    LXImage32 upright(uprightSize.width(), uprightSize.height());
    for (int row = 0; row < static_cast<int>(stored.m_TilesY); ++row) {
        for (int column = 0; column < static_cast<int>(stored.m_TilesX); ++column) {
            const auto from = stored.ReadTile(column, row);
            const QRect storedRect = TileRect(column, row) & stored.Rect();
            const QRect target = turnBack.SourceOf(storedRect);
            for (int y = target.top() / TileSide; y <= target.bottom() / TileSide; ++y) {
                for (int x = target.left() / TileSide; x <= target.right() / TileSide; ++x) {
                    CopyPart(turn, target & TileRect(x, y), from, upright.WriteTile(x, y));
                }
            }
        }
    }
    return upright;
}
