#include "fillcan/FillJob.h"

#include "common/BlendModeTable.h"
#include "common/MaskBlend.h"
#include "common/Reports.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "image/BlendMode.h"
#include "image/LXBlend.h"
#include "image/LXFloodFillHelper.h"
#include "image/LXImageConvoluteAlpha.h"

#include <QPainterPath>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace {
constexpr bool ChangeAlpha = false;

constexpr LXRGBA32i Transparent(0x00000000u);
constexpr LXRGBA32i OpaqueBlack(0xFF000000u);

/// Pixels with their place in the document.
struct PlacedImage
{
    LXImage32 image;
    QRect rect;
};

/// The area that a click found. `coverage` is a cropped working space, `bounds` the part of it that counts,
/// `origin` its top left in the document.
struct FillArea
{
    LXImage32 coverage;
    QRect bounds;
    QPoint origin;
};

LXImage32 FilledImage(const QSize& size, LXRGBA32i color)
{
    LXImage32 image(size.width(), size.height());
    // It is transparent by itself.
    if (color != Transparent) image.Fill(color);
    return image;
}

// The pixels are shared, so the locker is held for a moment only.
PlacedImage ReadLayer(const LXDocumentInterface* document, unsigned int id)
{
    const LXDocumentLayerLockerForRead locker(document, id);
    const LXImage32* image = document->GetLayerImage(id);
    if (!image) throw std::runtime_error("no such layer");
    return {*image, document->GetLayerGeometry(id)};
}

PlacedImage ReadMask(const LXDocumentInterface* document, unsigned int id)
{
    const LXDocumentLayerLockerForRead locker(document, id);
    const LXImage32* image = document->GetMaskImage(id);
    if (!image) throw std::runtime_error("no such mask");
    return {*image, document->GetMaskGeometry(id)};
}

// Lays the source out in document coordinates.
LXImage32 MakeSample(const PlacedImage& source, const QSize& documentSize, LXRGBA32i ground)
{
    const QRect canvas(QPoint(), documentSize);
    if (source.rect == canvas && source.image.Rect() == canvas) return source.image;

    LXImage32 sample = FilledImage(documentSize, ground);
    BlendOn(source.image, source.image.Rect(), BlendMode::Source, sample, source.rect, 1.0, ChangeAlpha);
    return sample;
}

LXRGBA32i LayerTolerance(const FillJobData& data)
{
    const int alpha = data.ignoreTransparency ? 255 : data.tolerance;
    return LXRGBA32i(qRgba(data.tolerance, data.tolerance, data.tolerance, alpha));
}

// A mask holds its value in alpha alone.
LXRGBA32i MaskTolerance(const FillJobData& data)
{
    return LXRGBA32i(qRgba(255, 255, 255, data.tolerance));
}

FillArea FindArea(const LXImage32& sample, const QRect& visible, LXRGBA32i tolerance, const FillJobData& data)
{
    FillArea area{FilledImage(sample.Rect().size(), Transparent), QRect(), QPoint()};
    const auto fill = data.contiguous ? LXFloodFillHelper::FloodFill : LXFloodFillHelper::ColorRangeFill;
    if (!fill(sample, area.coverage, data.position, tolerance, OpaqueBlack, &area.bounds)) {
        throw std::runtime_error("nothing to fill at the position");
    }
    if (visible.contains(data.position) && area.bounds != area.coverage.Rect()) {
        area.coverage = CopyPart(area.coverage, area.bounds);
        area.origin = area.bounds.topLeft();
        area.bounds.moveTopLeft(QPoint());
    }
    return area;
}

// Inside the bounds only: outside them nothing is painted, so nothing there may thin the edge.
void SoftenEdge(FillArea& area)
{
    constexpr int side = 5;
    constexpr std::array<double, side * side> weights{
        1, 1, 1,  1, 1, //
        1, 4, 4,  4, 1, //
        1, 4, 12, 4, 1, //
        1, 4, 4,  4, 1, //
        1, 1, 1,  1, 1, //
    };
    constexpr double sum = 60.0;
    std::array<double, side * side> kernel{};
    std::transform(weights.begin(), weights.end(), kernel.begin(),
                   [](double weight) { return weight / sum; });

    LXImage32 part = CopyPart(area.coverage, area.bounds);
    LXImageConvoluteAlpha(kernel.data(), QSize(side, side))(part);
    BlendOn(part, part.Rect(), BlendMode::Source, area.coverage, area.bounds, 1.0, ChangeAlpha);
}

void CutBySelection(FillArea& area, const LXDocumentInterface* document)
{
    if (!document->HasSelection()) return;

    const LXDocumentSelectionLockerForRead locker(document);
    const QRect selection = document->GetSelectionGeometry();
    const QPoint offset = area.origin - selection.topLeft();
    BlendOn(document->GetSelectionMask(), area.bounds.translated(offset), BlendMode::DestinationIn,
            area.coverage, area.bounds, 1.0, ChangeAlpha);
    area.bounds &= selection.translated(-area.origin);
}

