#pragma once

#include <QPainterPath>

#include <memory>

class LXDocumentInterface;
class LexoCommand;
class QPoint;

/// The commands behind the selection menu, without their texts. Each reads the selection as it is now. They
/// throw what images throw. Main thread only.
namespace SelectionCommands {
/// The path becomes the selection; an empty path selects nothing.
std::unique_ptr<LexoCommand> MakeReplace(LXDocumentInterface* document, const QPainterPath& path);

/// What the selection leaves of the canvas becomes the selection.
std::unique_ptr<LexoCommand> MakeInvert(LXDocumentInterface* document);

/// Moves the selection, and nothing else.
std::unique_ptr<LexoCommand> MakeMove(LXDocumentInterface* document, const QPoint& delta);
} // namespace SelectionCommands
