#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommandData.h"

#include <QPoint>

#include <memory>

class ColorSamplesCommandPrivate;
class ColorSamplesCommandDataAddPrivate;

/// A color sample that comes in behind the last one.
class ZK_HOST_EXPORT ColorSamplesCommandDataAdd : public LexoCommandData
{
public:
    ColorSamplesCommandDataAdd();
    ~ColorSamplesCommandDataAdd() override;

    /// Document pixels.
    void SetSamplePoint(const QPoint& point);

    QPoint GetSamplePoint() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;

private:
    friend class ColorSamplesCommandPrivate;
    std::unique_ptr<ColorSamplesCommandDataAddPrivate> m_pPrivate;
};
