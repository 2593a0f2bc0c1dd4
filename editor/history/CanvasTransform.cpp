#include "history/CanvasTransform.h"

#include "document/LXPathConvert.h"
#include "document/TextRaster.h"
#include "history/CanvasExtension.h"
#include "history/MaskGray.h"
#include "image/ImageMetadata.h"
#include "image/LXTransform.h"

#include <algorithm>
#include <cmath>

namespace {
/// In pixels; what computing with fractions adds to a place that is whole.
constexpr double PixelNoise = 1e-4;

using TransformFunction = bool (*)(const LXImage32&, const QTransform&, LXImage32&, const QRect&);

/// How the things of a document reach the new canvas.
struct Passage
{
    QTransform transform;
    QSize oldSize; ///< of the canvas
    QSize size;    ///< of the new one
    QRect bounds;  ///< of what is kept of images, on the new canvas; null for all
    TransformFunction pixels = TransformImage;
    TransformFunction coverage =
        TransformImage; ///< for masks and the selection, where no value may overshoot
};

/// The pixels that the rectangle touches, whatever noise its edges have. What reaches further than any image
/// can is cut there: an image of that size is refused.
QRect TouchedPixels(const QRectF& mapped)
{
    constexpr double reach = 5e8;
    const QRectF rect = mapped & QRectF(-reach, -reach, 2 * reach, 2 * reach);
    const double left = std::floor(rect.left() + PixelNoise);
    const double top = std::floor(rect.top() + PixelNoise);
    const double right = std::ceil(rect.right() - PixelNoise);
    const double bottom = std::ceil(rect.bottom() - PixelNoise);
    return QRectF(left, top, right - left, bottom - top).toRect();
}

QRect KeptRect(const QRect& rect, const Passage& passage)
{
    const QRect mapped = TouchedPixels(passage.transform.mapRect(QRectF(rect)));
    return passage.bounds.isNull() ? mapped : mapped & passage.bounds;
}

PlacedImage Passed(const PlacedImage& source, const Passage& passage, TransformFunction function)
{
    const QRect rect = source.image.IsNull() ? QRect() : KeptRect(source.Rect(), passage);
    if (rect.isEmpty()) return PlacedImage();

    const QTransform transform = QTransform::fromTranslate(source.offset.x(), source.offset.y()) *
                                 passage.transform * QTransform::fromTranslate(-rect.left(), -rect.top());
    // What only moves keeps its tiles.
    if (rect.size() == source.image.Rect().size() && CanvasTransform::IsIdle(transform, rect.size())) {
        return {source.image, rect.topLeft()};
    }
    PlacedImage passed{LXImage32(rect.width(), rect.height()), rect.topLeft()};
    ImageMetadata::Copy(source.image, passed.image);
    function(source.image, transform, passed.image, QRect());
    return passed;
}

PlacedImage PassedMask(const PlacedImage& mask, bool reveals, const Passage& passage)
{
    PlacedImage passed = Passed({MaskGray::FromMask(mask.image), mask.offset}, passage, passage.coverage);
    passed.image = MaskGray::ToMask(passed.image, reveals);
    return passed;
}

/// Letters are drawn anew, unless they only move; they stay whole, whatever is cut off from the canvas.
void PassText(CanvasState::LayerPixels& layer, const Passage& passage)
{
    QPoint delta;
    const bool isWhole = TextRaster::IsWholeMove(QTransform(), passage.transform, &delta) &&
                         !TextRaster::MayBeCut(layer.pixels.Rect(), passage.oldSize) &&
                         !TextRaster::MayBeCut(layer.pixels.Rect().translated(delta), passage.size);
    if (isWhole) {
        layer.text = TextRaster::Moved(*layer.text, delta);
        layer.pixels.offset += delta;
        return;
    }
    auto text = std::make_shared<TextContent>(*layer.text);
    text->transform *= passage.transform;
    layer.text = text;
    layer.pixels = TextRaster::Render(*text, passage.size);
}

CanvasState::LayerPixels PassedLayer(const CanvasState::LayerPixels& layer, const Passage& passage)
{
    CanvasState::LayerPixels passed = layer;
    if (layer.text) {
        PassText(passed, passage);
    } else {
        passed.pixels = Passed(layer.pixels, passage, passage.pixels);
    }
    if (layer.hasMask) passed.mask = PassedMask(layer.mask, layer.maskReveals, passage);
    return passed;
}

LXSubPaths PassedPath(LXSubPaths path, const QTransform& transform)
{
    for (QPair<LXPath, int>& subPath : path) {
        TransformPath(subPath.first, transform);
    }
    return path;
}

/// The pixel that the middle of the sample's pixel goes to.
QPoint PassedSample(const QPoint& sample, const QTransform& transform)
{
    const QPointF middle = transform.map(QPointF(sample.x() + 0.5, sample.y() + 0.5));
    return QPoint(static_cast<int>(std::floor(middle.x())), static_cast<int>(std::floor(middle.y())));
}

/// A guide runs along the canvas before and after, so a turned one takes the nearer direction, through where
/// its middle goes.
LXGuide PassedGuide(const LXGuide& guide, const QSize& canvas, const QTransform& transform)
{
    const bool isHorizontal = guide.orientation == Qt::Horizontal;
    const QPointF middle = isHorizontal ? QPointF(canvas.width() / 2.0, guide.position)
                                        : QPointF(guide.position, canvas.height() / 2.0);
    const QPointF further = middle + (isHorizontal ? QPointF(1, 0) : QPointF(0, 1));
    const QPointF place = transform.map(middle);
    const QPointF run = transform.map(further) - place;
    LXGuide passed;
    passed.orientation = std::abs(run.x()) >= std::abs(run.y()) ? Qt::Horizontal : Qt::Vertical;
    passed.position = passed.orientation == Qt::Horizontal ? place.y() : place.x();
    return passed;
}

CanvasState PassedState(const CanvasState& before, const QSize& size, const Passage& asked)
{
    Passage passage = asked;
    passage.oldSize = before.size;
    passage.size = size;
    // A canvas that is too large is refused here, before anything of the document has changed.
    const LXImage32 canvas(size.width(), size.height());
    CanvasState after;
    after.size = size;
    for (const CanvasState::LayerPixels& layer : before.layers) {
        after.layers.push_back(PassedLayer(layer, passage));
    }
    after.selection = Passed(before.selection, passage, passage.coverage);
    for (const LXSubPaths& path : before.paths) {
        after.paths.push_back(PassedPath(path, passage.transform));
    }
    for (const PlacedImage& channel : before.channels) {
        after.channels.push_back(Passed(channel, passage, passage.coverage));
    }
    for (const QPoint& sample : before.samples) {
        after.samples.push_back(PassedSample(sample, passage.transform));
    }
    for (const LXGuide& guide : before.guides) {
        after.guides.push_back(PassedGuide(guide, before.size, passage.transform));
    }
    return after;
}

bool IsOnCanvas(const LXGuide& guide, const QSize& canvas)
{
    const int side = guide.orientation == Qt::Horizontal ? canvas.height() : canvas.width();
    return guide.position >= 0 && guide.position <= side;
}
} // namespace

