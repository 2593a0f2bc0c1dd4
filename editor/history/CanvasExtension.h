#pragma once

#include "history/CanvasState.h"

#include <QColor>

class QTransform;

/// The color of canvas that is new after a crop.
namespace CanvasExtension {
/// The bottom raster layer grows over the canvas that the old one doesn't reach and gets the color there,
/// below what it has there already. An invalid or transparent color changes nothing.
/// @param state      the document on its new canvas
/// @param oldCanvas  and how it came there
void Fill(CanvasState& state, const QSize& oldCanvas, const QTransform& transform, const QColor& color);
} // namespace CanvasExtension
