#pragma once

#include "EditorExport.h"

#include "document/LXPathElement.h"

#include <vector>

/// An anchor of a path as a person sees it. In a closed contour the last element lies on the first: both are
/// one anchor, whose curve comes in by the last and goes out by the first.
struct PathAnchor
{
    int in = -1;  ///< the element whose in guide bends the curve before the anchor
    int out = -1; ///< the element whose out guide bends the curve behind it; `in` unless it closes a contour
};

enum class GuideSide
{
    In,
    Out,
};

/// Changes of paths by their anchors, as functions on values. Points are in the path's coordinates. Any
/// thread.
namespace PathAnchors {
/// In the order of their `out` elements.
ZK_EDITOR_EXPORT std::vector<PathAnchor> Of(const LXPath& path);

/// Number of the anchor that the element belongs to; -1 for none.
ZK_EDITOR_EXPORT int IndexOf(const std::vector<PathAnchor>& anchors, int element);

ZK_EDITOR_EXPORT QPointF Center(const LXPath& path, const PathAnchor& anchor);
ZK_EDITOR_EXPORT QPointF Guide(const LXPath& path, const PathAnchor& anchor, GuideSide side);
/// Whether the guide lies anywhere but on its anchor.
ZK_EDITOR_EXPORT bool HasGuide(const LXPath& path, const PathAnchor& anchor, GuideSide side);
/// Whether both guides lie on one line through the anchor, on two sides of it, as far as an eye can tell.
ZK_EDITOR_EXPORT bool IsSmooth(const LXPath& path, const PathAnchor& anchor);

/// With its guides.
ZK_EDITOR_EXPORT void Move(LXPath& path, const PathAnchor& anchor, const QPointF& way);
ZK_EDITOR_EXPORT void SetGuide(LXPath& path, const PathAnchor& anchor, GuideSide side, const QPointF& guide);
/// The out guide, and the in guide as its mirror image.
ZK_EDITOR_EXPORT void SetMirroredGuides(LXPath& path, const PathAnchor& anchor, const QPointF& outGuide);
/// Turns the guide so that the anchor is smooth; its length stays. Nothing while the other guide is none.
ZK_EDITOR_EXPORT void AlignGuide(LXPath& path, const PathAnchor& anchor, GuideSide side);

/// Puts a new anchor on the curve where it comes nearest to the point, without changing its shape.
/// @return the new element; -1, with the path untouched, when there is no curve or an anchor is nearest
ZK_EDITOR_EXPORT int Insert(LXPath& path, const QPointF& near);

/// Takes the anchor out; its neighbours keep their guides and are joined, a closed contour stays closed.
ZK_EDITOR_EXPORT void Remove(LXPath& path, const PathAnchor& anchor);

/// The point turned about the origin to the nearest of the eight directions, at the foot of the
/// perpendicular.
ZK_EDITOR_EXPORT QPointF SnappedToDirections(const QPointF& origin, const QPointF& point);
} // namespace PathAnchors
