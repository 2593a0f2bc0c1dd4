#pragma once

#include "ZKHostExport.h"

#include "document/LXPathElement.h"
#include "history/LexoCommandData.h"

#include <QTransform>

#include <memory>

class TransformPathCommandDataPrivate;

/// A path, or one sub path of it, mapped by a transform.
class ZK_HOST_EXPORT TransformPathCommandData : public LexoCommandData
{
public:
    TransformPathCommandData();
    ~TransformPathCommandData() override;

    /// Row of the path.
    void SetPathIndex(int row);
    /// -1, as at first, means the whole path.
    void SetSubpathIndex(int subPath);
    /// All of the path before the transform, document coordinates.
    void SetPath(const LXSubPaths& path);
    /// Maps the box of what is transformed, with its top left at the origin, to document coordinates. The box
    /// is the bounding rectangle of the sub path, or of all of them.
    void SetTransform(const QTransform& transform);

    int GetPathIndex() const;
    int GetSubpathIndex() const;
    const LXSubPaths& GetPath() const;
    const QTransform& GetTransform() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;

private:
    std::unique_ptr<TransformPathCommandDataPrivate> m_pPrivate;
};
