#include "history/TransformSelectionCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"

class TransformSelectionCommandDataPrivate
{
public:
    LXImage32 undoImage;
    QPoint undoPosition;
    QTransform transform;
};

TransformSelectionCommandData::TransformSelectionCommandData()
    : m_pPrivate(std::make_unique<TransformSelectionCommandDataPrivate>())
{}

TransformSelectionCommandData::~TransformSelectionCommandData() = default;

void TransformSelectionCommandData::SetUndoImage(const LXImage32& mask, const QPoint& position)
{
    m_pPrivate->undoImage = mask;
    m_pPrivate->undoPosition = position;
}

void TransformSelectionCommandData::SetTransform(const QTransform& transform)
{
    m_pPrivate->transform = transform;
}

const LXImage32& TransformSelectionCommandData::GetUndoImage() const
{
    return m_pPrivate->undoImage;
}

QPoint TransformSelectionCommandData::GetUndoPosition() const
{
    return m_pPrivate->undoPosition;
}

QTransform TransformSelectionCommandData::GetTransform() const
{
    return m_pPrivate->transform;
}

int TransformSelectionCommandData::GetDataType() const
{
    return CommandDataType::TransformSelection;
}

bool TransformSelectionCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << m_pPrivate->undoPosition << m_pPrivate->transform;
        DataStream::WriteImage(stream, m_pPrivate->undoImage);
    });
}

bool TransformSelectionCommandData::Deserialize(IReader* reader)
{
    TransformSelectionCommandDataPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.undoPosition >> read.transform;
        read.undoImage = DataStream::ReadImage(stream);
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}

void TransformSelectionCommandData::ReleaseSerializeData()
{
    m_pPrivate->undoImage = LXImage32();
}

qint64 TransformSelectionCommandData::GetMemoryCost() const
{
    return DataStream::BytesOf(m_pPrivate->undoImage);
}
