#pragma once

#include "ZKHostExport.h"

#include "document/LXPathElement.h"
#include "history/LexoCommandData.h"

#include <QString>

#include <memory>

class RemovePathCommandDataPrivate;

/// A path that goes. The command takes what the path really is at the moment it goes over into these values,
/// so that undo brings back just that.
class ZK_HOST_EXPORT RemovePathCommandData : public LexoCommandData
{
public:
    RemovePathCommandData();
    ~RemovePathCommandData() override;

    void SetPathName(const QString& name);
    void SetPathIndex(int row);
    void SetPath(const LXSubPaths& path);
    /// LXPathsListModel::GetPathVisible.
    void SetPathVisible(bool visible);

    QString GetPathName() const;
    int GetPathIndex() const;
    const LXSubPaths& GetPath() const;
    bool GetPathVisible() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;

private:
    std::unique_ptr<RemovePathCommandDataPrivate> m_pPrivate;
};
