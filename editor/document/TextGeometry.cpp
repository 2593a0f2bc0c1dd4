#include "document/TextGeometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
/// How many pieces a line is cut into, to follow a bend.
constexpr int LinePieces = 24;

double DistanceTo(const QPointF& point, const QLineF& line)
{
    const QPointF way = line.p2() - line.p1();
    const double lengthSquared = QPointF::dotProduct(way, way);
    const double part = lengthSquared > 0 ? QPointF::dotProduct(point - line.p1(), way) / lengthSquared : 0;
    const QPointF gap = point - (line.p1() + std::clamp(part, 0.0, 1.0) * way);
    return std::hypot(gap.x(), gap.y());
}

QPainterPath RectPath(const QRectF& rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}
} // namespace

TextGeometry::TextGeometry(const TextContent& content)
    : m_Lines(content.text, content.font),
      m_Warp(content.deformation, m_Lines.Box()),
      m_Transform(QTransform::fromTranslate(content.position.x(), content.position.y()) * content.transform)
{}

QRectF TextGeometry::Box() const
{
    QRectF box = ToDocument(RectPath(m_Lines.Box())).boundingRect() |
                 (Letters().boundingRect() | Thickening().boundingRect() | Decorations().boundingRect());
    for (const Picture& picture : Pictures())
        box |= picture.Rect();
    return box;
}

bool TextGeometry::Bend(const QRectF& box, QTransform* transform) const
{
    const QPolygonF corners({box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()});
    QPolygonF bent;
    for (const QPointF& corner : corners)
        bent << m_Warp.Map(corner);
    QTransform bend;
    if (!QTransform::quadToQuad(corners, bent, bend)) return false;
    *transform *= bend;
    return true;
}

std::vector<TextGeometry::Picture> TextGeometry::Pictures() const
{
    std::vector<Picture> pictures;
    for (const GlyphPicture& letter : m_Lines.Pictures()) {
        const QRectF& box = letter.box;
        QTransform toLines =
            QTransform::fromTranslate(box.left(), box.top())
                .scale(box.width() / letter.image.width(), box.height() / letter.image.height());
        // One that a bend has folded can't be seen.
        if (!m_Warp.IsIdle() && !Bend(box, &toLines)) continue;
        pictures.push_back({letter.image, toLines * m_Transform});
    }
    return pictures;
}

QBrush TextGeometry::Brush(const QBrush& brush) const
{
    if (brush.style() == Qt::SolidPattern) return brush;
    const QGradient* gradient = brush.gradient();
    const bool isInParts = gradient && gradient->coordinateMode() != QGradient::LogicalMode;
    if (!isInParts) {
        QBrush placed = brush;
        placed.setTransform(brush.transform() * m_Transform);
        return placed;
    }
    QGradient whole = *gradient;
    whole.setCoordinateMode(QGradient::LogicalMode);
    const QRectF box = m_Lines.Box();
    QBrush placed(whole);
    placed.setTransform(brush.transform() * QTransform::fromScale(box.width(), box.height()) *
                        QTransform::fromTranslate(box.left(), box.top()) * m_Transform);
    return placed;
}

int TextGeometry::IndexAt(const QPointF& docPos) const
{
    int nearest = 0;
    double least = std::numeric_limits<double>::infinity();
    for (int index = 0; index <= m_Lines.Length(); ++index) {
        if (!m_Lines.IsCaretPlace(index)) continue;
        const double distance = DistanceTo(docPos, CaretAt(index));
        if (distance < least) {
            least = distance;
            nearest = index;
        }
    }
    return nearest;
}

QLineF TextGeometry::CaretAt(int index) const
{
    const QLineF caret = m_Lines.CaretAt(index);
    return QLineF(ToDocument(caret.p1()), ToDocument(caret.p2()));
}

QPolygonF TextGeometry::UnderlineAt(int index) const
{
    const QLineF baseline = m_Lines.BaselineAt(index);
    const int pieces = m_Warp.IsIdle() ? 1 : LinePieces;
    QPolygonF underline;
    for (int i = 0; i <= pieces; ++i) {
        underline << ToDocument(baseline.pointAt(static_cast<double>(i) / pieces));
    }
    return underline;
}

QPointF TextGeometry::Origin() const
{
    return ToDocument(QPointF(0, 0));
}
