#include "history/MWSelectionCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"

class MWSelectionCommandDataPrivate
{
public:
    bool hasNoUndoSelection = false;
    QPoint undoOffset;
    LXImage32 undoMask;
    QPoint redoOffset;
    LXImage32 redoMask;
    SelectionCommandData::LogicalOp op = SelectionCommandData::Replace;
};

MWSelectionCommandData::MWSelectionCommandData()
    : m_pPrivate(std::make_unique<MWSelectionCommandDataPrivate>())
{}

MWSelectionCommandData::~MWSelectionCommandData() = default;

void MWSelectionCommandData::SetNoUndoSelection(bool none)
{
    m_pPrivate->hasNoUndoSelection = none;
}

void MWSelectionCommandData::SetUndoSel(const QPoint& offset, const LXImage32& mask)
{
    m_pPrivate->undoOffset = offset;
    m_pPrivate->undoMask = mask;
}

void MWSelectionCommandData::SetRedoSel(const QPoint& offset, const LXImage32& mask,
                                        SelectionCommandData::LogicalOp op)
{
    m_pPrivate->redoOffset = offset;
    m_pPrivate->redoMask = mask;
    m_pPrivate->op = op;
}

bool MWSelectionCommandData::HasNoUndoSelection() const
{
    return m_pPrivate->hasNoUndoSelection;
}

QPoint MWSelectionCommandData::GetUndoOffset() const
{
    return m_pPrivate->undoOffset;
}

const LXImage32& MWSelectionCommandData::GetUndoMask() const
{
    return m_pPrivate->undoMask;
}

QPoint MWSelectionCommandData::GetRedoOffset() const
{
    return m_pPrivate->redoOffset;
}

const LXImage32& MWSelectionCommandData::GetRedoMask() const
{
    return m_pPrivate->redoMask;
}

SelectionCommandData::LogicalOp MWSelectionCommandData::GetRedoOp() const
{
    return m_pPrivate->op;
}

int MWSelectionCommandData::GetDataType() const
{
    return CommandDataType::MWSelection;
}

bool MWSelectionCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << m_pPrivate->hasNoUndoSelection << m_pPrivate->undoOffset << m_pPrivate->redoOffset
               << qint32(m_pPrivate->op);
        DataStream::WriteImage(stream, m_pPrivate->undoMask);
        DataStream::WriteImage(stream, m_pPrivate->redoMask);
    });
}

bool MWSelectionCommandData::Deserialize(IReader* reader)
{
    MWSelectionCommandDataPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.hasNoUndoSelection >> read.undoOffset >> read.redoOffset;
        DataStream::ReadEnum(stream, read.op, SelectionCommandData::Replace);
        read.undoMask = DataStream::ReadImage(stream);
        read.redoMask = DataStream::ReadImage(stream);
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}

void MWSelectionCommandData::ReleaseSerializeData()
{
    m_pPrivate->undoMask = LXImage32();
    m_pPrivate->redoMask = LXImage32();
}

qint64 MWSelectionCommandData::GetMemoryCost() const
{
    return DataStream::BytesOf(m_pPrivate->undoMask) + DataStream::BytesOf(m_pPrivate->redoMask);
}
