#pragma once

#include "common/PaintCommands.h"
#include "image/LXImage.h"

#include <QPoint>
#include <QRect>

class LXDocumentInterface;

/// The pixels of a layer, or its mask, with the overlay above them: one set of calls for both. A value that
/// holds no state of its own. The calls ask for a document, and run on the threads that LXDocumentInterface
/// tells for them.
class FloatingTarget
{
public:
    FloatingTarget() = default;

    FloatingTarget(LXDocumentInterface* document, unsigned int id, PaintTarget kind)
        : m_pDocument(document), m_Id(id), m_Kind(kind)
    {}

    LXDocumentInterface* GetDocument() const { return m_pDocument; }

    unsigned int GetId() const { return m_Id; }

    PaintTarget GetKind() const { return m_Kind; }

    bool IsMask() const { return m_Kind == PaintTarget::Mask; }

    /// Null for a bad id and for a mask that isn't there. Under the layer's locker.
    LXImage32* Image() const;
    /// Empty likewise.
    QRect Geometry() const;
    /// What new ground of the target holds: nothing, on a mask its default.
    LXRGBA32i NewGround() const;

    /// What is selected of the target; a mask's part is gray. Takes the lockers itself.
    LXImage32 Lift() const;
    /// Takes what Lift() lifts out of an image of the target; of a mask the mask background is left.
    /// @param image  as large as the geometry
    void Erase(LXImage32& image) const;

    /// The overlay's operations; see LXDocumentInterface.
    void CreateOverlay() const;
    LXImage32* OverlayImage() const;
    QRect OverlayGeometry() const;
    void SetOverlayPosition(const QPoint& topLeft) const;
    void ShowOverlay() const;
    void InvalidateOverlay(const QRect& rect) const;
    void RemoveOverlay() const;
    /// A copy of the overlay's pixels; under the layer's locker.
    LXImage32 ReadOverlay() const;

private:
    LXDocumentInterface* m_pDocument = nullptr;
    unsigned int m_Id = 0;
    PaintTarget m_Kind = PaintTarget::Layer;
};
