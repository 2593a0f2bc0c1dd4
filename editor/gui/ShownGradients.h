#pragma once

#include <QLinearGradient>
#include <QRect>

#include <initializer_list>

class QPainter;

/// Fills the place with gradients, one above the other, in the colors of the screen: a program's own colors
/// look the same in a gradient as in a color well. Main thread only.
/// @param layers  in the coordinates of the painter, the lowest first; the lowest one is opaque
void PaintShownGradients(QPainter& painter, const QRect& place,
                         std::initializer_list<QLinearGradient> layers);
