#pragma once

#include <QPointF>

class QGraphicsItem;
class QGraphicsScene;
class QGraphicsView;

// What items need to know of the views that show them. Without a view a scene unit counts as a pixel.

/// The view that the pointer is over; else the first one. Null for no scene, or one without a view.
const QGraphicsView* ViewAtPointer(const QGraphicsScene* scene);

/// From one scene point to another, in the view's pixels.
QPointF ScreenDelta(const QGraphicsView* view, const QPointF& from, const QPointF& to);

/// How long a screen pixel is in item units, in the view where it is longest.
double LongestPixel(const QGraphicsItem* item);
