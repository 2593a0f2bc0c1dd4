#include "document/MergedPicture.h"

#include "document/LayerCompositor.h"
#include "image/TileThreads.h"

namespace {
PlacedImage SnapshotOf(const Overlay& overlay, const OverlayPlace& place)
{
    // Before it shows, the image belongs to who makes it.
    return place.isShown ? PlacedImage{overlay.image, place.topLeft} : PlacedImage();
}
} // namespace

MergedPicture::MergedPicture(PixelLockTable& locks, const LayerList& layers)
    : m_Locks(locks), m_Layers(layers)
{}

void MergedPicture::Resize(const QSize& size)
{
    LXImage32 image(size.width(), size.height());
    const PixelWriteScope scope(m_Locks, Key);
    m_Image = image;
    m_Blank = image.IsNull() ? LXTilePointer() : image.TileAt(0, 0);
    m_Dirty.Reset(size);
    const std::lock_guard<std::mutex> guard(m_SizeMutex);
    m_Size = size;
}

QSize MergedPicture::Size() const
{
    const std::lock_guard<std::mutex> guard(m_SizeMutex);
    return m_Size;
}

void MergedPicture::MarkDirty(const QRect& rect)
{
    m_Dirty.Mark(rect);
}

void MergedPicture::Update(const QRect& part)
{
    // The count comes first: a change after it leaves its tiles dirty, whatever was read of it.
    const DirtyTiles::Count upTo = m_Dirty.Now();
    const QRect bounds = m_Dirty.Bounds(part);
    if (bounds.isEmpty()) return;

    // No lock of the picture is held while the layers' are waited for.
    const CompositeLayers snapshot = Snapshot(bounds);
    const PixelWriteScope scope(m_Locks, Key);
    Compose(snapshot, m_Dirty.Take(upTo, part));
}

CompositeLayers MergedPicture::Snapshot(const QRect& bounds) const
{
    CompositeLayers snapshot;
    const std::vector<std::shared_ptr<Layer>> layers = m_Layers.All();
    for (auto layer = layers.rbegin(); layer != layers.rend(); ++layer) {
        if (!ShowsIn(**layer, bounds)) continue;
        const PixelReadScope scope(m_Locks, (*layer)->key);
        snapshot.push_back(SnapshotOf(**layer));
    }
    return snapshot;
}

bool MergedPicture::ShowsIn(const Layer& layer, const QRect& bounds) const
{
    const LayerProperties properties = m_Layers.PropertiesOf(layer);
    if (!properties.isVisible || properties.opacity <= 0.0) return false;
    if (properties.kind == LayerKind::Adjustment) return true;
    const QRect floating = m_Layers.PlaceOf(layer.overlay).ShownRect();
    return properties.rect.intersects(bounds) || floating.intersects(bounds);
}

CompositeLayer MergedPicture::SnapshotOf(const Layer& layer) const
{
    const LayerProperties properties = m_Layers.PropertiesOf(layer);
    CompositeLayer snapshot;
    snapshot.pixels = {layer.image, properties.rect.topLeft()};
    if (properties.kind == LayerKind::Adjustment) snapshot.adjustment = properties.adjustment;
    snapshot.overlay = ::SnapshotOf(layer.overlay, m_Layers.PlaceOf(layer.overlay));
    snapshot.opacity = properties.opacity;
    snapshot.blendMode = properties.blendMode;
    snapshot.hasMask = properties.hasMask;
    snapshot.mask = {layer.mask, properties.maskRect.topLeft()};
    snapshot.maskOverlay = ::SnapshotOf(layer.maskOverlay, m_Layers.PlaceOf(layer.maskOverlay));
    snapshot.maskReveals = properties.maskReveals;
    return snapshot;
}

void MergedPicture::Compose(const CompositeLayers& layers, const std::vector<int>& tiles)
{
    const int columns = static_cast<int>(m_Image.m_TilesX);
    try {
        TileThreads::ForEach(static_cast<int>(tiles.size()), [&](int i) {
            const int tile = tiles[static_cast<std::size_t>(i)];
            LayerCompositor::ComposeTile(layers, tile % columns, tile / columns, m_Blank, m_Image);
            ++m_ComposedTiles;
        });
    } catch (...) {
        m_Dirty.MarkTiles(tiles);
        throw;
    }
}
