#include "image/PathEdges.h"

#include <QRectF>

#include <algorithm>
#include <cmath>

namespace {
/// Products of such coordinates are still finite.
constexpr double Farthest = 1e15;
constexpr double CurveTolerance = 1.0 / 256;
constexpr double MostChords = 4096;

struct Curve
{
    QPointF points[4];

    QPointF At(double t) const
    {
        const double rest = 1 - t;
        return points[0] * (rest * rest * rest) + points[1] * (3 * rest * rest * t) +
               points[2] * (3 * rest * t * t) + points[3] * (t * t * t);
    }

    bool Meets(const QRectF& rect) const
    {
        const auto [left, right] = std::minmax({points[0].x(), points[1].x(), points[2].x(), points[3].x()});
        const auto [top, bottom] = std::minmax({points[0].y(), points[1].y(), points[2].y(), points[3].y()});
        return right >= rect.left() && left <= rect.right() && bottom >= rect.top() && top <= rect.bottom();
    }

    /// A chord leaves its curve by an eighth of the second derivative at most, which is six times the larger
    /// of these differences.
    int ChordCount() const
    {
        const QPointF first = points[0] - 2 * points[1] + points[2];
        const QPointF second = points[1] - 2 * points[2] + points[3];
        const double most = std::max(std::hypot(first.x(), first.y()), std::hypot(second.x(), second.y()));
        const double count = std::ceil(std::sqrt(0.75 * most / CurveTolerance));
        return static_cast<int>(std::clamp(count, 1.0, MostChords));
    }
};

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
        const Curve curve{{m_Last, a, b, end}};
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
