#pragma once

#include "gui/ReusedImage.h"
#include "image/LXImage.h"
#include "image/ZKCMSTransform.h"

#include <QCache>
#include <QImage>
#include <QRect>

#include <memory>
#include <vector>

/// Keeps a picture scaled down by powers of two, in tiles that the screen can show: made when first asked
/// for, made anew only where the picture has changed, and dropped, the longest unused first, beyond a budget.
///
/// Level n has one pixel for each box of 2^n x 2^n pixels of the picture (fewer at its right and bottom
/// edge): their mean, weighted by alpha. Level 0 is the picture itself. Main thread only.
class ScaledTileCache
{
public:
    static constexpr int TileSize = 128;
    static constexpr int MaxLevel = 7;

    /// @param budget  how many bytes of tiles are kept
    explicit ScaledTileCache(qint64 budget);

    /// What was made of this part of the picture is stale; picture coordinates.
    void Invalidate(const QRect& rect);
    void Clear();

    /// From the picture's colors to those of the screen; empty at first. What was made before is dropped.
    void SetColors(const ZKCMSTransform& toScreen);

    /// Size of a level of a picture of this size.
    static QSize LevelSize(const QSize& size, int level);

    /// The part of a level, premultiplied.
    /// @param picture    the present pixels; the caller holds their read locker
    /// @param levelRect  inside the level, pixels of the level
    QImage Compose(const LXImage32& picture, int level, const QRect& levelRect);

    /// How many pixels of levels were made from the picture since the cache exists.
    qint64 MadePixels() const { return m_MadePixels; }

private:
    struct Key
    {
        int level;
        int column;
        int row;

        bool operator==(const Key& other) const
        {
            return level == other.level && column == other.column && row == other.row;
        }

        friend uint qHash(const Key& key, uint seed = 0)
        {
            return ::qHash(quint64(key.level) << 58 ^ quint64(uint(key.column)) << 29 ^ uint(key.row), seed);
        }
    };

    struct Tile
    {
        QImage image;
        QRect stale; ///< tile coordinates; empty when nothing is
    };

    /// A tile that was taken out of the cache to be made anew.
    struct Stale
    {
        Key key;
        std::unique_ptr<Tile> tile;
    };

    std::unique_ptr<Tile> Take(const LXImage32& picture, const Key& key);
    void Renew(const LXImage32& picture, int level, const std::vector<Stale>& stale);

    QCache<Key, Tile> m_Tiles; ///< cost in kilobytes
    ReusedImage m_Part;
    ZKCMSTransform m_ToScreen;
    qint64 m_MadePixels = 0;
};
