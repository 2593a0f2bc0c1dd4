#include "history/CanvasExtension.h"

#include "document/AlphaScan.h"
#include "document/LayerKind.h"
#include "image/ImageMetadata.h"
#include "image/LXTransform.h"
#include "image/TileNature.h"

#include <QTransform>

#include <algorithm>

namespace {
constexpr int TilePixels = 128 * 128;

/// The color wherever the old canvas doesn't reach; weaker where its edge crosses a pixel.
LXImage32 NewGround(const QSize& canvas, const QSize& oldCanvas, const QTransform& transform,
                    const QColor& color)
{
    LXImage32 old(oldCanvas.width(), oldCanvas.height());
    old.Fill(LXRGBA32i(0xFF000000));
    LXImage32 reached(canvas.width(), canvas.height());
    TransformImage(old, transform, reached, QRect());

    LXImage32 ground(canvas.width(), canvas.height());
    ground.Fill(LXRGBA32i(color.rgba()));
    BlendOn(reached, reached.Rect(), BlendMode::DestinationOut, ground, ground.Rect(), 1.0, false);
    return ground;
}

LXImage32 LaidOut(const PlacedImage& placed, const QRect& rect)
{
    LXImage32 image(rect.width(), rect.height());
    BlendOn(placed.image, placed.image.Rect(), BlendMode::Source, image,
            placed.Rect().translated(-rect.topLeft()), 1.0, false);
    ImageMetadata::Copy(placed.image, image);
    return image;
}

/// The ground below the layer where the ground has any strength; elsewhere the layer keeps every byte. All
/// images have one size.
LXImage32 WithGroundBelow(const LXImage32& layer, const LXImage32& ground)
{
    LXImage32 blended = ground;
    BlendOn(layer, layer.Rect(), BlendMode::Normal, blended, blended.Rect(), 1.0, false);
    LXImage32 result = layer;
    for (std::size_t i = 0; i < result.m_Tiles.size(); ++i) {
        const TileNature nature = TileNature::Of(*ground.m_Tiles[i]);
        if (nature.isSolid && nature.color.Alpha() == 0) continue;
        const LXTileWriter<LXRGBA32i> writer(result.m_Tiles[i]);
        const LXTileReader<LXRGBA32i> groundReader(*ground.m_Tiles[i]);
        const LXTileReader<LXRGBA32i> blendedReader(*blended.m_Tiles[i]);
        for (int k = 0; k < TilePixels; ++k) {
            if (groundReader.Pixels()[k].Alpha() != 0) writer.Pixels()[k] = blendedReader.Pixels()[k];
        }
    }
    return result;
}
} // namespace

void CanvasExtension::Fill(CanvasState& state, const QSize& oldCanvas, const QTransform& transform,
                           const QColor& color)
{
    if (!color.isValid() || color.alpha() == 0) return;
    const auto bottom = std::find_if(state.layers.rbegin(), state.layers.rend(),
                                     [](const auto& layer) { return layer.kind == LayerKind::Raster; });
    if (bottom == state.layers.rend()) return;

    const LXImage32 ground = NewGround(state.size, oldCanvas, transform, color);
    const QRect extension = AlphaScan::BoundsAbove(ground, 0);
    if (extension.isEmpty()) return;

    PlacedImage& pixels = bottom->pixels;
    const QRect rect = pixels.image.IsNull() ? extension : pixels.Rect() | extension;
    const LXImage32 layer = LaidOut(pixels, rect);
    pixels.image = WithGroundBelow(layer, LaidOut({ground, QPoint(0, 0)}, rect));
    pixels.offset = rect.topLeft();
}
