#include "movetoolprivate/PieceChanges.h"

#include "image/BlendMode.h"

namespace {
constexpr bool ChangeAlpha = false;

QRect Whole(const QRect& rect)
{
    return QRect(QPoint(0, 0), rect.size());
}
} // namespace

LXImage32 PartOf(const PieceGround& ground, const QRect& rect)
{
    return CopyPart(ground.image, rect.translated(-ground.geometry.topLeft()));
}

PaintChange PieceLaidDown(const PieceGround& ground, const LXImage32& piece, const QRect& pieceRect,
                          const QRect& canvas)
{
    const QRect result = pieceRect & canvas;
    PaintChange change;
    change.layerId = ground.layerId;
    change.undoGeometry = ground.geometry;
    change.redoGeometry = result;
    if (result.isEmpty()) return change;

    change.undoImage = PartOf(ground, result);
    change.redoImage = LXImage32(result.width(), result.height());
    if (ground.newGround != LXRGBA32i()) change.redoImage.Fill(ground.newGround);
    const QRect under = result & ground.geometry;
    BlendOn(change.undoImage, Whole(under), BlendMode::Source, change.redoImage,
            under.translated(-result.topLeft()), 1.0, ChangeAlpha);
    const bool isMask = ground.target == PaintTarget::Mask;
    BlendOn(piece, result.translated(-pieceRect.topLeft()),
            isMask ? BlendMode::GrayToMask : BlendMode::Normal, change.redoImage, Whole(result), 1.0,
            ChangeAlpha);
    return change;
}

PaintChange PixelsReplaced(const PieceGround& ground, const LXImage32& pixels, const QRect& rect)
{
    return {ground.layerId, PartOf(ground, rect), pixels, ground.geometry, rect};
}

PaintChange PixelsWereReplaced(const PieceGround& ground, const LXImage32& before, const QRect& rect)
{
    return {ground.layerId, before, PartOf(ground, rect), ground.geometry, rect};
}
