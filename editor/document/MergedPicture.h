#pragma once

#include "document/CompositeLayer.h"
#include "document/DirtyTiles.h"
#include "document/LayerList.h"
#include "document/PixelLockTable.h"

#include <QSize>

#include <atomic>

/// All layers in one picture: a cache of tiles of the size of the canvas, composed where it is dirty and only
/// where it is asked for.
class MergedPicture
{
public:
    /// Of the pixel lock under which the image is read; no layer has it.
    static constexpr PixelLockTable::Key Key = 0;

    MergedPicture(PixelLockTable& locks, const LayerList& layers);

    /// Main thread; throws std::bad_alloc for a size that LXImage refuses, and stays as it was.
    void Resize(const QSize& size);
    /// Any thread.
    QSize Size() const;
    /// @param rect  canvas pixels; what lies outside the canvas is ignored. Any thread.
    void MarkDirty(const QRect& rect);

    /// Composes what of the part was dirty at the call. Any thread; the caller holds no layer's write lock.
    /// When it throws, what isn't composed stays dirty.
    /// @param part  canvas pixels
    void Update(const QRect& part);

    void Update() { Update(QRect(QPoint(0, 0), Size())); }

    /// Under the pixel lock.
    LXImage32& Image() { return m_Image; }

    /// How many tiles were ever composed: a measure for tests of how lazy the cache is.
    quint64 ComposedTiles() const { return m_ComposedTiles; }

private:
    /// The layers that show in the rectangle.
    CompositeLayers Snapshot(const QRect& bounds) const;
    bool ShowsIn(const Layer& layer, const QRect& bounds) const;
    /// Under the layer's pixel lock.
    CompositeLayer SnapshotOf(const Layer& layer) const;
    void Compose(const CompositeLayers& layers, const std::vector<int>& tiles);

    PixelLockTable& m_Locks;
    const LayerList& m_Layers;
    DirtyTiles m_Dirty;
    LXImage32 m_Image;
    LXTilePointer m_Blank; ///< of zeros; null without a canvas
    mutable std::mutex m_SizeMutex;
    QSize m_Size{0, 0};
    std::atomic<quint64> m_ComposedTiles{0};
};
