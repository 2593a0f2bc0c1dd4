#pragma once

#include "document/TextContent.h"

#include <QPainterPath>
#include <QPointF>
#include <QRectF>

/// Bends the outlines of a text. Any thread.
///
/// In the box of the text let u go from -1 at the left to 1 at the right, v from -1 at the top to 1 at the
/// bottom, and b, h, d be bend, horizontal and vertical distortion as parts of 1. A flag waves once over the
/// box, across the way it waves, and at the same time grows from one side to the other:
///
///     horizontal:  u' = u (1 + d v),                v' = (v + b sin(pi u)) (1 + h u)
///     vertical:    u' = (u + b sin(pi v)) (1 + d v), v' = v (1 + h u)
///
/// So h makes the right side taller and the left one lower, d the bottom wider and the top narrower. Without
/// a style nothing is bent, whatever the numbers are.
class TextWarp
{
public:
    TextWarp(const TextDeformation& deformation, const QRectF& box);

    bool IsIdle() const { return m_IsIdle; }

    QPointF Map(const QPointF& point) const;
    /// Curves of short pieces, near the true ones to a ten thousandth of the box's sides.
    QPainterPath Map(const QPainterPath& path) const;

private:
    /// Where a point comes to lie, and the way that it goes on when it came along `direction`.
    struct Step
    {
        QPointF point;
        QPointF direction;
    };

    Step MapStep(const QPointF& point, const QPointF& direction) const;
    void AddCurve(QPainterPath& path, const QPointF (&curve)[4]) const;

    TextDeformation m_Deformation;
    QPointF m_Middle;
    double m_HalfWidth;
    double m_HalfHeight;
    bool m_IsIdle;
};
