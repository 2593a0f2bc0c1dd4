#include "fillcan/FillCommand.h"

#include "common/PaintCommands.h"
#include "fillcan/FillJob.h"
#include "history/LexoCommand.h"

#include <QCoreApplication>

namespace {
constexpr bool ApplyOnPush = true;
} // namespace

std::unique_ptr<LexoCommand> MakeFillCommand(LXDocumentInterface* document, const FillJobResult& result)
{
    const PaintTarget target = result.isMask ? PaintTarget::Mask : PaintTarget::Layer;
    std::unique_ptr<LexoCommand> command = MakePaintCommand(
        document, target,
        {result.layerId, result.undoImage, result.redoImage, result.undoGeometry, result.redoGeometry},
        ApplyOnPush);
    command->setText(result.isMask ? QCoreApplication::translate("FillCanPrivate", "Fill with mask")
                                   : QCoreApplication::translate("FillCanPrivate", "Fill"));
    return command;
}
