#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommand.h"

#include <memory>

class PathCommandPrivate;
class LXDocumentInterface;

/// Transforms a path, or inserts or removes a path of the list. Data: TransformPathCommandData,
/// InsertPathCommandData, RemovePathCommandData; those of SubpathCommand are taken too. Main thread.
class ZK_HOST_EXPORT PathCommand : public LexoCommand
{
public:
    explicit PathCommand(LXDocumentInterface* document);
    ~PathCommand() override;

    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;

protected:
    bool AcceptsData(const LexoCommandData* data) const override;

private:
    std::unique_ptr<PathCommandPrivate> m_pPrivate;
};
