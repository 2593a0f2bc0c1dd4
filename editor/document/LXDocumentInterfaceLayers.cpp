// The operations of LXDocumentInterface on layers and masks.

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentModel.h"
#include "document/LayerLocks.h"
#include "document/MergedPartReader.h"

namespace {
/// Under the locker of that id.
bool ReadPixel(const LXDocumentInterface* document, unsigned int id, const QPoint& point, QColor* color)
{
    const LXImage32* image = document->GetLayerImage(id);
    const QPoint inImage = point - document->GetLayerGeometry(id).topLeft();
    if (!image || !image->Rect().contains(inImage)) return false;
    *color = QColor::fromRgba(image->GetColor(inImage.x(), inImage.y()).value);
    return true;
}
} // namespace

void LXDocumentInterface::EndLayerChange(unsigned int id)
{
    if (!m_pPrivate->layers.Find(id)) return;
    m_pPrivate->LayerPixelsChanged(id, QRect());
    if (m_pPrivate->layers.Properties(id).hasMask) m_pPrivate->MaskPixelsChanged(id, QRect());
}

void LXDocumentInterface::LayerImageChanged(unsigned int id, const QRect& rect)
{
    const QRect extent = m_pPrivate->Extent(id);
    m_pPrivate->Invalidate(rect.isEmpty() ? extent : rect & extent);
}

void LXDocumentInterface::SetLayerOffset(unsigned int id, const QPoint& offset)
{
    m_pPrivate->MoveLayer(id, offset, std::nullopt);
}

void LXDocumentInterface::SetMaskOffset(unsigned int id, const QPoint& offset)
{
    m_pPrivate->MoveLayer(id, std::nullopt, offset);
}

void LXDocumentInterface::SetLayerMaskOffset(unsigned int id, const QPoint& layerOffset,
                                             const QPoint& maskOffset)
{
    m_pPrivate->MoveLayer(id, layerOffset, maskOffset);
}

void LXDocumentInterface::SetLayerImage(unsigned int id, const LXImage32& image, const QPoint& offset)
{
    if (!m_pPrivate->layers.Find(id)) return;
    const QRect before = GetLayerGeometry(id);
    m_pPrivate->PutLayerImage(id, image, offset);
    if (before.topLeft() != offset) {
        m_pPrivate->OnMainThread([this, id, offset] { emit GetModel()->LayerPositionChanged(id, offset); });
    }
    m_pPrivate->LayerPixelsChanged(id, before | GetLayerGeometry(id));
}

void LXDocumentInterface::SetMaskImage(unsigned int id, const LXImage32& image, const QPoint& offset)
{
    if (!m_pPrivate->layers.Properties(id).hasMask) return;
    const QRect before = GetMaskGeometry(id);
    m_pPrivate->PutMaskImage(id, image, offset);
    if (before.topLeft() != offset) {
        m_pPrivate->OnMainThread([this, id, offset] { emit GetModel()->MaskPositionChanged(id, offset); });
    }
    m_pPrivate->MaskPixelsChanged(id, before | GetMaskGeometry(id));
}

bool LXDocumentInterface::IsSelectionMoveLocked(unsigned int id) const
{
    return (GetLayerLockFlags(id) & LayerLocks::AgainstPaint) != 0;
}

bool LXDocumentInterface::IsLayerEditable(unsigned int id) const
{
    return id != 0 && GetLayerKind(id) == LayerKind::Raster;
}

bool LXDocumentInterface::GetPixel(unsigned int id, const QPoint& point, QColor* color) const
{
    if (id == 0) {
        // Nothing else of the merged picture need be composed.
        const MergedPartReader reader(this, QRect(point, QSize(1, 1)));
        return ReadPixel(this, id, point, color);
    }
    const LXDocumentLayerLockerForRead locker(this, id);
    return ReadPixel(this, id, point, color);
}

unsigned int LXDocumentInterface::AddLayer(const QString& name, const LXImage32& image, const QPoint& offset,
                                           int row)
{
    LayerState layer;
    layer.properties.name = name;
    layer.properties.rect = QRect(offset, QSize(image.Width(), image.Height()));
    layer.image = image;
    const int place = qBound(0, row, m_pPrivate->layers.Count());
    m_pPrivate->InsertLayer(place, layer);
    return static_cast<unsigned int>(place) + 1;
}

void LXDocumentInterface::RemoveLayer(unsigned int id)
{
    if (!m_pPrivate->layers.Find(id)) return;
    emit AboutRequesAdditionalLayer(id);
    emit AboutRequesAdditionalMask(id);
    m_pPrivate->RemoveLayer(static_cast<int>(id) - 1);
}

void LXDocumentInterface::AddMask(unsigned int id, bool reveals)
{
    m_pPrivate->ReplaceMask(id, m_pPrivate->NewMask(reveals));
}

void LXDocumentInterface::RemoveMask(unsigned int id)
{
    if (!m_pPrivate->layers.Properties(id).hasMask) return;
    emit AboutRequesAdditionalMask(id);
    m_pPrivate->ReplaceMask(id, LayerState());
}

void LXDocumentInterface::GetMaskInverted(unsigned int id, bool* reveals) const
{
    *reveals = m_pPrivate->layers.Properties(id).maskReveals;
}

unsigned int LXDocumentInterface::GetLayerLockFlags(unsigned int id) const
{
    return m_pPrivate->layers.Properties(id).locks;
}

QRect LXDocumentInterface::GetLayerGeometry(unsigned int id) const
{
    return id == 0 ? m_pPrivate->Canvas() : m_pPrivate->layers.Properties(id).rect;
}

QRect LXDocumentInterface::GetMaskGeometry(unsigned int id) const
{
    return id == 0 ? m_pPrivate->Canvas() : m_pPrivate->layers.Properties(id).maskRect;
}

LXImage32* LXDocumentInterface::GetLayerImage(unsigned int id) const
{
    if (id == 0) return &m_pPrivate->merged.Image();
    const std::shared_ptr<Layer> layer = m_pPrivate->layers.Find(id);
    return layer ? &layer->image : nullptr;
}

LXImage32* LXDocumentInterface::GetMaskImage(unsigned int id) const
{
    if (id == 0) return &m_pPrivate->merged.Image();
    const std::shared_ptr<Layer> layer = m_pPrivate->layers.Find(id);
    return layer && m_pPrivate->layers.PropertiesOf(*layer).hasMask ? &layer->mask : nullptr;
}

int LXDocumentInterface::GetLayerKind(unsigned int id) const
{
    if (id == 0) return LayerKind::Raster;
    return m_pPrivate->layers.Find(id) ? m_pPrivate->layers.Properties(id).kind : -1;
}
