#include "history/PaintExecution.h"

#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "history/PaintPlacement.h"
#include "image/ImageMetadata.h"

namespace {
struct Paint
{
    const LXImage32& patch;
    QRect patchRect;
    QRect resultRect;
};

QSize SizeOf(const LXImage32& image)
{
    return QSize(image.Width(), image.Height());
}

Paint RedoOf(const PaintCommandData& data)
{
    const QRect before = data.GetUndoGeometry();
    const LXImage32& image = data.GetRedoImage();
    const QRect placed = PaintPlacement::OfRedoImage(SizeOf(image), before, data.GetRedoGeometry());
    return {image, placed, before | placed};
}

Paint UndoOf(const PaintCommandData& data)
{
    const QRect before = data.GetUndoGeometry();
    const LXImage32& image = data.GetUndoImage();
    return {image, PaintPlacement::OfUndoImage(SizeOf(image), before, data.GetRedoGeometry()), before};
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
             const Paint& paint)
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
        const LXImage32 next =
            PaintExecution::Patched(image, found, paint.resultRect, paint.patch, paint.patchRect, ground);
        if (isMask) {
            insides->PutMaskImage(id, next, paint.resultRect.topLeft());
        } else {
            insides->PutLayerImage(id, next, paint.resultRect.topLeft());
        }
    }
    // Ground that is new shows nothing, but pixels that are cut off did.
    const bool isCut = !paint.resultRect.contains(found);
    Announce(document, id, target, isCut ? found | paint.patchRect : paint.patchRect);
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

void PaintExecution::Redo(LXDocumentInterface* document, const PaintCommandData& data, Target target)
{
    Execute(document, data.GetLayerID(), target, RedoOf(data));
}

void PaintExecution::Undo(LXDocumentInterface* document, const PaintCommandData& data, Target target)
{
    Execute(document, data.GetLayerID(), target, UndoOf(data));
}

void PaintExecution::AnnounceRedo(LXDocumentInterface* document, const PaintCommandData& data, Target target)
{
    if (HasTarget(document, data.GetLayerID(), target)) {
        Announce(document, data.GetLayerID(), target, RedoOf(data).patchRect);
    }
}
