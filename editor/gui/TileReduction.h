#pragma once

#include "image/LXImage.h"

#include <QImage>
#include <QRect>

/// Writes a part of a picture, scaled down to 1 / 2^level, into a premultiplied image: each pixel is the
/// mean of its box, weighted by alpha; boxes at the picture's right and bottom edge have fewer pixels.
/// @param levelRect  what to write, pixels of the level
/// @param image      Format_ARGB32_Premultiplied
/// @param at         where levelRect's top left goes in it
/// @param level      0 to 7, so that a box never crosses a tile of the picture
/// Any thread; the caller holds the picture's read locker.
void ReduceInto(const LXImage32& picture, int level, const QRect& levelRect, QImage& image, const QPoint& at);
