#pragma once

#include "image/LXImage.h"

#include <QBrush>
#include <QPoint>
#include <QRect>

class LXDocumentInterface;

/// What a click of the fill can asks for. Positions are document pixels.
struct FillJobData
{
    QPoint position;                 ///< inside the canvas
    double opacity = 1.0;            ///< 0 to 1
    bool antialiasing = false;       ///< softens the edge of the area
    bool contiguous = false;         ///< only what hangs together with the clicked pixel
    bool allLayers = false;          ///< compares the merged picture; paints the layer all the same
    bool ignoreTransparency = false; ///< compares colors alone
    bool maskReveals = false;        ///< the mask's default; mask job only
    QBrush brush;                    ///< a solid color, or a pattern as a texture image
    unsigned int layerId = 0;        ///< what is painted
    int tolerance = 0;               ///< 0 to 255, for each channel
    int blendMode = 0;               ///< row of BlendModeTable
};

/// What a fill changes: pixels before and after, for one paint command. Rectangles are document pixels.
struct FillJobResult
{
    LXImage32 undoImage;
    LXImage32 redoImage;
    QRect undoGeometry; ///< the target's rectangle before
    QRect redoGeometry; ///< where redoImage lies; empty when nothing is painted
    unsigned int layerId = 0;
    bool isMask = false;
    int error = 0; ///< 0 for none; else the images are empty
};

/// Compute what the click changes in the layer's pixels or in its mask, without changing the document.
/// They read under the lockers that they take, and never throw: failures are reported in the log and come
/// back as `error`. Any thread.
FillJobResult RunLayerFillJob(const LXDocumentInterface* document, const FillJobData& data);
FillJobResult RunMaskFillJob(const LXDocumentInterface* document, const FillJobData& data);
