#include "history/PathOrderCommand.h"

#include "document/LXDocumentInterface.h"
#include "document/LXPathsListModel.h"

static QDataStream& operator<<(QDataStream& stream, const PathOrderValues& values)
{
    return stream << qint32(values.from) << qint32(values.to);
}

static QDataStream& operator>>(QDataStream& stream, PathOrderValues& values)
{
    return stream >> values.from >> values.to;
}

PathOrderCommand::PathOrderCommand(LXDocumentInterface* document, int from, int to)
    : ValueCommand(PathOrderValues{{}, from, to}), m_pDocument(document)
{}

void PathOrderCommand::Redo(PathOrderValues& values)
{
    m_pDocument->GetPathListModel()->MovePath(values.from, values.to);
}

void PathOrderCommand::Undo(PathOrderValues& values)
{
    m_pDocument->GetPathListModel()->MovePath(values.to, values.from);
}
