#pragma once

#include "history/CanvasState.h"
#include "history/ImageSizeCommandData.h"

#include <QColor>
#include <QTransform>

/// What a crop makes of a document.
struct CanvasCrop
{
    QTransform transform; ///< from document coordinates to the new canvas
    QSize size;           ///< of the new canvas
    bool isHiding = true; ///< what lies outside stays in the layers
    bool isResampled = false;
    QColor extension; ///< of canvas that is new; invalid for transparent
};

/// A document on another canvas, as functions on values. All throw std::bad_alloc for images that are too
/// large.
namespace CanvasTransform {
/// The transform that a crop really does: one that needs no resampling turns by a multiple of 90 degrees or
/// mirrors and shifts by whole pixels, the nearest to what was asked for.
QTransform Exact(const CanvasCrop& crop);

/// Whether the transform leaves all pixels of a canvas in their place.
bool IsIdle(const QTransform& transform, const QSize& canvas);

CanvasState Cropped(const CanvasState& before, const CanvasCrop& crop);

/// Everything scaled to the new size.
CanvasState Resized(const CanvasState& before, const QSize& size, ImageSizeCommandData::ResampleType type);
} // namespace CanvasTransform
