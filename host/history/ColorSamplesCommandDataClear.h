#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommandData.h"

#include <QPoint>

#include <memory>
#include <vector>

class ColorSamplesCommandPrivate;
class ColorSamplesCommandDataClearPrivate;

/// All color samples, which go. Radii and formats, which undo brings back too, are taken from the list when
/// they go.
class ZK_HOST_EXPORT ColorSamplesCommandDataClear : public LexoCommandData
{
public:
    ColorSamplesCommandDataClear();
    ~ColorSamplesCommandDataClear() override;

    /// Document pixels, in the order of the rows.
    void SetData(const std::vector<QPoint>& points);

    std::vector<QPoint> GetPoints() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;

private:
    friend class ColorSamplesCommandPrivate;
    std::unique_ptr<ColorSamplesCommandDataClearPrivate> m_pPrivate;
};
