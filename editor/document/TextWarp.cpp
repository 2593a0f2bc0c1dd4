#include "document/TextWarp.h"

#include <QLineF>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace {
/// Pieces are at most this part of the box's height or width long, whichever is smaller.
constexpr double PiecesOfSide = 12;
constexpr int MostPieces = 400;

struct Cubic
{
    const QPointF (&p)[4];

    QPointF At(double t) const
    {
        const double s = 1 - t;
        return s * s * s * p[0] + 3 * s * s * t * p[1] + 3 * s * t * t * p[2] + t * t * t * p[3];
    }

    QPointF DerivativeAt(double t) const
    {
        const double s = 1 - t;
        return 3 * (s * s * (p[1] - p[0]) + 2 * s * t * (p[2] - p[1]) + t * t * (p[3] - p[2]));
    }

    double LengthAtMost() const
    {
        return QLineF(p[0], p[1]).length() + QLineF(p[1], p[2]).length() + QLineF(p[2], p[3]).length();
    }
};
} // namespace

TextWarp::TextWarp(const TextDeformation& deformation, const QRectF& box)
    : m_Deformation(deformation),
      m_Middle(box.center()),
      m_HalfWidth(box.width() / 2),
      m_HalfHeight(box.height() / 2),
      m_IsIdle(deformation.style != TextDeformation::Flag || box.isEmpty() ||
               (deformation.bend == 0 && deformation.hDistortion == 0 && deformation.vDistortion == 0))
{}

QPointF TextWarp::Map(const QPointF& point) const
{
    return m_IsIdle ? point : MapStep(point, QPointF()).point;
}

/// The direction is the derivative of the formulas along it.
TextWarp::Step TextWarp::MapStep(const QPointF& point, const QPointF& direction) const
{
    const double b = m_Deformation.bend / 100;
    const double h = m_Deformation.hDistortion / 100;
    const double d = m_Deformation.vDistortion / 100;
    const bool isVertical = m_Deformation.orientation == TextDeformation::Vertical;
    const double u = (point.x() - m_Middle.x()) / m_HalfWidth;
    const double v = (point.y() - m_Middle.y()) / m_HalfHeight;
    const double du = direction.x() / m_HalfWidth;
    const double dv = direction.y() / m_HalfHeight;

    const double wavedU = isVertical ? u + b * std::sin(M_PI * v) : u;
    const double wavedV = isVertical ? v : v + b * std::sin(M_PI * u);
    const double wavedDu = isVertical ? du + b * M_PI * std::cos(M_PI * v) * dv : du;
    const double wavedDv = isVertical ? dv : dv + b * M_PI * std::cos(M_PI * u) * du;

    const QPointF there(wavedU * (1 + d * v), wavedV * (1 + h * u));
    const QPointF way(wavedDu * (1 + d * v) + wavedU * d * dv, wavedDv * (1 + h * u) + wavedV * h * du);
    return {m_Middle + QPointF(there.x() * m_HalfWidth, there.y() * m_HalfHeight),
            QPointF(way.x() * m_HalfWidth, way.y() * m_HalfHeight)};
}

/// Each piece becomes the curve that has its ends and its directions there.
void TextWarp::AddCurve(QPainterPath& path, const QPointF (&curve)[4]) const
{
    const Cubic cubic{curve};
    const double longest = 2 * std::min(m_HalfWidth, m_HalfHeight) / PiecesOfSide;
    const int pieces = std::clamp(static_cast<int>(std::ceil(cubic.LengthAtMost() / longest)), 1, MostPieces);
    const double step = 1.0 / pieces;
    Step from = MapStep(cubic.At(0), cubic.DerivativeAt(0));
    for (int i = 1; i <= pieces; ++i) {
        const Step to = MapStep(cubic.At(i * step), cubic.DerivativeAt(i * step));
        path.cubicTo(from.point + from.direction * step / 3, to.point - to.direction * step / 3, to.point);
        from = to;
    }
}

QPainterPath TextWarp::Map(const QPainterPath& path) const
{
    if (m_IsIdle) return path;
    QPainterPath mapped;
    mapped.setFillRule(path.fillRule());
    QPointF last;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPointF point = path.elementAt(i);
        switch (path.elementAt(i).type) {
        case QPainterPath::MoveToElement:
            mapped.moveTo(Map(point));
            last = point;
            break;
        case QPainterPath::LineToElement:
            AddCurve(mapped, {last, last + (point - last) / 3, point - (point - last) / 3, point});
            last = point;
            break;
        default:
            // The end of a curve stands two elements after its first guide.
            AddCurve(mapped, {last, point, path.elementAt(i + 1), path.elementAt(i + 2)});
            last = path.elementAt(i + 2);
            i += 2;
            break;
        }
    }
    return mapped;
}
