#include "image/LXFloodFillHelper.h"

#include "image/LXImage.h"
#include "image/RegionPainter.h"
#include "image/SimilarPixels.h"
#include "image/TileFlood.h"
#include "image/TileThreads.h"
#include "image/TileWalk.h"
#include "utils/FaultSeams.h"

#include <QPoint>
#include <QRect>

#include <stdexcept>

namespace {
void PassFaultSeam()
{
    if (FaultSeams::Pass(FaultSeams::Seam::FloodFill)) throw std::runtime_error("The fill failed");
}

void Report(const RegionPainter& painter, QRect* bounds)
{
    if (bounds != nullptr) *bounds = painter.Bounds();
}
} // namespace

bool LXFloodFillHelper::FloodFill(const LXImage32& src, LXImage32& mask, const QPoint& seed,
                                  LXRGBA32i tolerance, LXRGBA32i fill, QRect* bounds)
{
    PassFaultSeam();
    const QRect area = src.Rect() & mask.Rect();
    if (!area.contains(seed)) return false;

    SimilarPixels similar(src, seed, tolerance);
    TileFlood flood(similar, area);
    flood.Run(seed);

    RegionPainter painter(mask, fill);
    flood.ForEachPart(
        [&](int column, int row, const TileBits& region) { painter.Paint(column, row, region); });
    Report(painter, bounds);
    return true;
}

bool LXFloodFillHelper::ColorRangeFill(const LXImage32& src, LXImage32& mask, const QPoint& seed,
                                       LXRGBA32i tolerance, LXRGBA32i fill, QRect* bounds)
{
    PassFaultSeam();
    const QRect area = src.Rect() & mask.Rect();
    if (!area.contains(seed)) return false;

    // The copy keeps the pixels to compare with, should the mask be the same image.
    const LXImage32 source = src; // NOLINT(performance-unnecessary-copy-initialization)
    SimilarPixels similar(source, seed, tolerance);
    RegionPainter painter(mask, fill);
    TileThreads::ForEachTile(area, [&](int column, int row, const QRect& part) {
        const QRect whole = TileWalk::TileRect(column, row);
        TileBits region;
        similar.Find(column, row, region);
        if (part != whole) TileBitsMath::Clip(region, part.translated(-whole.topLeft()));
        painter.Paint(column, row, region);
    });
    Report(painter, bounds);
    return true;
}
