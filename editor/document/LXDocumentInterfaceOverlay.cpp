// The operations of LXDocumentInterface on what floats above layers and masks.

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentInterface_p.h"

using Target = LayerOverlays::Target;

void LXDocumentInterface::CreateAdditionalLayer(unsigned int id)
{
    if (!m_pPrivate->layers.Find(id)) return;
    emit AboutRequesAdditionalLayer(id);
    m_pPrivate->CreateOverlay(id, Target::Pixels);
}

void LXDocumentInterface::CreateAdditionalMask(unsigned int id)
{
    if (!m_pPrivate->layers.Properties(id).hasMask) return;
    emit AboutRequesAdditionalMask(id);
    m_pPrivate->CreateOverlay(id, Target::Mask);
}

LXImage32* LXDocumentInterface::GetAdditionalLayerImage(unsigned int id) const
{
    return m_pPrivate->overlays.Image(id, Target::Pixels);
}

LXImage32* LXDocumentInterface::GetAdditionalMaskImage(unsigned int id) const
{
    return m_pPrivate->overlays.Image(id, Target::Mask);
}

void LXDocumentInterface::SetAdditionalLayerPosition(unsigned int id, const QPoint& topLeft)
{
    m_pPrivate->merged.MarkDirty(m_pPrivate->overlays.Move(id, Target::Pixels, topLeft));
}

void LXDocumentInterface::SetAdditionalMaskPosition(unsigned int id, const QPoint& topLeft)
{
    m_pPrivate->merged.MarkDirty(m_pPrivate->overlays.Move(id, Target::Mask, topLeft));
}

QRect LXDocumentInterface::GetAdditionalLayerGeometry(unsigned int id) const
{
    return m_pPrivate->overlays.Geometry(id, Target::Pixels);
}

QRect LXDocumentInterface::GetAdditionalMaskGeometry(unsigned int id) const
{
    return m_pPrivate->overlays.Geometry(id, Target::Mask);
}

void LXDocumentInterface::ShowAdditionalLayer(unsigned int id)
{
    m_pPrivate->Invalidate(m_pPrivate->overlays.Show(id, Target::Pixels));
}

void LXDocumentInterface::ShowAdditionalMask(unsigned int id)
{
    m_pPrivate->Invalidate(m_pPrivate->overlays.Show(id, Target::Mask));
}

void LXDocumentInterface::InvalidateAdditionalLayer(unsigned int, const QRect& rect)
{
    m_pPrivate->merged.MarkDirty(rect);
}

void LXDocumentInterface::InvalidateAdditionalMask(unsigned int, const QRect& rect)
{
    m_pPrivate->merged.MarkDirty(rect);
}

void LXDocumentInterface::RemoveAdditionalLayer(unsigned int id)
{
    m_pPrivate->Invalidate(m_pPrivate->overlays.Remove(id, Target::Pixels));
}

void LXDocumentInterface::RemoveAdditionalMask(unsigned int id)
{
    m_pPrivate->Invalidate(m_pPrivate->overlays.Remove(id, Target::Mask));
}

void LXDocumentInterface::BeginAdditionalMaskRead(unsigned int id)
{
    m_pPrivate->overlays.Pin(id, Target::Mask);
}

void LXDocumentInterface::EndAdditionalMaskRead(unsigned int id)
{
    m_pPrivate->overlays.Unpin(id, Target::Mask);
}

void LXDocumentInterface::AdditionalLayerDataChangedExternal(unsigned int id, const QRect& rect)
{
    const QRect all = GetAdditionalLayerGeometry(id) | GetAdditionalMaskGeometry(id);
    m_pPrivate->Invalidate(rect.isEmpty() ? all : rect);
}

void LXDocumentInterface::BeginOperation()
{
    for (unsigned int id = 1; id <= static_cast<unsigned int>(m_pPrivate->layers.Count()); ++id) {
        if (m_pPrivate->overlays.Exists(id, Target::Pixels)) emit AboutRequesAdditionalLayer(id);
        if (m_pPrivate->overlays.Exists(id, Target::Mask)) emit AboutRequesAdditionalMask(id);
    }
}

void LXDocumentInterface::EndOperation()
{
    UpdateDocumentRect(QRect());
}
