#include "history/LayerCreateCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"

#include <QItemSelectionModel>
#include <QPointer>

class LayerCreateCommandDataPrivate
{
public:
    QPointer<QItemSelectionModel> selection; ///< goes with its view
    qint32 row = 0;
    QString name;
    quint32 blendMode = 0;
    double opacity = 1.0;
};

LayerCreateCommandData::LayerCreateCommandData(QItemSelectionModel* selection, LayerType, int row)
    : m_pPrivate(std::make_unique<LayerCreateCommandDataPrivate>())
{
    m_pPrivate->selection = selection;
    m_pPrivate->row = row;
}

LayerCreateCommandData::~LayerCreateCommandData() = default;

void LayerCreateCommandData::SetLayerId(uint id)
{
    m_pPrivate->row = static_cast<int>(id) - 1;
}

void LayerCreateCommandData::SetLayerName(const QString& name)
{
    m_pPrivate->name = name;
}

void LayerCreateCommandData::SetBlendMode(uint mode)
{
    m_pPrivate->blendMode = mode;
}

void LayerCreateCommandData::SetOpacity(double opacity)
{
    m_pPrivate->opacity = qBound(0.0, opacity, 1.0);
}

QItemSelectionModel* LayerCreateCommandData::GetSelection() const
{
    return m_pPrivate->selection;
}

int LayerCreateCommandData::GetRow() const
{
    return m_pPrivate->row;
}

QString LayerCreateCommandData::GetLayerName() const
{
    return m_pPrivate->name;
}

uint LayerCreateCommandData::GetBlendMode() const
{
    return m_pPrivate->blendMode;
}

double LayerCreateCommandData::GetOpacity() const
{
    return m_pPrivate->opacity;
}

int LayerCreateCommandData::GetDataType() const
{
    return CommandDataType::LayerCreate;
}

bool LayerCreateCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << m_pPrivate->row << m_pPrivate->name << m_pPrivate->blendMode << m_pPrivate->opacity;
    });
}

bool LayerCreateCommandData::Deserialize(IReader* reader)
{
    LayerCreateCommandDataPrivate read;
    read.selection = m_pPrivate->selection;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.row >> read.name >> read.blendMode >> read.opacity;
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
