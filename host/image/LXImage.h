#pragma once

#include "image/BlendMode.h"
#include "image/LXBlend.h"
#include "image/LXImageFwd.h"
#include "image/LXRGBA32i.h"
#include "image/LXTileAccess.h"
#include "image/LXTileExceptions.h"
#include "image/LXTileManager.h"
#include "image/ZKCMSProfile.h"
#include "image/ZKEXIFElement.h"

#include <QList>
#include <QRect>

#include <algorithm>
#include <stdexcept>
#include <vector>

/// An image of shared tiles. Copying one costs a few pointers; a tile is detached before it is written.
///
/// Pixels are addressed by column and row from the top left. An image with a side of 0 has no tiles and is
/// null. A tile is whole even where the image ends inside it; the pixels beyond the edge mean nothing.
///
/// Any thread may copy, assign and drop its own images. Several threads may write different tiles of one
/// image; the fields are public because kernels on both sides of the contract walk them.
template <class Pixel, int TileWidth, int TileHeight>
class LXImage
{
    static_assert(TileWidth * TileHeight * sizeof(Pixel) == LXTileManager::TileBytes, "a tile is one block");

public:
    /// More tiles than this are refused.
    static constexpr quint64 MaxTiles = 1000000;

    LXImage() = default;
    /// An image of zeros, all slots sharing one tile; a side below 1 gives a null image. Throws
    /// LXImageTooLarge above MaxTiles, and what LXTileManager::MakeTile() throws.
    LXImage(int width, int height);

    int Width() const { return m_Width; }

    int Height() const { return m_Height; }

    bool IsNull() const { return m_Tiles.empty(); }

    /// (0, 0, width, height)
    QRect Rect() const { return QRect(0, 0, m_Width, m_Height); }

    /// Gives every pixel the color, with at most four tiles; the pixels beyond the edge become 0.
    void Fill(Pixel color);

    /// Throws std::out_of_range "LXImage::GetColor" outside the image.
    Pixel GetColor(int x, int y) const;
    /// Throws std::out_of_range "LXImage::SetColor" outside the image.
    void SetColor(int x, int y, Pixel color);

    /// The part inside `rect`, with profile, resolution and metadata. When nothing or everything of the image
    /// lies inside, the whole image: ask CopyPart() where nothing shall mean nothing.
    LXImage Copy(const QRect& rect) const;

    LXTilePointer& TileAt(int column, int row) { return m_Tiles[SlotIndex(column, row)]; }

    const LXTilePointer& TileAt(int column, int row) const { return m_Tiles[SlotIndex(column, row)]; }

    /// The pixels of a tile, pinned while the result lives; the image must outlive it.
    LXTileReader<Pixel> ReadTile(int column, int row) const
    {
        return LXTileReader<Pixel>(*TileAt(column, row));
    }

    /// The same for writing; detaches the tile.
    LXTileWriter<Pixel> WriteTile(int column, int row) { return LXTileWriter<Pixel>(TileAt(column, row)); }

    std::vector<LXTilePointer> m_Tiles; ///< column c, row r at r * m_TilesX + c
    unsigned int m_TilesX = 0;
    unsigned int m_TilesY = 0;
    int m_Width = 0;
    int m_Height = 0;
    ZKCMSProfile m_Profile;
    int m_DpiX = 0;
    int m_DpiY = 0;
    QList<ZKEXIFElement> m_ExifData;

private:
    static unsigned int TileCount(int side, int tileSide)
    {
        return static_cast<unsigned int>(side / tileSide + (side % tileSide != 0 ? 1 : 0));
    }

    static LXTilePointer MakeCornerTile(Pixel color, int columns, int rows);

    std::size_t SlotIndex(int column, int row) const
    {
        return static_cast<std::size_t>(row) * m_TilesX + static_cast<std::size_t>(column);
    }

    static std::size_t PixelIndex(int x, int y)
    {
        return static_cast<std::size_t>((y % TileHeight) * TileWidth + x % TileWidth);
    }

