#pragma once

#include "ZKHostExport.h"

class QGraphicsItem;
class QPainter;
class QPainterPath;

/// Paints the outline of a GeometryItem in its own way, and moves it. Main thread only.
class ZK_HOST_EXPORT CustomGeometryPaint
{
public:
    CustomGeometryPaint() = default;
    virtual ~CustomGeometryPaint();

    CustomGeometryPaint(const CustomGeometryPaint&) = delete;
    CustomGeometryPaint& operator=(const CustomGeometryPaint&) = delete;

    /// Draws the item's path, in item coordinates.
    virtual void paint(QPainter* painter, const QPainterPath& path) = 0;

    /// The outline moves from now on; who paints it tells when it has to be painted again.
    /// @param item      outlives the painter
    /// @param interval  milliseconds between two steps
    virtual void start(QGraphicsItem* item, int interval) = 0;
};
