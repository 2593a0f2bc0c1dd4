#pragma once

#include <QColor>
#include <QRect>

class QPainter;

/// Draws a line of one device independent pixel inside the edges of the rectangle. Filled, because a pen of
/// the same width lies half outside on dense screens and leaves a gap at two sides.
void PaintLineFrame(QPainter& painter, const QRect& rect, const QColor& color);
