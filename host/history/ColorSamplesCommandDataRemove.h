#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommandData.h"

#include <QPoint>

#include <memory>

class ColorSamplesCommandPrivate;
class ColorSamplesCommandDataRemovePrivate;

/// A color sample that goes. Its radius and format, which undo brings back too, are taken from the list when
/// it goes.
class ZK_HOST_EXPORT ColorSamplesCommandDataRemove : public LexoCommandData
{
public:
    ColorSamplesCommandDataRemove();
    ~ColorSamplesCommandDataRemove() override;

    /// @param point  document pixels
    void SetSamplePoint(int row, const QPoint& point);

    int GetSampleRow() const;
    QPoint GetSamplePoint() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;

private:
    friend class ColorSamplesCommandPrivate;
    std::unique_ptr<ColorSamplesCommandDataRemovePrivate> m_pPrivate;
};
