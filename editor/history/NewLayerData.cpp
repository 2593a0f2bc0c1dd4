#include "history/NewLayerData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"
#include "history/NewLayerData_p.h"
#include "history/TextStream.h"

NewLayerData::NewLayerData() : m_pPrivate(std::make_unique<NewLayerDataPrivate>()) {}

NewLayerData::~NewLayerData() = default;

void NewLayerData::SetLayerID(uint id)
{
    m_pPrivate->id = id;
}

void NewLayerData::SetName(const QString& name)
{
    m_pPrivate->name = name;
}

void NewLayerData::SetBlendMode(uint mode)
{
    m_pPrivate->blendMode = mode;
}

void NewLayerData::SetLocks(uint locks)
{
    m_pPrivate->locks = locks;
}

void NewLayerData::SetOpacity(double opacity)
{
    m_pPrivate->opacity = qBound(0.0, opacity, 1.0);
}

void NewLayerData::SetMaskCreated(bool created)
{
    m_pPrivate->isMaskCreated = created;
}

uint NewLayerData::GetLayerID() const
{
    return m_pPrivate->id;
}

QString NewLayerData::GetName() const
{
    return m_pPrivate->name;
}

uint NewLayerData::GetBlendMode() const
{
    return m_pPrivate->blendMode;
}

uint NewLayerData::GetLocks() const
{
    return m_pPrivate->locks;
}

double NewLayerData::GetOpacity() const
{
    return m_pPrivate->opacity;
}

bool NewLayerData::IsMaskCreated() const
{
    return m_pPrivate->isMaskCreated;
}

int NewLayerData::GetDataType() const
{
    return CommandDataType::NewLayer;
}

bool NewLayerData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << m_pPrivate->id << m_pPrivate->name << m_pPrivate->blendMode << m_pPrivate->locks
               << m_pPrivate->opacity << m_pPrivate->isMaskCreated << m_pPrivate->isText << m_pPrivate->text;
    });
}

bool NewLayerData::Deserialize(IReader* reader)
{
    NewLayerDataPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.id >> read.name >> read.blendMode >> read.locks >> read.opacity >>
            read.isMaskCreated >> read.isText >> read.text;
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
