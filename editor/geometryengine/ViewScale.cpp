#include "geometryengine/ViewScale.h"

#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>

#include <algorithm>
#include <cmath>

const QGraphicsView* ViewAtPointer(const QGraphicsScene* scene)
{
    if (!scene) return nullptr;
    const QList<QGraphicsView*> views = scene->views();
    for (const QGraphicsView* view : views) {
        if (view->viewport()->underMouse()) return view;
    }
    return views.isEmpty() ? nullptr : views.first();
}

QPointF ScreenDelta(const QGraphicsView* view, const QPointF& from, const QPointF& to)
{
    if (!view) return to - from;
    const QTransform toView = view->viewportTransform();
    return toView.map(to) - toView.map(from);
}

double LongestPixel(const QGraphicsItem* item)
{
    if (!item->scene()) return 1;
    double longest = 0;
    const QList<QGraphicsView*> views = item->scene()->views();
    for (const QGraphicsView* view : views) {
        const QTransform toView = item->deviceTransform(view->viewportTransform());
        const double scale =
            std::min(std::hypot(toView.m11(), toView.m12()), std::hypot(toView.m21(), toView.m22()));
        if (scale > 0) longest = std::max(longest, 1 / scale);
    }
    return longest > 0 ? longest : 1;
}
