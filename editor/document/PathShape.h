#pragma once

#include "document/LXPathElement.h"

#include <QImage>
#include <QPainterPath>
#include <QSize>

/// What the sub paths of a path look like together. Any thread.
namespace PathShape {
/// Folds the sub paths by their LXPathsListModel::LogicalOp. A first one that subtracts or intersects does so
/// with the canvas.
QPainterPath Fold(const LXSubPaths& path, const QSize& canvas);

/// All sub paths as they were drawn, for an outline.
QPainterPath Outline(const LXSubPaths& path);

/// A small picture for lists: the area white, the outline dark, on gray of the canvas' proportions. Null for
/// an empty canvas.
QImage MakeThumbnail(const LXSubPaths& path, const QSize& canvas);
} // namespace PathShape
