#include "history/SelectionExecution.h"

#include "document/LXDocumentInterface_p.h"
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
    LXDocumentInterfacePrivate::Get(document)->SetTrimmedSelection(combined.mask, combined.offset);
}

void SelectionExecution::MoveTo(LXDocumentInterface* document, const QPoint& topLeft)
{
    if (document->HasSelection()) document->TranslateSelection(topLeft - document->GetSelectionMaskOffset());
}
