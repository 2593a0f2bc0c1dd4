#include "history/SelectionModify.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "history/MWSelectionCommand.h"
#include "history/MWSelectionCommandData.h"
#include "image/MaskModify.h"

#include <memory>

namespace {
/// How far the new coverage may lie outside of the old.
int Reach(SelectionModify::Kind kind, int radius)
{
    switch (kind) {
    case SelectionModify::Kind::Grow:
    case SelectionModify::Kind::Border: return radius;
    case SelectionModify::Kind::Feather: return 3 * radius;
    case SelectionModify::Kind::Shrink:
    case SelectionModify::Kind::Smooth: break;
    }
    return 0;
}

LXImage32 Made(const LXImage32& mask, const QRect& area, SelectionModify::Kind kind, int radius)
{
    switch (kind) {
    case SelectionModify::Kind::Grow: return MaskModify::Grown(mask, area, radius);
    case SelectionModify::Kind::Shrink: return MaskModify::Shrunk(mask, area, radius);
    case SelectionModify::Kind::Border: return MaskModify::Border(mask, area, radius);
    case SelectionModify::Kind::Feather: return MaskModify::Feathered(mask, area, radius);
    case SelectionModify::Kind::Smooth: break;
    }
    return MaskModify::Smoothed(mask, area, radius);
}
} // namespace

int SelectionModify::MaxRadius(Kind kind)
{
    return kind == Kind::Smooth ? MaskModify::MaxSmoothRadius : MaskModify::MaxRadius;
}

PlacedMask SelectionModify::Modified(const PlacedMask& selection, const QRect& canvas, Kind kind, int radius)
{
    if (selection.mask.IsNull()) return PlacedMask();
    const int reach = Reach(kind, radius);
    const QRect area = selection.Rect().adjusted(-reach, -reach, reach, reach) & (canvas | selection.Rect());
    const PlacedMask made{Made(selection.mask, area.translated(-selection.offset), kind, radius),
                          area.topLeft()};
    return SelectionCombine::Combined(PlacedMask(), made, SelectionCommandData::Replace);
}

PlacedMask SelectionModify::Of(LXDocumentInterface* document)
{
    const LXDocumentSelectionLockerForRead locker(document);
    return {document->GetSelectionMask(), document->GetSelectionMaskOffset()};
}

LexoCommand* SelectionModify::StepFrom(const PlacedMask& before, LXDocumentInterface* document,
                                       const QString& text)
{
    const PlacedMask now = Of(document);
    auto data = std::make_unique<MWSelectionCommandData>();
    data->SetNoUndoSelection(before.mask.IsNull());
    data->SetUndoSel(before.offset, before.mask);
    data->SetRedoSel(now.offset, now.mask, SelectionCommandData::Replace);
    auto command = std::make_unique<MWSelectionCommand>(document, false);
    command->setText(text);
    if (command->SetCommandData(data.get())) static_cast<void>(data.release()); // the command has it now
    return command.release();
}
