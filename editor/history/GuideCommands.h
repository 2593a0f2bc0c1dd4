#pragma once

#include "document/LXGuide.h"

class LexoCommand;
class LXDocumentInterface;

/// The undoable changes of a document's guides, with their texts, ready to push. Main thread.
namespace GuideCommands {
/// The new guide is the last one.
LexoCommand* Add(LXDocumentInterface* document, const LXGuide& guide);
/// Null for an index that isn't there.
LexoCommand* Move(LXDocumentInterface* document, int index, double position);
/// Null when there are no guides.
LexoCommand* Clear(LXDocumentInterface* document);
} // namespace GuideCommands
