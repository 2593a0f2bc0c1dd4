#include "image/PathEdges.h"

#include "image/PathCurve.h"

#include <QRectF>

#include <algorithm>

namespace {
/// Products of such coordinates are still finite.
constexpr double Farthest = 1e15;

class EdgeCollector
{
public:
    explicit EdgeCollector(const QRectF& rect) : m_Rect(rect) {}

    void MoveTo(const QPointF& point)
    {
        LineTo(m_Start);
        m_Start = point;
        m_Last = point;
    }

    void LineTo(const QPointF& point)
    {
        if (m_Last.y() < point.y()) m_Edges.push_back({m_Last, point, 1});
        if (m_Last.y() > point.y()) m_Edges.push_back({point, m_Last, -1});
        m_Last = point;
    }

    void CurveTo(const QPointF& a, const QPointF& b, const QPointF& end)
    {
        const PathCurve curve{{m_Last, a, b, end}};
        const int count = curve.Meets(m_Rect) ? curve.ChordCount() : 1;
        for (int i = 1; i < count; ++i) {
            LineTo(curve.At(static_cast<double>(i) / count));
        }
        LineTo(end);
    }

    std::vector<PathEdge> Take()
    {
        LineTo(m_Start);
        return std::move(m_Edges);
    }

private:
    QRectF m_Rect;
    QPointF m_Start;
    QPointF m_Last;
    std::vector<PathEdge> m_Edges;
};

QPointF PointOf(const QPainterPath::Element& element)
{
    return QPointF(std::clamp(element.x, -Farthest, Farthest), std::clamp(element.y, -Farthest, Farthest));
}
} // namespace

std::vector<PathEdge> PathEdges::Of(const QPainterPath& path, const QRectF& rect)
{
    EdgeCollector collector(rect);
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        switch (element.type) {
        case QPainterPath::MoveToElement: collector.MoveTo(PointOf(element)); break;
        case QPainterPath::LineToElement: collector.LineTo(PointOf(element)); break;
        case QPainterPath::CurveToElement:
            // Two data elements follow, the second control point and the end.
            if (i + 2 < path.elementCount()) {
                collector.CurveTo(PointOf(element), PointOf(path.elementAt(i + 1)),
                                  PointOf(path.elementAt(i + 2)));
            }
            i += 2;
            break;
        case QPainterPath::CurveToDataElement: break;
        }
    }
    return collector.Take();
}
