#pragma once

#include "common/PaintCommands.h"
#include "image/LXImage.h"

#include <QRect>

/// Where a floating piece is laid down: a layer's pixels or its mask, as they are at that moment. Rectangles
/// are document pixels.
struct PieceGround
{
    unsigned int layerId = 0;
    PaintTarget target = PaintTarget::Layer;
    LXImage32 image;
    QRect geometry;      ///< of the image
    LXRGBA32i newGround; ///< what the target holds where it grows
};

/// Lays the piece over the ground, as far as it lies inside the canvas; the target may grow for it. A mask's
/// piece is gray.
/// @param pieceRect  where the piece lies, as large as the piece
PaintChange PieceLaidDown(const PieceGround& ground, const LXImage32& piece, const QRect& pieceRect,
                          const QRect& canvas);

/// Puts the pixels in place of those in a part of the ground.
/// @param rect  inside the ground's geometry, as large as the pixels; empty for none
PaintChange PixelsReplaced(const PieceGround& ground, const LXImage32& pixels, const QRect& rect);

/// The same, seen afterwards: the ground holds the result, `before` is what was in the part.
PaintChange PixelsWereReplaced(const PieceGround& ground, const LXImage32& before, const QRect& rect);

/// What the ground holds in the part of the document; empty where it doesn't reach.
LXImage32 PartOf(const PieceGround& ground, const QRect& rect);
