#pragma once

#include "ZKHostExport.h"

#include "document/LXPathElement.h"
#include "history/LexoCommandData.h"

#include <memory>

class InsertSubpathCommandDataPrivate;

/// A sub path that comes in.
class ZK_HOST_EXPORT InsertSubpathCommandData : public LexoCommandData
{
public:
    InsertSubpathCommandData();
    ~InsertSubpathCommandData() override;

    void SetPathIndex(int row);
    /// The index that it has afterwards.
    void SetSubpathIndex(int subPath);
    /// An LXPathsListModel::LogicalOp.
    void SetLogicalOp(int operation);
    void SetData(const LXPath& elements);

    int GetPathIndex() const;
    int GetSubpathIndex() const;
    int GetLogicalOp() const;
    const LXPath& GetData() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;

private:
    std::unique_ptr<InsertSubpathCommandDataPrivate> m_pPrivate;
};
