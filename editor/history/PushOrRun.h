#pragma once

#include <functional>
#include <memory>

class LexoCommand;
class LexoUndoStack;
class QString;

/// Pushes the command; without a history runs it and drops it, so that the change isn't lost. What the
/// command throws goes on to the caller. Null is harmless. Main thread only.
void PushOrRun(LexoUndoStack* history, std::unique_ptr<LexoCommand> command);

/// Runs `pushes`, and what they push is one step with this text. When they throw, what they pushed before is
/// taken back, and the exception goes on. Without a history just runs them. Main thread only.
void PushAsOneStep(LexoUndoStack* history, const QString& text, const std::function<void()>& pushes);
