#include "history/MoveCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"

class MoveCommandDataPrivate
{
public:
    QPoint delta;
    QList<uint> layers;
    QList<uint> masks;
    QTransform oldTransform;
    QTransform newTransform;
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

void MoveCommandData::SetTextLayerOldTransformation(const QTransform& transform)
{
    m_pPrivate->oldTransform = transform;
}

void MoveCommandData::SetTextLayerNewTransformation(const QTransform& transform)
{
    m_pPrivate->newTransform = transform;
}

QTransform MoveCommandData::GetTextLayerOldTransformation() const
{
    return m_pPrivate->oldTransform;
}

QTransform MoveCommandData::GetTextLayerNewTransformation() const
{
    return m_pPrivate->newTransform;
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
        stream << m_pPrivate->delta << m_pPrivate->layers << m_pPrivate->masks << m_pPrivate->oldTransform
               << m_pPrivate->newTransform;
    });
}

bool MoveCommandData::Deserialize(IReader* reader)
{
    MoveCommandDataPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.delta >> read.layers >> read.masks >> read.oldTransform >> read.newTransform;
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
