#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel_p.h"
#include "document/LandedLayer.h"
#include "document/TextRaster.h"

#include <QThread>

#include <utility>

namespace {
QRect RectOf(const LXImage32& image, const QPoint& offset)
{
    return QRect(offset, QSize(image.Width(), image.Height()));
}
} // namespace

LXDocumentInterfacePrivate::LXDocumentInterfacePrivate(LXDocumentInterface* owner)
    : document(owner),
      locks(std::make_shared<PixelLockTable>()),
      overlays(*locks, layers),
      selection(*locks),
      merged(*locks, layers)
{}

LXDocumentInterfacePrivate* LXDocumentInterfacePrivate::Get(const LXDocumentInterface* document)
{
    return document->m_pPrivate.get();
}

LayerState LXDocumentInterfacePrivate::GetLayerState(unsigned int id) const
{
    const std::shared_ptr<Layer> layer = layers.Find(id);
    if (!layer) return LayerState();
    const PixelReadScope scope(*locks, layer->key);
    return {layers.PropertiesOf(*layer), layer->image, layer->mask};
}

LayerState LXDocumentInterfacePrivate::LandedState(const Layer& layer) const
{
    LayerState landed;
    PlacedImage overlay;
    PlacedImage maskOverlay;
    {
        const PixelReadScope scope(*locks, layer.key);
        landed = {layers.PropertiesOf(layer), layer.image, layer.mask};
        const OverlayPlace place = layers.PlaceOf(layer.overlay);
        if (place.isShown) overlay = {layer.overlay.image, place.topLeft};
        const OverlayPlace maskPlace = layers.PlaceOf(layer.maskOverlay);
        if (maskPlace.isShown) maskOverlay = {layer.maskOverlay.image, maskPlace.topLeft};
    }
    LandedLayer::Land(landed, overlay);
    LandedLayer::LandOnMask(landed, maskOverlay);
    return landed;
}

void LXDocumentInterfacePrivate::InsertLayer(int row, const LayerState& layer)
{
    const int place = qBound(0, row, layers.Count());
    LXDocumentModelPrivate::Get(model)->InsertRow(place, std::make_shared<Layer>(NewLockKey(), layer));
    Invalidate(Extent(static_cast<unsigned int>(place) + 1));
}

void LXDocumentInterfacePrivate::RemoveLayer(int row)
{
    const std::shared_ptr<Layer> layer = layers.Find(static_cast<unsigned int>(row) + 1);
    const QRect rect = ExtentOf(*layer);
    {
        const PixelWriteScope scope(*locks, layer->key);
        LXDocumentModelPrivate::Get(model)->RemoveRow(row);
    }
    Invalidate(rect);
    if (caret.layer.lock() != layer) return;
    caret = Caret();
    emit document->TextCaretChanged(0);
}

unsigned int LXDocumentInterfacePrivate::CaretId() const
{
    const std::shared_ptr<const Layer> layer = caret.layer.lock();
    return layer ? layers.IdOf(*layer) : 0;
}

LayerState LXDocumentInterfacePrivate::NewMask(bool reveals) const
{
    LayerState layer;
    layer.properties.hasMask = true;
    layer.properties.maskReveals = reveals;
    layer.properties.maskRect = Canvas();
    layer.mask = LXImage32(Canvas().width(), Canvas().height());
    if (reveals) layer.mask.Fill(LXRGBA32i(0xFF000000));
    return layer;
}

