#include "history/RemovePathCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"
#include "history/PathStream.h"

class RemovePathCommandDataPrivate
{
public:
    QString name;
    int pathIndex = -1;
    LXSubPaths path;
    bool isVisible = false;
};

RemovePathCommandData::RemovePathCommandData() : m_pPrivate(std::make_unique<RemovePathCommandDataPrivate>())
{}

RemovePathCommandData::~RemovePathCommandData() = default;

void RemovePathCommandData::SetPathName(const QString& name)
{
    m_pPrivate->name = name;
}

void RemovePathCommandData::SetPathIndex(int row)
{
    m_pPrivate->pathIndex = row;
}

void RemovePathCommandData::SetPath(const LXSubPaths& path)
{
    m_pPrivate->path = path;
}

void RemovePathCommandData::SetPathVisible(bool visible)
{
    m_pPrivate->isVisible = visible;
}

QString RemovePathCommandData::GetPathName() const
{
    return m_pPrivate->name;
}

int RemovePathCommandData::GetPathIndex() const
{
    return m_pPrivate->pathIndex;
}

const LXSubPaths& RemovePathCommandData::GetPath() const
{
    return m_pPrivate->path;
}

bool RemovePathCommandData::GetPathVisible() const
{
    return m_pPrivate->isVisible;
}

int RemovePathCommandData::GetDataType() const
{
    return CommandDataType::RemovePath;
}

bool RemovePathCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << m_pPrivate->name << qint32(m_pPrivate->pathIndex);
        PathStream::WriteSubPaths(stream, m_pPrivate->path);
        stream << m_pPrivate->isVisible;
    });
}

bool RemovePathCommandData::Deserialize(IReader* reader)
{
    RemovePathCommandDataPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.name >> read.pathIndex;
        read.path = PathStream::ReadSubPaths(stream);
        stream >> read.isVisible;
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
