#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommand.h"

#include <memory>

class LXDocumentModel;
class NewLayerCommandPrivate;
class QItemSelectionModel;

/// A new layer: a text with NewTextLayerData, else a transparent raster layer of the canvas' size with
/// NewLayerData. Redo selects its row, undo removes it and selects what was selected before. Main thread.
///
/// As a delayed command it closes over a layer that is in the document already, takes a text with all of its
/// values from there, and selects its row.
class ZK_HOST_EXPORT NewLayerCommand : public LexoCommand
{
public:
    /// @param selection    the rows of layers that a view has selected, to follow; null for none
    /// @param applyOnPush  false: the first redo adds nothing, the layer is there already
    NewLayerCommand(LXDocumentModel* model, QItemSelectionModel* selection, bool applyOnPush);
    ~NewLayerCommand() override;

    void EndTransaction(LexoCommandData* data) override;
    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;

protected:
    bool AcceptsData(const LexoCommandData* data) const override;

private:
    std::unique_ptr<NewLayerCommandPrivate> m_pPrivate;
};
