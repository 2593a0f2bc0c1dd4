#include "document/LayerOverlays.h"

namespace {
QSize SizeOf(const LXImage32& image)
{
    return QSize(image.Width(), image.Height());
}
} // namespace

LayerOverlays::LayerOverlays(PixelLockTable& locks, LayerList& layers) : m_Locks(locks), m_Layers(layers) {}

Overlay& LayerOverlays::Of(Layer& layer, Target target)
{
    return target == Target::Mask ? layer.maskOverlay : layer.overlay;
}

bool LayerOverlays::Create(unsigned int id, Target target)
{
    const std::shared_ptr<Layer> layer = m_Layers.Find(id);
    if (!layer) return false;
    if (target == Target::Mask && !m_Layers.PropertiesOf(*layer).hasMask) return false;

    Overlay& overlay = Of(*layer, target);
    const PixelWriteScope scope(m_Locks, layer->key);
    overlay.image = LXImage32();
    m_Layers.ChangePlaceOf(overlay, [](OverlayPlace& place) {
        place = OverlayPlace();
        place.exists = true;
    });
    return true;
}

QRect LayerOverlays::Remove(unsigned int id, Target target)
{
    const std::shared_ptr<Layer> layer = m_Layers.Find(id);
    if (!layer) return QRect();

    Overlay& overlay = Of(*layer, target);
    const PixelWriteScope scope(m_Locks, layer->key);
    overlay.image = LXImage32();
    QRect shown;
    m_Layers.ChangePlaceOf(overlay, [&shown](OverlayPlace& place) {
        shown = place.ShownRect();
        place = OverlayPlace();
    });
    return shown;
}

QRect LayerOverlays::Show(unsigned int id, Target target)
{
    const std::shared_ptr<Layer> layer = m_Layers.Find(id);
    if (!layer) return QRect();

    Overlay& overlay = Of(*layer, target);
    const PixelReadScope scope(m_Locks, layer->key);
    QRect shown;
    m_Layers.ChangePlaceOf(overlay, [&](OverlayPlace& place) {
        if (place.isShown) return;
        place.isShown = place.exists;
        place.size = SizeOf(overlay.image);
        shown = place.ShownRect();
    });
    return shown;
}

QRect LayerOverlays::Move(unsigned int id, Target target, const QPoint& topLeft)
{
    const std::shared_ptr<Layer> layer = m_Layers.Find(id);
    if (!layer) return QRect();

    QRect touched;
    m_Layers.ChangePlaceOf(Of(*layer, target), [&](OverlayPlace& place) {
        if (!place.exists) return;
        const QRect before = place.ShownRect();
        place.topLeft = topLeft;
        touched = before | place.ShownRect();
    });
    return touched;
}

bool LayerOverlays::Exists(unsigned int id, Target target) const
{
    const std::shared_ptr<Layer> layer = m_Layers.Find(id);
    return layer && m_Layers.PlaceOf(Of(*layer, target)).exists;
}

QRect LayerOverlays::Geometry(unsigned int id, Target target) const
{
    const std::shared_ptr<Layer> layer = m_Layers.Find(id);
    if (!layer) return QRect();

    const Overlay& overlay = Of(*layer, target);
    OverlayPlace place = m_Layers.PlaceOf(overlay);
    if (!place.exists) return QRect();
    // Until it shows, its maker changes the image without a word.
    if (!place.isShown) place.size = SizeOf(overlay.image);
    return QRect(place.topLeft, place.size);
}

LXImage32* LayerOverlays::Image(unsigned int id, Target target) const
{
    const std::shared_ptr<Layer> layer = m_Layers.Find(id);
    if (!layer) return nullptr;

    Overlay& overlay = Of(*layer, target);
    return m_Layers.PlaceOf(overlay).exists ? &overlay.image : nullptr;
}

void LayerOverlays::Pin(unsigned int id, Target target)
{
    const std::shared_ptr<Layer> layer = m_Layers.Find(id);
    if (!layer || !m_Layers.PlaceOf(Of(*layer, target)).exists) return;
    m_Locks.LockRead(layer->key);
    ++Of(*layer, target).pins;
}

void LayerOverlays::Unpin(unsigned int id, Target target)
{
    const std::shared_ptr<Layer> layer = m_Layers.Find(id);
    if (!layer || Of(*layer, target).pins == 0) return;
    --Of(*layer, target).pins;
    m_Locks.UnlockRead(layer->key, std::this_thread::get_id());
}
