#include "document/LayerCompositor.h"

#include "document/AlphaScan.h"
#include "image/AdjustmentPixels.h"

#include <QVarLengthArray>

namespace {
constexpr int TileSide = 128;

/// What a layer brings to one tile.
struct Contribution
{
    const CompositeLayer* layer;
    QRect rect;    ///< document pixels, inside the tile and the layer
    bool isMasked; ///< the mask has a pixel inside `rect`; else it lets everything through
};

using Contributions = QVarLengthArray<Contribution, 32>;

/// Where in the tile the layer, or what floats above it, has pixels; an adjustment works everywhere.
QRect ExtentIn(const CompositeLayer& layer, const QRect& tileRect)
{
    if (layer.adjustment) return tileRect;
    return (layer.pixels.Rect() & tileRect) | (layer.overlay.Rect() & tileRect);
}

Contributions ContributionsTo(const QRect& tileRect, const CompositeLayers& layers)
{
    Contributions contributions;
    for (const CompositeLayer& layer : layers) {
        const QRect rect = ExtentIn(layer, tileRect);
        if (rect.isEmpty()) continue;
        const bool isMasked = layer.hasMask && (rect.intersects(layer.mask.Rect()) ||
                                                rect.intersects(layer.maskOverlay.Rect()));
        if (layer.hasMask && !isMasked && !layer.maskReveals) continue;
        contributions.append({&layer, rect, isMasked});
    }
    return contributions;
}

/// Whether nothing below can be seen through the tile. What floats above opaque pixels leaves them opaque.
bool HidesAllBelow(const Contribution& top, const QRect& tileRect)
{
    const CompositeLayer& layer = *top.layer;
    return !layer.adjustment && !top.isMasked && layer.blendMode == BlendMode::Normal &&
           layer.opacity >= 1.0 && layer.pixels.Rect().contains(tileRect) &&
           AlphaScan::IsOpaque(layer.pixels.image, layer.pixels.FromDocument(tileRect));
}

/// The layer's own tile under the tile of the picture, or null when its tiles lie otherwise or aren't all
/// that shows of it.
const LXTilePointer* AlignedTile(const CompositeLayer& layer, const QRect& tileRect)
{
    if (layer.overlay.Rect().intersects(tileRect)) return nullptr;
    const QPoint inLayer = tileRect.topLeft() - layer.pixels.offset;
    const bool isAligned = inLayer.x() % TileSide == 0 && inLayer.y() % TileSide == 0;
    return isAligned ? &layer.pixels.image.TileAt(inLayer.x() / TileSide, inLayer.y() / TileSide) : nullptr;
}

/// Blends what of the image lies in the document rectangle on a picture of that rectangle.
void BlendPart(const PlacedImage& source, unsigned int mode, const QRect& docRect, LXImage32& picture)
{
    const QRect part = source.Rect() & docRect;
    BlendOn(source.image, source.FromDocument(part), mode, picture, part.translated(-docRect.topLeft()), 1.0,
            false);
}

/// The layer's pixels in the contribution's rectangle, with what floats above them.
PlacedImage PixelsOf(const Contribution& part)
{
    const CompositeLayer& layer = *part.layer;
    if (!layer.overlay.Rect().intersects(part.rect)) return layer.pixels;
    PlacedImage pixels{LXImage32(part.rect.width(), part.rect.height()), part.rect.topLeft()};
    BlendPart(layer.pixels, BlendMode::Source, part.rect, pixels.image);
    BlendPart(layer.overlay, BlendMode::Normal, part.rect, pixels.image);
    return pixels;
}

/// The picture below an adjustment in the contribution's rectangle, in its new colors.
PlacedImage AdjustedBelow(const Contribution& part, const LXImage32& picture)
{
    PlacedImage adjusted{LXImage32(part.rect.width(), part.rect.height()), part.rect.topLeft()};
    BlendOn(picture, part.rect, BlendMode::Source, adjusted.image, adjusted.image.Rect(), 1.0, false);
    // The rectangle lies in one tile.
    const LXTileWriter<LXRGBA32i> tile = adjusted.image.WriteTile(0, 0);
    const AdjustmentPixels pixels(*part.layer->adjustment);
    for (int row = 0; row < part.rect.height(); ++row) {
        pixels.Run(tile.Pixels() + row * TileSide, part.rect.width());
    }
    return adjusted;
}

/// The mask in the contribution's rectangle, the default where it doesn't reach, with what floats above it.
PlacedImage CoverageOf(const Contribution& part)
{
    const CompositeLayer& layer = *part.layer;
    const bool floats = layer.maskOverlay.Rect().intersects(part.rect);
    if (!floats && layer.mask.Rect().contains(part.rect)) return layer.mask;

    PlacedImage coverage{LXImage32(part.rect.width(), part.rect.height()), part.rect.topLeft()};
    if (layer.maskReveals) coverage.image.Fill(LXRGBA32i(0xFF000000));
    BlendPart(layer.mask, BlendMode::Source, part.rect, coverage.image);
    BlendPart(layer.maskOverlay, BlendMode::GrayToMask, part.rect, coverage.image);
    return coverage;
}

void Blend(const Contribution& part, LXImage32& picture)
{
    const CompositeLayer& layer = *part.layer;
    // An adjustment changes colors and lets nothing be seen that wasn't.
    const bool keepsAlpha = layer.adjustment.has_value();
    const PlacedImage pixels = keepsAlpha ? AdjustedBelow(part, picture) : PixelsOf(part);
    const QRect source = pixels.FromDocument(part.rect);
    if (!part.isMasked) {
        BlendOn(pixels.image, source, layer.blendMode, picture, part.rect, layer.opacity, keepsAlpha);
        return;
    }
    const PlacedImage coverage = CoverageOf(part);
    BlendMaskOn(pixels.image, source, layer.blendMode, picture, part.rect, layer.opacity, coverage.image,
                coverage.FromDocument(part.rect), keepsAlpha, false);
}

} // namespace

void LayerCompositor::ComposeTile(const CompositeLayers& layers, int column, int row,
                                  const LXTilePointer& blank, LXImage32& picture)
{
    const QRect wholeTile(column * TileSide, row * TileSide, TileSide, TileSide);
    const QRect tileRect = wholeTile & picture.Rect();
    const Contributions contributions = ContributionsTo(tileRect, layers);

    int lowest = contributions.size() - 1;
    while (lowest >= 0 && !HidesAllBelow(contributions[lowest], tileRect)) {
        --lowest;
    }
    const LXTilePointer* shared = lowest >= 0 ? AlignedTile(*contributions[lowest].layer, tileRect) : nullptr;
    picture.TileAt(column, row) = shared ? *shared : blank;
    for (int i = shared ? lowest + 1 : qMax(lowest, 0); i < contributions.size(); ++i) {
        Blend(contributions[i], picture);
    }
}
