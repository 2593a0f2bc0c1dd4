#include "history/InsertPathCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"

class InsertPathCommandDataPrivate
{
public:
    QString name;
    int pathIndex = -1;
};

InsertPathCommandData::InsertPathCommandData() : m_pPrivate(std::make_unique<InsertPathCommandDataPrivate>())
{}

InsertPathCommandData::~InsertPathCommandData() = default;

void InsertPathCommandData::SetPathName(const QString& name)
{
    m_pPrivate->name = name;
}

void InsertPathCommandData::SetPathIndex(int row)
{
    m_pPrivate->pathIndex = row;
}

QString InsertPathCommandData::GetPathName() const
{
    return m_pPrivate->name;
}

int InsertPathCommandData::GetPathIndex() const
{
    return m_pPrivate->pathIndex;
}

int InsertPathCommandData::GetDataType() const
{
    return CommandDataType::InsertPath;
}

bool InsertPathCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(
        writer, [this](QDataStream& stream) { stream << m_pPrivate->name << qint32(m_pPrivate->pathIndex); });
}

bool InsertPathCommandData::Deserialize(IReader* reader)
{
    InsertPathCommandDataPrivate read;
    const bool isWhole =
        DataStream::Read(reader, [&read](QDataStream& stream) { stream >> read.name >> read.pathIndex; });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
