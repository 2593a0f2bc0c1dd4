#include "history/RemoveSubpathCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"
#include "history/PathStream.h"

class RemoveSubpathCommandDataPrivate
{
public:
    int pathIndex = -1;
    int subPathIndex = -1;
    int operation = 0;
    LXPath elements;
};

RemoveSubpathCommandData::RemoveSubpathCommandData()
    : m_pPrivate(std::make_unique<RemoveSubpathCommandDataPrivate>())
{}

RemoveSubpathCommandData::~RemoveSubpathCommandData() = default;

void RemoveSubpathCommandData::SetPathIndex(int row)
{
    m_pPrivate->pathIndex = row;
}

void RemoveSubpathCommandData::SetSubpathIndex(int subPath)
{
    m_pPrivate->subPathIndex = subPath;
}

void RemoveSubpathCommandData::SetLogicalOp(int operation)
{
    m_pPrivate->operation = operation;
}

void RemoveSubpathCommandData::SetUndoData(const LXPath& elements)
{
    m_pPrivate->elements = elements;
}

int RemoveSubpathCommandData::GetPathIndex() const
{
    return m_pPrivate->pathIndex;
}

int RemoveSubpathCommandData::GetSubpathIndex() const
{
    return m_pPrivate->subPathIndex;
}

int RemoveSubpathCommandData::GetLogicalOp() const
{
    return m_pPrivate->operation;
}

const LXPath& RemoveSubpathCommandData::GetUndoData() const
{
    return m_pPrivate->elements;
}

int RemoveSubpathCommandData::GetDataType() const
{
    return CommandDataType::RemoveSubpath;
}

bool RemoveSubpathCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << qint32(m_pPrivate->pathIndex) << qint32(m_pPrivate->subPathIndex)
               << qint32(m_pPrivate->operation);
        PathStream::WritePath(stream, m_pPrivate->elements);
    });
}

bool RemoveSubpathCommandData::Deserialize(IReader* reader)
{
    RemoveSubpathCommandDataPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.pathIndex >> read.subPathIndex >> read.operation;
        read.elements = PathStream::ReadPath(stream);
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
