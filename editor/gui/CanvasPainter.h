#pragma once

#include "gui/ScaledTileCache.h"
#include "guicore/Checker.h"

#include <QPoint>
#include <QSize>

class QPainter;

/// Where a canvas stands in a viewport.
struct CanvasPlace
{
    QSize size;       ///< of the canvas, document pixels
    double scale = 1; ///< viewport pixels for each document pixel
    QPoint origin;    ///< the canvas' top left, viewport pixels
    double ratio = 1; ///< device pixels for each viewport pixel

    /// The viewport pixels of the canvas.
    QRect Rect() const;
    /// The viewport pixels in which a part of the canvas shows, with those that interpolation changes too.
    QRect ToViewport(const QRect& docRect) const;
    /// The level of ScaledTileCache that is shown: the smallest with at least a pixel for each device pixel.
    int Level() const;
};

/// The colors round and under a picture.
struct CanvasLook
{
    QColor surround;
    QColor edge;
    QColor grid;
    QBrush checker; ///< a pattern of screen pixels

    /// @param surround  the neutral ground; the rest goes with it
    static CanvasLook ForSurround(const QColor& surround);
};

/// The pixels of the picture that PaintCanvas may read to paint a part of the viewport, whatever the cache
/// holds.
QRect PictureBehind(const QRect& exposed, const CanvasPlace& place);

/// Fills a part of a viewport: the surround, the checker, the picture, the grid between large pixels.
/// @param painter  in viewport coordinates
/// @param exposed  viewport pixels; nothing outside is touched
/// @param picture  of place.size, with the present pixels in PictureBehind; the caller holds its read locker
void PaintCanvas(QPainter& painter, const QRect& exposed, const CanvasPlace& place, const CanvasLook& look,
                 const LXImage32& picture, ScaledTileCache& cache);
