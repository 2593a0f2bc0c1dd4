#pragma once

#include "ZKHostExport.h"

#include "history/PaintCommand.h"

/// A change of the pixels of a layer's mask, with LayerMaskPaintCommandData.
class ZK_HOST_EXPORT LayerMaskPaintCommand : public PaintCommand
{
public:
    /// @param applyOnPush  true: the first redo writes the pixels; false: they are there already, and only
    /// later redos write them.
    LayerMaskPaintCommand(LXDocumentInterface* document, bool applyOnPush);

protected:
    bool AcceptsData(const LexoCommandData* data) const override;
};
