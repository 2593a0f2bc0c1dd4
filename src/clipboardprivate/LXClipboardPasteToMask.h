#pragma once

#include "clipboardprivate/MaskPasteProgress.h"

#include "common/BlendToMask.h"

/// A paste into a mask while nothing is selected.
class LXClipboardPasteToMask : public MaskPasteProgress
{
    Q_OBJECT

public:
    using BlendToMask = ::BlendToMask;

    /// @param isGroundOpaque  the value of the mask where it has no pixels
    LXClipboardPasteToMask(const ClipboardPixels::Placed& item, const ClipboardPixels::Placed& mask,
                           bool isGroundOpaque, QWidget* parent);

protected:
    void BlendTile(TileMap& map, LXImage32& result, const LXImage32& item, const QPoint& tile) override;
};
