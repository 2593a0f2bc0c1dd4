#pragma once

#include "history/SelectionCombine.h"

class LXDocumentInterface;

/// What the selection commands do to a document's selection. Main thread.
namespace SelectionExecution {
void Combine(LXDocumentInterface* document, const PlacedMask& added, SelectionCommandData::LogicalOp op);

/// Puts the selection's top left at the point. Unlike LXDocumentInterface::MoveToSelection it asks nobody:
/// the history has let floating pieces be put down before a command runs.
void MoveTo(LXDocumentInterface* document, const QPoint& topLeft);
} // namespace SelectionExecution
