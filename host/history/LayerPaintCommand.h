#pragma once

#include "ZKHostExport.h"

#include "history/PaintCommand.h"

/// A change of a layer's pixels, with LayerPaintCommandData.
class ZK_HOST_EXPORT LayerPaintCommand : public PaintCommand
{
public:
    /// @param applyOnPush  true: the first redo writes the pixels; false: they are there already, and only
    /// later redos write them.
    LayerPaintCommand(LXDocumentInterface* document, bool applyOnPush);

protected:
    bool AcceptsData(const LexoCommandData* data) const override;
};
