#pragma once

#include "document/CompositeLayer.h"
#include "document/LXGuide.h"
#include "document/LXPathElement.h"
#include "document/TextContent.h"

#include <QDataStream>
#include <QSize>

#include <memory>
#include <vector>

class LXDocumentInterface;

/// Everything of a document that a new canvas or another size changes, as a value. Images share their tiles
/// with the document. Main thread.
class CanvasState
{
public:
    struct LayerPixels
    {
        PlacedImage pixels;
        int kind = 0;
        std::shared_ptr<const TextContent> text; ///< what the pixels of a text are drawn from; else null
        bool hasMask = false;
        bool maskReveals = true;
        PlacedImage mask;
    };

    static CanvasState Of(LXDocumentInterface* document);
    /// Takes effect in a document of as many layers, paths and samples; what it has more stays as it is.
    /// Layers, masks and the selection are written without a word, then everything is told once.
    void ApplyTo(LXDocumentInterface* document) const;

    qint64 GetMemoryCost() const;
    void ReleaseImages();

    QSize size;
    std::vector<LayerPixels> layers; ///< topmost first
    PlacedImage selection;           ///< empty for none
    std::vector<LXSubPaths> paths;
    std::vector<QPoint> samples;
    LXGuides guides;
    std::vector<PlacedImage> channels; ///< the selections that are kept under names
};

QDataStream& operator<<(QDataStream& stream, const CanvasState& state);
QDataStream& operator>>(QDataStream& stream, CanvasState& state);
