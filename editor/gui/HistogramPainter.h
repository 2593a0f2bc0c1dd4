#pragma once

#include "image/LevelCounts.h"

#include <QColor>
#include <QImage>
#include <QSize>

/// The colors of a histogram.
struct HistogramLook
{
    QColor ground;
    QColor ink;          ///< of the luminance
    bool isDark = false; ///< channels brighten the ground where they meet, else they darken it

    static HistogramLook On(const QColor& ground, const QColor& ink);
};

/// Draws the channels over each other, as high as the plot. A level that occurs at all is at least a pixel
/// high.
/// @param bits  of the channels, as HistogramLevels has them
/// @param size  device pixels
QImage RenderHistogram(const LevelCounts::Sum& counts, int bits, const QSize& size,
                       const HistogramLook& look);

/// The levels from black to white, in the color of the only channel or in gray.
/// @param size  device pixels
QImage RenderLevelStrip(int bits, const QSize& size);
