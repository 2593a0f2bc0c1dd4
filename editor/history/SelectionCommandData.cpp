#include "history/SelectionCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"

class SelectionCommandDataPrivate
{
public:
    SelectionCommandData::LogicalOp op = SelectionCommandData::Replace;
    QPainterPath path;
    QPoint undoOffset;
    LXImage32 undoMask;
};

SelectionCommandData::SelectionCommandData() : m_pPrivate(std::make_unique<SelectionCommandDataPrivate>()) {}

SelectionCommandData::~SelectionCommandData() = default;

void SelectionCommandData::SetSelectionOp(LogicalOp op)
{
    m_pPrivate->op = op;
}

void SelectionCommandData::SetSelectionGeometry(const QPainterPath& path)
{
    m_pPrivate->path = path;
}

void SelectionCommandData::SetUndoSel(const QPoint& offset, const LXImage32& mask)
{
    m_pPrivate->undoOffset = offset;
    m_pPrivate->undoMask = mask;
}

SelectionCommandData::LogicalOp SelectionCommandData::GetSelectionOp() const
{
    return m_pPrivate->op;
}

const QPainterPath& SelectionCommandData::GetSelectionGeometry() const
{
    return m_pPrivate->path;
}

QPoint SelectionCommandData::GetUndoOffset() const
{
    return m_pPrivate->undoOffset;
}

const LXImage32& SelectionCommandData::GetUndoMask() const
{
    return m_pPrivate->undoMask;
}

int SelectionCommandData::GetDataType() const
{
    return CommandDataType::Selection;
}

bool SelectionCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << qint32(m_pPrivate->op) << m_pPrivate->path << m_pPrivate->undoOffset;
        DataStream::WriteImage(stream, m_pPrivate->undoMask);
    });
}

bool SelectionCommandData::Deserialize(IReader* reader)
{
    SelectionCommandDataPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        DataStream::ReadEnum(stream, read.op, Replace);
        stream >> read.path >> read.undoOffset;
        read.undoMask = DataStream::ReadImage(stream);
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}

void SelectionCommandData::ReleaseSerializeData()
{
    m_pPrivate->undoMask = LXImage32();
    m_pPrivate->path = QPainterPath();
}

qint64 SelectionCommandData::GetMemoryCost() const
{
    return DataStream::BytesOf(m_pPrivate->undoMask);
}
