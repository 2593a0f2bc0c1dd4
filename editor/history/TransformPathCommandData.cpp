#include "history/TransformPathCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"
#include "history/PathStream.h"

class TransformPathCommandDataPrivate
{
public:
    int pathIndex = -1;
    int subPathIndex = -1;
    LXSubPaths path;
    QTransform transform;
};

TransformPathCommandData::TransformPathCommandData()
    : m_pPrivate(std::make_unique<TransformPathCommandDataPrivate>())
{}

TransformPathCommandData::~TransformPathCommandData() = default;

void TransformPathCommandData::SetPathIndex(int row)
{
    m_pPrivate->pathIndex = row;
}

void TransformPathCommandData::SetSubpathIndex(int subPath)
{
    m_pPrivate->subPathIndex = subPath;
}

void TransformPathCommandData::SetPath(const LXSubPaths& path)
{
    m_pPrivate->path = path;
}

void TransformPathCommandData::SetTransform(const QTransform& transform)
{
    m_pPrivate->transform = transform;
}

int TransformPathCommandData::GetPathIndex() const
{
    return m_pPrivate->pathIndex;
}

int TransformPathCommandData::GetSubpathIndex() const
{
    return m_pPrivate->subPathIndex;
}

const LXSubPaths& TransformPathCommandData::GetPath() const
{
    return m_pPrivate->path;
}

const QTransform& TransformPathCommandData::GetTransform() const
{
    return m_pPrivate->transform;
}

int TransformPathCommandData::GetDataType() const
{
    return CommandDataType::TransformPath;
}

bool TransformPathCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << qint32(m_pPrivate->pathIndex) << qint32(m_pPrivate->subPathIndex);
        PathStream::WriteSubPaths(stream, m_pPrivate->path);
        stream << m_pPrivate->transform;
    });
}

bool TransformPathCommandData::Deserialize(IReader* reader)
{
    TransformPathCommandDataPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.pathIndex >> read.subPathIndex;
        read.path = PathStream::ReadSubPaths(stream);
        stream >> read.transform;
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
