#pragma once

#include "ZKHostExport.h"

#include "document/LXPathElement.h"

class QPainterPath;
class QTransform;

/// The anchors of a painter path, a contour after the other; none for a path of no element. Any thread.
ZK_HOST_EXPORT LXPath ConvertTo(const QPainterPath& path);

/// The painter path through the anchors: a line where neither guide bends, else a cubic curve. Painter paths
/// drop what draws nothing: an anchor that lies on the one before it, without a guide that leaves it, and a
/// contour of one anchor before another. All other anchors come back from `ConvertTo`. Any thread.
ZK_HOST_EXPORT QPainterPath ConvertFrom(const LXPath& path);

/// Maps anchors and guides. For a perspective transform the curves between anchors are those of the mapped
/// guides, which is close, not exact. Any thread.
ZK_HOST_EXPORT void TransformPath(LXPath& path, const QTransform& transform);
