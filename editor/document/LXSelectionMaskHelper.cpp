#include "document/LXSelectionMaskHelper.h"

#include "document/AlphaScan.h"
#include "document/GrayMask.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "image/BorderScan.h"

namespace {
/// Above it every byte is within the tolerance.
int ByteTolerance(unsigned int tolerance)
{
    return static_cast<int>(qMin(tolerance, 255U));
}

/// The selection of one moment.
struct SelectionPart
{
    explicit SelectionPart(const LXDocumentInterface* document)
        : mask(LXDocumentInterfacePrivate::Get(document)->selection.Snapshot(&offset))
    {}

    /// Its rectangle inside another, in document pixels.
    QRect Inside(const QRect& rect) const { return QRect(offset, QSize(mask.Width(), mask.Height())) & rect; }

    /// The mask in that rectangle, with its top left at (0, 0).
    LXImage32 Coverage(const QRect& docRect) const { return CopyPart(mask, docRect.translated(-offset)); }

    QPoint offset;
    LXImage32 mask;
};

/// Leaves of the picture what is selected. Its (0, 0) lies at the top left of `docRect`.
void KeepSelected(LXImage32& picture, const SelectionPart& selection, const QRect& docRect)
{
    BlendOn(selection.mask, docRect.translated(-selection.offset), BlendMode::DestinationIn, picture,
            picture.Rect(), 1.0, false);
}
} // namespace

LXImage32 LXSelectionMaskHelper::GetSelectionRGBA32iImage(unsigned int id) const
{
    const SelectionPart selection(m_pDocument);
    const LXDocumentLayerLockerForRead locker(m_pDocument, id);
    const LXImage32* image = m_pDocument->GetLayerImage(id);
    const QRect layer = m_pDocument->GetLayerGeometry(id);
    const QRect part = selection.Inside(layer);
    if (!image || part.isEmpty()) return LXImage32();

    LXImage32 lifted = CopyPart(*image, part.translated(-layer.topLeft()));
    KeepSelected(lifted, selection, part);
    return lifted;
}

LXImage32 LXSelectionMaskHelper::GetSelectionBoundRGBA32iImage(unsigned int id) const
{
    return GetSelectionRGBA32iImage(id);
}

LXImage32 LXSelectionMaskHelper::GetSelectionMaskGrayScale(unsigned int id) const
{
    const SelectionPart selection(m_pDocument);
    const LXDocumentLayerLockerForRead locker(m_pDocument, id);
    const LXImage32* mask = m_pDocument->GetMaskImage(id);
    const QRect rect = m_pDocument->GetMaskGeometry(id);
    const QRect part = selection.Inside(rect);
    if (!mask || part.isEmpty()) return LXImage32();
    return GrayMask::FromAlpha(CopyPart(*mask, part.translated(-rect.topLeft())), selection.Coverage(part));
}

LXImage32 LXSelectionMaskHelper::GetSelectionBoundMaskGrayScale(unsigned int id) const
{
    return GetSelectionMaskGrayScale(id);
}

LXImage32 LXSelectionMaskHelper::CutSelectionRGBA32iImage(unsigned int id)
{
    LXImage32* image = id == 0 ? nullptr : m_pDocument->GetLayerImage(id);
    if (!image) return LXImage32();

    const SelectionPart selection(m_pDocument);
    LXDocumentLayerLockerForWrite locker(m_pDocument, id);
    LXImage32 before = *image;
    const QRect layer = m_pDocument->GetLayerGeometry(id);
    const QRect part = selection.Inside(layer);
    if (part.isEmpty()) return before;

    BlendOn(selection.mask, part.translated(-selection.offset), BlendMode::DestinationOut, *image,
            part.translated(-layer.topLeft()), 1.0, false);
    locker.Unlock();
    LXDocumentInterfacePrivate::Get(m_pDocument)->LayerPixelsChanged(id, part);
    return before;
}

LXImage32 LXSelectionMaskHelper::CutSelectionMaskGrayScale(unsigned int id, const LXRGBA32i& fill)
{
    LXImage32* mask = id == 0 ? nullptr : m_pDocument->GetMaskImage(id);
    if (!mask) return LXImage32();

    const SelectionPart selection(m_pDocument);
    LXDocumentLayerLockerForWrite locker(m_pDocument, id);
    LXImage32 before = *mask;
    const QRect rect = m_pDocument->GetMaskGeometry(id);
    const QRect part = selection.Inside(rect);
    if (part.isEmpty()) return before;

    LXImage32 ground(part.width(), part.height());
    ground.Fill(fill);
    KeepSelected(ground, selection, part);
    BlendOn(ground, ground.Rect(), BlendMode::GrayToMask, *mask, part.translated(-rect.topLeft()), 1.0,
            false);
    locker.Unlock();
    LXDocumentInterfacePrivate::Get(m_pDocument)->MaskPixelsChanged(id, part);
    return before;
}

QRect LXSelectionMaskHelper::GetSelectionBoundRect(const LXImage32& image)
{
    return AlphaScan::BoundsAbove(image, 0);
}

QRect LXSelectionMaskHelper::MakeImageTransparencyBorder(const LXImage32& image, unsigned int tolerance)
{
    return BorderScan::WithoutTransparency(image, ByteTolerance(tolerance));
}

QRect LXSelectionMaskHelper::MakeImageBrightnessBorder(const LXImage32& image, unsigned int tolerance,
                                                       const LXRGBA32i& color)
{
    return BorderScan::WithoutColor(image, ByteTolerance(tolerance), color);
}
