#include "image/PathEdges.h"

#include "image/PathCurve.h"
#include "image/PathWalk.h"

#include <QRectF>

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
        curve.WalkChords(count, [this](const QPointF& point) { LineTo(point); });
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
} // namespace

std::vector<PathEdge> PathEdges::Of(const QPainterPath& path, const QRectF& rect)
{
    EdgeCollector collector(rect);
    WalkPath(path, Farthest, collector);
    return collector.Take();
}
