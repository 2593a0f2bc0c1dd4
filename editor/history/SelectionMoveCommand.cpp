#include "history/SelectionMoveCommand.h"

#include "document/LXDocumentInterface.h"
#include "history/SelectionExecution.h"
#include "history/SelectionMoveCommandData.h"

#include <QCoreApplication>

class SelectionMoveCommandPrivate
{
public:
    LXDocumentInterface* document = nullptr;
};

SelectionMoveCommand::SelectionMoveCommand(LXDocumentInterface* document)
    : m_pPrivate(std::make_unique<SelectionMoveCommandPrivate>())
{
    m_pPrivate->document = document;
    setText(QCoreApplication::translate("SelectionMoveCommand", "Move selection"));
}

SelectionMoveCommand::~SelectionMoveCommand() = default;

void SelectionMoveCommand::EndTransaction(LexoCommandData* data)
{
    if (IsExecuting() || !data) return;
    static_cast<SelectionMoveCommandData*>(data)->SetRedoPosition(
        m_pPrivate->document->GetSelectionMaskOffset());
}

void SelectionMoveCommand::RedoExecute(LexoCommandData* data)
{
    SelectionExecution::MoveTo(m_pPrivate->document,
                               static_cast<SelectionMoveCommandData*>(data)->GetRedoPosition());
}

void SelectionMoveCommand::UndoExecute(LexoCommandData* data)
{
    SelectionExecution::MoveTo(m_pPrivate->document,
                               static_cast<SelectionMoveCommandData*>(data)->GetUndoPosition());
}

bool SelectionMoveCommand::AcceptsData(const LexoCommandData* data) const
{
    return dynamic_cast<const SelectionMoveCommandData*>(data) != nullptr;
}
