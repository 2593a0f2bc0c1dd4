#include "history/AdjustmentCommand.h"

#include "document/LXDocumentInterface.h"

static QDataStream& operator<<(QDataStream& stream, const AdjustmentValues& values)
{
    return stream << values.id << values.before << values.after;
}

static QDataStream& operator>>(QDataStream& stream, AdjustmentValues& values)
{
    return stream >> values.id >> values.before >> values.after;
}

AdjustmentCommand::AdjustmentCommand(LXDocumentInterface* document, unsigned int id,
                                     const LXAdjustment& after)
    : ValueCommand(AdjustmentValues{{}, id, document->GetAdjustment(id), after}), m_pDocument(document)
{}

void AdjustmentCommand::EndTransaction(LexoCommandData* data)
{
    if (IsExecuting() || !data) return;
    AdjustmentValues& values = static_cast<Data*>(data)->values;
    values.after = m_pDocument->GetAdjustment(values.id);
}

void AdjustmentCommand::Redo(AdjustmentValues& values)
{
    m_pDocument->SetAdjustment(values.id, values.after);
}

void AdjustmentCommand::Undo(AdjustmentValues& values)
{
    m_pDocument->SetAdjustment(values.id, values.before);
}
