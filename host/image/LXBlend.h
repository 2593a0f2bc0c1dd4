#pragma once

#include "ZKHostExport.h"

#include "image/LXImageFwd.h"

class QBrush;
class QPainterPath;
class QPoint;
class QRect;

// Rectangles and points are image pixels; QRect has inclusive right and bottom. All functions run on any
// thread, as long as nobody else touches the target. A source or mask may be the target itself or share its
// tiles: it is read as it was before the call. All throw std::bad_alloc when no tile is left, and
// LXTMSwapError or LXTMSwapFileError when the disk for temporary files fails, with the target partly written,
// and std::invalid_argument for a mode that BlendMode.h doesn't name.

/// Blends `srcRect` of `src` on `dstRect` of `dst` in a mode of BlendMode.h: pixel k of the one goes to pixel
/// k of the other. Both rectangles are clipped together, against both images and to the smaller size; pixels
/// without a source pixel stay. An empty rectangle writes nothing.
/// @param opacity    0 to 1; what lies outside is brought to the nearer end.
/// @param keepAlpha  the target keeps its alpha ("transparency is locked"); without effect in the modes
///                   3, 5, 6, 8, 64 and 92.
ZK_HOST_EXPORT void BlendOn(const LXImage32& src, const QRect& srcRect, unsigned int mode, LXImage32& dst,
                            const QRect& dstRect, double opacity, bool keepAlpha);

/// The same with the source's strength multiplied by the alpha of `mask`: pixel k of `maskRect` for pixel k
/// of `srcRect`. Outside the mask image or rectangle the strength is 0, and an empty `maskRect` writes
/// nothing. Either flag makes the target keep its alpha.
ZK_HOST_EXPORT void BlendMaskOn(const LXImage32& src, const QRect& srcRect, unsigned int mode, LXImage32& dst,
                                const QRect& dstRect, double opacity, const LXImage32& mask,
                                const QRect& maskRect, bool keepAlpha, bool keepTargetAlpha);

/// BlendOn of the whole of `src` with its top left at `position` of `dst`.
ZK_HOST_EXPORT void DrawImage(LXImage32& dst, int mode, const QPoint& position, const LXImage32& src,
                              double opacity, bool keepAlpha);

/// Fills the inside of `path` (image coordinates, pixel (x, y) covering x to x + 1) with the brush. Textures
/// and gradients start at the image's origin. Pixels outside the path stay.
///
/// In the modes 3 and 5 the edge is antialiased: mode 3 mixes by coverage, mode 5 gives every touched pixel
/// the brush's color and alpha = brush alpha x its own. In all others a pixel belongs to the path that holds
/// its middle, so that paths with a common edge meet without a seam.
ZK_HOST_EXPORT void FillPath(LXImage32& image, int mode, const QPainterPath& path, const QBrush& brush);

/// The part of `image` inside `rect`, with profile, resolution and metadata. Unlike LXImage::Copy, an empty
/// intersection gives an empty image.
ZK_HOST_EXPORT LXImage32 CopyPart(const LXImage32& image, const QRect& rect);
