#include "history/SelectionCommand.h"

#include "document/LXDocumentInterface.h"
#include "history/SelectionCommandData.h"
#include "history/SelectionExecution.h"

class SelectionCommandPrivate
{
public:
    LXDocumentInterface* document = nullptr;
};

SelectionCommand::SelectionCommand(LXDocumentInterface* document)
    : m_pPrivate(std::make_unique<SelectionCommandPrivate>())
{
    m_pPrivate->document = document;
}

SelectionCommand::~SelectionCommand() = default;

void SelectionCommand::RedoExecute(LexoCommandData* data)
{
    const auto& change = static_cast<SelectionCommandData&>(*data);
    const QRect canvas(QPoint(0, 0), m_pPrivate->document->GetDocumentSize());
    SelectionExecution::Combine(m_pPrivate->document,
                                SelectionCombine::MaskOfPath(change.GetSelectionGeometry(), canvas),
                                change.GetSelectionOp());
}

void SelectionCommand::UndoExecute(LexoCommandData* data)
{
    const auto& change = static_cast<SelectionCommandData&>(*data);
    m_pPrivate->document->SetSelectionMask(change.GetUndoMask(), change.GetUndoOffset());
}

bool SelectionCommand::AcceptsData(const LexoCommandData* data) const
{
    return dynamic_cast<const SelectionCommandData*>(data) != nullptr;
}
