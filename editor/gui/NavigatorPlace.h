#pragma once

#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSize>

/// Where a whole canvas stands in a small widget. A value.
class NavigatorPlace
{
public:
    /// Without a picture.
    NavigatorPlace() = default;
    /// As large as the proportions allow, in the middle; a side is a pixel at least.
    /// @param room  widget pixels
    NavigatorPlace(const QSize& canvas, const QRect& room);

    /// Widget pixels; empty without a picture.
    QRect Picture() const { return m_Picture; }

    /// Widget pixels for each document pixel.
    double Scale() const;
    /// The level of a picture halved again and again that still has a pixel for each device pixel, and isn't
    /// enlarged; 0 to 7.
    /// @param ratio  device pixels for each widget pixel
    int Level(double ratio) const;

    QPointF ToDocument(const QPointF& widgetPos) const;
    QRectF ToWidget(const QRectF& docRect) const;

    /// How the frame round the visible part is drawn: not beyond the picture, and not smaller than a hand can
    /// take. Empty without a picture, for an empty rectangle, and for one beside the canvas.
    QRect Frame(const QRectF& viewRect) const;

    /// Where the middle of a view may go when it is wanted at a point: the visible part stays on the canvas,
    /// and a direction in which it is larger stays in the middle.
    /// @param viewSize  of the visible part, document pixels; an empty one is kept on the canvas as a point
    QPoint NearestCenter(const QPointF& wanted, const QSizeF& viewSize) const;

private:
    QSize m_Canvas;
    QRect m_Picture;
};
