#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommandData.h"

#include <QList>
#include <QPoint>
#include <QTransform>

#include <memory>

class MoveCommandDataPrivate;

/// Which layers and masks move, and how far.
class ZK_HOST_EXPORT MoveCommandData : public LexoCommandData
{
public:
    MoveCommandData();
    ~MoveCommandData() override;

    /// Document pixels.
    void SetDelta(const QPoint& delta);
    /// Ids.
    void SetLayers(const QList<uint>& ids);
    /// Ids of the layers whose masks move.
    void SetMasks(const QList<uint>& ids);
    /// The transformations of the first text layer in the list, before and after; other texts are moved by
    /// the delta. Two that are alike count as none.
    void SetTextLayerOldTransformation(const QTransform& transform);
    void SetTextLayerNewTransformation(const QTransform& transform);

    QPoint GetDelta() const;
    const QList<uint>& GetLayers() const;
    const QList<uint>& GetMasks() const;
    QTransform GetTextLayerOldTransformation() const;
    QTransform GetTextLayerNewTransformation() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;

private:
    std::unique_ptr<MoveCommandDataPrivate> m_pPrivate;
};
