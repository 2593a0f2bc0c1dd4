#pragma once

#include <QString>

class LXDocumentInterface;
class LexoCommand;
class LexoUndoStack;

namespace UndoLaw {
/// Empty when undo brings back everything that was before the last step of the stack, and redo everything
/// after it, also once the step's data has gone out into a file and come back each time; else what differs.
/// @param before  DocumentFixture::DescribeWhole() before the step
QString Broken(LXDocumentInterface* document, LexoUndoStack* stack, const LexoCommand* command,
               const QStringList& before);

/// Pushes the command and asks.
QString BrokenBy(LXDocumentInterface* document, LexoCommand* command);
} // namespace UndoLaw
