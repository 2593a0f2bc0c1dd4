#include "gui/ShapeIconEngine.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>

namespace {
constexpr double Margin = 2;

/// The shape in the middle of the place, at its own ratio; a shape without extent isn't drawn.
QPainterPath FittedInto(const QPainterPath& shape, const QRectF& place)
{
    const QRectF bounds = shape.boundingRect();
    if (bounds.isEmpty() || place.isEmpty()) return QPainterPath();
    const double scale = qMin(place.width() / bounds.width(), place.height() / bounds.height());
    QTransform fit;
    fit.translate(place.center().x(), place.center().y());
    fit.scale(scale, scale);
    fit.translate(-bounds.center().x(), -bounds.center().y());
    return fit.map(shape);
}
} // namespace

ShapeIconEngine::ShapeIconEngine(const QPainterPath& shape) : m_Shape(shape) {}

void ShapeIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State)
{
    const QPalette::ColorGroup group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Normal;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRectF place = QRectF(rect).adjusted(Margin, Margin, -Margin, -Margin);
    painter->fillPath(FittedInto(m_Shape, place), QApplication::palette().color(group, QPalette::Text));
    painter->restore();
}

QPixmap ShapeIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return pixmap;
}

QIconEngine* ShapeIconEngine::clone() const
{
    return new ShapeIconEngine(m_Shape);
}
