#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommand.h"

#include <memory>

class MoveCommandPrivate;
class LXDocumentInterface;

/// Moves layers, masks and always the selection, if there is one; with empty lists only the selection.
/// Data: MoveCommandData. Main thread.
class ZK_HOST_EXPORT MoveCommand : public LexoCommand
{
public:
    /// @param applyOnPush  false: the first redo moves nothing, everything is in its place already
    MoveCommand(LXDocumentInterface* document, bool applyOnPush);
    ~MoveCommand() override;

    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;

protected:
    bool AcceptsData(const LexoCommandData* data) const override;

private:
    std::unique_ptr<MoveCommandPrivate> m_pPrivate;
};
