#pragma once

#include "core/ZKBrushSettings.h"
#include "image/LXImage.h"

#include <QColor>
#include <QPainterPath>
#include <QRect>

#include <functional>
#include <memory>

class LXDocumentInterface;
class LexoCommand;

/// Painting a stroke of a round brush on a layer or a mask, in three steps: reading and pushing belong to the
/// main thread, painting to any.
namespace StrokeJob {
/// Everything that a stroke needs to know of the document.
struct Target
{
    unsigned int id;
    bool isMask;
    LXImage32 image;
    QRect geometry; ///< of the image in the document
    QRect canvas;
    quint32 ground; ///< of what the image grows by
    bool keepAlpha; ///< the layer's transparency is locked
    bool hasSelection;
    LXImage32 selection;
    QRect selectionRect; ///< document pixels
};

/// The part that changes.
struct Change
{
    LXImage32 before; ///< as far as it was there
    LXImage32 after;
    QRect rect; ///< of `after`, document pixels; null when the stroke touches nothing
};

/// @param done  of `all` pieces of the work; called from several threads
using Progress = std::function<void(int done, int all)>;

/// Takes the lockers for the moment of reading. The layer, or its mask, is there.
Target Read(const LXDocumentInterface* document, unsigned int id, bool isMask);

/// Paints inside the canvas and inside the target's own rectangle; nothing else of the target grows. With a
/// selection, through it. Throws what images throw, and TileThreads::Cancelled.
/// @param path   document pixels
/// @param color  for a mask a gray; its alpha counts as opaque
Change Paint(const Target& target, const QPainterPath& path, const QColor& color,
             const ZKBrushSettings& settings, const Progress& progress);

/// The step with its text; its first redo paints.
std::unique_ptr<LexoCommand> MakeCommand(LXDocumentInterface* document, const Target& target,
                                         const Change& change);
} // namespace StrokeJob
