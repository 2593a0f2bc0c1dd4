#pragma once

#include <QMetaType>
#include <QVector>
#include <Qt>

/// A line across the canvas that things are lined up with. It is no part of the picture.
struct LXGuide
{
    /// How the line runs.
    Qt::Orientation orientation = Qt::Horizontal;
    /// Document pixels from the top (horizontal) or the left (vertical): 0 is the canvas' edge, 1 the edge
    /// between the first and the second pixel.
    double position = 0.0;

    friend bool operator==(const LXGuide& a, const LXGuide& b)
    {
        return a.orientation == b.orientation && a.position == b.position;
    }

    friend bool operator!=(const LXGuide& a, const LXGuide& b) { return !(a == b); }
};

using LXGuides = QVector<LXGuide>;

Q_DECLARE_TYPEINFO(LXGuide, Q_PRIMITIVE_TYPE);
