#include "history/InsertSubpathCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"
#include "history/PathStream.h"

class InsertSubpathCommandDataPrivate
{
public:
    int pathIndex = -1;
    int subPathIndex = -1;
    int operation = 0;
    LXPath elements;
};

InsertSubpathCommandData::InsertSubpathCommandData()
    : m_pPrivate(std::make_unique<InsertSubpathCommandDataPrivate>())
{}

InsertSubpathCommandData::~InsertSubpathCommandData() = default;

void InsertSubpathCommandData::SetPathIndex(int row)
{
    m_pPrivate->pathIndex = row;
}

void InsertSubpathCommandData::SetSubpathIndex(int subPath)
{
    m_pPrivate->subPathIndex = subPath;
}

void InsertSubpathCommandData::SetLogicalOp(int operation)
{
    m_pPrivate->operation = operation;
}

void InsertSubpathCommandData::SetData(const LXPath& elements)
{
    m_pPrivate->elements = elements;
}

int InsertSubpathCommandData::GetPathIndex() const
{
    return m_pPrivate->pathIndex;
}

int InsertSubpathCommandData::GetSubpathIndex() const
{
    return m_pPrivate->subPathIndex;
}

int InsertSubpathCommandData::GetLogicalOp() const
{
    return m_pPrivate->operation;
}

const LXPath& InsertSubpathCommandData::GetData() const
{
    return m_pPrivate->elements;
}

int InsertSubpathCommandData::GetDataType() const
{
    return CommandDataType::InsertSubpath;
}

bool InsertSubpathCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << qint32(m_pPrivate->pathIndex) << qint32(m_pPrivate->subPathIndex)
               << qint32(m_pPrivate->operation);
        PathStream::WritePath(stream, m_pPrivate->elements);
    });
}

bool InsertSubpathCommandData::Deserialize(IReader* reader)
{
    InsertSubpathCommandDataPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.pathIndex >> read.subPathIndex >> read.operation;
        read.elements = PathStream::ReadPath(stream);
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
