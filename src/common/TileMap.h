#pragma once

#include "image/LXImage.h"

#include <QRect>
#include <QtConcurrentMap>

#include <numeric>
#include <vector>

/// Which tiles of an image a rectangle of pixels touches, as columns and rows; a part outside the image
/// touches none.
template <class Pixel, int TileWidth, int TileHeight>
QRect TilesTouching(const LXImage<Pixel, TileWidth, TileHeight>& image, const QRect& pixels)
{
    const QRect inside = pixels & image.Rect();
    if (inside.isEmpty()) return {};
    return QRect(QPoint(inside.left() / TileWidth, inside.top() / TileHeight),
                 QPoint(inside.right() / TileWidth, inside.bottom() / TileHeight));
}

/// Runs a small functor over the pixels of an image's tiles: one tile after the other, and inside a tile
/// spread over the global pool. A functor takes the pixel's index in its tile and touches that pixel alone,
/// so that nothing is locked. The pixels beyond the image's edge are mapped like all others.
///
/// Any thread; the caller waits for each tile. What detaching or pinning a tile throws goes on to the caller,
/// with the tiles before it done.
class TileMap
{
public:
    TileMap() : m_Indices(static_cast<std::size_t>(LXTileManager::TileBytes) / sizeof(LXRGBA32i))
    {
        std::iota(m_Indices.begin(), m_Indices.end(), 0);
    }

    /// @param makeFunctor  gets the pixels of a tile, detached and pinned, with its column and row.
    template <class MakeFunctor>
    void Run(LXImage32& image, const QRect& tiles, MakeFunctor makeFunctor)
    {
        for (int row = tiles.top(); row <= tiles.bottom(); ++row) {
            for (int column = tiles.left(); column <= tiles.right(); ++column) {
                const LXTileWriter<LXRGBA32i> tile = image.WriteTile(column, row);
                QtConcurrent::blockingMap(m_Indices, makeFunctor(tile.Pixels(), column, row));
            }
        }
    }

    /// The same over the whole image.
    template <class MakeFunctor>
    void RunAll(LXImage32& image, MakeFunctor makeFunctor)
    {
        Run(image, QRect(0, 0, static_cast<int>(image.m_TilesX), static_cast<int>(image.m_TilesY)),
            makeFunctor);
    }

private:
    std::vector<int> m_Indices; ///< of all pixels of a tile, made once for all tiles
};
