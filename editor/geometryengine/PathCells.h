#pragma once

#include "EditorExport.h"

#include <QRegion>

class QPainterPath;

/// The squares of 32 pixels, of a grid that starts at (0, 0), that the path's outline comes nearer to than
/// `reach`; some that it hardly misses may be among them. Their number follows the outline's length inside
/// the clip, and not the area round it.
/// @param path  in pixels, however far beyond the clip it reaches
QRegion ZK_EDITOR_EXPORT CellsAlong(const QPainterPath& path, double reach, const QRect& clip);
