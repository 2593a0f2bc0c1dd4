#include "history/MaskGray.h"

#include <map>

namespace {
constexpr int TilePixels = 128 * 128;

LXTilePointer GrayTile(const LXTile& mask)
{
    LXTilePointer gray(new LXTile);
    const LXTileWriter<LXRGBA32i> writer(gray);
    const LXTileReader<LXRGBA32i> reader(mask);
    for (int i = 0; i < TilePixels; ++i) {
        constexpr quint32 toEachColor = 0x010101;
        const auto value = static_cast<quint32>(reader.Pixels()[i].Alpha());
        writer.Pixels()[i] = LXRGBA32i(0xFF000000 | value * toEachColor);
    }
    return gray;
}
} // namespace

LXImage32 MaskGray::FromMask(const LXImage32& mask)
{
    LXImage32 gray = mask;
    std::map<const LXTile*, LXTilePointer> made; // a tile that is shared stays shared
    for (LXTilePointer& tile : gray.m_Tiles) {
        LXTilePointer& grayTile = made[tile.data()];
        if (!grayTile) grayTile = GrayTile(*tile);
        tile = grayTile;
    }
    return gray;
}

LXImage32 MaskGray::ToMask(const LXImage32& gray, bool reveals)
{
    LXImage32 mask = Ground(gray.Width(), gray.Height(), reveals);
    BlendOn(gray, gray.Rect(), BlendMode::GrayToMask, mask, mask.Rect(), 1.0, false);
    return mask;
}

LXImage32 MaskGray::Ground(int width, int height, bool reveals)
{
    LXImage32 ground(width, height);
    if (reveals) ground.Fill(LXRGBA32i(0xFF000000));
    return ground;
}
