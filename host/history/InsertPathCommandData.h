#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommandData.h"

#include <QString>

#include <memory>

class InsertPathCommandDataPrivate;

/// A path without sub paths that comes in.
class ZK_HOST_EXPORT InsertPathCommandData : public LexoCommandData
{
public:
    InsertPathCommandData();
    ~InsertPathCommandData() override;

    void SetPathName(const QString& name);
    /// The row that it has afterwards.
    void SetPathIndex(int row);

    QString GetPathName() const;
    int GetPathIndex() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;

private:
    std::unique_ptr<InsertPathCommandDataPrivate> m_pPrivate;
};
