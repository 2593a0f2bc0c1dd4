#include "document/LXPathConvert.h"

#include <QPainterPath>
#include <QTransform>

namespace {
bool AreSame(const QPointF& a, const QPointF& b)
{
    return a.x() == b.x() && a.y() == b.y();
}

void Join(QPainterPath& path, const LXPathElement& from, const LXPathElement& to)
{
    const bool isLine =
        AreSame(from.GetOutGuide(), from.GetCenterPoint()) && AreSame(to.GetInGuide(), to.GetCenterPoint());
    if (isLine) {
        path.lineTo(to.GetCenterPoint());
    } else {
        path.cubicTo(from.GetOutGuide(), to.GetInGuide(), to.GetCenterPoint());
    }
}
} // namespace

LXPath ConvertTo(const QPainterPath& path)
{
    LXPath elements;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.type == QPainterPath::CurveToElement) {
            // The end of a curve stands two elements after its first guide.
            elements.last().SetOutGuide(element);
            const QPointF anchor = path.elementAt(i + 2);
            elements.append(LXPathElement(anchor, path.elementAt(i + 1), anchor));
            i += 2;
        } else {
            const bool starts = element.type == QPainterPath::MoveToElement && !elements.isEmpty();
            elements.append(LXPathElement(element));
            elements.last().SetStartsContour(starts);
        }
    }
    return elements;
}

QPainterPath ConvertFrom(const LXPath& path)
{
    QPainterPath result;
    for (int i = 0; i < path.size(); ++i) {
        if (i == 0 || path[i].StartsContour()) {
            result.moveTo(path[i].GetCenterPoint());
        } else {
            Join(result, path[i - 1], path[i]);
        }
    }
    return result;
}

void TransformPath(LXPath& path, const QTransform& transform)
{
    for (LXPathElement& element : path) {
        element.SetCenterPoint(transform.map(element.GetCenterPoint()));
        element.SetInGuide(transform.map(element.GetInGuide()));
        element.SetOutGuide(transform.map(element.GetOutGuide()));
    }
}
