#include "common/PaintCommands.h"

#include "history/LayerMaskPaintCommand.h"
#include "history/LayerMaskPaintCommandData.h"
#include "history/LayerPaintCommand.h"
#include "history/LayerPaintCommandData.h"

namespace {
const QRect WholeImage;

template <class Command, class Data>
std::unique_ptr<LexoCommand> Make(LXDocumentInterface* document, const PaintChange& change, bool apply)
{
    auto data = std::make_unique<Data>();
    data->SetUndoImage(change.undoImage, WholeImage);
    data->SetLayerID(change.layerId);
    data->SetUndoGeometry(change.undoGeometry);
    data->SetRedoGeometry(change.redoGeometry);
    data->SetRedoImage(change.redoImage, WholeImage);

    auto command = std::make_unique<Command>(document, apply);
    // Owned by the command from then on.
    if (command->SetCommandData(data.get())) static_cast<void>(data.release());
    return command;
}
} // namespace

std::unique_ptr<LexoCommand> MakePaintCommand(LXDocumentInterface* document, PaintTarget target,
                                              const PaintChange& change, bool apply)
{
    if (target == PaintTarget::Mask)
        return Make<LayerMaskPaintCommand, LayerMaskPaintCommandData>(document, change, apply);
    return Make<LayerPaintCommand, LayerPaintCommandData>(document, change, apply);
}
