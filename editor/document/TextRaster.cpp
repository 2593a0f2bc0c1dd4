#include "document/TextRaster.h"

#include "document/TextGeometry.h"
#include "image/LXBlend.h"
#include "image/LXImageConvert.h"
#include "image/LXTransform.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {
/// Around a small canvas, so that a text beside it can be moved in without being drawn again.
constexpr int LeastMargin = 1000;
/// What single precision, and a few steps with it, leave of a number.
constexpr double SinglePart = 1e-6;
constexpr double LeastWholeNoise = 1e-3; ///< pixels
constexpr double MostWholeNoise = 0.1;

QRect Reach(const QSize& canvas)
{
    const int width = std::max(canvas.width(), 0) + LeastMargin;
    const int height = std::max(canvas.height(), 0) + LeastMargin;
    return QRect(QPoint(0, 0), canvas).adjusted(-width, -height, width, height);
}

/// The pixel of `reach` that is nearest to the point.
QPoint PixelAt(const QPointF& point, const QRect& reach)
{
    const auto whole = [](double value, int low, int high) {
        return static_cast<int>(std::floor(std::clamp(value, double(low), double(high))));
    };
    return QPoint(whole(point.x(), reach.left(), reach.right()),
                  whole(point.y(), reach.top(), reach.bottom()));
}

/// What is filled, and where it begins.
struct Shapes
{
    Shapes(const TextGeometry& geometry, const QBrush& filling)
        : parts{geometry.Letters(), geometry.Thickening(), geometry.Decorations()},
          pictures(geometry.Pictures()),
          brush(geometry.Brush(filling)),
          origin(geometry.Origin())
    {}

    /// Cut as real numbers: what a transform makes of a text need not fit into integers.
    QRect RectIn(const QRect& reach) const
    {
        QRectF all;
        for (const QPainterPath& part : parts)
            all |= part.boundingRect();
        for (const TextGeometry::Picture& picture : pictures)
            all |= picture.Rect();
        const QRectF seen = all & QRectF(reach);
        const QRect rect = seen.isEmpty() ? QRect() : seen.toAlignedRect() & reach;
        return rect.isEmpty() ? QRect(PixelAt(origin, reach), QSize(0, 0)) : rect;
    }

    std::array<QPainterPath, 3> parts; ///< they overlap
    std::vector<TextGeometry::Picture> pictures;
    QBrush brush;
    QPointF origin;
};

/// Over what is drawn already, with the colors that it has.
void DrawPicture(PlacedImage& placed, const TextGeometry::Picture& picture)
{
    const QRect rect = picture.Rect().toAlignedRect() & placed.Rect();
    if (rect.isEmpty()) return;
    LXImage32 letter;
    ConvertImage(picture.image, letter);
    LXImage32 drawn(rect.width(), rect.height());
    const QTransform toDrawn = picture.transform * QTransform::fromTranslate(-rect.left(), -rect.top());
    if (!TransformImage(letter, toDrawn, drawn, drawn.Rect())) return;
    BlendOn(drawn, drawn.Rect(), BlendMode::Normal, placed.image, rect.translated(-placed.offset), 1.0,
            false);
}

/// The path as polygons whose corners lie on the curves, nearer to them than pixels tell: filled as they are,
/// small curves lose up to a sixth of a pixel.
QPainterPath Polygons(const QPainterPath& path, const QPointF& offset)
{
    constexpr double fineness = 16;
    QPainterPath polygons;
    polygons.setFillRule(path.fillRule());
    const QTransform coarse = QTransform::fromScale(1 / fineness, 1 / fineness);
    const QTransform fine =
        QTransform::fromTranslate(offset.x(), offset.y()) * QTransform::fromScale(fineness, fineness);
    const QList<QPolygonF> outlines = path.toSubpathPolygons(fine);
    for (const QPolygonF& outline : outlines) {
        polygons.addPolygon(coarse.map(outline));
        polygons.closeSubpath();
    }
    return polygons;
}

/// The pixels whose middles the path holds get the brush's color, whatever they had.
void FillHard(LXImage32& image, const QPainterPath& path, const QBrush& brush)
{
    if (path.isEmpty()) return;
    LXImage32 color(image.Width(), image.Height());
    LXImage32 inside(image.Width(), image.Height());
    FillPath(color, BlendMode::Normal, path, brush);
    FillPath(inside, BlendMode::Normal, path, Qt::black);
    BlendMaskOn(color, color.Rect(), BlendMode::Source, image, image.Rect(), 1.0, inside, inside.Rect(),
                false, false);
}

bool IsSameFactor(double a, double b)
{
    return std::abs(a - b) <= SinglePart * std::max(1.0, std::abs(a));
}

/// Whether it is whole pixels from one place to the other, wherever these are.
bool IsWholeWay(double from, double to)
{
    constexpr double farthest = 1 << 24;
    const double way = to - from;
    const double noise = std::clamp(SinglePart * std::abs(to), LeastWholeNoise, MostWholeNoise);
    return std::abs(way - std::round(way)) <= noise && std::abs(way) < farthest;
}
} // namespace

PlacedImage TextRaster::Render(const TextContent& content, const QSize& canvas)
{
    const Shapes shapes(TextGeometry(content), content.brush);
    const QRect rect = shapes.RectIn(Reach(canvas));
    PlacedImage placed{LXImage32(rect.width(), rect.height()), rect.topLeft()};
    if (placed.image.IsNull()) return placed;
    QBrush brush = shapes.brush;
    if (brush.style() != Qt::SolidPattern) {
        brush.setTransform(brush.transform() * QTransform::fromTranslate(-rect.left(), -rect.top()));
    }
    // What several parts cover counts once.
    for (const QPainterPath& part : shapes.parts) {
        const QPainterPath polygons = Polygons(part, -QPointF(rect.topLeft()));
        if (content.renderMode == TextContent::Aliased) {
            FillHard(placed.image, polygons, brush);
        } else {
            FillPath(placed.image, BlendMode::Source, polygons, brush);
        }
    }
    for (const TextGeometry::Picture& picture : shapes.pictures)
        DrawPicture(placed, picture);
    return placed;
}

QRect TextRaster::RectOf(const TextGeometry& geometry, const QSize& canvas)
{
    return Shapes(geometry, QBrush(Qt::black)).RectIn(Reach(canvas));
}

bool TextRaster::IsWholeMove(const QTransform& before, const QTransform& after, QPoint* delta)
{
    const QTransform& a = before;
    const QTransform& b = after;
    // Under a perspective the same move changes all numbers.
    const bool isMove = a.isAffine() && b.isAffine() && IsSameFactor(a.m11(), b.m11()) &&
                        IsSameFactor(a.m12(), b.m12()) && IsSameFactor(a.m21(), b.m21()) &&
                        IsSameFactor(a.m22(), b.m22()) && IsWholeWay(a.dx(), b.dx()) &&
                        IsWholeWay(a.dy(), b.dy());
    if (isMove) *delta = QPointF(b.dx() - a.dx(), b.dy() - a.dy()).toPoint();
    return isMove;
}

std::shared_ptr<const TextContent> TextRaster::Moved(const TextContent& content, const QPoint& delta)
{
    auto moved = std::make_shared<TextContent>(content);
    moved->transform *= QTransform::fromTranslate(delta.x(), delta.y());
    return moved;
}

bool TextRaster::MayBeCut(const QRect& rect, const QSize& canvas)
{
    return rect.isEmpty() || !Reach(canvas).adjusted(1, 1, -1, -1).contains(rect);
}
