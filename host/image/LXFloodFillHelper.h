#pragma once

#include "ZKHostExport.h"

#include "image/LXImageFwd.h"
#include "image/LXRGBA32i.h"

class QPoint;
class QRect;

/// Regions of similar color. A pixel of `src` is similar when each channel differs from the pixel at `seed`
/// by at most that channel's byte of `tolerance`; 255 ignores the channel. Pixels of `mask` in the region
/// become `fill`; only pixels that both images have count.
///
/// Coordinates are image pixels. False, with `mask` and `bounds` untouched, when the seed lies outside either
/// image; else `bounds` (may be null) gets the rectangle of the pixels written. Any thread. Throws what
/// LXTileManager throws; `mask` is then partly written.
class ZK_HOST_EXPORT LXFloodFillHelper
{
public:
    /// The similar pixels that hang together with the seed by their sides.
    static bool FloodFill(const LXImage32& src, LXImage32& mask, const QPoint& seed, LXRGBA32i tolerance,
                          LXRGBA32i fill, QRect* bounds);

    /// All similar pixels.
    static bool ColorRangeFill(const LXImage32& src, LXImage32& mask, const QPoint& seed, LXRGBA32i tolerance,
                               LXRGBA32i fill, QRect* bounds);
};
