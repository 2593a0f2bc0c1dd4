#include "document/PathShape.h"

#include "document/LXPathConvert.h"
#include "document/LXPathsListModel.h"
#include "document/Thumbnail.h"

#include <QPainter>

namespace {
bool NeedsGround(int operation)
{
    return operation == LXPathsListModel::Subtract || operation == LXPathsListModel::Intersect;
}

QPainterPath Combine(const QPainterPath& ground, const QPainterPath& shape, int operation)
{
    switch (operation) {
    case LXPathsListModel::Unite: return ground.united(shape);
    case LXPathsListModel::Subtract: return ground.subtracted(shape);
    case LXPathsListModel::Intersect: return ground.intersected(shape);
    case LXPathsListModel::Exclude: return ground.subtracted(shape).united(shape.subtracted(ground));
    default: break;
    }
    QPainterPath both = ground;
    both.addPath(shape);
    return both;
}

/// How many sub paths from `first` on have its operation.
int CountAlike(const LXSubPaths& path, int first)
{
    int count = 1;
    while (first + count < path.size() && path[first + count].second == path[first].second)
        ++count;
    return count;
}

/// What joins neighbours of one operation, so that this operation may lay them to those before as one:
/// to subtract several is to subtract their union.
int WithinRun(int operation)
{
    return operation == LXPathsListModel::Subtract ? LXPathsListModel::Unite : operation;
}

/// Halves are joined first: one after the other, each sub path would be cut with all before it.
QPainterPath Joined(const LXSubPaths& path, int first, int count, int operation)
{
    if (count == 1) return ConvertFrom(path[first].first);
    const int half = count / 2;
    return Combine(Joined(path, first, half, operation), Joined(path, first + half, count - half, operation),
                   operation);
}

/// Lays the area of a shape over that of those before it, as a coverage in the alpha of white.
void LayOver(QPainter& painter, const QPainterPath& shape, int operation)
{
    switch (operation) {
    case LXPathsListModel::Unite: painter.setCompositionMode(QPainter::CompositionMode_SourceOver); break;
    case LXPathsListModel::Subtract:
    case LXPathsListModel::Intersect:
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        break;
    default: painter.setCompositionMode(QPainter::CompositionMode_Xor); break;
    }
    QPainterPath covered = shape;
    // What lies outside goes: together with all around it, the odd-even rule fills the outside.
    if (operation == LXPathsListModel::Intersect) covered.addRect(painter.viewport());
    painter.fillPath(covered, Qt::white);
}

/// The folded area in pixels, white with its coverage as alpha. Folding outlines takes very much
/// longer.
QImage MakeArea(const LXSubPaths& path, const QSize& size, const QTransform& toImage)
{
    QImage area(size, QImage::Format_ARGB32_Premultiplied);
    area.fill(!path.isEmpty() && NeedsGround(path.first().second) ? Qt::white : Qt::transparent);
    QPainter painter(&area);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const auto& [elements, operation] : path)
        LayOver(painter, toImage.map(ConvertFrom(elements)), operation);
    return area;
}
} // namespace

QPainterPath PathShape::Fold(const LXSubPaths& path, const QSize& canvas)
{
    QPainterPath result;
    if (!path.isEmpty() && NeedsGround(path.first().second)) result.addRect(QRectF(QPointF(0, 0), canvas));
    for (int first = 0, count = 0; first < path.size(); first += count) {
        const int operation = path[first].second;
        count = CountAlike(path, first);
        const QPainterPath shape = Joined(path, first, count, WithinRun(operation));
        result = first == 0 && !NeedsGround(operation) ? shape : Combine(result, shape, operation);
    }
    return result;
}

QPainterPath PathShape::Outline(const LXSubPaths& path)
{
    QPainterPath result;
    for (const auto& subPath : path) {
        result.addPath(ConvertFrom(subPath.first));
    }
    return result;
}

QImage PathShape::MakeThumbnail(const LXSubPaths& path, const QSize& canvas)
{
    if (canvas.isEmpty()) return QImage();
    const QSize size = canvas.scaled(Thumbnail::Side, Thumbnail::Side, Qt::KeepAspectRatio);
    QImage image(size.expandedTo(QSize(1, 1)), QImage::Format_ARGB32_Premultiplied);
    image.fill(qRgb(0x80, 0x80, 0x80));

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QTransform toImage = QTransform::fromScale(double(image.width()) / canvas.width(),
                                                     double(image.height()) / canvas.height());
    painter.drawImage(0, 0, MakeArea(path, image.size(), toImage));
    painter.strokePath(toImage.map(Outline(path)), QPen(Qt::black, 1));
    return image;
}
