#pragma once

#include "ZKHostExport.h"

#include "document/LayerKind.h"
#include "history/LexoCommandData.h"

#include <QString>

#include <memory>

class LayerCreateCommandDataPrivate;
class QItemSelectionModel;

/// A new layer: what it is called and where it goes in.
class ZK_HOST_EXPORT LayerCreateCommandData : public LexoCommandData
{
public:
    enum LayerType
    {
        Raster = LayerKind::Raster
    };

    /// @param selection  the rows of layers that a view has selected, to follow the new layer; null for none
    /// @param row        where the layer goes in, 0 being the top
    LayerCreateCommandData(QItemSelectionModel* selection, LayerType type, int row);
    ~LayerCreateCommandData() override;

    /// The id that the new layer shall have: another way to give the row.
    void SetLayerId(uint id);
    void SetLayerName(const QString& name);
    void SetBlendMode(uint mode);
    /// 0 to 1.
    void SetOpacity(double opacity);

    QItemSelectionModel* GetSelection() const;
    int GetRow() const;
    QString GetLayerName() const;
    uint GetBlendMode() const;
    double GetOpacity() const;

    int GetDataType() const override;
    /// The selection model isn't part of the serial form.
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;

private:
    std::unique_ptr<LayerCreateCommandDataPrivate> m_pPrivate;
};
