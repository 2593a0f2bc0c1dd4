#pragma once

#include "common/PaintCommands.h"
#include "image/LXImage.h"

#include <QBrush>
#include <QColor>
#include <QRect>

class LXDocumentInterface;

/// The pixels that a command of the fill menu works on, with everything it needs to know of the document.
/// The images are copies, so no locker is held while it works.
struct FillPixels
{
    unsigned int layerId = 0;
    PaintTarget target = PaintTarget::Layer;
    LXImage32 image; ///< of the layer or mask
    QRect geometry;  ///< its rectangle in the document
    bool hasSelection = false;
    LXImage32 selection;     ///< null without one
    QRect workRect;          ///< what may change, in pixels of `image`; empty when the selection misses it
    QRect selectionWorkRect; ///< the same pixels in `selection`
};

/// Takes the lockers for the moment of copying. Throws std::runtime_error without such a layer or mask, and
/// what images throw. Any thread.
FillPixels ReadFillPixels(const LXDocumentInterface* document, unsigned int layerId, PaintTarget target);

/// What the operation changed, cut to the working rectangle.
PaintChange MakePaintChange(const FillPixels& before, const LXImage32& after);

// The operations run on a worker and change their own image alone. None throws: a failure is reported in the
// log and sets `error`; the image means nothing then.

/// One color everywhere, through the selection if there is one. On a mask the color's lightness.
struct FillSolidOperation
{
    FillPixels pixels;
    QColor color;           ///< counts as opaque, unless `clear`
    bool clear = false;     ///< makes a layer transparent instead; through a selection only with `keepAlpha`
    bool keepAlpha = false; ///< together with `clear` nothing changes
    bool error = false;

    void operator()();
};

/// A brush, blended on the layer in a mode.
struct LayerFillCustomOperation
{
    FillPixels pixels;
    QBrush brush;
    unsigned int mode = 0;
    double opacity = 1.0; ///< 0 to 1
    bool keepAlpha = false;
    bool error = false;

    void operator()();
};

/// The same on a mask: the brush's lightness, in a mode that works on grays.
struct MaskFillCustomOperation
{
    FillPixels pixels;
    QBrush brush;
    unsigned int mode = 0;
    double opacity = 1.0; ///< 0 to 1
    bool error = false;

    void operator()();
};

/// Makes the pixels opaque, as far as they are selected.
struct CleanupAlphaOperation
{
    FillPixels pixels;
    bool error = false;

    void operator()();
};
