#pragma once

#include "document/LXColorSampleModel.h"

#include <QPoint>
#include <QRect>

/// A color sample as a value, without the color, which is the picture's.
struct ColorSample
{
    QPoint point;
    int radius = 0;
    LXColorSampleModel::SampleFormat format = LXColorSampleModel::RGB;

    /// The pixels that are averaged, as far as they exist.
    QRect Square() const { return {point.x() - radius, point.y() - radius, 2 * radius + 1, 2 * radius + 1}; }
};
