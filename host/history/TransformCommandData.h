#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommandData.h"
#include "image/LXImageFwd.h"

#include <QPoint>
#include <QTransform>

#include <memory>

class TransformCommandDataPrivate;

/// A layer or mask before it was transformed, and the transform.
class ZK_HOST_EXPORT TransformCommandData : public LexoCommandData
{
public:
    TransformCommandData();
    ~TransformCommandData() override;

    /// Image and place of the layer, or of its mask, as they were.
    /// @param id        of the layer
    /// @param position  where the image's top left lay, in document pixels
    void SetUndoLayerImage(uint id, const LXImage32& image, const QPoint& position);
    /// From the image, its top left at the origin, to document coordinates.
    void SetTransform(const QTransform& transform);
    /// The matrix that a text layer had, which it gets back; redo gives it this one followed by the
    /// transform. Single precision is enough: the layer's own is taken while it is the same.
    void SetOldTransform(const QTransform& transform);
    /// Whether the layer's mask is meant; the command sets it.
    void SetMaskTarget(bool isMask);

    uint GetLayerID() const;
    const LXImage32& GetUndoImage() const;
    QPoint GetUndoPosition() const;
    QTransform GetTransform() const;
    QTransform GetOldTransform() const;
    bool IsMaskTarget() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;
    void ReleaseSerializeData() override;
    qint64 GetMemoryCost() const override;

private:
    std::unique_ptr<TransformCommandDataPrivate> m_pPrivate;
};
