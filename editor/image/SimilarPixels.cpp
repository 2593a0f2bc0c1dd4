#include "image/SimilarPixels.h"

#include <cstdlib>

SimilarPixels::SimilarPixels(const LXImage32& image, const QPoint& seed, LXRGBA32i tolerance) : m_Image(image)
{
    const LXRGBA32i color = image.GetColor(seed.x(), seed.y());
    for (int channel = 0; channel < 4; ++channel) {
        m_Seed[channel] = color.bytes[channel];
        m_Tolerance[channel] = tolerance.bytes[channel];
    }
}

const TileBits& SimilarPixels::Of(int column, int row)
{
    const LXTilePointer& tile = m_Image.TileAt(column, row);
    if (tile != m_LastTile) {
        m_LastBits = Compare(m_Image.ReadTile(column, row).Pixels());
        m_LastTile = tile;
    }
    return m_LastBits;
}

TileBits SimilarPixels::Compare(const LXRGBA32i* pixels) const
{
    constexpr int wordBits = 64;
    const auto isNear = [this](LXRGBA32i pixel, int channel) {
        return std::abs(int{pixel.bytes[channel]} - m_Seed[channel]) <= m_Tolerance[channel];
    };
    TileBits bits;
    for (RowBits& row : bits.rows) {
        for (int first = 0; first < TileWalk::TileSide; first += wordBits) {
            quint64 word = 0;
            for (int x = 0; x < wordBits; ++x, ++pixels) {
                const bool isSimilar =
                    isNear(*pixels, 0) & isNear(*pixels, 1) & isNear(*pixels, 2) & isNear(*pixels, 3);
                word |= quint64(isSimilar) << x;
            }
            row |= RowBits(word) << first;
        }
    }
    return bits;
}
