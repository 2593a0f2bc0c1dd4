#pragma once

#include "image/LXImage.h"

#include <QRect>

#include <memory>

class LXDocumentInterface;
class LexoCommand;

/// Which pixels of a layer a change is about.
enum class PaintTarget
{
    Layer,
    Mask,
};

/// Pixels before and after; rectangles are document pixels.
struct PaintChange
{
    unsigned int layerId = 0;
    LXImage32 undoImage;
    LXImage32 redoImage;
    QRect undoGeometry; ///< the target's rectangle before
    QRect redoGeometry; ///< where redoImage lies; empty when nothing is painted
};

/// The undoable command of a change, without its text. Main thread only.
/// @param apply  whether the first redo writes; false when the pixels are in the document already.
std::unique_ptr<LexoCommand> MakePaintCommand(LXDocumentInterface* document, PaintTarget target,
                                              const PaintChange& change, bool apply);
