#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommandData.h"

#include <QPoint>

#include <memory>

class ColorSamplesCommandPrivate;
class ColorSamplesCommandDataMovePrivate;

/// A color sample that has been moved. Where to is taken from the list when the command is pushed: the sample
/// is there already.
class ZK_HOST_EXPORT ColorSamplesCommandDataMove : public LexoCommandData
{
public:
    ColorSamplesCommandDataMove();
    ~ColorSamplesCommandDataMove() override;

    /// @param oldPoint  where it was, document pixels
    void SetData(int row, const QPoint& oldPoint);

    int GetSampleRow() const;
    QPoint GetOldPoint() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;

private:
    friend class ColorSamplesCommandPrivate;
    std::unique_ptr<ColorSamplesCommandDataMovePrivate> m_pPrivate;
};
