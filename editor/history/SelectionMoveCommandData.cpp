#include "history/SelectionMoveCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"

class SelectionMoveCommandDataPrivate
{
public:
    QPoint before;
    QPoint after;
};

SelectionMoveCommandData::SelectionMoveCommandData()
    : m_pPrivate(std::make_unique<SelectionMoveCommandDataPrivate>())
{}

SelectionMoveCommandData::~SelectionMoveCommandData() = default;

void SelectionMoveCommandData::SetUndoPosition(const QPoint& topLeft)
{
    m_pPrivate->before = topLeft;
}

void SelectionMoveCommandData::SetRedoPosition(const QPoint& topLeft)
{
    m_pPrivate->after = topLeft;
}

QPoint SelectionMoveCommandData::GetUndoPosition() const
{
    return m_pPrivate->before;
}

QPoint SelectionMoveCommandData::GetRedoPosition() const
{
    return m_pPrivate->after;
}

int SelectionMoveCommandData::GetDataType() const
{
    return CommandDataType::SelectionMove;
}

bool SelectionMoveCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(
        writer, [this](QDataStream& stream) { stream << m_pPrivate->before << m_pPrivate->after; });
}

bool SelectionMoveCommandData::Deserialize(IReader* reader)
{
    SelectionMoveCommandDataPrivate read;
    const bool isWhole =
        DataStream::Read(reader, [&read](QDataStream& stream) { stream >> read.before >> read.after; });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
