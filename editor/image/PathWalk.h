#pragma once

#include <QPainterPath>
#include <QPointF>

#include <algorithm>

/// Hands a painter path over piece by piece: `pieces.MoveTo(point)`, `LineTo(point)` and
/// `CurveTo(guide, guide, end)`, in its order.
/// @param farthest  where coordinates are cut off, on both sides of 0
template <class Pieces>
void WalkPath(const QPainterPath& path, double farthest, Pieces& pieces)
{
    const auto pointOf = [farthest](const QPainterPath::Element& element) {
        return QPointF(std::clamp(element.x, -farthest, farthest),
                       std::clamp(element.y, -farthest, farthest));
    };
    const int count = path.elementCount();
    for (int i = 0; i < count; ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        switch (element.type) {
        case QPainterPath::MoveToElement: pieces.MoveTo(pointOf(element)); break;
        case QPainterPath::LineToElement: pieces.LineTo(pointOf(element)); break;
        case QPainterPath::CurveToElement:
            // Two data elements follow, the second guide and the end.
            if (i + 2 < count) {
                pieces.CurveTo(pointOf(element), pointOf(path.elementAt(i + 1)),
                               pointOf(path.elementAt(i + 2)));
            }
            i += 2;
            break;
        case QPainterPath::CurveToDataElement: break;
        }
    }
}