// What was found on all layers is painted on one, which doesn't grow for it.
void CutByTarget(FillArea& area, const QRect& targetRect)
{
    area.bounds &= targetRect.translated(-area.origin);
    area.coverage = CopyPart(area.coverage, area.bounds);
    area.origin += area.bounds.topLeft();
    area.bounds = area.coverage.Rect();
}

// A pattern starts at the area's top left, whatever part of the area still counts.
void ColorCoverage(FillArea& area, const QBrush& brush)
{
    QPainterPath path;
    path.addRect(QRectF(area.bounds));
    FillPath(area.coverage, BlendMode::SourceIn, path, brush);
}

void BlendOnLayer(const FillArea& area, LXImage32& layer, const FillJobData& data)
{
    BlendOn(area.coverage, area.bounds, BlendModeTable::ModeOf(data.blendMode), layer, layer.Rect(),
            data.opacity, ChangeAlpha);
}

void BlendOnMask(const FillArea& area, LXImage32& mask, const FillJobData& data)
{
    BlendOnMaskValues(mask, BlendModeTable::ModeOf(data.blendMode), [&](LXImage32& image, unsigned int mode) {
        BlendOn(area.coverage, area.bounds, mode, image, image.Rect(), data.opacity, ChangeAlpha);
    });
}

// What both jobs do with the area once it is found.
FillArea FinishArea(FillArea area, const QRect& targetRect, const LXDocumentInterface* document,
                    const FillJobData& data)
{
    if (data.antialiasing) SoftenEdge(area);
    CutBySelection(area, document);
    if (data.allLayers) CutByTarget(area, targetRect);
    ColorCoverage(area, data.brush);
    return area;
}

// The pixels that the area covers, before the fill: in the undo image, and under the redo image. `ground` is
// what the target has outside its rectangle.
FillJobResult TakeGround(const FillArea& area, const PlacedImage& target, LXRGBA32i ground)
{
    FillJobResult result;
    result.undoGeometry = target.rect;
    result.redoGeometry = area.bounds.translated(area.origin);

    const QRect region = target.rect & result.redoGeometry;
    result.undoImage = CopyPart(target.image, region.translated(-target.rect.topLeft()));
    result.redoImage = FilledImage(area.bounds.size(), ground);
    BlendOn(result.undoImage, result.undoImage.Rect(), BlendMode::Source, result.redoImage,
            region.translated(-result.redoGeometry.topLeft()), 1.0, ChangeAlpha);
    return result;
}

FillJobResult FillLayer(const LXDocumentInterface* document, const FillJobData& data)
{
    const QRect documentRect(QPoint(), document->GetDocumentSize());
    const PlacedImage source = ReadLayer(document, data.allLayers ? 0 : data.layerId);
    const LXImage32 sample = MakeSample(source, documentRect.size(), Transparent);
    const FillArea found = FindArea(sample, source.rect & documentRect, LayerTolerance(data), data);

    const PlacedImage target = ReadLayer(document, data.layerId);
    const FillArea area = FinishArea(found, target.rect, document, data);
    FillJobResult result = TakeGround(area, target, Transparent);
    BlendOnLayer(area, result.redoImage, data);
    return result;
}

FillJobResult FillMask(const LXDocumentInterface* document, const FillJobData& data)
{
    const QRect documentRect(QPoint(), document->GetDocumentSize());
    const LXRGBA32i maskDefault = data.maskReveals ? OpaqueBlack : Transparent;
    const PlacedImage source = ReadMask(document, data.allLayers ? 0 : data.layerId);
    const LXImage32 sample =
        MakeSample(source, documentRect.size(), data.allLayers ? Transparent : maskDefault);
    const FillArea found = FindArea(sample, source.rect & documentRect,
                                    data.allLayers ? LayerTolerance(data) : MaskTolerance(data), data);

    const PlacedImage target = ReadMask(document, data.layerId);
    const FillArea area = FinishArea(found, target.rect, document, data);
    FillJobResult result = TakeGround(area, target, maskDefault);
    BlendOnMask(area, result.redoImage, data);
    return result;
}

constexpr int JobFailed = 1;

// Runs a job with its failures turned into reports, under the tool's name.
template <class Job>
FillJobResult RunJob(Job job, const LXDocumentInterface* document, const FillJobData& data, bool isMask,
                     int exceptionLine, int unknownLine)
{
    FillJobResult result;
    try {
        result = job(document, data);
    } catch (const std::exception& exception) {
        Reports::Exception(ZK_PLACE(exceptionLine, "src/fillcan/FillCan_p"), exception);
        result.error = JobFailed;
    } catch (...) {
        Reports::UnknownException(ZK_PLACE(unknownLine, "src/fillcan/FillCan_p"));
        result.error = JobFailed;
    }
    result.layerId = data.layerId;
    result.isMask = isMask;
    return result;
}
} // namespace

FillJobResult RunLayerFillJob(const LXDocumentInterface* document, const FillJobData& data)
{
    return RunJob(FillLayer, document, data, false, 1416, 1421);
}

FillJobResult RunMaskFillJob(const LXDocumentInterface* document, const FillJobData& data)
{
    return RunJob(FillMask, document, data, true, __LINE__, __LINE__);
}
