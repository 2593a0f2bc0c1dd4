#include "formats/ImageRows.h"

#include <algorithm>

namespace {
constexpr int TileSide = 128;

bool IsBlank(const LXRGBA32i* pixels, int count)
{
    return std::all_of(pixels, pixels + count, [](LXRGBA32i pixel) { return pixel.value == 0; });
}

/// Calls with each tile column, the first pixel of the row there, and how many pixels of the row it holds.
template <typename Pixel, typename Action>
void ForEachPart(int width, Pixel* row, Action action)
{
    for (int x = 0, column = 0; x < width; x += TileSide, ++column) {
        action(column, row + x, std::min(TileSide, width - x));
    }
}

std::ptrdiff_t RowStart(int y)
{
    return static_cast<std::ptrdiff_t>(y % TileSide) * TileSide;
}
} // namespace

void ImageRowWriter::EnterBandOf(int y)
{
    if (m_Band == y / TileSide) return;
    m_Band = y / TileSide;
    m_Tiles.clear();
    m_Tiles.resize(m_Image.m_TilesX);
    for (int column = 0; column < static_cast<int>(m_Image.m_TilesX); ++column) {
        // Shared tiles are the blank one that a new image has everywhere.
        if (!m_Image.TileAt(column, m_Band)->IsShared()) {
            m_Tiles[static_cast<size_t>(column)].emplace(m_Image.TileAt(column, m_Band));
        }
    }
}

void ImageRowWriter::Put(int y, const LXRGBA32i* row)
{
    EnterBandOf(y);
    ForEachPart(m_Image.Width(), row, [this, y](int column, const LXRGBA32i* part, int count) {
        auto& tile = m_Tiles[static_cast<size_t>(column)];
        if (!tile) {
            if (IsBlank(part, count)) return;
            tile.emplace(m_Image.TileAt(column, m_Band));
        }
        std::copy_n(part, count, tile->Pixels() + RowStart(y));
    });
}

void ImageRowWriter::Get(int y, LXRGBA32i* row)
{
    EnterBandOf(y);
    ForEachPart(m_Image.Width(), row, [this, y](int column, LXRGBA32i* part, int count) {
        const auto& tile = m_Tiles[static_cast<size_t>(column)];
        if (tile) {
            std::copy_n(tile->Pixels() + RowStart(y), count, part);
        } else {
            std::fill_n(part, count, LXRGBA32i());
        }
    });
}

void ImageRowReader::Get(int y, LXRGBA32i* row)
{
    if (m_Band != y / TileSide) {
        m_Band = y / TileSide;
        m_Tiles.clear();
        for (int column = 0; column < static_cast<int>(m_Image.m_TilesX); ++column) {
            m_Tiles.push_back(m_Image.ReadTile(column, m_Band));
        }
    }
    ForEachPart(m_Image.Width(), row, [this, y](int column, LXRGBA32i* part, int count) {
        std::copy_n(m_Tiles[static_cast<size_t>(column)].Pixels() + RowStart(y), count, part);
    });
}
