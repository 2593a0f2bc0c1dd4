#include "history/SelectionCombine.h"

#include "document/AlphaScan.h"

#include <QBrush>

namespace {
constexpr int TilePixels = 128 * 128;

/// The part of the mask inside the rectangle, 0 around it, as a mask of the rectangle's size.
LXImage32 LaidOut(const PlacedMask& placed, const QRect& rect)
{
    LXImage32 mask(rect.width(), rect.height());
    BlendOn(placed.mask, placed.mask.Rect(), BlendMode::Source, mask,
            placed.Rect().translated(-rect.topLeft()), 1.0, false);
    return mask;
}

/// The larger coverage of both; the masks have one size.
void UniteInto(LXImage32& target, const LXImage32& added)
{
    for (std::size_t i = 0; i < target.m_Tiles.size(); ++i) {
        const LXTileWriter<LXRGBA32i> writer(target.m_Tiles[i]);
        const LXTileReader<LXRGBA32i> reader(*added.m_Tiles[i]);
        LXRGBA32i* to = writer.Pixels();
        const LXRGBA32i* from = reader.Pixels();
        for (int k = 0; k < TilePixels; ++k) {
            to[k].value = qMax(to[k].value & 0xFF000000, from[k].value & 0xFF000000);
        }
    }
}

PlacedMask Trimmed(const PlacedMask& placed)
{
    const QRect bounds = AlphaScan::BoundsAbove(placed.mask, 0);
    if (bounds.isEmpty()) return PlacedMask();
    return {CopyPart(placed.mask, bounds), placed.offset + bounds.topLeft()};
}

PlacedMask United(const PlacedMask& selection, const PlacedMask& added)
{
    if (selection.mask.IsNull()) return added;
    if (added.mask.IsNull()) return selection;
    const QRect rect = selection.Rect() | added.Rect();
    PlacedMask united{LaidOut(selection, rect), rect.topLeft()};
    UniteInto(united.mask, LaidOut(added, rect));
    return united;
}

PlacedMask Intersected(const PlacedMask& selection, const PlacedMask& added)
{
    const QRect rect = selection.Rect() & added.Rect();
    if (rect.isEmpty()) return PlacedMask();
    PlacedMask common{LaidOut(selection, rect), rect.topLeft()};
    BlendOn(added.mask, rect.translated(-added.offset), BlendMode::DestinationIn, common.mask,
            common.mask.Rect(), 1.0, false);
    return common;
}

PlacedMask Subtracted(const PlacedMask& selection, const PlacedMask& added)
{
    PlacedMask rest = selection;
    if (added.mask.IsNull() || rest.mask.IsNull()) return rest;
    BlendOn(added.mask, added.mask.Rect(), BlendMode::DestinationOut, rest.mask,
            added.Rect().translated(-rest.offset), 1.0, false);
    return rest;
}
} // namespace

PlacedMask SelectionCombine::Combined(const PlacedMask& selection, const PlacedMask& added,
                                      SelectionCommandData::LogicalOp op)
{
    switch (op) {
    case SelectionCommandData::Unite: return Trimmed(United(selection, added));
    case SelectionCommandData::Intersect: return Trimmed(Intersected(selection, added));
    case SelectionCommandData::Subtract: return Trimmed(Subtracted(selection, added));
    case SelectionCommandData::Replace: break;
    }
    return Trimmed(added);
}

PlacedMask SelectionCombine::MaskOfPath(const QPainterPath& path, const QRect& canvas)
{
    // Cut before it is rounded: a path may reach further than an int does.
    const QRect rect = (path.boundingRect() & QRectF(canvas)).toAlignedRect();
    if (rect.isEmpty()) return PlacedMask();
    PlacedMask placed{LXImage32(rect.width(), rect.height()), rect.topLeft()};
    FillPath(placed.mask, BlendMode::Source, path.translated(-rect.topLeft()), QBrush(Qt::black));
    return placed;
}
