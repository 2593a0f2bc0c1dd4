#include "history/PaintExecution.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "image/ImageMetadata.h"

#include <functional>

namespace {
struct Paint
{
    LXImage32 patch; ///< shares its tiles with the command's, which may change meanwhile
    QRect patchRect;
    QRect changed;
    QRect resultRect;
};

/// Sees the target's image, its rectangle, and the image that is to take its place.
using Look = std::function<void(const LXImage32& before, const QRect& rect, LXImage32& after)>;

Paint RedoOf(const PaintCommandData& data)
{
    const QRect before = data.GetUndoGeometry();
    const PaintCommandData::Places places = data.GetPlaces();
    return {data.GetRedoImage(), places.redoImage, places.redoChange, before | places.redoImage};
}

Paint UndoOf(const PaintCommandData& data)
{
    const PaintCommandData::Places places = data.GetPlaces();
    return {data.GetUndoImage(), places.undoImage, places.undoChange, data.GetUndoGeometry()};
}

bool HasTarget(LXDocumentInterface* document, unsigned int id, PaintExecution::Target target)
{
    const bool isMask = target == PaintExecution::Target::Mask;
    return id != 0 && (isMask ? document->GetMaskImage(id) : document->GetLayerImage(id)) != nullptr;
}

void Announce(LXDocumentInterface* document, unsigned int id, PaintExecution::Target target,
              const QRect& changed)
{
    LXDocumentInterfacePrivate* insides = LXDocumentInterfacePrivate::Get(document);
    if (target == PaintExecution::Target::Mask) {
        insides->MaskPixelsChanged(id, changed);
    } else {
        insides->LayerPixelsChanged(id, changed);
    }
}

void Execute(LXDocumentInterface* document, unsigned int id, PaintExecution::Target target,
             const Paint& paint, const Look& look)
{
    if (!HasTarget(document, id, target)) return;

    const bool isMask = target == PaintExecution::Target::Mask;
    QRect found;
    {
        const LXDocumentLayerLockerForWrite locker(document, id);
        LXDocumentInterfacePrivate* insides = LXDocumentInterfacePrivate::Get(document);
        const LXImage32& image = *(isMask ? document->GetMaskImage(id) : document->GetLayerImage(id));
        found = isMask ? document->GetMaskGeometry(id) : document->GetLayerGeometry(id);
        const bool isOpaqueGround = isMask && insides->layers.Properties(id).maskReveals;
        const LXRGBA32i ground(isOpaqueGround ? 0xFF000000u : 0u);
        LXImage32 next =
            PaintExecution::Patched(image, found, paint.resultRect, paint.patch, paint.patchRect, ground);
        if (look) look(image, found, next);
        if (isMask) {
            insides->PutMaskImage(id, next, paint.resultRect.topLeft());
        } else {
            insides->PutLayerImage(id, next, paint.resultRect.topLeft());
        }
    }
    // Ground that is new shows nothing, but pixels that are cut off did.
    const bool isCut = !paint.resultRect.contains(found);
    Announce(document, id, target, isCut ? found | paint.changed : paint.changed);
}
} // namespace

LXImage32 PaintExecution::Patched(const LXImage32& image, const QRect& rect, const QRect& resultRect,
                                  const LXImage32& patch, const QRect& patchRect, LXRGBA32i ground)
{
    LXImage32 result = image;
    if (rect != resultRect) {
        result = LXImage32(resultRect.width(), resultRect.height());
        ImageMetadata::Copy(image, result);
        if (ground.value != 0) result.Fill(ground);
        const QRect whole(QPoint(0, 0), rect.size());
        BlendOn(image, whole, BlendMode::Source, result, rect.translated(-resultRect.topLeft()), 1.0, false);
    }
    if (!patchRect.isEmpty()) {
        const QRect whole(QPoint(0, 0), patchRect.size());
        BlendOn(patch, whole, BlendMode::Source, result, patchRect.translated(-resultRect.topLeft()), 1.0,
                false);
    }
    return result;
}

void PaintExecution::Redo(LXDocumentInterface* document, PaintCommandData& data, Target target)
{
    Execute(document, data.GetLayerID(), target, RedoOf(data),
            [&data](const LXImage32& before, const QRect& rect, LXImage32& after) {
                if (rect == data.GetUndoGeometry()) data.KeepTiles(before, after);
            });
}

void PaintExecution::Undo(LXDocumentInterface* document, const PaintCommandData& data, Target target)
{
    Execute(document, data.GetLayerID(), target, UndoOf(data), nullptr);
}

void PaintExecution::AnnounceRedo(LXDocumentInterface* document, const PaintCommandData& data, Target target)
{
    if (HasTarget(document, data.GetLayerID(), target)) {
        Announce(document, data.GetLayerID(), target, RedoOf(data).changed);
    }
}
