#pragma once

#include "image/LXRGBA32i.h"

/// What TileMap runs over single pixels. Each holds the pinned pixels of the tile at hand and writes the
/// pixel of the index that it is given, and no other.

/// Makes pixels opaque; their colors stay.
struct CleanupAlpha
{
    LXRGBA32i* pixels;

    void operator()(int index) const { pixels[index].bytes[3] = 255; }
};

/// Writes a color; the pixels' alpha stays.
struct FillColorWithoutTransparency
{
    LXRGBA32i* pixels;
    quint8 blue;
    quint8 green;
    quint8 red;

    void operator()(int index) const
    {
        quint8* bytes = pixels[index].bytes;
        bytes[0] = blue;
        bytes[1] = green;
        bytes[2] = red;
    }
};
