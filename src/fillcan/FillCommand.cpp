#include "fillcan/FillCommand.h"

#include "fillcan/FillJob.h"
#include "history/LayerMaskPaintCommand.h"
#include "history/LayerMaskPaintCommandData.h"
#include "history/LayerPaintCommand.h"
#include "history/LayerPaintCommandData.h"

#include <QCoreApplication>

namespace {
constexpr bool ApplyOnPush = true;
const QRect WholeImage;

template <class Command, class Data>
std::unique_ptr<LexoCommand> MakePaintCommand(LXDocumentInterface* document, const FillJobResult& result)
{
    auto data = std::make_unique<Data>();
    data->SetUndoImage(result.undoImage, WholeImage);
    data->SetLayerID(result.layerId);
    data->SetUndoGeometry(result.undoGeometry);
    data->SetRedoGeometry(result.redoGeometry);
    data->SetRedoImage(result.redoImage, WholeImage);

    auto command = std::make_unique<Command>(document, ApplyOnPush);
    // Owned by the command from then on.
    if (command->SetCommandData(data.get())) static_cast<void>(data.release());
    return command;
}
} // namespace

std::unique_ptr<LexoCommand> MakeFillCommand(LXDocumentInterface* document, const FillJobResult& result)
{
    std::unique_ptr<LexoCommand> command;
    if (result.isMask) {
        command = MakePaintCommand<LayerMaskPaintCommand, LayerMaskPaintCommandData>(document, result);
        command->setText(QCoreApplication::translate("FillCanPrivate", "Fill with mask"));
    } else {
        command = MakePaintCommand<LayerPaintCommand, LayerPaintCommandData>(document, result);
        command->setText(QCoreApplication::translate("FillCanPrivate", "Fill"));
    }
    return command;
}
