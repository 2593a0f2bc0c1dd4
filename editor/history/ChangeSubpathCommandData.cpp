#include "history/ChangeSubpathCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"
#include "history/PathStream.h"

class ChangeSubpathCommandDataPrivate
{
public:
    int pathIndex = -1;
    int subPathIndex = -1;
    LXPath before;
    LXPath after;
};

ChangeSubpathCommandData::ChangeSubpathCommandData()
    : m_pPrivate(std::make_unique<ChangeSubpathCommandDataPrivate>())
{}

ChangeSubpathCommandData::~ChangeSubpathCommandData() = default;

void ChangeSubpathCommandData::SetPathIndex(int row)
{
    m_pPrivate->pathIndex = row;
}

void ChangeSubpathCommandData::SetSubpathIndex(int subPath)
{
    m_pPrivate->subPathIndex = subPath;
}

void ChangeSubpathCommandData::SetUndoData(const LXPath& elements)
{
    m_pPrivate->before = elements;
}

void ChangeSubpathCommandData::SetRedoData(const LXPath& elements)
{
    m_pPrivate->after = elements;
}

int ChangeSubpathCommandData::GetPathIndex() const
{
    return m_pPrivate->pathIndex;
}

int ChangeSubpathCommandData::GetSubpathIndex() const
{
    return m_pPrivate->subPathIndex;
}

const LXPath& ChangeSubpathCommandData::GetUndoData() const
{
    return m_pPrivate->before;
}

const LXPath& ChangeSubpathCommandData::GetRedoData() const
{
    return m_pPrivate->after;
}

int ChangeSubpathCommandData::GetDataType() const
{
    return CommandDataType::ChangeSubpath;
}

bool ChangeSubpathCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << qint32(m_pPrivate->pathIndex) << qint32(m_pPrivate->subPathIndex);
        PathStream::WritePath(stream, m_pPrivate->before);
        PathStream::WritePath(stream, m_pPrivate->after);
    });
}

bool ChangeSubpathCommandData::Deserialize(IReader* reader)
{
    ChangeSubpathCommandDataPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.pathIndex >> read.subPathIndex;
        read.before = PathStream::ReadPath(stream);
        read.after = PathStream::ReadPath(stream);
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