void LXDocumentInterfacePrivate::ReplaceMask(unsigned int id, const LayerState& from)
{
    const std::shared_ptr<Layer> layer = layers.Find(id);
    if (!layer) return;

    // Nothing floats above a mask that isn't there.
    if (!from.properties.hasMask) overlays.Remove(id, LayerOverlays::Target::Mask);
    const bool wasSelected = layers.PropertiesOf(*layer).isMaskSelected;
    {
        const PixelWriteScope scope(*locks, layer->key);
        layer->mask = from.mask;
        layers.ChangePropertiesOf(*layer, [&from](LayerProperties& properties) {
            properties.hasMask = from.properties.hasMask;
            properties.maskReveals = from.properties.maskReveals;
            properties.isMaskLinked = from.properties.isMaskLinked;
            properties.maskRect = from.properties.maskRect;
            // A mask that comes back is painted on again if it was when it went.
            properties.isMaskSelected =
                from.properties.hasMask && (properties.isMaskSelected || from.properties.isMaskSelected);
        });
    }
    const int row = static_cast<int>(id) - 1;
    LXDocumentModelPrivate::Get(model)->Notify(row, {LXDocumentModel::HasMaskRole});
    const bool isSelected = layers.PropertiesOf(*layer).isMaskSelected;
    if (isSelected != wasSelected) {
        emit model->MaskSelectedChanged(isSelected);
        emit model->LayerSelectedChanged(!isSelected);
    }
    MaskPixelsChanged(id, ExtentOf(*layer));
}

void LXDocumentInterfacePrivate::LayerPixelsChanged(unsigned int id, const QRect& docRect)
{
    OnMainThread([this, id] {
        model->UpdateLayerThumbnail(static_cast<int>(id) - 1);
        emit model->LayerDataChanged(id);
    });
    Invalidate(docRect);
}

void LXDocumentInterfacePrivate::MaskPixelsChanged(unsigned int id, const QRect& docRect)
{
    OnMainThread([this, id] {
        model->UpdateMaskThumbnail(static_cast<int>(id) - 1);
        emit model->LayerMaskChanged(id);
    });
    Invalidate(docRect & Extent(id));
}

void LXDocumentInterfacePrivate::Invalidate(const QRect& docRect)
{
    const QRect visible = docRect & Canvas();
    if (visible.isEmpty()) return;
    merged.MarkDirty(visible);
    OnMainThread([this, visible] { AnnounceComposition(visible); });
}

void LXDocumentInterfacePrivate::AnnounceComposition(const QRect& docRect)
{
    if (compositionStops > 0) {
        heldBackRect |= docRect;
    } else {
        emit document->CompositionChanged(docRect);
    }
}

void LXDocumentInterfacePrivate::StopComposition()
{
    ++compositionStops;
}

void LXDocumentInterfacePrivate::ResumeComposition()
{
    if (compositionStops == 0 || --compositionStops > 0) return;
    // The canvas may have shrunk since.
    const QRect visible = std::exchange(heldBackRect, QRect()) & Canvas();
    if (!visible.isEmpty()) emit document->CompositionChanged(visible);
}

void LXDocumentInterfacePrivate::CreateOverlay(unsigned int id, LayerOverlays::Target target)
{
    Invalidate(overlays.Remove(id, target));
    overlays.Create(id, target);
}

DocumentProperties LXDocumentInterfacePrivate::Properties() const
{
    const std::lock_guard<std::mutex> guard(m_PropertiesMutex);
    return m_Properties;
}

void LXDocumentInterfacePrivate::ChangeProperties(const std::function<void(DocumentProperties&)>& change)
{
    const std::lock_guard<std::mutex> guard(m_PropertiesMutex);
    change(m_Properties);
}

void LXDocumentInterfacePrivate::MoveLayer(unsigned int id, const std::optional<QPoint>& layerOffset,
                                           const std::optional<QPoint>& maskOffset)
{
    MoveProperties(id, [&](LayerProperties& properties) {
        const bool hasPlace = properties.kind != LayerKind::Adjustment;
        if (layerOffset && hasPlace) {
            if (properties.text) {
                const QPoint way = *layerOffset - properties.rect.topLeft();
                properties.text = TextRaster::Moved(*properties.text, way);
            }
            properties.rect.moveTopLeft(*layerOffset);
        }
        if (maskOffset && properties.hasMask) properties.maskRect.moveTopLeft(*maskOffset);
    });
}

