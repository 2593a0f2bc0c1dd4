#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommand.h"

#include <memory>

class MWSelectionCommandPrivate;
class LXDocumentInterface;

/// Combines a mask with the selection and trims the result to its pixels; undo puts the stored selection
/// back. Data: MWSelectionCommandData. Main thread.
class ZK_HOST_EXPORT MWSelectionCommand : public LexoCommand
{
public:
    /// @param applyOnPush  false: the first redo leaves the selection alone, it is the new one already
    MWSelectionCommand(LXDocumentInterface* document, bool applyOnPush);
    ~MWSelectionCommand() override;

    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;

protected:
    bool AcceptsData(const LexoCommandData* data) const override;

private:
    std::unique_ptr<MWSelectionCommandPrivate> m_pPrivate;
};
