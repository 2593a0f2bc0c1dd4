#pragma once

#include "document/LayerList.h"

/// The pictures that float above layers and their masks: where they are kept and what moving them touches.
/// No signals. Calls for a bad id, or without an overlay, do nothing and answer nothing.
class LayerOverlays
{
public:
    enum class Target
    {
        Pixels,
        Mask
    };

    LayerOverlays(PixelLockTable& locks, LayerList& layers);

    /// False for a bad id, and for a mask that isn't there. Main thread.
    bool Create(unsigned int id, Target target);
    /// The document rectangle where it showed until now. Main thread.
    QRect Remove(unsigned int id, Target target);
    /// The document rectangle where it shows from now on. Main thread.
    QRect Show(unsigned int id, Target target);
    /// The document rectangle where the picture changes by it. Any thread.
    QRect Move(unsigned int id, Target target, const QPoint& topLeft);

    /// Any thread.
    bool Exists(unsigned int id, Target target) const;
    QRect Geometry(unsigned int id, Target target) const;
    LXImage32* Image(unsigned int id, Target target) const;

    /// A reader of the layer's pixels, until as many calls of Unpin. Main thread.
    void Pin(unsigned int id, Target target);
    void Unpin(unsigned int id, Target target);

private:
    static Overlay& Of(Layer& layer, Target target);

    PixelLockTable& m_Locks;
    LayerList& m_Layers;
};
