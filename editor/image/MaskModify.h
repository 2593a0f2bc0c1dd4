#pragma once

#include "image/LXImage.h"

#include <QRect>

/// New masks made of the neighbours of each pixel. Any thread.
///
/// v(q) is the mask's value, its alpha, at pixel q, and 0 outside the mask: its edge is an edge like any
/// other. D(p) are the pixels whose middles lie within the radius of that of p: all q with |q - p|² <=
/// radius². Each function answers a mask of the size of `area`, which is counted in pixels from the mask's
/// top left and may reach outside of it. Colors are 0. What image memory throws comes through.
namespace MaskModify {
constexpr int MaxRadius = 250;
constexpr int MaxSmoothRadius = 100;

/// The largest v(q) in D(p). Radius 0 to MaxRadius.
LXImage32 Grown(const LXImage32& mask, const QRect& area, int radius);

/// The smallest v(q) in D(p). Radius 0 to MaxRadius.
LXImage32 Shrunk(const LXImage32& mask, const QRect& area, int radius);

/// What lies between the two: the largest less the smallest v(q) in D(p). Radius 0 to MaxRadius.
LXImage32 Border(const LXImage32& mask, const QRect& area, int radius);

/// The mean of the square from p - radius to p + radius, taken three times over, rounded once at the end:
/// a bell that reaches three radii far, with a standard deviation of sqrt(radius * (radius + 1)).
/// Radius 0 to MaxRadius.
LXImage32 Feathered(const LXImage32& mask, const QRect& area, int radius);

/// The middle one of the v(q) in D(p), sorted; there is an odd number of them. Corners get round and specks
/// go while straight edges stay. Radius 0 to MaxSmoothRadius.
LXImage32 Smoothed(const LXImage32& mask, const QRect& area, int radius);
} // namespace MaskModify
