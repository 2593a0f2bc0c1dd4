#include "gui/SnapLines.h"

#include <cmath>

namespace {
double MiddleOf(int first, int last)
{
    return (first + last + 1.0) / 2;
}

/// Keeps the shortest way from a place to a line.
class Nearest
{
public:
    explicit Nearest(double reach) : m_Distance(reach) {}

    void Offer(double place, double line)
    {
        const double distance = std::abs(line - place);
        if (m_bFound ? distance >= m_Distance : distance > m_Distance) return;
        m_bFound = true;
        m_Distance = distance;
        m_Way = line - place;
    }

    bool IsFound() const { return m_bFound; }

    /// From the place to the line.
    double Way() const { return m_Way; }

private:
    double m_Distance;
    double m_Way = 0;
    bool m_bFound = false;
};
} // namespace

void SnapLines::AddEdges(const QRect& box)
{
    if (box.isEmpty()) return;
    m_Vertical << box.left() << box.right() + 1.0;
    m_Horizontal << box.top() << box.bottom() + 1.0;
}

void SnapLines::AddMiddles(const QRect& box)
{
    if (box.isEmpty()) return;
    m_Vertical << MiddleOf(box.left(), box.right());
    m_Horizontal << MiddleOf(box.top(), box.bottom());
}

void SnapLines::AddGuides(const LXGuides& guides)
{
    for (const LXGuide& guide : guides)
        (guide.orientation == Qt::Vertical ? m_Vertical : m_Horizontal) << guide.position;
}

QPointF SnapLines::Snapped(const QRect& moved, const QPointF& way, double reach) const
{
    if (moved.isEmpty()) return way;
    return QPointF(SnappedWay(m_Vertical, moved.left(), moved.right(), way.x(), reach),
                   SnappedWay(m_Horizontal, moved.top(), moved.bottom(), way.y(), reach));
}

double SnapLines::SnappedWay(const QVector<double>& lines, int first, int last, double way,
                             double reach) const
{
    Nearest nearest(reach);
    for (const double start : {double(first), last + 1.0, MiddleOf(first, last)}) {
        const double place = start + way;
        for (const double line : lines)
            nearest.Offer(place, line);
        if (m_GridStep > 0) nearest.Offer(place, std::round(place / m_GridStep) * m_GridStep);
    }
    return nearest.IsFound() ? std::round(way + nearest.Way()) : way;
}
