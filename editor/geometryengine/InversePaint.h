#pragma once

#include "EditorExport.h"

#include <QColor>

class QPainter;
class QPainterPath;
class QPen;

// Both functions draw each pixel with what contrasts to what was painted there before. The painter's render
// hints and opacity hold, its pen and its brush don't. On devices whose pixels can't be read, as printers,
// the inverse itself is drawn. Paths are in the painter's logical coordinates.

/// The inverse of a color, or black or white where the inverse would be about as bright as the color itself:
/// a line of it stands out on any picture. Alpha is 255.
ZK_EDITOR_EXPORT QRgb ContrastTo(QRgb ground);

ZK_EDITOR_EXPORT void FillInverse(QPainter* painter, const QPainterPath& path);

/// Takes of the pen what the line is like: width, dashes, caps, joins, and whether it is cosmetic. Costs as
/// much as the line is long, however large the area is that it crosses.
ZK_EDITOR_EXPORT void StrokeInverse(QPainter* painter, const QPainterPath& path, const QPen& pen);
