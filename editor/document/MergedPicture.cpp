#include "document/MergedPicture.h"

#include "document/LayerCompositor.h"

namespace {
CompositeLayer SnapshotOf(const Layer& layer, const LayerProperties& properties)
{
    CompositeLayer snapshot;
    snapshot.image = layer.image;
    snapshot.offset = properties.rect.topLeft();
    snapshot.opacity = properties.opacity;
    snapshot.blendMode = properties.blendMode;
    snapshot.hasMask = properties.hasMask;
    snapshot.mask = layer.mask;
    snapshot.maskOffset = properties.maskRect.topLeft();
    snapshot.maskReveals = properties.maskReveals;
    return snapshot;
}

bool ShowsIn(const LayerProperties& properties, const QRect& bounds)
{
    return properties.isVisible && properties.opacity > 0.0 && properties.rect.intersects(bounds);
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

void MergedPicture::Update()
{
    // The count comes first: a change after it leaves its tiles dirty, whatever was read of it.
    const DirtyTiles::Count upTo = m_Dirty.Now();
    const QRect bounds = m_Dirty.Bounds();
    if (bounds.isEmpty()) return;

    // No lock of the picture is held while the layers' are waited for.
    const CompositeLayers snapshot = Snapshot(bounds);
    const PixelWriteScope scope(m_Locks, Key);
    Compose(snapshot, m_Dirty.Take(upTo));
}

CompositeLayers MergedPicture::Snapshot(const QRect& bounds) const
{
    CompositeLayers snapshot;
    const std::vector<std::shared_ptr<Layer>> layers = m_Layers.All();
    for (auto layer = layers.rbegin(); layer != layers.rend(); ++layer) {
        if (!ShowsIn(m_Layers.PropertiesOf(**layer), bounds)) continue;
        const PixelReadScope scope(m_Locks, (*layer)->key);
        snapshot.push_back(SnapshotOf(**layer, m_Layers.PropertiesOf(**layer)));
    }
    return snapshot;
}

void MergedPicture::Compose(const CompositeLayers& layers, const std::vector<int>& tiles)
{
    const int columns = static_cast<int>(m_Image.m_TilesX);
    try {
        for (const int tile : tiles) {
            LayerCompositor::ComposeTile(layers, tile % columns, tile / columns, m_Blank, m_Image);
            ++m_ComposedTiles;
        }
    } catch (...) {
        m_Dirty.MarkTiles(tiles);
        throw;
    }
}
