#pragma once

#include "history/SelectionCommandData.h"
#include "image/LXImage.h"

#include <QPainterPath>
#include <QPoint>
#include <QRect>

/// Coverage with its place; an empty mask is no coverage at all.
struct PlacedMask
{
    LXImage32 mask;
    QPoint offset; ///< top left in document pixels

    QRect Rect() const { return mask.Rect().translated(offset); }
};

namespace SelectionCombine {
/// Both combined, trimmed to the pixels that have coverage; empty if none has. Colors are 0. Any thread.
PlacedMask Combined(const PlacedMask& selection, const PlacedMask& added, SelectionCommandData::LogicalOp op);

/// The inside of a path in document pixels, antialiased, where it lies on the canvas.
PlacedMask MaskOfPath(const QPainterPath& path, const QRect& canvas);
} // namespace SelectionCombine
