#include "history/ColorsCommand.h"

static QDataStream& operator<<(QDataStream& stream, const ColorsValues& values)
{
    return stream << values.before << values.after;
}

static QDataStream& operator>>(QDataStream& stream, ColorsValues& values)
{
    return stream >> values.before >> values.after;
}

ColorsCommand::ColorsCommand(LXDocumentInterface* document, const LayerColors& before,
                             const LayerColors& after)
    : ValueCommand(ColorsValues{before, after}), m_pDocument(document)
{}

void ColorsCommand::Redo(ColorsValues& values)
{
    values.after.ApplyTo(m_pDocument);
}

void ColorsCommand::Undo(ColorsValues& values)
{
    values.before.ApplyTo(m_pDocument);
}
