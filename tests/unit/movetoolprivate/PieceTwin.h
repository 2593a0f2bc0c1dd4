#pragma once

#include "support/TestImages.h"

#include <QPoint>
#include <QRect>

/// Floating pieces as the rules are told, pixel by pixel: slow, obvious, the oracle of the objects.
namespace PieceTwin {
/// A picture at a place of the document.
struct Placed
{
    QRect rect;
    PlainImage pixels;

    LXRGBA32i At(const QPoint& point, LXRGBA32i outside) const
    {
        if (!rect.contains(point)) return outside;
        return pixels.At(point.x() - rect.x(), point.y() - rect.y());
    }
};

struct Case
{
    Placed target;        ///< the layer's pixels, or its mask
    Placed selection;     ///< coverage in alpha
    QRect canvas;         ///< what lies beyond is lost when a piece is laid down
    bool isMask = false;  ///< the piece is gray then
    bool isCut = false;   ///< else a copy
    LXRGBA32i newGround;  ///< what the target holds where it grows
    LXRGBA32i maskGround; ///< the gray that a cut leaves in a mask
};

/// The target while the piece floats.
Placed Below(const Case& piece);
/// The target after the piece was laid down so far from where it was lifted.
Placed LaidDown(const Case& piece, const QPoint& delta);
} // namespace PieceTwin
