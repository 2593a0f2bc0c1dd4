#pragma once

#include "image/LXImage.h"

#include <QImage>
#include <QSize>

#include <vector>

/// Colors that are looked for in a picture. A pixel matches when one of the colors differs from it by no more
/// than the tolerance in each of red, green, blue and alpha. Any thread.
struct ColorRange
{
    std::vector<LXRGBA32i> colors;
    int tolerance = 0; ///< 0 to 255

    /// False without colors.
    bool Matches(LXRGBA32i pixel) const;
};

/// Coverage 255 where the picture matches, 0 elsewhere; of the picture's size. Throws std::bad_alloc.
LXImage32 MakeColorRangeMask(const LXImage32& picture, const ColorRange& range);

/// The mask made small, white on black: each pixel stands for the one picture pixel in its middle.
/// @param bounds  what the preview fits into with the picture's proportions; a picture that is smaller isn't
/// enlarged. A null picture gives a null image.
QImage MakeColorRangePreview(const LXImage32& picture, const ColorRange& range, const QSize& bounds);
