#include "image/PathCoverage.h"

#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <new>

PathCoverage::PathCoverage(const QPainterPath& path, bool isAntialiased)
    : m_Path(path), m_IsAntialiased(isAntialiased)
{
    if (isAntialiased) return;

    const QList<QPolygonF> polygons = path.toSubpathPolygons();
    for (const QPolygonF& polygon : polygons) {
        for (int i = 0; i < polygon.size(); ++i) {
            AddEdge(polygon[i], polygon[(i + 1) % polygon.size()]);
        }
    }
}

QImage PathCoverage::Render(const QRect& band) const
{
    QImage coverage(band.size(), QImage::Format_Alpha8);
    if (coverage.isNull()) throw std::bad_alloc();
    coverage.fill(0);
    if (m_IsAntialiased) {
        PaintBand(band, coverage);
    } else {
        MarkBand(band, coverage);
    }
    return coverage;
}

void PathCoverage::AddEdge(const QPointF& from, const QPointF& to)
{
    if (from.y() < to.y()) m_Edges.push_back({from, to, 1});
    if (from.y() > to.y()) m_Edges.push_back({to, from, -1});
}

/// QPainter makes coverage only, never colors: it can't blend straight pixels.
void PathCoverage::PaintBand(const QRect& band, QImage& coverage) const
{
    QPainter painter(&coverage);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-band.topLeft());
    painter.fillPath(m_Path, Qt::black);
}

/// Not by QPainter: it rounds points to a 64th of a pixel, and cuts paths at 32767, each path elsewhere.
void PathCoverage::MarkBand(const QRect& band, QImage& coverage) const
{
    std::vector<Edge> edges;
    std::copy_if(m_Edges.begin(), m_Edges.end(), std::back_inserter(edges), [&](const Edge& edge) {
        return edge.top.y() <= band.bottom() + 0.5 && edge.bottom.y() > band.top() + 0.5;
    });

    std::vector<Crossing> crossings;
    for (int y = band.top(); y <= band.bottom(); ++y) {
        const double middle = y + 0.5;
        crossings.clear();
        for (const Edge& edge : edges) {
            const bool isCrossed = edge.top.y() <= middle && middle < edge.bottom.y();
            if (isCrossed) crossings.push_back({edge.XAt(middle), edge.direction});
        }
        std::sort(crossings.begin(), crossings.end(),
                  [](const Crossing& a, const Crossing& b) { return a.x < b.x; });
        MarkRow(crossings, band, coverage.scanLine(y - band.top()));
    }
}

void PathCoverage::MarkRow(const std::vector<Crossing>& crossings, const QRect& band, uchar* row) const
{
    const auto firstColumn = [&](double x) {
        return static_cast<int>(std::clamp(std::ceil(x - 0.5) - band.left(), 0.0, double(band.width())));
    };
    const bool isOddEven = m_Path.fillRule() == Qt::OddEvenFill;
    int winding = 0;
    for (std::size_t i = 0; i + 1 < crossings.size(); ++i) {
        winding += crossings[i].direction;
        const bool isInside = isOddEven ? i % 2 == 0 : winding != 0;
        if (isInside)
            std::fill(row + firstColumn(crossings[i].x), row + firstColumn(crossings[i + 1].x), 255);
    }
}
