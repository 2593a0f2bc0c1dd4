#pragma once

#include <QPainterPath>
#include <QRegion>

/// The pixels that a thin line along the path touches, in pieces, inside the clip. Both are in pixels.
QRegion OutlineRegion(const QPainterPath& path, const QRect& clip);
