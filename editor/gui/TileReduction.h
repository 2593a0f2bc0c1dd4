#pragma once

#include "image/LXImage.h"

#include <QImage>
#include <QRect>

#include <vector>

/// A part of a picture that is to be scaled down, and where it goes.
struct Reduction
{
    QRect levelRect; ///< what to write, pixels of the level
    QImage* image;   ///< Format_ARGB32_Premultiplied
    QPoint at;       ///< where levelRect's top left goes in it
};

/// Writes a part of a picture, scaled down to 1 / 2^level, into a premultiplied image: each pixel is the
/// mean of its box, weighted by alpha; boxes at the picture's right and bottom edge have fewer pixels.
/// @param levelRect  what to write, pixels of the level
/// @param image      Format_ARGB32_Premultiplied
/// @param at         where levelRect's top left goes in it
/// @param level      0 to 7, so that a box never crosses a tile of the picture
/// Any thread; the caller holds the picture's read locker.
void ReduceInto(const LXImage32& picture, int level, const QRect& levelRect, QImage& image, const QPoint& at);

/// The same for several parts, which keep all threads busy even where each of them is small. No two write the
/// same pixels.
void ReduceInto(const LXImage32& picture, int level, const std::vector<Reduction>& parts);
