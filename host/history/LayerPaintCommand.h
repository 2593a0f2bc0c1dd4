#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommand.h"

class LXDocumentInterface;

/// Puts kept pixels into a layer and takes them out again; grows the layer for them and cuts it back
/// (PaintPlacement tells where the images lie). Data: LayerPaintCommandData. Main thread; takes the write
/// locker itself.
class ZK_HOST_EXPORT LayerPaintCommand : public LexoCommand
{
public:
    /// @param applyOnPush  true: the first redo writes the pixels; false: they are in the layer already, and
    /// only later redos write them.
    LayerPaintCommand(LXDocumentInterface* document, bool applyOnPush);

    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;

protected:
    bool AcceptsData(const LexoCommandData* data) const override;

private:
    LXDocumentInterface* m_pDocument;
    bool m_bApplied;
};
