#pragma once

union LXRGBA32i;

template <class Pixel, int TileWidth, int TileHeight>
class LXImage;

/// The image of layers, masks, selections and floating pieces: what signatures mean by an image.
using LXImage32 = LXImage<LXRGBA32i, 128, 128>;
