#pragma once

#include "image/LXImage.h"

#include <QRect>

#include <random>
#include <vector>

/// A plain picture for the slow twins: a vector of pixels, row by row.
struct PlainImage
{
    PlainImage() = default;

    PlainImage(int w, int h, LXRGBA32i color = LXRGBA32i())
        : width(w), height(h), pixels(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), color)
    {}

    bool Contains(int x, int y) const { return x >= 0 && y >= 0 && x < width && y < height; }

    LXRGBA32i& At(int x, int y) { return pixels[Index(x, y)]; }

    LXRGBA32i At(int x, int y) const { return pixels[Index(x, y)]; }

    std::size_t Index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }

    int width = 0;
    int height = 0;
    std::vector<LXRGBA32i> pixels;
};

namespace TestImages {
LXImage32 ToTiles(const PlainImage& image);
PlainImage ToPlain(const LXImage32& image);

/// Random pixels in which 0 and 255 are frequent in every channel, since these have rules of their own.
PlainImage Random(int width, int height, std::mt19937& random);

/// Where the two differ first, in words; empty when they are equal.
QString Difference(const PlainImage& actual, const PlainImage& expected);
} // namespace TestImages