    void CheckInside(int x, int y, const char* where) const
    {
        if (x < 0 || y < 0 || x >= m_Width || y >= m_Height) throw std::out_of_range(where);
    }
};

template <class Pixel, int TileWidth, int TileHeight>
LXImage<Pixel, TileWidth, TileHeight>::LXImage(int width, int height)
{
    if (width <= 0 || height <= 0) return;

    m_TilesX = TileCount(width, TileWidth);
    m_TilesY = TileCount(height, TileHeight);
    const quint64 count = quint64(m_TilesX) * m_TilesY;
    if (count > MaxTiles) throw LXImageTooLarge();

    m_Tiles.assign(count, LXTilePointer(new LXTile));
    m_Width = width;
    m_Height = height;
}

/// A tile with the color in its first columns and rows and 0 elsewhere.
template <class Pixel, int TileWidth, int TileHeight>
LXTilePointer LXImage<Pixel, TileWidth, TileHeight>::MakeCornerTile(Pixel color, int columns, int rows)
{
    LXTilePointer tile(new LXTile);
    const LXTileWriter<Pixel> writer(tile);
    for (int row = 0; row < rows; ++row) {
        std::fill_n(writer.Pixels() + row * TileWidth, columns, color);
    }
    return tile;
}

template <class Pixel, int TileWidth, int TileHeight>
void LXImage<Pixel, TileWidth, TileHeight>::Fill(Pixel color)
{
    if (IsNull()) return;

    // All tiles are made before the first slot changes, so that a failure leaves the image as it was.
    const int lastColumns = m_Width % TileWidth;
    const int lastRows = m_Height % TileHeight;
    const bool hasRight = lastColumns != 0 && color != Pixel();
    const bool hasBottom = lastRows != 0 && color != Pixel();
    const LXTilePointer inner = MakeCornerTile(color, TileWidth, TileHeight);
    const LXTilePointer right = hasRight ? MakeCornerTile(color, lastColumns, TileHeight) : inner;
    const LXTilePointer bottom = hasBottom ? MakeCornerTile(color, TileWidth, lastRows) : inner;
    const LXTilePointer corner =
        hasRight && hasBottom ? MakeCornerTile(color, lastColumns, lastRows) : (hasRight ? right : bottom);

    for (unsigned int row = 0; row < m_TilesY; ++row) {
        const bool isLastRow = row + 1 == m_TilesY;
        const auto first = m_Tiles.begin() + static_cast<std::ptrdiff_t>(row) * m_TilesX;
        std::fill(first, first + (m_TilesX - 1), isLastRow ? bottom : inner);
        *(first + (m_TilesX - 1)) = isLastRow ? corner : right;
    }
}

template <class Pixel, int TileWidth, int TileHeight>
Pixel LXImage<Pixel, TileWidth, TileHeight>::GetColor(int x, int y) const
{
    CheckInside(x, y, "LXImage::GetColor");
    return ReadTile(x / TileWidth, y / TileHeight).Pixels()[PixelIndex(x, y)];
}

template <class Pixel, int TileWidth, int TileHeight>
void LXImage<Pixel, TileWidth, TileHeight>::SetColor(int x, int y, Pixel color)
{
    CheckInside(x, y, "LXImage::SetColor");
    WriteTile(x / TileWidth, y / TileHeight).Pixels()[PixelIndex(x, y)] = color;
}

template <class Pixel, int TileWidth, int TileHeight>
LXImage<Pixel, TileWidth, TileHeight> LXImage<Pixel, TileWidth, TileHeight>::Copy(const QRect& rect) const
{
    const QRect part = rect & Rect();
    if (part.isEmpty() || part == Rect()) return *this;

    LXImage result(part.width(), part.height());
    BlendOn(*this, part, BlendMode::Source, result, result.Rect(), 1.0, false);
    result.m_Profile = m_Profile;
    result.m_DpiX = m_DpiX;
    result.m_DpiY = m_DpiY;
    result.m_ExifData = m_ExifData;
    return result;
}
