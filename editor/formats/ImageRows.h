#pragma once

#include "image/LXImage.h"

#include <optional>
#include <vector>

/// Fills a new image row by row, keeping the tiles of one band pinned. Blank parts cost no tile. The image
/// has to be as its constructor made it, and to outlive the writer. Any thread.
class ImageRowWriter
{
public:
    explicit ImageRowWriter(LXImage32& image) : m_Image(image) {}

    /// @param row  the image's width of pixels
    void Put(int y, const LXRGBA32i* row);
    /// What Put() left there.
    void Get(int y, LXRGBA32i* row);

private:
    void EnterBandOf(int y);

    LXImage32& m_Image;
    int m_Band = -1;
    std::vector<std::optional<LXTileWriter<LXRGBA32i>>> m_Tiles; ///< of the band; none where all is blank
};

/// Reads an image row by row, keeping the tiles of one band pinned. The image has to outlive the reader.
/// Any thread.
class ImageRowReader
{
public:
    explicit ImageRowReader(const LXImage32& image) : m_Image(image) {}

    /// @param row  room for the image's width of pixels
    void Get(int y, LXRGBA32i* row);

private:
    const LXImage32& m_Image;
    int m_Band = -1;
    std::vector<LXTileReader<LXRGBA32i>> m_Tiles;
};
