#pragma once

#include "history/PaintCommandData.h"
#include "image/LXImage.h"

#include <QRect>

class LXDocumentInterface;

/// What the paint commands do to a layer or a mask.
namespace PaintExecution {
enum class Target
{
    Layer,
    Mask
};

/// An image laid out anew, with a patch put into it.
/// @param rect       where `image` lies, in document pixels like all others
/// @param resultRect where the result lies
/// @param patchRect  where the patch replaces pixels; as large as the patch, or empty for none
/// @param ground     what the result holds where neither lies
/// Shares the tiles that it can.
LXImage32 Patched(const LXImage32& image, const QRect& rect, const QRect& resultRect, const LXImage32& patch,
                  const QRect& patchRect, LXRGBA32i ground);

/// Grow the target and put the redo image in; put the undo image in and cut the target back. All or nothing
/// when they throw. After a redo the data keep whole tiles of the target, where they can. Nothing for a bad
/// id or a mask that isn't there. Main thread; signals as the document sends them for changed pixels.
void Redo(LXDocumentInterface* document, PaintCommandData& data, Target target);
void Undo(LXDocumentInterface* document, const PaintCommandData& data, Target target);
/// Only tells what Redo would have changed: the pixels are there already.
void AnnounceRedo(LXDocumentInterface* document, const PaintCommandData& data, Target target);
} // namespace PaintExecution
