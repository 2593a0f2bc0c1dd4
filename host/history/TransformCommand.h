#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommand.h"

#include <memory>

class LXDocumentInterface;
class TransformCommandPrivate;

/// Renders a layer, or its mask, from the kept image by the transform, as far as the canvas reaches; undo
/// puts the kept image back to its place. Which of the two is meant is what the layer's row has as its target
/// when the command gets its data. A mask's new ground has the mask's default. Data: TransformCommandData.
/// Main thread.
class ZK_HOST_EXPORT TransformCommand : public LexoCommand
{
public:
    /// @param lacksInitialState  true: the document shows a preview already, so undo goes by the data; false:
    /// the document shows the layer as it was, and the first redo keeps that for undo.
    TransformCommand(LXDocumentInterface* document, bool lacksInitialState);
    ~TransformCommand() override;

    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;

protected:
    bool AcceptsData(const LexoCommandData* data) const override;
    void DataTaken(LexoCommandData* data) override;

private:
    std::unique_ptr<TransformCommandPrivate> m_pPrivate;
};
