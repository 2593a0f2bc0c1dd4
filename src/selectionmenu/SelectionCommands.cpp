#include "selectionmenu/SelectionCommands.h"

#include "common/MaskSelection.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "document/LXSelectionMaskHelper.h"
#include "history/MoveCommand.h"
#include "history/MoveCommandData.h"
#include "history/SelectionCommand.h"
#include "history/SelectionCommandData.h"
#include "image/BlendMode.h"
#include "image/LXBlend.h"
#include "image/LXImage.h"

namespace {
constexpr bool ApplyOnPush = true;
constexpr bool KeepAlpha = false;
constexpr LXRGBA32i FullCoverage(0xff000000);

template <class Command, class Data>
std::unique_ptr<LexoCommand> Assemble(std::unique_ptr<Command> command, std::unique_ptr<Data> data)
{
    // Owned by the command from then on.
    if (command->SetCommandData(data.get())) static_cast<void>(data.release());
    return command;
}

struct PlacedMask
{
    QPoint offset;
    LXImage32 mask;
};

PlacedMask CurrentSelection(const LXDocumentInterface* document)
{
    const LXDocumentSelectionLockerForRead locker(document);
    return {document->GetSelectionMaskOffset(), document->GetSelectionMask()};
}

PlacedMask Inverted(const PlacedMask& selection, const QSize& canvas)
{
    LXImage32 rest(canvas.width(), canvas.height());
    rest.Fill(FullCoverage);
    const QRect whole(0, 0, selection.mask.Width(), selection.mask.Height());
    BlendOn(selection.mask, whole, BlendMode::DestinationOut, rest, whole.translated(selection.offset), 1.0,
            KeepAlpha);

    const QRect bound = LXSelectionMaskHelper::GetSelectionBoundRect(rest);
    return {bound.topLeft(), CopyPart(rest, bound)};
}
} // namespace

std::unique_ptr<LexoCommand> SelectionCommands::MakeReplace(LXDocumentInterface* document,
                                                            const QPainterPath& path)
{
    const PlacedMask old = CurrentSelection(document);
    auto data = std::make_unique<SelectionCommandData>();
    data->SetSelectionOp(SelectionCommandData::Replace);
    data->SetSelectionGeometry(path);
    data->SetUndoSel(old.offset, old.mask);
    return Assemble(std::make_unique<SelectionCommand>(document), std::move(data));
}

std::unique_ptr<LexoCommand> SelectionCommands::MakeInvert(LXDocumentInterface* document)
{
    const PlacedMask inverted = Inverted(CurrentSelection(document), document->GetDocumentSize());
    return MakeMaskSelectionCommand(document, inverted.mask, inverted.offset, SelectionCommandData::Replace);
}

std::unique_ptr<LexoCommand> SelectionCommands::MakeMove(LXDocumentInterface* document, const QPoint& delta)
{
    auto data = std::make_unique<MoveCommandData>();
    data->SetDelta(delta);
    return Assemble(std::make_unique<MoveCommand>(document, ApplyOnPush), std::move(data));
}
