// The operations of LXDocumentInterface on adjustment layers.

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel_p.h"
#include "image/AdjustmentPixels.h"

unsigned int LXDocumentInterface::AddAdjustmentLayer(const QString& name, const LXAdjustment& adjustment,
                                                     int row)
{
    LayerState layer;
    layer.properties.name = name;
    layer.properties.kind = LayerKind::Adjustment;
    layer.properties.adjustment = AdjustmentPixels::Clamped(adjustment);
    const int place = qBound(0, row, m_pPrivate->layers.Count());
    m_pPrivate->InsertLayer(place, layer);
    return static_cast<unsigned int>(place) + 1;
}

LXAdjustment LXDocumentInterface::GetAdjustment(unsigned int id) const
{
    return m_pPrivate->layers.Properties(id).adjustment;
}

void LXDocumentInterface::SetAdjustment(unsigned int id, const LXAdjustment& adjustment)
{
    const LXAdjustment wanted = AdjustmentPixels::Clamped(adjustment);
    if (GetLayerKind(id) != LayerKind::Adjustment || GetAdjustment(id) == wanted) return;
    LXDocumentModelPrivate::Get(GetModel())
        ->Change(
            static_cast<int>(id) - 1, [&](LayerProperties& layer) { layer.adjustment = wanted; },
            LXDocumentModel::AdjustmentRole);
    m_pPrivate->LayerPixelsChanged(id, m_pPrivate->Extent(id));
}
