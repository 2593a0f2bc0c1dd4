#pragma once

#include "ZKHostExport.h"

#include "document/LXPathElement.h"
#include "history/LexoCommandData.h"

#include <memory>

class RemoveSubpathCommandDataPrivate;

/// A sub path that goes.
class ZK_HOST_EXPORT RemoveSubpathCommandData : public LexoCommandData
{
public:
    RemoveSubpathCommandData();
    ~RemoveSubpathCommandData() override;

    void SetPathIndex(int row);
    void SetSubpathIndex(int subPath);
    /// An LXPathsListModel::LogicalOp.
    void SetLogicalOp(int operation);
    void SetUndoData(const LXPath& elements);

    int GetPathIndex() const;
    int GetSubpathIndex() const;
    int GetLogicalOp() const;
    const LXPath& GetUndoData() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;

private:
    std::unique_ptr<RemoveSubpathCommandDataPrivate> m_pPrivate;
};
