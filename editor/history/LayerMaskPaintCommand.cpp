#include "history/LayerMaskPaintCommand.h"

#include "history/LayerMaskPaintCommandData.h"

LayerMaskPaintCommand::LayerMaskPaintCommand(LXDocumentInterface* document, bool applyOnPush)
    : PaintCommand(document, Target::Mask, applyOnPush)
{}

bool LayerMaskPaintCommand::AcceptsData(const LexoCommandData* data) const
{
    return dynamic_cast<const LayerMaskPaintCommandData*>(data) != nullptr;
}
