#pragma once

#include <memory>

class LexoCommand;
class LexoUndoStack;

/// Pushes the command; without a history runs it and drops it, so that the change isn't lost. What the
/// command throws goes on to the caller. Null is harmless. Main thread only.
void PushOrRun(LexoUndoStack* history, std::unique_ptr<LexoCommand> command);
