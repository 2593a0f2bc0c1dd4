#include "movetoolprivate/FloatingTarget.h"

#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "document/LXSelectionMaskHelper.h"
#include "image/BlendMode.h"

#include <QColor>

namespace {
constexpr bool ChangeAlpha = false;
} // namespace

LXImage32* FloatingTarget::Image() const
{
    return IsMask() ? m_pDocument->GetMaskImage(m_Id) : m_pDocument->GetLayerImage(m_Id);
}

QRect FloatingTarget::Geometry() const
{
    return IsMask() ? m_pDocument->GetMaskGeometry(m_Id) : m_pDocument->GetLayerGeometry(m_Id);
}

LXRGBA32i FloatingTarget::NewGround() const
{
    if (!IsMask()) return LXRGBA32i();
    bool reveals = false;
    m_pDocument->GetMaskInverted(m_Id, &reveals);
    return LXRGBA32i(reveals ? 0xFF000000u : 0u);
}

LXImage32 FloatingTarget::Lift() const
{
    const LXSelectionMaskHelper helper(m_pDocument);
    return IsMask() ? helper.GetSelectionMaskGrayScale(m_Id) : helper.GetSelectionRGBA32iImage(m_Id);
}

void FloatingTarget::Erase(LXImage32& image) const
{
    const LXDocumentSelectionLockerForRead locker(m_pDocument);
    const LXImage32& selection = m_pDocument->GetSelectionMask();
    const QRect inImage = m_pDocument->GetSelectionGeometry().translated(-Geometry().topLeft());
    if (!IsMask()) {
        BlendOn(selection, selection.Rect(), BlendMode::DestinationOut, image, inImage, 1.0, ChangeAlpha);
        return;
    }
    LXImage32 background(selection.Width(), selection.Height());
    background.Fill(LXRGBA32i(ZKApplication::GetMaskBackground().rgba()));
    BlendOn(selection, selection.Rect(), BlendMode::DestinationIn, background, background.Rect(), 1.0,
            ChangeAlpha);
    BlendOn(background, background.Rect(), BlendMode::GrayToMask, image, inImage, 1.0, ChangeAlpha);
}

void FloatingTarget::CreateOverlay() const
{
    IsMask() ? m_pDocument->CreateAdditionalMask(m_Id) : m_pDocument->CreateAdditionalLayer(m_Id);
}

LXImage32* FloatingTarget::OverlayImage() const
{
    return IsMask() ? m_pDocument->GetAdditionalMaskImage(m_Id) : m_pDocument->GetAdditionalLayerImage(m_Id);
}

QRect FloatingTarget::OverlayGeometry() const
{
    return IsMask() ? m_pDocument->GetAdditionalMaskGeometry(m_Id)
                    : m_pDocument->GetAdditionalLayerGeometry(m_Id);
}

void FloatingTarget::SetOverlayPosition(const QPoint& topLeft) const
{
    IsMask() ? m_pDocument->SetAdditionalMaskPosition(m_Id, topLeft)
             : m_pDocument->SetAdditionalLayerPosition(m_Id, topLeft);
}

void FloatingTarget::ShowOverlay() const
{
    IsMask() ? m_pDocument->ShowAdditionalMask(m_Id) : m_pDocument->ShowAdditionalLayer(m_Id);
}

void FloatingTarget::InvalidateOverlay(const QRect& rect) const
{
    IsMask() ? m_pDocument->InvalidateAdditionalMask(m_Id, rect)
             : m_pDocument->InvalidateAdditionalLayer(m_Id, rect);
}

void FloatingTarget::RemoveOverlay() const
{
    IsMask() ? m_pDocument->RemoveAdditionalMask(m_Id) : m_pDocument->RemoveAdditionalLayer(m_Id);
}

LXImage32 FloatingTarget::ReadOverlay() const
{
    if (IsMask()) m_pDocument->BeginAdditionalMaskRead(m_Id);
    const LXImage32* overlay = OverlayImage();
    LXImage32 copy = overlay ? *overlay : LXImage32();
    if (IsMask()) m_pDocument->EndAdditionalMaskRead(m_Id);
    return copy;
}
