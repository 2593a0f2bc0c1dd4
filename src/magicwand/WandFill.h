#pragma once

#include "image/LXImage.h"

#include <QPoint>
#include <QRect>
#include <QSize>

/// What a click of the magic wand compares.
struct WandFillData
{
    LXImage32 picture;      ///< the pixels compared; null for none
    QRect geometry;         ///< where they lie, in document pixels
    QSize documentSize;     ///< of the canvas
    QPoint seed;            ///< the clicked pixel of the document
    int tolerance = 0;      ///< 0 to 255, for each of the four channels
    bool contiguous = true; ///< only what hangs together with the clicked pixel
};

/// What a click selects: coverage 255 in the alpha byte, cut to its pixels.
struct WandFillResult
{
    LXImage32 mask; ///< empty when nothing was found
    QPoint offset;  ///< where its top left lies, in document pixels
};

/// Finds the pixels that are like the clicked one. The canvas bounds them; outside of the picture it is
/// transparent. A seed outside the canvas finds nothing. Any thread; throws what images throw.
WandFillResult FillByWand(const WandFillData& data);
