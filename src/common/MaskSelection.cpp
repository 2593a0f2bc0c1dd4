#include "common/MaskSelection.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "history/MWSelectionCommand.h"
#include "history/MWSelectionCommandData.h"

namespace {
constexpr bool ApplyOnPush = true;
} // namespace

std::unique_ptr<LexoCommand> MakeMaskSelectionCommand(LXDocumentInterface* document, const LXImage32& mask,
                                                      const QPoint& offset,
                                                      SelectionCommandData::LogicalOp op)
{
    auto data = std::make_unique<MWSelectionCommandData>();
    const bool hasSelection = document->HasSelection();
    data->SetNoUndoSelection(!hasSelection);
    if (hasSelection) {
        const LXDocumentSelectionLockerForRead locker(document);
        data->SetUndoSel(document->GetSelectionMaskOffset(), document->GetSelectionMask());
    } else {
        data->SetUndoSel({}, {});
    }
    data->SetRedoSel(offset, mask, hasSelection ? op : SelectionCommandData::Replace);

    auto command = std::make_unique<MWSelectionCommand>(document, ApplyOnPush);
    // Owned by the command from then on.
    if (command->SetCommandData(data.get())) static_cast<void>(data.release());
    return command;
}
