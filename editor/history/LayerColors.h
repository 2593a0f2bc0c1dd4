#pragma once

#include "document/CompositeLayer.h"
#include "document/TextContent.h"
#include "image/ZKCMSProfile.h"
#include "image/ZKCMSTransform.h"

#include <QDataStream>
#include <QSize>

#include <functional>
#include <memory>
#include <vector>

class LXDocumentInterface;

/// The colors of all layers of a document, with the profile that tells what they mean, as a value. Images
/// share their tiles with the document; masks and the selection have no colors.
class LayerColors
{
public:
    struct Layer
    {
        PlacedImage pixels;
        std::shared_ptr<const TextContent> text; ///< what the pixels of a text are drawn from; else null
    };

    /// Main thread.
    static LayerColors Of(LXDocumentInterface* document);

    /// Takes effect in a document with the same layers. Main thread.
    void ApplyTo(LXDocumentInterface* document) const;

    /// The same colors in another profile; texts are drawn anew with brushes of the new colors. Without a
    /// profile, or with a damaged one, they are taken for sRGB, as they are shown. Throws what images throw
    /// for want of memory. Any thread; uses several.
    /// @param target       ZKCMSProfile::IsTarget
    /// @param setPermille  told now and then, on the calling thread; may be empty
    LayerColors Converted(const ZKCMSProfile& target, const ZKCMSRendering& rendering = {},
                          const std::function<void(int)>& setPermille = {}) const;

    qint64 GetMemoryCost() const;
    void ReleaseImages();

    ZKCMSProfile profile;
    QSize canvas;
    std::vector<Layer> layers; ///< topmost first
};

QDataStream& operator<<(QDataStream& stream, const LayerColors& colors);
QDataStream& operator>>(QDataStream& stream, LayerColors& colors);
