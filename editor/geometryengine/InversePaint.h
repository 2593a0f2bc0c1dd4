#pragma once

#include "EditorExport.h"

#include <QColor>

class QPainter;
class QPainterPath;

/// The inverse of a color, or black or white where the inverse would be about as bright as the color itself:
/// a line of it stands out on any picture. Alpha is 255.
ZK_EDITOR_EXPORT QRgb ContrastTo(QRgb ground);

/// Fills the path, each pixel with what contrasts to what was painted there before. The painter's render
/// hints and opacity hold, its brush doesn't. On devices whose pixels can't be read, as printers, the inverse
/// itself is drawn.
/// @param path  in the painter's logical coordinates
ZK_EDITOR_EXPORT void PaintInverse(QPainter* painter, const QPainterPath& path);
