#include "document/LayerCompositor.h"

#include "document/AlphaScan.h"

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

QRect RectOf(const LXImage32& image, const QPoint& offset)
{
    return QRect(offset, QSize(image.Width(), image.Height()));
}

Contributions ContributionsTo(const QRect& tileRect, const CompositeLayers& layers)
{
    Contributions contributions;
    for (const CompositeLayer& layer : layers) {
        const QRect rect = RectOf(layer.image, layer.offset) & tileRect;
        if (rect.isEmpty()) continue;
        const bool isMasked = layer.hasMask && rect.intersects(RectOf(layer.mask, layer.maskOffset));
        if (layer.hasMask && !isMasked && !layer.maskReveals) continue;
        contributions.append({&layer, rect, isMasked});
    }
    return contributions;
}

/// Whether nothing below can be seen through the tile.
bool HidesAllBelow(const Contribution& top, const QRect& tileRect)
{
    const CompositeLayer& layer = *top.layer;
    return !top.isMasked && layer.blendMode == BlendMode::Normal && layer.opacity >= 1.0 &&
           top.rect == tileRect && AlphaScan::IsOpaque(layer.image, top.rect.translated(-layer.offset));
}

/// The layer's own tile under the tile of the picture, or null when its tiles lie otherwise.
const LXTilePointer* AlignedTile(const CompositeLayer& layer, const QRect& tileRect)
{
    const QPoint inLayer = tileRect.topLeft() - layer.offset;
    const bool isAligned = inLayer.x() % TileSide == 0 && inLayer.y() % TileSide == 0;
    return isAligned ? &layer.image.TileAt(inLayer.x() / TileSide, inLayer.y() / TileSide) : nullptr;
}

/// The mask as a picture of the contribution's rectangle, the default where the mask doesn't reach.
LXImage32 CoverageOf(const Contribution& part)
{
    const CompositeLayer& layer = *part.layer;
    LXImage32 coverage(part.rect.width(), part.rect.height());
    if (layer.maskReveals) coverage.Fill(LXRGBA32i(0xFF000000));
    const QRect covered = part.rect & RectOf(layer.mask, layer.maskOffset);
    BlendOn(layer.mask, covered.translated(-layer.maskOffset), BlendMode::Source, coverage,
            covered.translated(-part.rect.topLeft()), 1.0, false);
    return coverage;
}

void Blend(const Contribution& part, LXImage32& picture)
{
    const CompositeLayer& layer = *part.layer;
    const QRect source = part.rect.translated(-layer.offset);
    if (!part.isMasked) {
        BlendOn(layer.image, source, layer.blendMode, picture, part.rect, layer.opacity, false);
        return;
    }
    if (RectOf(layer.mask, layer.maskOffset).contains(part.rect)) {
        BlendMaskOn(layer.image, source, layer.blendMode, picture, part.rect, layer.opacity, layer.mask,
                    part.rect.translated(-layer.maskOffset), false, false);
        return;
    }
    const LXImage32 coverage = CoverageOf(part);
    BlendMaskOn(layer.image, source, layer.blendMode, picture, part.rect, layer.opacity, coverage,
                QRect(QPoint(0, 0), part.rect.size()), false, false);
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
