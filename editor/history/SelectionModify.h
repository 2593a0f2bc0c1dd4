#pragma once

#include "history/SelectionCombine.h"

class LexoCommand;
class LXDocumentInterface;

/// Selections made of the present one: larger, smaller, its border, softer, rounder.
namespace SelectionModify {
enum class Kind
{
    Grow,
    Shrink,
    Border,
    Feather,
    Smooth,
};

/// The largest radius, in pixels; the smallest is 1.
int MaxRadius(Kind kind);

/// What MaskModify makes of it. It grows over the canvas alone: pixels outside are kept only where the
/// selection had room for them. Trimmed as all selections are; empty when nothing is left. Any thread.
PlacedMask Modified(const PlacedMask& selection, const QRect& canvas, Kind kind, int radius);

/// One step from the selection `before` to the one that the document has by now. Main thread.
LexoCommand* StepFrom(const PlacedMask& before, LXDocumentInterface* document, const QString& text);

/// The document's selection of this moment.
PlacedMask Of(LXDocumentInterface* document);
} // namespace SelectionModify
