#pragma once

#include "EditorExport.h"

#include "geometryengine/PathAnchors.h"

/// What a person takes hold of.
enum class PathGrip
{
    Anchor,
    InGuide,
    OutGuide,
};

/// What the mouse makes of an anchor and its guides, as functions on values: each result depends on the path
/// at the press and on the way from there alone. Any thread.
namespace PathDrag {
/// The path after a drag.
///
/// An anchor takes its guides along; with Alt it stays, and mirrored guides are pulled out of it. A guide
/// turns the other one of a smooth anchor along; with Alt, and at a corner, it moves alone. Shift keeps
/// anchors on the eight directions from where they were, and guides on those from their anchor.
ZK_EDITOR_EXPORT LXPath Dragged(const LXPath& path, const PathAnchor& anchor, PathGrip grip,
                                const QPointF& way, Qt::KeyboardModifiers modifiers);

/// The path after a press and a release on one spot: with Alt the guide, or both guides of the anchor, are
/// taken off.
ZK_EDITOR_EXPORT LXPath Clicked(const LXPath& path, const PathAnchor& anchor, PathGrip grip,
                                Qt::KeyboardModifiers modifiers);

/// The path while its newest anchor is being drawn: the out guide follows the pointer and the in guide
/// mirrors it; with Alt the in guide stays. Where the newest anchor closes the contour, Alt leaves the curve
/// that was drawn first as it is, and bends the closing one alone. Shift as in Dragged().
/// @param element  of the anchor
ZK_EDITOR_EXPORT LXPath Bent(const LXPath& path, int element, const QPointF& pointer,
                             Qt::KeyboardModifiers modifiers);
} // namespace PathDrag
