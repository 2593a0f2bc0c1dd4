#pragma once

#include "clipboardprivate/MaskPasteProgress.h"

#include "common/BlendToMask.h"

/// A paste into a mask, as far as the selection allows.
class LXClipboardPasteToMaskBySelection : public MaskPasteProgress
{
    Q_OBJECT

public:
    using BlendToMask = ::BlendToMaskBySelection;

    /// @param isGroundOpaque  the value of the mask where it has no pixels
    LXClipboardPasteToMaskBySelection(const ClipboardPixels::Placed& item,
                                      const ClipboardPixels::Placed& mask,
                                      const ClipboardPixels::Placed& selection, bool isGroundOpaque,
                                      QWidget* parent);

protected:
    void BlendTile(TileMap& map, LXImage32& result, const LXImage32& item, const QPoint& tile) override;

private:
    LXImage32 m_Selection; ///< the part of it that lies over the result
};
