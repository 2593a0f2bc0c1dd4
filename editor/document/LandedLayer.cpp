#include "document/LandedLayer.h"

namespace {
/// What lies in `rect` of the image, on a ground of one color, with the overlay on top.
LXImage32 Put(const PlacedImage& image, const PlacedImage& overlay, unsigned int mode, const QRect& rect,
              LXRGBA32i ground)
{
    LXImage32 result(rect.width(), rect.height());
    result.Fill(ground);
    DrawImage(result, BlendMode::Source, image.offset - rect.topLeft(), image.image, 1.0, false);
    DrawImage(result, static_cast<int>(mode), overlay.offset - rect.topLeft(), overlay.image, 1.0, false);
    return result;
}
} // namespace

void LandedLayer::Land(LayerState& layer, const PlacedImage& overlay)
{
    if (overlay.image.IsNull()) return;
    const PlacedImage pixels{layer.image, layer.properties.rect.topLeft()};
    layer.properties.rect = pixels.Rect() | overlay.Rect();
    layer.image = Put(pixels, overlay, BlendMode::Normal, layer.properties.rect, LXRGBA32i());
}

void LandedLayer::LandOnMask(LayerState& layer, const PlacedImage& overlay)
{
    if (overlay.image.IsNull() || !layer.properties.hasMask) return;
    const PlacedImage mask{layer.mask, layer.properties.maskRect.topLeft()};
    const LXRGBA32i ground(layer.properties.maskReveals ? 0xFF000000 : 0);
    layer.properties.maskRect = mask.Rect() | overlay.Rect();
    layer.mask = Put(mask, overlay, BlendMode::GrayToMask, layer.properties.maskRect, ground);
}
