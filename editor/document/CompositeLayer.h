#pragma once

#include "image/LXAdjustment.h"
#include "image/LXImage.h"

#include <QPoint>
#include <QRect>

#include <optional>
#include <vector>

/// An image and where it lies.
struct PlacedImage
{
    LXImage32 image;
    QPoint offset; ///< top left in document pixels

    QRect Rect() const { return image.Rect().translated(offset); }

    /// A rectangle of the document in pixels of the image.
    QRect FromDocument(const QRect& docRect) const { return docRect.translated(-offset); }
};

/// What of a layer the merged picture needs, as a value that shares the layer's tiles.
struct CompositeLayer
{
    PlacedImage pixels;
    std::optional<LXAdjustment> adjustment; ///< of what lies below, everywhere; then there are no pixels
    PlacedImage overlay;                    ///< floats above the pixels; an empty image for none
    double opacity = 1.0;
    unsigned int blendMode = 0;

    bool hasMask = false;
    PlacedImage mask;
    PlacedImage maskOverlay; ///< gray, floats above the mask; an empty image for none
    bool maskReveals = true; ///< coverage outside the mask's rectangle: 255, else 0
};

/// From the bottom layer up.
using CompositeLayers = std::vector<CompositeLayer>;
