#include "history/LayerOrderCommand.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"

static QDataStream& operator<<(QDataStream& stream, const LayerOrderValues& values)
{
    return stream << qint32(values.from) << qint32(values.to);
}

static QDataStream& operator>>(QDataStream& stream, LayerOrderValues& values)
{
    return stream >> values.from >> values.to;
}

LayerOrderCommand::LayerOrderCommand(LXDocumentInterface* document, int from, int to)
    : ValueCommand(LayerOrderValues{{}, from, to}), m_pDocument(document)
{}

void LayerOrderCommand::Redo(LayerOrderValues& values)
{
    m_pDocument->GetModel()->MoveLayer(values.from, values.to);
}

void LayerOrderCommand::Undo(LayerOrderValues& values)
{
    m_pDocument->GetModel()->MoveLayer(values.to, values.from);
}
