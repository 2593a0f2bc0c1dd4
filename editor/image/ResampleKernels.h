#pragma once

#include "image/LXRGBA32i.h"

/// A part of a source in rows that follow each other.
struct SourceBox
{
    const LXRGBA32i* pixels;
    int stride;
};

/// A row of target pixels on its way through a SourceBox: pixel i lies at (x + i stepX, y + i stepY), counted
/// from the middle of the box's first pixel.
struct SourceLine
{
    float x;
    float y;
    float stepX;
    float stepY;
    int count;
};

/// Mixes source pixels, colors weighted by alpha, in float: within one level of the exact result. All pixels
/// that the line needs lie inside the box.
namespace ResampleKernels {
/// The four nearest.
void LinearRow(const SourceBox& box, const SourceLine& line, LXRGBA32i* target);
/// The sixteen nearest, by the Catmull-Rom curve.
void CubicRow(const SourceBox& box, const SourceLine& line, LXRGBA32i* target);
} // namespace ResampleKernels
