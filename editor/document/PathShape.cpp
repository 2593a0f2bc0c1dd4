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
} // namespace

QPainterPath PathShape::Fold(const LXSubPaths& path, const QSize& canvas)
{
    QPainterPath result;
    if (!path.isEmpty() && NeedsGround(path.first().second)) result.addRect(QRectF(QPointF(0, 0), canvas));
    for (int i = 0; i < path.size(); ++i) {
        const QPainterPath shape = ConvertFrom(path[i].first);
        const int operation = path[i].second;
        result = i == 0 && !NeedsGround(operation) ? shape : Combine(result, shape, operation);
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
    painter.fillPath(toImage.map(Fold(path, canvas)), Qt::white);
    painter.strokePath(toImage.map(Outline(path)), QPen(Qt::black, 1));
    return image;
}
