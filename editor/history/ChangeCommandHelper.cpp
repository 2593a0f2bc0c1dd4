#include "history/ChangeCommandHelper.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "history/LayerCommands.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"

bool ChangeCommandHelper::RemoveLayer(LexoUndoStack* stack, LXDocumentInterface* document,
                                      QItemSelectionModel* selection, uint id, const QString& text)
{
    if (id == 0 || id > static_cast<uint>(document->GetModel()->rowCount())) return false;

    // Whatever floats above the layer is put down on it before it goes.
    emit document->AboutRequesAdditionalLayer(id);
    emit document->AboutRequesAdditionalMask(id);
    std::unique_ptr<LexoCommand> command(LayerCommands::Remove(document, selection, id));
    command->setText(text);
    if (stack) {
        stack->push(command.release());
    } else {
        command->redo();
    }
    return true;
}
