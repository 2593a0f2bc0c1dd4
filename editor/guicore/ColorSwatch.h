#pragma once

#include <QColor>
#include <QIcon>
#include <QRect>

class QPainter;

/// How a color is shown in a control. Main thread only.
namespace ColorSwatch {
/// Fills the rectangle with the color, over a checker that begins at its corner when the color is
/// translucent.
/// @param rect  in the painter's coordinates, so right() is the last column that is painted
void Paint(QPainter& painter, const QRect& rect, const QColor& color);

/// The same inside of a line that shows on the panel, and another one, faint, that shows on the color.
void PaintFramed(QPainter& painter, const QRect& rect, const QColor& color, const QColor& line);

/// The color in a thin gray line that shows on dark and on light ground, in device independent pixels, sharp
/// on the densest screen.
QIcon MakeIcon(const QColor& color, const QSize& size);
} // namespace ColorSwatch
