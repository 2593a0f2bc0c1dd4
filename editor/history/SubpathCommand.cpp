#include "history/SubpathCommand.h"

#include "document/LXDocumentInterface.h"
#include "history/PathExecution.h"

class SubpathCommandPrivate
{
public:
    LXDocumentInterface* document = nullptr;
};

SubpathCommand::SubpathCommand(LXDocumentInterface* document)
    : m_pPrivate(std::make_unique<SubpathCommandPrivate>())
{
    m_pPrivate->document = document;
}

SubpathCommand::~SubpathCommand() = default;

void SubpathCommand::RedoExecute(LexoCommandData* data)
{
    PathExecution::Redo(*m_pPrivate->document->GetPathListModel(), *data);
}

void SubpathCommand::UndoExecute(LexoCommandData* data)
{
    PathExecution::Undo(*m_pPrivate->document->GetPathListModel(), *data);
}

bool SubpathCommand::AcceptsData(const LexoCommandData* data) const
{
    return PathExecution::IsPathData(data);
}
