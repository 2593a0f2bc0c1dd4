#include "fillmenu/FillOperations.h"

#include "common/LXBlender.h"
#include "common/MaskBlend.h"
#include "common/PixelFunctors.h"
#include "common/Reports.h"
#include "common/TileMap.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "image/BlendMode.h"
#include "image/LXBlend.h"

#include <QPainterPath>

#include <stdexcept>

namespace {
constexpr bool ChangeAlpha = false;
constexpr quint32 Opaque = 0xFF000000u;

LXRGBA32i OpaquePixel(const QColor& color)
{
    return LXRGBA32i(color.rgba() | Opaque);
}

LXImage32 FilledImage(const QSize& size, LXRGBA32i color)
{
    LXImage32 image(size.width(), size.height());
    image.Fill(color);
    return image;
}

// What a worker throws must not leave it.
template <class Work>
bool FailsReported(Work work)
{
    try {
        work();
        return false;
    } catch (const std::exception& exception) {
        Reports::Exception(ZK_HERE, exception);
    } catch (...) {
        Reports::UnknownException(ZK_HERE);
    }
    return true;
}

// Changes whole tiles of a copy, which then comes home as far as the selection covers it.
template <class MakeFunctor>
void MapThroughSelection(FillPixels& pixels, bool keepAlpha, MakeFunctor makeFunctor)
{
    LXImage32 changed = pixels.image;
    TileMap().Run(changed, TilesTouching(changed, pixels.workRect), makeFunctor);
    BlendOn(pixels.selection, pixels.selectionWorkRect, BlendMode::CoverageToAlpha, changed, pixels.workRect,
            1.0, ChangeAlpha);
    BlendOn(changed, pixels.workRect, BlendMode::MergeCoverage, pixels.image, pixels.workRect, 1.0,
            keepAlpha);
}

FillColorWithoutTransparency ColorFunctor(LXRGBA32i* pixels, LXRGBA32i color)
{
    return {pixels, color.bytes[0], color.bytes[1], color.bytes[2]};
}

void FillLayerWhole(LXImage32& image, LXRGBA32i color, bool keepAlpha)
{
    if (!keepAlpha) {
        image.Fill(color);
        return;
    }
    TileMap().RunAll(image, [&](LXRGBA32i* pixels, int, int) { return ColorFunctor(pixels, color); });
}

void FillLayerThroughSelection(FillPixels& pixels, LXRGBA32i color, bool keepAlpha)
{
    using Copy = LXBlend::LXBlender<LXRGBA32i, LXBlend::LXSource<0>>;
    LXImage32 ink = FilledImage({128, 128}, color);
    const LXTileReader<LXRGBA32i> source = ink.ReadTile(0, 0);
    MapThroughSelection(pixels, keepAlpha, [&](LXRGBA32i* target, int, int) {
        return Copy{source.Pixels(), target};
    });
}

void FillMaskThroughSelection(FillPixels& pixels, int value)
{
    if (value == 0) {
        BlendOn(pixels.selection, pixels.selectionWorkRect, BlendMode::DestinationOut, pixels.image,
                pixels.workRect, 1.0, ChangeAlpha);
        return;
    }
    LXImage32 gray = FilledImage(pixels.workRect.size(), LXRGBA32i(qRgba(value, value, value, 0)));
    BlendOn(pixels.selection, pixels.selectionWorkRect, BlendMode::CoverageToAlpha, gray, gray.Rect(), 1.0,
            ChangeAlpha);
    BlendOn(gray, gray.Rect(), BlendMode::GrayToMask, pixels.image, pixels.workRect, 1.0, ChangeAlpha);
}

// The brush starts at the working rectangle's top left.
LXImage32 PaintedBrush(const QSize& size, const QBrush& brush)
{
    LXImage32 painted(size.width(), size.height());
    QPainterPath path;
    path.addRect(QRectF(painted.Rect()));
    FillPath(painted, BlendMode::Source, path, brush);
    return painted;
}

struct CustomFill
{
    unsigned int mode;
    double opacity;
    bool keepAlpha;
};

void BlendPainted(const LXImage32& painted, const FillPixels& pixels, LXImage32& target,
                  const QRect& targetRect, const CustomFill& fill)
{
    if (pixels.hasSelection) {
        BlendMaskOn(painted, painted.Rect(), fill.mode, target, targetRect, fill.opacity, pixels.selection,
                    pixels.selectionWorkRect, fill.keepAlpha, ChangeAlpha);
    } else {
        BlendOn(painted, painted.Rect(), fill.mode, target, targetRect, fill.opacity, fill.keepAlpha);
    }
}

FillPixels CopyTarget(const LXDocumentInterface* document, unsigned int layerId, PaintTarget target)
{
    const bool isMask = target == PaintTarget::Mask;
    const LXDocumentLayerLockerForRead locker(document, layerId);
    const LXImage32* image = isMask ? document->GetMaskImage(layerId) : document->GetLayerImage(layerId);
    if (!image) throw std::runtime_error("no such layer or mask");

    FillPixels pixels;
    pixels.layerId = layerId;
    pixels.target = target;
    pixels.image = *image;
    pixels.geometry = isMask ? document->GetMaskGeometry(layerId) : document->GetLayerGeometry(layerId);
    return pixels;
}
} // namespace

