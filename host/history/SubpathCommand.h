#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommand.h"

#include <memory>

class SubpathCommandPrivate;
class LXDocumentInterface;

/// Changes, inserts or removes a sub path. Data: ChangeSubpathCommandData, InsertSubpathCommandData,
/// RemoveSubpathCommandData; those of PathCommand are taken too. Main thread.
class ZK_HOST_EXPORT SubpathCommand : public LexoCommand
{
public:
    explicit SubpathCommand(LXDocumentInterface* document);
    ~SubpathCommand() override;

    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;

protected:
    bool AcceptsData(const LexoCommandData* data) const override;

private:
    std::unique_ptr<SubpathCommandPrivate> m_pPrivate;
};
