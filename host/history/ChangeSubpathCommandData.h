#pragma once

#include "ZKHostExport.h"

#include "document/LXPathElement.h"
#include "history/LexoCommandData.h"

#include <memory>

class ChangeSubpathCommandDataPrivate;

/// The anchors of a sub path before and after.
class ZK_HOST_EXPORT ChangeSubpathCommandData : public LexoCommandData
{
public:
    ChangeSubpathCommandData();
    ~ChangeSubpathCommandData() override;

    void SetPathIndex(int row);
    void SetSubpathIndex(int subPath);
    void SetUndoData(const LXPath& elements);
    void SetRedoData(const LXPath& elements);

    int GetPathIndex() const;
    int GetSubpathIndex() const;
    const LXPath& GetUndoData() const;
    const LXPath& GetRedoData() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;

private:
    std::unique_ptr<ChangeSubpathCommandDataPrivate> m_pPrivate;
};
