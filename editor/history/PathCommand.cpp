#include "history/PathCommand.h"

#include "document/LXDocumentInterface.h"
#include "history/PathExecution.h"

class PathCommandPrivate
{
public:
    LXDocumentInterface* document = nullptr;
};

PathCommand::PathCommand(LXDocumentInterface* document) : m_pPrivate(std::make_unique<PathCommandPrivate>())
{
    m_pPrivate->document = document;
}

PathCommand::~PathCommand() = default;

void PathCommand::RedoExecute(LexoCommandData* data)
{
    PathExecution::Redo(*m_pPrivate->document->GetPathListModel(), *data);
}

void PathCommand::UndoExecute(LexoCommandData* data)
{
    PathExecution::Undo(*m_pPrivate->document->GetPathListModel(), *data);
}

bool PathCommand::AcceptsData(const LexoCommandData* data) const
{
    return PathExecution::IsPathData(data);
}
