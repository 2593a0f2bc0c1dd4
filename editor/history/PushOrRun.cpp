#include "history/PushOrRun.h"

#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"

void PushOrRun(LexoUndoStack* history, std::unique_ptr<LexoCommand> command)
{
    if (!command) return;
    if (history) {
        history->push(command.release());
    } else {
        command->redo();
    }
}

void PushAsOneStep(LexoUndoStack* history, const QString& text, const std::function<void()>& pushes)
{
    if (!history) return pushes();

    history->beginMacro(text);
    try {
        pushes();
    } catch (...) {
        history->abortMacro();
        throw;
    }
    history->endMacro();
}
