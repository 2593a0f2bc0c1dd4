#include "common/OutlineRegion.h"

#include <QLineF>
#include <QPolygonF>
#include <QtMath>

#include <algorithm>
#include <utility>

namespace {
/// The longest piece that one rectangle stands for: a slanting line fills only its diagonal.
constexpr double PieceLength = 16;
/// Half the line, its caps and the smoothing of its edges.
constexpr int Margin = 2;

/// Narrows the part of a line, as fractions of its length, to where `from + t * step` is not below 0.
void CutBelowZero(double from, double step, std::pair<double, double>& part)
{
    if (qFuzzyIsNull(step)) {
        if (from < 0) part.second = part.first - 1;
        return;
    }
    const double zero = -from / step;
    if (step > 0) {
        part.first = std::max(part.first, zero);
    } else {
        part.second = std::min(part.second, zero);
    }
}

QLineF ClippedLine(const QLineF& line, const QRectF& clip)
{
    std::pair<double, double> part{0, 1};
    CutBelowZero(line.x1() - clip.left(), line.dx(), part);
    CutBelowZero(clip.right() - line.x1(), -line.dx(), part);
    CutBelowZero(line.y1() - clip.top(), line.dy(), part);
    CutBelowZero(clip.bottom() - line.y1(), -line.dy(), part);
    if (part.first > part.second) return {};
    return {line.pointAt(part.first), line.pointAt(part.second)};
}

void AddLine(const QLineF& line, const QRectF& clip, QRegion& region)
{
    const QLineF visible = ClippedLine(line, clip);
    if (visible.isNull()) return;

    const int pieces = std::max(1, qCeil(visible.length() / PieceLength));
    for (int i = 0; i < pieces; ++i) {
        const QPointF from = visible.pointAt(double(i) / pieces);
        const QPointF to = visible.pointAt(double(i + 1) / pieces);
        region += QRectF(from, to).normalized().toAlignedRect().adjusted(-Margin, -Margin, Margin, Margin);
    }
}
} // namespace

QRegion OutlineRegion(const QPainterPath& path, const QRect& clip)
{
    const QRectF reach = QRectF(clip).adjusted(-Margin, -Margin, Margin, Margin);
    QRegion region;
    const QList<QPolygonF> polygons = path.toSubpathPolygons();
    for (const QPolygonF& polygon : polygons) {
        for (int i = 1; i < polygon.size(); ++i) {
            AddLine({polygon[i - 1], polygon[i]}, reach, region);
        }
    }
    return region & clip;
}
