#include "history/LayerPaintCommand.h"

#include "history/LayerPaintCommandData.h"

LayerPaintCommand::LayerPaintCommand(LXDocumentInterface* document, bool applyOnPush)
    : PaintCommand(document, Target::Layer, applyOnPush)
{}

bool LayerPaintCommand::AcceptsData(const LexoCommandData* data) const
{
    return dynamic_cast<const LayerPaintCommandData*>(data) != nullptr;
}
