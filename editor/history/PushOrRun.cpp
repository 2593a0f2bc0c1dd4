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
