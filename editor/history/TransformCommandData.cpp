#include "history/TransformCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"

class TransformCommandDataPrivate
{
public:
    uint id = 0;
    bool isMaskTarget = false;
    LXImage32 undoImage;
    QPoint undoPosition;
    QTransform transform;
    QTransform oldTransform;
};

TransformCommandData::TransformCommandData() : m_pPrivate(std::make_unique<TransformCommandDataPrivate>()) {}

TransformCommandData::~TransformCommandData() = default;

void TransformCommandData::SetUndoLayerImage(uint id, const LXImage32& image, const QPoint& position)
{
    m_pPrivate->id = id;
    m_pPrivate->undoImage = image;
    m_pPrivate->undoPosition = position;
}

void TransformCommandData::SetTransform(const QTransform& transform)
{
    m_pPrivate->transform = transform;
}

void TransformCommandData::SetOldTransform(const QTransform& transform)
{
    m_pPrivate->oldTransform = transform;
}

void TransformCommandData::SetMaskTarget(bool isMask)
{
    m_pPrivate->isMaskTarget = isMask;
}

uint TransformCommandData::GetLayerID() const
{
    return m_pPrivate->id;
}

const LXImage32& TransformCommandData::GetUndoImage() const
{
    return m_pPrivate->undoImage;
}

QPoint TransformCommandData::GetUndoPosition() const
{
    return m_pPrivate->undoPosition;
}

QTransform TransformCommandData::GetTransform() const
{
    return m_pPrivate->transform;
}

QTransform TransformCommandData::GetOldTransform() const
{
    return m_pPrivate->oldTransform;
}

bool TransformCommandData::IsMaskTarget() const
{
    return m_pPrivate->isMaskTarget;
}

int TransformCommandData::GetDataType() const
{
    return CommandDataType::Transform;
}

bool TransformCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << m_pPrivate->id << m_pPrivate->isMaskTarget << m_pPrivate->undoPosition
               << m_pPrivate->transform << m_pPrivate->oldTransform;
        DataStream::WriteImage(stream, m_pPrivate->undoImage);
    });
}

bool TransformCommandData::Deserialize(IReader* reader)
{
    TransformCommandDataPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.id >> read.isMaskTarget >> read.undoPosition >> read.transform >> read.oldTransform;
        read.undoImage = DataStream::ReadImage(stream);
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}

void TransformCommandData::ReleaseSerializeData()
{
    m_pPrivate->undoImage = LXImage32();
}

qint64 TransformCommandData::GetMemoryCost() const
{
    return DataStream::BytesOf(m_pPrivate->undoImage);
}
