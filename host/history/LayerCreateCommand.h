#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommand.h"

#include <memory>

class LayerCreateCommandPrivate;
class LXDocumentInterface;

/// Adds a transparent raster layer of the canvas' size and selects its row; undo removes it and selects what
/// was selected before. Data: LayerCreateCommandData. Main thread.
class ZK_HOST_EXPORT LayerCreateCommand : public LexoCommand
{
public:
    /// @param applyOnPush  false: the first redo adds nothing, the layer is there already
    LayerCreateCommand(LXDocumentInterface* document, bool applyOnPush);
    ~LayerCreateCommand() override;

    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;

protected:
    bool AcceptsData(const LexoCommandData* data) const override;

private:
    std::unique_ptr<LayerCreateCommandPrivate> m_pPrivate;
};
