#pragma once

#include <memory>

class LXDocumentInterface;
class LexoCommand;

/// Takes the selected pixels out of a layer or a mask.
namespace SelectionDeletion {
/// The command, without its text; its first redo deletes. A selection that misses the pixels gives a command
/// that changes nothing. Null without such a layer or mask. Takes the lockers for the moment of reading, and
/// throws what images throw. Main thread only.
std::unique_ptr<LexoCommand> MakeCommand(LXDocumentInterface* document, unsigned int id, bool fromMask);
} // namespace SelectionDeletion
