#pragma once

#include <QRect>
#include <QString>

/// Three by three cells in reading order, 0 top left to 8 bottom right, as places in a rectangle.
namespace NineCells {
constexpr int Side = 3;
constexpr int Count = 9;
constexpr int Middle = 4;

/// The cells fill the area without gaps; it is at least 3 x 3.
QRect RectOf(int cell, const QRect& area);

/// -1 outside the area.
int At(const QPoint& point, const QRect& area);

/// Where an arrow key leads from the cell: to the next one, or nowhere at the border. -1 for another key.
int Next(int cell, int key);

/// "Top left", for people.
QString NameOf(int cell);
} // namespace NineCells
