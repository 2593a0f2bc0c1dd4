#pragma once

#include "image/LXRGBA32i.h"

/// A part of a source in rows that follow each other. Pixels without weight are read too, up to
/// WindowKernels::MostTaps columns and rows beyond the part; they must be there.
struct WindowBox
{
    const LXRGBA32i* pixels;
    int stride;
};

/// A number that goes on evenly from target pixel to target pixel.
struct EvenSteps
{
    double start;
    double step;
};

/// A row of target pixels on its way through a WindowBox: the middle of a pixel lies at (x / z, y / z),
/// counted from the box's top left. Its steps to the right and down, times z², are as wide as told, in
/// source pixels along each axis; those to the right don't change along the row.
struct WindowRow
{
    bool isAffine; ///< z is 1, and no step changes
    EvenSteps x;
    EvenSteps y;
    EvenSteps z;
    double xRight;
    double yRight;
    EvenSteps xDown;
    EvenSteps yDown;
    int tapsAcross; ///< that may have weight, up to MostTaps
    int tapsDown;
    int count;
};

/// Mixes what lies under a window around each target pixel's middle, colors weighted by alpha, in float:
/// within one level of the exact result. The window is as wide as the target pixel, but at least one source
/// pixel.
namespace WindowKernels {
constexpr int MostTaps = 8;

/// By how much of the window a source pixel covers.
void MixLinear(const WindowBox& box, const WindowRow& row, LXRGBA32i* pixels);
/// By the Catmull-Rom curve, stretched by the window's width.
void MixCubic(const WindowBox& box, const WindowRow& row, LXRGBA32i* pixels);
} // namespace WindowKernels
