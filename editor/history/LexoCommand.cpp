#include "history/LexoCommand.h"

#include "history/LexoCommandData.h"

#include <QScopedValueRollback>

class LexoCommandPrivate
{
public:
    std::unique_ptr<LexoCommandData> data;
    bool isExecuting = false;
};

LexoCommand::LexoCommand() : m_pPrivate(std::make_unique<LexoCommandPrivate>()) {}

LexoCommand::~LexoCommand() = default;

void LexoCommand::undo()
{
    LexoCommandData* data = m_pPrivate->data.get();
    if (!data) return;
    const QScopedValueRollback<bool> executing(m_pPrivate->isExecuting, true);
    BeginTransaction();
    UndoExecute(data);
    EndTransaction(data);
}

void LexoCommand::redo()
{
    LexoCommandData* data = m_pPrivate->data.get();
    if (!data) return;
    const QScopedValueRollback<bool> executing(m_pPrivate->isExecuting, true);
    BeginTransaction();
    RedoExecute(data);
    EndTransaction(data);
}

void LexoCommand::BeginTransaction() {}

void LexoCommand::EndTransaction(LexoCommandData*) {}

bool LexoCommand::SetCommandData(LexoCommandData* data)
{
    if (!data || m_pPrivate->data || !AcceptsData(data)) return false;
    m_pPrivate->data.reset(data);
    DataTaken(data);
    return true;
}

void LexoCommand::DataTaken(LexoCommandData*) {}

LexoCommandData* LexoCommand::GetCommandData() const
{
    return m_pPrivate->data.get();
}

qint64 LexoCommand::GetMemoryCost() const
{
    return m_pPrivate->data ? m_pPrivate->data->GetMemoryCost() : 0;
}

bool LexoCommand::IsExecuting() const
{
    return m_pPrivate->isExecuting;
}
