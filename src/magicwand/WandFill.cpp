#include "magicwand/WandFill.h"

#include "image/LXBlend.h"
#include "image/LXFloodFillHelper.h"

#include <QRgb>

namespace {
constexpr LXRGBA32i Selected(0xFF000000u);

/// Lays the picture out in document coordinates.
LXImage32 MakeWorkPicture(const WandFillData& data)
{
    const QRect canvas(QPoint(), data.documentSize);
    // Shares the pixels, which a copy of a large picture would double.
    if (data.geometry == canvas && data.picture.Rect() == canvas) return data.picture;

    LXImage32 work(data.documentSize.width(), data.documentSize.height());
    const QRect visible = (data.geometry & canvas).translated(-data.geometry.topLeft());
    const LXImage32 part = visible == data.picture.Rect() ? data.picture : CopyPart(data.picture, visible);
    BlendOn(part, part.Rect(), BlendMode::Source, work, visible.translated(data.geometry.topLeft()), 1.0,
            false);
    return work;
}
} // namespace

WandFillResult FillByWand(const WandFillData& data)
{
    const LXImage32 work = MakeWorkPicture(data);
    const LXRGBA32i tolerance(qRgba(data.tolerance, data.tolerance, data.tolerance, data.tolerance));
    const auto fill = data.contiguous ? LXFloodFillHelper::FloodFill : LXFloodFillHelper::ColorRangeFill;

    WandFillResult result{LXImage32(data.documentSize.width(), data.documentSize.height()), {}};
    QRect bounds;
    fill(work, result.mask, data.seed, tolerance, Selected, &bounds);
    result.offset = bounds.topLeft();
    if (bounds != result.mask.Rect()) result.mask = CopyPart(result.mask, bounds);
    return result;
}
