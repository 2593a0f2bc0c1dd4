#pragma once

#include "ZKHostExport.h"

#include "image/LXImageFwd.h"

#include <QColor>

class LXColorTransformBase;
class LXDocumentInterface;
class QPoint;

/// Reads colors for people.
///
/// The average is that of the square of 2 x radius + 1 pixels a side round the point, as far as it lies
/// inside the picture: alpha is the mean of the alphas, color the mean weighted by alpha, all rounded to
/// nearest. A square without any alpha gives transparent black. A point outside gives an invalid color. Any
/// thread.
class ZK_HOST_EXPORT LXColorInfoHelper
{
public:
    LXColorInfoHelper() = delete;

    /// Of a layer, or of the merged picture for id 0, of which no more than the square is brought up to date;
    /// takes the locker itself. Pixels of the canvas that the layer doesn't reach count as transparent.
    /// @param point   document pixels; outside the canvas gives an invalid color, as does a bad id
    /// @param radius  from 0 (the pixel itself) to 3; what lies outside is brought to the nearer end
    static QColor AverageColor(const LXDocumentInterface* document, unsigned int id, const QPoint& point,
                               int radius);
    /// The same color, transformed.
    static QColor AverageColor(const LXDocumentInterface* document, unsigned int id, const QPoint& point,
                               int radius, const LXColorTransformBase& transform);
    /// Of an image that nobody else writes.
    /// @param point  image pixels
    static QColor AverageColor(const LXImage32& image, const QPoint& point, int radius);
};
