#include "history/SelectionDeletion.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "history/LayerMaskPaintCommand.h"
#include "history/LayerMaskPaintCommandData.h"
#include "history/LayerPaintCommand.h"
#include "history/LayerPaintCommandData.h"
#include "image/BlendMode.h"
#include "image/LXImage.h"

namespace {
constexpr bool ApplyOnPush = true;
constexpr bool ChangeAlpha = false;

struct Cut
{
    LXImage32 before;
    LXImage32 after;
    QRect geometry; ///< of the layer or mask
    QRect rect;     ///< of both images, in the document; null for none
};

Cut CutSelection(const LXDocumentInterface* document, const LXImage32& image, const QRect& geometry)
{
    const LXDocumentSelectionLockerForRead locker(document);
    Cut cut;
    cut.geometry = geometry;
    const QRect rect = geometry & document->GetSelectionGeometry();
    if (rect.isEmpty()) return cut;

    cut.rect = rect;
    cut.before = CopyPart(image, rect.translated(-geometry.topLeft()));
    cut.after = cut.before;
    BlendOn(document->GetSelectionMask(), rect.translated(-document->GetSelectionMaskOffset()),
            BlendMode::DestinationOut, cut.after, cut.after.Rect(), 1.0, ChangeAlpha);
    return cut;
}

template <class Command, class Data>
std::unique_ptr<LexoCommand> MakePaint(LXDocumentInterface* document, unsigned int id, const Cut& cut)
{
    auto data = std::make_unique<Data>();
    data->SetLayerID(id);
    data->SetUndoImage(cut.before, QRect());
    data->SetUndoGeometry(cut.geometry);
    data->SetRedoGeometry(cut.rect);
    data->SetRedoImage(cut.after, QRect());
    auto command = std::make_unique<Command>(document, ApplyOnPush);
    // The command has it now.
    if (command->SetCommandData(data.get())) static_cast<void>(data.release());
    return command;
}
} // namespace

std::unique_ptr<LexoCommand> SelectionDeletion::MakeCommand(LXDocumentInterface* document, unsigned int id,
                                                            bool fromMask)
{
    Cut cut;
    {
        const LXDocumentLayerLockerForRead locker(document, id);
        const LXImage32* image = fromMask ? document->GetMaskImage(id) : document->GetLayerImage(id);
        if (!image) return nullptr;
        cut = CutSelection(document, *image,
                           fromMask ? document->GetMaskGeometry(id) : document->GetLayerGeometry(id));
    }
    if (fromMask) return MakePaint<LayerMaskPaintCommand, LayerMaskPaintCommandData>(document, id, cut);
    return MakePaint<LayerPaintCommand, LayerPaintCommandData>(document, id, cut);
}
