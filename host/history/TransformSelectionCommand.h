#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommand.h"

#include <memory>

class LXDocumentInterface;
class TransformSelectionCommandPrivate;

/// Renders the kept selection by the transform, as far as the canvas reaches; undo puts it back. Data:
/// TransformSelectionCommandData. Main thread.
class ZK_HOST_EXPORT TransformSelectionCommand : public LexoCommand
{
public:
    explicit TransformSelectionCommand(LXDocumentInterface* document);
    ~TransformSelectionCommand() override;

    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;

protected:
    bool AcceptsData(const LexoCommandData* data) const override;

private:
    std::unique_ptr<TransformSelectionCommandPrivate> m_pPrivate;
};
