#pragma once

#include "document/LayerKind.h"
#include "document/PixelLockTable.h"
#include "image/LXImage.h"

#include <QImage>
#include <QRect>
#include <QString>

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

    bool hasMask = false;
    bool maskReveals = true; ///< what the mask does outside its rectangle
    bool isMaskSelected = false;
    bool isMaskLinked = true;
    QRect maskRect; ///< as large as the mask; null without one
};

/// A whole layer as a value: what commands keep and documents copy. Images share their tiles.
struct LayerState
{
    LayerProperties properties;
    LXImage32 image;
    LXImage32 mask;
};

/// A layer of a document. It stays at its address while the list around it changes.
struct Layer
{
    Layer(PixelLockTable::Key lockKey, const LayerState& state);

    const PixelLockTable::Key key;

    LXImage32 image; ///< under the pixel lock of `key`
    LXImage32 mask;  ///< likewise

    LayerProperties properties; ///< under the mutex of the LayerList

    QImage thumbnail;     ///< main thread; null: to be made
    QImage maskThumbnail; ///< likewise
};
