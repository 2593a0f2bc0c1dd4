#pragma once

#include <QBrush>
#include <QColor>

/// A pattern of squares that tells transparency. Main thread only.
/// @param square  the side of a square in device independent pixels
QBrush MakeChecker(int square, const QColor& light, const QColor& dark);

/// The pattern under small pictures and swatches, the same in every look.
QBrush SmallChecker();
