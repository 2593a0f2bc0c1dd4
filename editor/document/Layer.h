#pragma once

#include "document/ForeignContent.h"
#include "document/LayerKind.h"
#include "document/PixelLockTable.h"
#include "document/TextContent.h"
#include "image/LXAdjustment.h"
#include "image/LXImage.h"

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

#include <memory>

/// Everything of a layer but its pixels.
struct LayerProperties
{
    QString name;
    int kind = LayerKind::Raster;
    unsigned int locks = 0; ///< LayerLocks bits
    double opacity = 1.0;
    unsigned int blendMode = 0;
    bool isVisible = true;
    QRect rect; ///< of the image, in document pixels; as large as the image

    /// What the image is drawn from; null but for text layers. Replaced, never changed.
    std::shared_ptr<const TextContent> text;
    LXAdjustment adjustment; ///< of adjustment layers, which have no image

    bool hasMask = false;
    bool maskReveals = true; ///< what the mask does outside its rectangle
    bool isMaskSelected = false;
    bool isMaskLinked = true;
    QRect maskRect; ///< as large as the mask; null without one

    ForeignContent foreign;
};

/// A whole layer as a value: what commands keep and documents copy. Images share their tiles.
struct LayerState
{
    LayerProperties properties;
    LXImage32 image;
    LXImage32 mask;
};

/// Where an overlay lies, in document pixels.
struct OverlayPlace
{
    bool exists = false;
    bool isShown = false;
    QPoint topLeft;
    QSize size{0, 0}; ///< of the image while it is shown

    /// Empty while it isn't shown.
    QRect ShownRect() const { return isShown ? QRect(topLeft, size) : QRect(); }
};

/// A picture that floats above a layer's pixels or its mask.
struct Overlay
{
    LXImage32 image;    ///< under the pixel lock of the layer, once it shows
    OverlayPlace place; ///< under the mutex of the LayerList
    int pins = 0;       ///< main thread: readers that wait for their end
};

/// A layer of a document. It stays at its address while the list around it changes.
struct Layer
{
    Layer(PixelLockTable::Key lockKey, const LayerState& state);

    const PixelLockTable::Key key;

    LXImage32 image; ///< under the pixel lock of `key`
    LXImage32 mask;  ///< likewise

    Overlay overlay;
    Overlay maskOverlay;

    LayerProperties properties; ///< under the mutex of the LayerList

    QImage thumbnail;     ///< main thread; null: to be made
    QImage maskThumbnail; ///< likewise
};
