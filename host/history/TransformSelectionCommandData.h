#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommandData.h"
#include "image/LXImageFwd.h"

#include <QPoint>
#include <QTransform>

#include <memory>

class TransformSelectionCommandDataPrivate;

/// The selection before it was transformed, and the transform.
class ZK_HOST_EXPORT TransformSelectionCommandData : public LexoCommandData
{
public:
    TransformSelectionCommandData();
    ~TransformSelectionCommandData() override;

    /// The selection as it was, and where its top left lay, in document pixels.
    void SetUndoImage(const LXImage32& mask, const QPoint& position);
    /// From the mask, its top left at the origin, to document coordinates.
    void SetTransform(const QTransform& transform);

    const LXImage32& GetUndoImage() const;
    QPoint GetUndoPosition() const;
    QTransform GetTransform() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;
    void ReleaseSerializeData() override;
    qint64 GetMemoryCost() const override;

private:
    std::unique_ptr<TransformSelectionCommandDataPrivate> m_pPrivate;
};
