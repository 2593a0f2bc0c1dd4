#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommand.h"

#include <memory>

class SelectionMoveCommandPrivate;
class LXDocumentInterface;

/// Moves the selection between two places; its text is "Move selection" unless another is set. As a delayed
/// command it takes the place after from the selection when it is closed. Data: SelectionMoveCommandData.
/// Main thread.
class ZK_HOST_EXPORT SelectionMoveCommand : public LexoCommand
{
public:
    explicit SelectionMoveCommand(LXDocumentInterface* document);
    ~SelectionMoveCommand() override;

    void EndTransaction(LexoCommandData* data) override;
    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;

protected:
    bool AcceptsData(const LexoCommandData* data) const override;

private:
    std::unique_ptr<SelectionMoveCommandPrivate> m_pPrivate;
};
