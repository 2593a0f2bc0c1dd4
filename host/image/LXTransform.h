#pragma once

#include "ZKHostExport.h"

#include "image/LXImageFwd.h"

class QRect;
class QTransform;

// The part `clip` of `dst` (dst pixels; empty means all of it) becomes the picture that `transform` makes of
// `src`: it maps src coordinates to dst coordinates, pixel (x, y) covering x to x + 1. What lies outside the
// mapped source becomes transparent; pixels outside the clip stay. A perspective that puts a part of the
// source behind the eye shows only what lies before it.
//
// Pixels are taken at their middles and colors weighted by alpha. Without a fraction (the identity,
// translations by whole pixels, multiples of 90 degrees, mirrors) all three copy bytes. The source's border
// doesn't fade: its last pixels reach up to the mapped edge, and only target pixels that the edge crosses
// become translucent.
//
// False, with `dst` untouched, for a null image and for a transform that is not finite or that flattens the
// source. All throw std::bad_alloc when no tile is left, and LXTMSwapError or LXTMSwapFileError when the disk
// for temporary files fails, with `dst` partly written. `src` may be `dst`. Any thread, as long as nobody
// else touches `dst`.

/// The four nearest pixels are mixed; where the picture shrinks, all pixels under the target pixel are
/// averaged.
ZK_HOST_EXPORT bool TransformImage(const LXImage32& src, const QTransform& transform, LXImage32& dst,
                                   const QRect& clip);

/// Sixteen pixels are mixed by a cubic curve through the pixels' values, sharper than TransformImage; where
/// the picture shrinks, the curve widens with the target pixel.
ZK_HOST_EXPORT bool BicubicTransformImage(const LXImage32& src, const QTransform& transform, LXImage32& dst,
                                          const QRect& clip);

/// Each target pixel takes the bytes of the source pixel that its middle falls into.
ZK_HOST_EXPORT bool NearestNeighbourTransformImage(const LXImage32& src, const QTransform& transform,
                                                   LXImage32& dst, const QRect& clip);
