#include "history/MoveCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"

class MoveCommandDataPrivate
{
public:
    QPoint delta;
    QList<uint> layers;
    QList<uint> masks;
};

MoveCommandData::MoveCommandData() : m_pPrivate(std::make_unique<MoveCommandDataPrivate>()) {}

MoveCommandData::~MoveCommandData() = default;

void MoveCommandData::SetDelta(const QPoint& delta)
{
    m_pPrivate->delta = delta;
}

void MoveCommandData::SetLayers(const QList<uint>& ids)
{
    m_pPrivate->layers = ids;
}

void MoveCommandData::SetMasks(const QList<uint>& ids)
{
    m_pPrivate->masks = ids;
}

QPoint MoveCommandData::GetDelta() const
{
    return m_pPrivate->delta;
}

const QList<uint>& MoveCommandData::GetLayers() const
{
    return m_pPrivate->layers;
}

const QList<uint>& MoveCommandData::GetMasks() const
{
    return m_pPrivate->masks;
}

int MoveCommandData::GetDataType() const
{
    return CommandDataType::Move;
}

bool MoveCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << m_pPrivate->delta << m_pPrivate->layers << m_pPrivate->masks;
    });
}

bool MoveCommandData::Deserialize(IReader* reader)
{
    MoveCommandDataPrivate read;
    const bool isWhole = DataStream::Read(
        reader, [&read](QDataStream& stream) { stream >> read.delta >> read.layers >> read.masks; });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
