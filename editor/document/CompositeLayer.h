#pragma once

#include "image/LXImage.h"

#include <QPoint>

#include <vector>

/// What of a layer the merged picture needs, as a value that shares the layer's tiles.
struct CompositeLayer
{
    LXImage32 image;
    QPoint offset; ///< top left in document pixels
    double opacity = 1.0;
    unsigned int blendMode = 0;

    bool hasMask = false;
    LXImage32 mask;
    QPoint maskOffset;
    bool maskReveals = true; ///< coverage outside the mask's rectangle: 255, else 0
};

/// From the bottom layer up.
using CompositeLayers = std::vector<CompositeLayer>;
