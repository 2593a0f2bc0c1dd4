#pragma once

#include <QString>

class LexoCommand;
class LXDocumentInterface;

/// The undoable changes of the panels of paths and samples, with their texts, ready to push. With a bad row
/// redo and undo do nothing. Values before are read here. Main thread.
namespace PathCommands {
LexoCommand* Add(LXDocumentInterface* document, int row, const QString& name);
LexoCommand* Remove(LXDocumentInterface* document, int row);
/// The path stands at the row `to` afterwards.
LexoCommand* Move(LXDocumentInterface* document, int from, int to);
LexoCommand* Rename(LXDocumentInterface* document, int row, const QString& name);
LexoCommand* SetVisible(LXDocumentInterface* document, int row, bool visible);

LexoCommand* RemoveSample(LXDocumentInterface* document, int row);
LexoCommand* ClearSamples(LXDocumentInterface* document);
} // namespace PathCommands
