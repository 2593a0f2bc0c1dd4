#pragma once

#include "ZKHostExport.h"

#include "image/LXImage.h"

#include <QRect>

class LXDocumentInterface;

/// Cuts pixels of layers and masks by the selection of a document.
///
/// The part that the operations speak of is the selection's rectangle inside the layer's (the mask's): the
/// images have its size and their pixel (0, 0) lies at its top left. Without a selection, outside of it, for
/// a bad id and for a mask that isn't there it is empty, and so is the image.
///
/// Products are rounded as `BlendOn` does, so that what is lifted and what is left add up to what was there.
/// The lockers are taken inside; whoever holds one of the same ids may call. Main thread.
class ZK_HOST_EXPORT LXSelectionMaskHelper
{
public:
    /// The document must outlive the helper.
    explicit LXSelectionMaskHelper(LXDocumentInterface* document) : m_pDocument(document) {}

    /// The layer's pixels, alpha = alpha x coverage. Id 0 reads the merged picture.
    LXImage32 GetSelectionRGBA32iImage(unsigned int id) const;
    LXImage32 GetSelectionBoundRGBA32iImage(unsigned int id) const;

    /// The mask as a gray picture: color = the mask's value, alpha = coverage.
    LXImage32 GetSelectionMaskGrayScale(unsigned int id) const;
    LXImage32 GetSelectionBoundMaskGrayScale(unsigned int id) const;

    /// Takes the selected pixels out of the layer (mode 8) and answers the whole image as it was before.
    LXImage32 CutSelectionRGBA32iImage(unsigned int id);
    /// Puts the lightness of `fill` in place of the selected part of the mask (mode 64) and answers the whole
    /// mask as it was before.
    LXImage32 CutSelectionMaskGrayScale(unsigned int id, const LXRGBA32i& fill);

    /// The smallest rectangle around the pixels with an alpha above 0; QRect() if there is none. Any thread.
    static QRect GetSelectionBoundRect(const LXImage32& image);
    /// What remains when the transparent border is taken away: each side moves inward up to the first pixel
    /// whose alpha is above the tolerance. QRect() if nothing remains. Any thread.
    static QRect MakeImageTransparencyBorder(const LXImage32& image, unsigned int tolerance);
    /// The same for a border of one color: up to the first pixel of which red, green or blue differs from the
    /// color by more than the tolerance. Any thread.
    static QRect MakeImageBrightnessBorder(const LXImage32& image, unsigned int tolerance,
                                           const LXRGBA32i& color);

private:
    LXDocumentInterface* m_pDocument;
};
