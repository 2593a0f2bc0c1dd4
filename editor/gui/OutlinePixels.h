#pragma once

#include "gui/CanvasPainter.h"

#include <QImage>
#include <QRegion>

/// The outline of a selection in a part of a viewport.
struct OutlinePixels
{
    QImage dashes; ///< of the part's size, premultiplied, transparent off the outline
    QRegion cells; ///< viewport pixels: the squares of 32 that the outline runs through
};

/// Draws a line of black and white dashes, one pixel wide, where the mask's coverage passes one half.
/// @param offset  the mask's top left, document pixels
/// @param part    viewport pixels
/// @param phase   0 to 7, by how much the dashes are shifted
/// The caller holds the selection's locker.
OutlinePixels DrawOutline(const LXImage32& mask, const QPoint& offset, const CanvasPlace& place,
                          const QRect& part, int phase);

/// The cells of the same outline, without a drawing.
QRegion OutlineCells(const LXImage32& mask, const QPoint& offset, const CanvasPlace& place,
                     const QRect& part);
