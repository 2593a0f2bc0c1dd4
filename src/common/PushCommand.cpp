#include "common/PushCommand.h"

#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"

void PushCommand(LexoUndoStack* history, std::unique_ptr<LexoCommand> command)
{
    if (history) {
        history->push(command.release());
    } else {
        command->redo();
    }
}