FillPixels ReadFillPixels(const LXDocumentInterface* document, unsigned int layerId, PaintTarget target)
{
    FillPixels pixels = CopyTarget(document, layerId, target);
    QRect work = pixels.geometry;
    if (document->HasSelection()) {
        const LXDocumentSelectionLockerForRead locker(document);
        pixels.hasSelection = true;
        pixels.selection = document->GetSelectionMask();
        work &= document->GetSelectionGeometry();
        pixels.selectionWorkRect = work.translated(-document->GetSelectionMaskOffset());
    }
    pixels.workRect = work.translated(-pixels.geometry.topLeft());
    return pixels;
}

PaintChange MakePaintChange(const FillPixels& before, const LXImage32& after)
{
    PaintChange change;
    change.layerId = before.layerId;
    change.undoImage = CopyPart(before.image, before.workRect);
    change.redoImage = CopyPart(after, before.workRect);
    change.undoGeometry = before.geometry;
    if (!before.workRect.isEmpty())
        change.redoGeometry = before.workRect.translated(before.geometry.topLeft());
    return change;
}

void FillSolidOperation::operator()()
{
    // Making transparent is all that it would do.
    if (clear && keepAlpha) return;
    if (!pixels.hasSelection) {
        error = FailsReported([this] {
            if (pixels.target == PaintTarget::Mask) {
                const int value = qBound(0, color.lightness(), 255);
                pixels.image.Fill(LXRGBA32i(qRgba(0, 0, 0, value)));
            } else if (clear) {
                pixels.image.Fill(LXRGBA32i());
            } else {
                FillLayerWhole(pixels.image, OpaquePixel(color), keepAlpha);
            }
        });
        return;
    }
    try {
        if (pixels.workRect.isEmpty()) return;
        if (pixels.target == PaintTarget::Mask) {
            FillMaskThroughSelection(pixels, qBound(0, color.lightness(), 255));
        } else {
            FillLayerThroughSelection(pixels, OpaquePixel(color), keepAlpha);
        }
    } catch (...) {
        Reports::Condition(ZK_HERE, QStringLiteral("Fill with selection error."));
        error = true;
    }
}

void LayerFillCustomOperation::operator()()
{
    error = FailsReported([this] {
        if (pixels.workRect.isEmpty()) return;
        const LXImage32 painted = PaintedBrush(pixels.workRect.size(), brush);
        BlendPainted(painted, pixels, pixels.image, pixels.workRect, {mode, opacity, keepAlpha});
    });
}

void MaskFillCustomOperation::operator()()
{
    error = FailsReported([this] {
        if (pixels.workRect.isEmpty()) return;
        const LXImage32 painted = PaintedBrush(pixels.workRect.size(), brush);
        LXImage32 part = CopyPart(pixels.image, pixels.workRect);
        BlendOnMaskValues(part, mode, [&](LXImage32& image, unsigned int workMode) {
            BlendPainted(painted, pixels, image, image.Rect(), {workMode, opacity, ChangeAlpha});
        });
        BlendOn(part, part.Rect(), BlendMode::Source, pixels.image, pixels.workRect, 1.0, ChangeAlpha);
    });
}

void CleanupAlphaOperation::operator()()
{
    error = FailsReported([this] {
        const auto makeFunctor = [](LXRGBA32i* tile, int, int) { return CleanupAlpha{tile}; };
        if (!pixels.hasSelection) {
            TileMap().RunAll(pixels.image, makeFunctor);
        } else if (!pixels.workRect.isEmpty()) {
            MapThroughSelection(pixels, ChangeAlpha, makeFunctor);
        }
    });
}
