#pragma once

#include <QRect>
#include <QSize>

/// Where the kept images of a paint command lie. Callers keep the whole target, or only what changed, and
/// hand over no position; the size tells. All rectangles in document pixels.
namespace PaintPlacement {
/// The first of before ∩ after, before, after, before ∪ after that has the image's size; null for an empty
/// image and for one that fits nowhere.
QRect OfUndoImage(const QSize& image, const QRect& before, const QRect& after);

/// The first of after, before ∩ after, before ∪ after, before that has the image's size; null likewise.
QRect OfRedoImage(const QSize& image, const QRect& before, const QRect& after);
} // namespace PaintPlacement
