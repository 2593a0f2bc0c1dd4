#include "history/SelectionExecution.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentSelectionLockerForRead.h"

void SelectionExecution::Combine(LXDocumentInterface* document, const PlacedMask& added,
                                 SelectionCommandData::LogicalOp op)
{
    PlacedMask selection;
    {
        const LXDocumentSelectionLockerForRead locker(document);
        selection = {document->GetSelectionMask(), document->GetSelectionMaskOffset()};
    }
    const PlacedMask combined = SelectionCombine::Combined(selection, added, op);
    document->SetSelectionMask(combined.mask, combined.offset);
}

void SelectionExecution::MoveTo(LXDocumentInterface* document, const QPoint& topLeft)
{
    if (document->HasSelection()) document->TranslateSelection(topLeft - document->GetSelectionMaskOffset());
}
