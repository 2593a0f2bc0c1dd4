#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommand.h"

#include <memory>

class SelectionCommandPrivate;
class LXDocumentInterface;

/// Combines the inside of a path, antialiased and clipped to the canvas, with the selection; undo puts the
/// stored one back. Data: SelectionCommandData. Main thread.
class ZK_HOST_EXPORT SelectionCommand : public LexoCommand
{
public:
    explicit SelectionCommand(LXDocumentInterface* document);
    ~SelectionCommand() override;

    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;

protected:
    bool AcceptsData(const LexoCommandData* data) const override;

private:
    std::unique_ptr<SelectionCommandPrivate> m_pPrivate;
};
