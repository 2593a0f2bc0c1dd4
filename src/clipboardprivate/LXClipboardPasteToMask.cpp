#include "clipboardprivate/LXClipboardPasteToMask.h"

#include "common/LXBlender.h"

LXClipboardPasteToMask::LXClipboardPasteToMask(const ClipboardPixels::Placed& item,
                                               const ClipboardPixels::Placed& mask, bool isGroundOpaque,
                                               QWidget* parent)
    : MaskPasteProgress(item, mask, item.Rect() & mask.Rect(), isGroundOpaque, parent)
{}

void LXClipboardPasteToMask::BlendTile(TileMap& map, LXImage32& result, const LXImage32& item,
                                       const QPoint& tile)
{
    const LXTileReader<LXRGBA32i> source = item.ReadTile(tile.x(), tile.y());
    map.Run(result, QRect(tile, QSize(1, 1)), [&](LXRGBA32i* target, int, int) {
        return LXBlend::LXBlender<LXRGBA32i, BlendToMask>{source.Pixels(), target};
    });
}