/// Tells where layer and mask lie after they were moved, and draws a text anew that came from far away.
void LXDocumentInterfacePrivate::MoveProperties(unsigned int id,
                                                const std::function<void(LayerProperties&)>& move)
{
    LayerProperties before;
    LayerProperties after;
    layers.ChangeProperties(id, [&](LayerProperties& properties) {
        before = properties;
        move(properties);
        after = properties;
    });
    const bool hasLayerMoved = before.rect != after.rect;
    const bool hasMaskMoved = before.maskRect != after.maskRect;
    OnMainThread([=] {
        if (hasLayerMoved) emit model->LayerPositionChanged(id, after.rect.topLeft());
        if (hasMaskMoved) emit model->MaskPositionChanged(id, after.maskRect.topLeft());
        if (hasLayerMoved && CaretId() == id) emit document->TextCaretChanged(id);
    });
    QRect changed;
    if (hasLayerMoved) changed |= before.rect | after.rect;
    // A mask shows only inside its layer.
    if (hasMaskMoved) changed |= (before.maskRect | after.maskRect) & Extent(id);
    Invalidate(changed);
    const QSize canvas = merged.Size();
    const bool wasCut = TextRaster::MayBeCut(before.rect, canvas) || TextRaster::MayBeCut(after.rect, canvas);
    if (after.text && hasLayerMoved && wasCut) PutText(id, *after.text);
}

void LXDocumentInterfacePrivate::PutLayerImage(unsigned int id, const LXImage32& image, const QPoint& offset)
{
    const std::shared_ptr<Layer> layer = layers.Find(id);
    if (!layer) return;
    const PixelWriteScope scope(*locks, layer->key);
    layer->image = image;
    layers.ChangePropertiesOf(*layer,
                              [&](LayerProperties& properties) { properties.rect = RectOf(image, offset); });
}

void LXDocumentInterfacePrivate::PutMaskImage(unsigned int id, const LXImage32& image, const QPoint& offset)
{
    const std::shared_ptr<Layer> layer = layers.Find(id);
    if (!layer) return;
    const PixelWriteScope scope(*locks, layer->key);
    if (!layers.PropertiesOf(*layer).hasMask) return;
    layer->mask = image;
    layers.ChangePropertiesOf(
        *layer, [&](LayerProperties& properties) { properties.maskRect = RectOf(image, offset); });
}

void LXDocumentInterfacePrivate::SyncGeometry(Layer& layer)
{
    layers.ChangePropertiesOf(layer, [&layer](LayerProperties& properties) {
        properties.rect = RectOf(layer.image, properties.rect.topLeft());
        if (properties.hasMask) properties.maskRect = RectOf(layer.mask, properties.maskRect.topLeft());
    });
    for (Overlay* overlay : {&layer.overlay, &layer.maskOverlay}) {
        layers.ChangePlaceOf(*overlay, [overlay](OverlayPlace& place) {
            place.size = QSize(overlay->image.Width(), overlay->image.Height());
        });
    }
}

QRect LXDocumentInterfacePrivate::Extent(unsigned int id) const
{
    const std::shared_ptr<Layer> layer = layers.Find(id);
    return layer ? ExtentOf(*layer) : QRect();
}

QRect LXDocumentInterfacePrivate::ExtentOf(const Layer& layer) const
{
    const LayerProperties properties = layers.PropertiesOf(layer);
    const QRect own = properties.kind == LayerKind::Adjustment ? Canvas() : properties.rect;
    return own | layers.PlaceOf(layer.overlay).ShownRect();
}

void LXDocumentInterfacePrivate::SetTrimmedSelection(const LXImage32& mask, const QPoint& offset)
{
    if (selection.SetTrimmed(mask, offset)) {
        OnMainThread([this] { emit document->SelectionChanged(); });
    }
}

QRect LXDocumentInterfacePrivate::Canvas() const
{
    return QRect(QPoint(0, 0), merged.Size());
}

void LXDocumentInterfacePrivate::OnMainThread(const std::function<void()>& function) const
{
    if (QThread::currentThread() == document->thread()) {
        function();
    } else {
        QMetaObject::invokeMethod(document, function, Qt::QueuedConnection);
    }
}