QTransform CanvasTransform::Exact(const CanvasCrop& crop)
{
    if (crop.isResampled) return crop.transform;

    const QTransform& asked = crop.transform;
    const QTransform exact(std::round(asked.m11()), std::round(asked.m12()), std::round(asked.m21()),
                           std::round(asked.m22()), std::round(asked.dx()), std::round(asked.dy()));
    constexpr double noise = 1e-3; // of a box whose sides were computed in single precision
    const bool isNear = asked.isAffine() && std::abs(asked.m11() - exact.m11()) < noise &&
                        std::abs(asked.m12() - exact.m12()) < noise &&
                        std::abs(asked.m21() - exact.m21()) < noise &&
                        std::abs(asked.m22() - exact.m22()) < noise;
    return isNear && std::abs(exact.determinant()) == 1 ? exact : asked;
}

bool CanvasTransform::IsIdle(const QTransform& transform, const QSize& canvas)
{
    const QPointF corners[] = {QPointF(0, 0), QPointF(canvas.width(), 0), QPointF(0, canvas.height()),
                               QPointF(canvas.width(), canvas.height())};
    return std::all_of(std::begin(corners), std::end(corners), [&transform](const QPointF& corner) {
        const QPointF way = transform.map(corner) - corner;
        return std::abs(way.x()) < PixelNoise && std::abs(way.y()) < PixelNoise;
    });
}

CanvasState CanvasTransform::Cropped(const CanvasState& before, const CanvasCrop& crop)
{
    const QRect canvas(QPoint(0, 0), crop.size);
    Passage passage;
    passage.transform = Exact(crop);
    passage.pixels = BicubicTransformImage;
    if (!crop.isHiding) passage.bounds = canvas;

    CanvasState after = PassedState(before, crop.size, passage);
    if (!crop.isHiding) {
        const auto isGone = [&crop](const LXGuide& guide) { return !IsOnCanvas(guide, crop.size); };
        after.guides.erase(std::remove_if(after.guides.begin(), after.guides.end(), isGone),
                           after.guides.end());
    }
    CanvasExtension::Fill(after, before.size, passage.transform, crop.extension);
    return after;
}

CanvasState CanvasTransform::Resized(const CanvasState& before, const QSize& size,
                                     ImageSizeCommandData::ResampleType type)
{
    Passage passage;
    passage.transform = QTransform::fromScale(static_cast<double>(size.width()) / before.size.width(),
                                              static_cast<double>(size.height()) / before.size.height());
    if (type == ImageSizeCommandData::Bicubic) passage.pixels = BicubicTransformImage;
    if (type == ImageSizeCommandData::NearestNeighbour) {
        passage.pixels = NearestNeighbourTransformImage;
        passage.coverage = NearestNeighbourTransformImage;
    }
    return PassedState(before, size, passage);
}
