#include "clipboardprivate/LXClipboardPasteToMaskBySelection.h"

#include "common/LXBlender.h"

LXClipboardPasteToMaskBySelection::LXClipboardPasteToMaskBySelection(const ClipboardPixels::Placed& item,
                                                                     const ClipboardPixels::Placed& mask,
                                                                     const ClipboardPixels::Placed& selection,
                                                                     bool isGroundOpaque, QWidget* parent)
    : MaskPasteProgress(item, mask, item.Rect() & mask.Rect() & selection.Rect(), isGroundOpaque, parent),
      m_Selection(CopyPart(selection.image, GetResultRect().translated(-selection.topLeft)))
{}

void LXClipboardPasteToMaskBySelection::BlendTile(TileMap& map, LXImage32& result, const LXImage32& item,
                                                  const QPoint& tile)
{
    const LXTileReader<LXRGBA32i> source = item.ReadTile(tile.x(), tile.y());
    const LXTileReader<LXRGBA32i> selection = m_Selection.ReadTile(tile.x(), tile.y());
    map.Run(result, QRect(tile, QSize(1, 1)), [&](LXRGBA32i* target, int, int) {
        return LXBlend::LXSelectionBlender<LXRGBA32i, BlendToMask, LXRGBA32i>{source.Pixels(), target,
                                                                              selection.Pixels()};
    });
}
