#include "history/MWSelectionCommand.h"

#include "document/LXDocumentInterface.h"
#include "history/MWSelectionCommandData.h"
#include "history/SelectionExecution.h"

class MWSelectionCommandPrivate
{
public:
    LXDocumentInterface* document = nullptr;
    bool isApplied = false; ///< the next redo finds the new selection in the document
};

MWSelectionCommand::MWSelectionCommand(LXDocumentInterface* document, bool applyOnPush)
    : m_pPrivate(std::make_unique<MWSelectionCommandPrivate>())
{
    m_pPrivate->document = document;
    m_pPrivate->isApplied = !applyOnPush;
}

MWSelectionCommand::~MWSelectionCommand() = default;

void MWSelectionCommand::RedoExecute(LexoCommandData* data)
{
    if (std::exchange(m_pPrivate->isApplied, false)) return;
    const auto& change = static_cast<MWSelectionCommandData&>(*data);
    SelectionExecution::Combine(m_pPrivate->document, {change.GetRedoMask(), change.GetRedoOffset()},
                                change.GetRedoOp());
}

void MWSelectionCommand::UndoExecute(LexoCommandData* data)
{
    const auto& change = static_cast<MWSelectionCommandData&>(*data);
    m_pPrivate->isApplied = false; // a step that was open has had no first redo
    const LXImage32 before = change.HasNoUndoSelection() ? LXImage32() : change.GetUndoMask();
    m_pPrivate->document->SetSelectionMask(before, change.GetUndoOffset());
}

bool MWSelectionCommand::AcceptsData(const LexoCommandData* data) const
{
    return dynamic_cast<const MWSelectionCommandData*>(data) != nullptr;
}
