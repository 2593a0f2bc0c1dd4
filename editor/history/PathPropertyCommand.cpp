#include "history/PathPropertyCommand.h"

#include "document/LXDocumentInterface.h"
#include "document/LXPathsListModel.h"

namespace {
PathPropertyValues ValuesFor(const LXDocumentInterface* document, int row, PathProperty property,
                             const QVariant& after)
{
    const LXPathsListModel* paths = document->GetPathListModel();
    PathPropertyValues values;
    values.row = row;
    values.property = property;
    values.before =
        property == PathProperty::Name ? QVariant(paths->GetPathName(row)) : paths->GetPathVisible(row);
    values.after = after;
    return values;
}

void Write(LXPathsListModel* paths, int row, PathProperty property, const QVariant& value)
{
    switch (property) {
    case PathProperty::Name: return paths->SetPathName(row, value.toString());
    case PathProperty::Visible: return paths->SetPathVisible(row, value.toBool());
    }
}
} // namespace

static QDataStream& operator<<(QDataStream& stream, const PathPropertyValues& values)
{
    return stream << qint32(values.row) << qint32(values.property) << values.before << values.after;
}

static QDataStream& operator>>(QDataStream& stream, PathPropertyValues& values)
{
    stream >> values.row;
    DataStream::ReadEnum(stream, values.property, PathProperty::Visible);
    return stream >> values.before >> values.after;
}

PathPropertyCommand::PathPropertyCommand(const LXDocumentInterface* document, int row, PathProperty property,
                                         const QVariant& after)
    : ValueCommand(ValuesFor(document, row, property, after)), m_pDocument(document)
{}

void PathPropertyCommand::Redo(PathPropertyValues& values)
{
    Write(m_pDocument->GetPathListModel(), values.row, values.property, values.after);
}

void PathPropertyCommand::Undo(PathPropertyValues& values)
{
    Write(m_pDocument->GetPathListModel(), values.row, values.property, values.before);
}
