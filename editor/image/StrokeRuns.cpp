#include "image/StrokeRuns.h"

#include "image/PathCurve.h"
#include "image/PathWalk.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {
/// Beyond it a length is no longer known to a part of a pixel.
constexpr double Farthest = 1e9;

/// The indices, as real numbers, at which start + index x step lies between the bounds; first > last for
/// none.
std::pair<double, double> IndicesBetween(double start, double step, double least, double most)
{
    constexpr double all = 1e18;
    if (step == 0) return start >= least && start <= most ? std::pair(-all, all) : std::pair(all, -all);
    const double a = (least - start) / step;
    const double b = (most - start) / step;
    return {std::max(std::min(a, b), -all), std::min(std::max(a, b), all)};
}

class RunCollector
{
public:
    RunCollector(double spacing, const QRectF& touched) : m_Spacing(spacing), m_Touched(touched) {}

    void MoveTo(const QPointF& point)
    {
        m_Last = point;
        m_Offset = 0;
    }

    void LineTo(const QPointF& point)
    {
        const QPointF way = point - m_Last;
        const double length = std::hypot(way.x(), way.y());
        if (length >= m_Offset) {
            const double count = std::floor((length - m_Offset) / m_Spacing) + 1;
            StrokeRun run{m_Last, length > 0 ? way / length : QPointF(), m_Offset, m_Spacing,
                          0,      static_cast<qint64>(count) - 1};
            if (const auto inside = run.Within(m_Touched)) m_Runs.push_back(*inside);
            m_Offset += count * m_Spacing;
        }
        m_Offset = std::max(m_Offset - length, 0.0);
        m_Last = point;
    }

    void CurveTo(const QPointF& a, const QPointF& b, const QPointF& end)
    {
        const PathCurve curve{{m_Last, a, b, end}};
        curve.WalkChords(curve.ChordCount(), [this](const QPointF& point) { LineTo(point); });
    }

    std::vector<StrokeRun> Take() { return std::move(m_Runs); }

private:
    double m_Spacing;
    QRectF m_Touched;
    QPointF m_Last;
    double m_Offset = 0; ///< from m_Last to the next point
    std::vector<StrokeRun> m_Runs;
};
} // namespace

std::optional<StrokeRun> StrokeRun::Within(const QRectF& rect) const
{
    const QPointF start = from + direction * offset;
    const QPointF step = direction * spacing;
    const auto byX = IndicesBetween(start.x(), step.x(), rect.left(), rect.right());
    const auto byY = IndicesBetween(start.y(), step.y(), rect.top(), rect.bottom());
    const double least = std::ceil(std::max({byX.first, byY.first, static_cast<double>(first)}));
    const double most = std::floor(std::min({byX.second, byY.second, static_cast<double>(last)}));
    if (least > most) return std::nullopt;
    StrokeRun inside = *this;
    inside.first = static_cast<qint64>(least);
    inside.last = static_cast<qint64>(most);
    return inside;
}

QRectF StrokeRun::Bounds() const
{
    return QRectF(At(first), At(last)).normalized();
}

std::vector<StrokeRun> StrokeRuns::Along(const QPainterPath& path, double spacing, const QRectF& touched)
{
    RunCollector collector(spacing, touched);
    WalkPath(path, Farthest, collector);
    return collector.Take();
}
