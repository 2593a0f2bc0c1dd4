#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommandData.h"

#include <QString>

#include <memory>

class NewLayerDataPrivate;

/// A new layer: its place and what of it is no picture.
class ZK_HOST_EXPORT NewLayerData : public LexoCommandData
{
public:
    NewLayerData();
    ~NewLayerData() override;

    /// The id that the layer has, or shall have.
    void SetLayerID(uint id);
    void SetName(const QString& name);
    void SetBlendMode(uint mode);
    /// LayerLocks bits.
    void SetLocks(uint locks);
    /// 0 to 1.
    void SetOpacity(double opacity);
    /// Whether the layer comes with a mask that shows all of it.
    void SetMaskCreated(bool created);

    uint GetLayerID() const;
    QString GetName() const;
    uint GetBlendMode() const;
    uint GetLocks() const;
    double GetOpacity() const;
    bool IsMaskCreated() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;

protected:
    friend class NewLayerDataPrivate;

    std::unique_ptr<NewLayerDataPrivate> m_pPrivate;
};
