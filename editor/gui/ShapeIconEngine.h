#pragma once

#include <QIconEngine>
#include <QPainterPath>

/// Draws a filled shape in the text color of the moment, so that it follows the look: as large as fits with
/// its own ratio, in the middle. Main thread only.
class ShapeIconEngine : public QIconEngine
{
public:
    /// @param shape  in units of its own
    explicit ShapeIconEngine(const QPainterPath& shape);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine* clone() const override;

private:
    QPainterPath m_Shape;
};
